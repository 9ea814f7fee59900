// Descriptor of one field of a container type: name and aliases, index, field
// kind, enumeration names, and how to reset, compare, copy and write the value.
#pragma once

#include "nerio3d/arrays/nrTypedArray.h"
#include "nerio3d/core/nrName.h"

class nrCloneTable;
class nrContainer;
class nrField;
class nrOutput;
class nrType;

class nrFieldInfo {
 public:
  nrFieldInfo(const char* name, short index, nrType* fieldType);
  virtual ~nrFieldInfo();
  nrFieldInfo(const nrFieldInfo&) = delete;
  nrFieldInfo& operator=(const nrFieldInfo&) = delete;

  // Creates the field object of this field for owner; it enters the owner's table.
  virtual nrField* instantiate(nrContainer* owner) = 0;
  // Sets owner's value to the default.
  virtual void reset(nrContainer* owner) = 0;
  virtual void write(nrOutput*) {}
  // The line "name value": nothing when owner holds the default.
  virtual void write(nrOutput* out, nrContainer* owner) = 0;
  virtual bool isDefault(nrContainer* owner) = 0;
  virtual void copy(nrContainer* to, nrContainer* from) = 0;
  // Drops what owner's value holds on to (references); called as owner dies.
  virtual void release(nrContainer*) {}
  // Replaces each container owner refers to through this field by its clone,
  // cloning it on first sight so shared containers stay shared.
  virtual void cloneReferences(nrContainer*, nrCloneTable*) {}
  // False when the value lives in the field object rather than in the container.
  virtual bool hasStorage() const = 0;

  const nrName& getName() const { return name; }
  short getIndex() const { return index; }
  nrType* getFieldType() const { return fieldType; }

  void addAlias(const char* alias);
  int getNumAliases() const;
  void addEnum(int value, const char* enumName);
  // The first name given to value; "(nameless)" when there is none.
  const char* mapEnum(int value) const;
  // The first name given to value, or null.
  const char* findEnum(int value) const;
  // The value named enumName; false when no value has that name.
  bool findEnumValue(const char* enumName, int& value) const;

  bool match(const char* text) const;

 protected:
  // Writes the indentation and "name " and returns 0, or returns 1 without
  // writing anything when owner holds the default or out has no stream.
  int preWrite(nrOutput* out, nrContainer* owner);

 private:
  struct EnumEntry {
    char* name;
    int value;
  };

  nrName name;
  short index;
  nrPtrArray* aliases;
  nrType* fieldType;
  nrPtrArray enums;
};
