// Run-time type of a registering class: name, parent, field descriptors, engine
// input/output lists, subtypes and its indices in the action dispatch table.
#pragma once

#include "nerio3d/arrays/nrTypedArray.h"

class nrFieldInfo;

class nrType {
 public:
  nrType(nrType* parent, const char* name);
  nrType(const nrType&) = delete;
  nrType& operator=(const nrType&) = delete;

  // Number of entries in the type dictionary (distinct names).
  static int getNumTypes();
  static nrType* getType(const char* name);
  // The i-th dictionary entry in enumeration order; null when out of range.
  static nrType* getType(int i);

  void setFieldInfo(int index, nrFieldInfo* info);
  void setEngineIO(int numIn, short* in, int numOut, short* out);
  bool isDerivedFrom(const nrType* t) const;
  void defineEnums(short fieldIndex, int count, const char** names, const int* values);
  const char* mapEnum(short fieldIndex, int value);

  nrType* getParent() const { return parent; }
  const char* getName() const { return name; }
  int getNumInheritedFields() const { return numInheritedFields; }
  int getNumFields() const { return static_cast<int>(fieldInfos->getCount()); }
  // Null past the fields.
  nrFieldInfo* getFieldInfo(int i) const {
    if (i < 0 || static_cast<unsigned>(i) >= fieldInfos->getCount()) return nullptr;
    return static_cast<nrFieldInfo*>((*fieldInfos)[static_cast<unsigned>(i)]);
  }
  const nrShortArray& getEngineInputs() const { return engineInputs; }
  const nrShortArray& getEngineOutputs() const { return engineOutputs; }
  int getNumSubtypes() const { return static_cast<int>(subtypes.getCount()); }
  // Null past the subtypes.
  nrType* getSubtype(int i) const {
    return i >= 0 && i < getNumSubtypes() ? static_cast<nrType*>(subtypes[static_cast<unsigned>(i)]) : nullptr;
  }
  int getActionIndex() const { return actionIndex; }
  int getObjectIndex() const { return objectIndex; }
  void setActionIndex(int i) { actionIndex = i; }
  void setObjectIndex(int i) { objectIndex = i; }

 private:
  nrType* parent;
  char* name;
  nrPtrArray* fieldInfos;
  int numInheritedFields;
  int reserved;
  nrShortArray engineInputs;
  nrShortArray engineOutputs;
  nrPtrArray subtypes{1};
  int actionIndex;
  int objectIndex;
};
