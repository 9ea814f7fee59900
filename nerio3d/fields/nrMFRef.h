// Field holding a list of referenced containers, of a required type; the owner
// references each element and is its parent once per occurrence.
#pragma once

#include "nerio3d/fields/nrMField.h"
#include "nerio3d/fields/nrSFRef.h"

class nrMFRef : public nrMField {
  NR_DECLARE_TYPE(nrMFRef)
  nrType* getType() const override { return getClassType(); }

  unsigned getCount() const {
    validate();
    return value->getCount();
  }
  nrContainer* get(unsigned i) const {
    validate();
    return i < value->getCount() ? (*value)[i] : nullptr;
  }
  void get(unsigned i, nrContainer*& v) const { v = get(i); }
  nrContainer* operator[](unsigned i) const { return get(i); }
  void getRange(unsigned start, unsigned n, nrContainer** out) const {
    validate();
    value->getRange(start, n, out);
  }
  const nrRefArray& getArray() const {
    validate();
    return *value;
  }
  long find(nrContainer* v) const {
    validate();
    return value->find(v);
  }
  // The elements, for changing them in place; what is stored there is
  // neither referenced nor released.
  nrContainer** edit() {
    validate();
    return value->getArray();
  }

  // Every element added is referenced, every element dropped released; a
  // container not of the required type is refused with a message.
  void set(unsigned i, nrContainer* v);
  void set(const nrRefArray& a);
  void setRange(unsigned start, unsigned n, nrContainer* const* values);
  void fillRange(unsigned start, unsigned n, nrContainer* v);
  void append(nrContainer* v);
  void insert(unsigned i, nrContainer* v);
  long replace(nrContainer* old, nrContainer* v);
  bool remove(nrContainer* v);
  bool fastRemove(nrContainer* v);
  void removeIndex(unsigned i);
  void fastRemoveIndex(unsigned i);
  void setExtension(unsigned n) { value->setExtension(n); }
  nrRefArray* getStorage() const { return value; }

  void copy(nrField* from) override;
  void write(nrOutput* out) override;

  static void addTypeField(nrType* type, const char* name, short index, nrType* requiredType,
                           nrRefArray nrContainer::*storage);
  template <typename C>
  static void addTypeField(nrType* type, const char* name, short index, nrType* requiredType,
                           nrRefArray C::*storage) {
    addTypeField(type, name, index, requiredType, static_cast<nrRefArray nrContainer::*>(storage));
  }

 protected:
  friend class nrMFRefInfo;
  nrMFRef(nrContainer* owner, short index);
  ~nrMFRef() override;

 private:
  bool check(const char* operation, nrContainer* v);
  // Makes storage for elements start to end - 1 and nulls the slots between
  // the count and start, which may still hold elements removed earlier and
  // never referenced again; false, changing nothing, when there is no storage.
  bool makeRoom(unsigned start, unsigned end);
  // Takes element i out of the list and releases it, without notifying.
  void drop(unsigned i, bool fast);
  nrRefArray* value;
};

class nrMFRefInfo : public nrRefInfo {
 public:
  nrMFRefInfo(const char* fieldName, short fieldIndex, nrType* referencedType, nrRefArray nrContainer::*member)
      : nrRefInfo(fieldName, fieldIndex, nrMFRef::getClassType(), referencedType), storage(member) {}

  using nrFieldInfo::write;
  nrField* instantiate(nrContainer* owner) override { return new nrMFRef(owner, getIndex()); }
  void reset(nrContainer* owner) override { valueIn(owner)->setCount(0); }
  bool isDefault(nrContainer* owner) override { return valueIn(owner)->getCount() == 0; }
  // Shares the elements and releases what `to` held before, so a dropped
  // child keeps no link to a parent it no longer belongs to.
  void copy(nrContainer* to, nrContainer* from) override;
  void write(nrOutput* out, nrContainer* owner) override;
  void release(nrContainer* owner) override;
  void cloneReferences(nrContainer* owner, nrCloneTable* table) override;
  bool hasStorage() const override { return storage != nullptr; }

  nrRefArray nrContainer::*getStorage() const { return storage; }
  nrRefArray* valueIn(nrContainer* owner);

 private:
  nrRefArray nrContainer::*storage;
};
