// Field holding one referenced container, of a required type; the owner
// references it and becomes its parent.
#pragma once

#include "nerio3d/fields/nrContainer.h"
#include "nerio3d/fields/nrFieldInfo.h"

// What the two reference descriptors share: the type referenced containers must have.
class nrRefInfo : public nrFieldInfo {
 public:
  nrRefInfo(const char* fieldName, short fieldIndex, nrType* fieldKind, nrType* referencedType)
      : nrFieldInfo(fieldName, fieldIndex, fieldKind), requiredType(referencedType) {}

  nrType* getRequiredType() const { return requiredType; }
  // True when value may be stored; otherwise prints the "Bad type" line for
  // operation, or warns when value is owner or holds it.
  bool checkType(const char* operation, nrContainer* value, nrContainer* owner) const;

 protected:
  // The clone of child, made on first sight; child itself when it cannot be cloned.
  static nrContainer* cloneOf(nrContainer* child, nrCloneTable* table);

 private:
  nrType* requiredType;
};

class nrSFRef : public nrField {
  NR_DECLARE_TYPE(nrSFRef)
  nrType* getType() const override { return getClassType(); }

  nrContainer* get() const {
    validate();
    return *value;
  }
  // Refused, with a message, for a container not of the required type.
  void set(nrContainer* v);
  nrContainer** getStorage() const { return value; }

  void copy(nrField* from) override;
  void write(nrOutput* out) override;

  static void addTypeField(nrType* type, const char* name, short index, nrType* requiredType,
                           nrContainer* nrContainer::*storage);
  template <typename C>
  static void addTypeField(nrType* type, const char* name, short index, nrType* requiredType,
                           nrContainer* C::*storage) {
    addTypeField(type, name, index, requiredType, static_cast<nrContainer* nrContainer::*>(storage));
  }

 protected:
  friend class nrSFRefInfo;
  nrSFRef(nrContainer* owner, short index);
  ~nrSFRef() override;

 private:
  nrContainer** value;
};

class nrSFRefInfo : public nrRefInfo {
 public:
  nrSFRefInfo(const char* fieldName, short fieldIndex, nrType* referencedType, nrContainer* nrContainer::*member)
      : nrRefInfo(fieldName, fieldIndex, nrSFRef::getClassType(), referencedType), storage(member) {}

  using nrFieldInfo::write;
  nrField* instantiate(nrContainer* owner) override { return new nrSFRef(owner, getIndex()); }
  void reset(nrContainer* owner) override { *valueIn(owner) = nullptr; }
  bool isDefault(nrContainer* owner) override { return *valueIn(owner) == nullptr; }
  // Shares the container and releases what `to` held before, so a dropped
  // child keeps no link to a parent it no longer belongs to.
  void copy(nrContainer* to, nrContainer* from) override;
  void write(nrOutput* out, nrContainer* owner) override;
  void release(nrContainer* owner) override;
  void cloneReferences(nrContainer* owner, nrCloneTable* table) override;
  bool hasStorage() const override { return storage != nullptr; }

  nrContainer* nrContainer::*getStorage() const { return storage; }
  nrContainer** valueIn(nrContainer* owner);

 private:
  nrContainer* nrContainer::*storage;
};
