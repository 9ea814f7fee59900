#include "nerio3d/core/nrType.h"

#include <cstring>

#include "nerio3d/actions/nrActionFunTable.h"
#include "nerio3d/core/nrStringDict.h"
#include "nerio3d/fields/nrFieldInfo.h"

static const unsigned typeDictBuckets = 251;
static nrStringDict* typeDict = nullptr;

nrType::nrType(nrType* p, const char* n)
    : parent(p),
      name(strdup(n ? n : "")),
      fieldInfos(new nrPtrArray(2)),
      numInheritedFields(0),
      reserved(0),
      actionIndex(-1),
      objectIndex(-1) {
  if (parent) parent->subtypes.append(this);

  bool isDispatcher = false;
  for (nrType* t = this; t && !isDispatcher; t = t->parent) isDispatcher = strcmp(t->name, "nrDispatch") == 0;
  nrActionFunTable* table = nrActionFunTable::getTable();
  if (isDispatcher) table->addAction(this);
  table->addObject(this);

  if (parent) {
    int n = parent->getNumFields();
    for (int i = 0; i < n; ++i) fieldInfos->set(i, (*parent->fieldInfos)[i]);
    numInheritedFields = n;
  }

  if (!typeDict) typeDict = new nrStringDict(typeDictBuckets);
  typeDict->enter(name, this);
}

int nrType::getNumTypes() { return typeDict ? static_cast<int>(typeDict->getSize()) : 0; }

nrType* nrType::getType(const char* n) {
  void* value = nullptr;
  if (typeDict && n) typeDict->find(n, value);
  return static_cast<nrType*>(value);
}

nrType* nrType::getType(int i) {
  void* value = nullptr;
  if (typeDict && i >= 0) typeDict->get(static_cast<unsigned>(i), value);
  return static_cast<nrType*>(value);
}

void nrType::setFieldInfo(int index, nrFieldInfo* info) {
  if (index >= 0) fieldInfos->set(static_cast<unsigned>(index), info);
}

void nrType::setEngineIO(int numIn, short* in, int numOut, short* out) {
  engineInputs.setCount(0);
  engineOutputs.setCount(0);
  if (parent) {
    engineInputs.set(parent->engineInputs);
    engineOutputs.set(parent->engineOutputs);
  }
  for (int i = 0; in && i < numIn; ++i) engineInputs.append(in[i]);
  for (int i = 0; out && i < numOut; ++i) engineOutputs.append(out[i]);
}

bool nrType::isDerivedFrom(const nrType* t) const {
  for (const nrType* s = this; s; s = s->parent)
    if (s == t) return true;
  return false;
}

void nrType::defineEnums(short fieldIndex, int count, const char** names, const int* values) {
  nrFieldInfo* info = getFieldInfo(fieldIndex);
  if (!info || !names || !values) return;
  for (int k = 0; k < count; ++k) info->addEnum(values[k], names[k]);
}

const char* nrType::mapEnum(short fieldIndex, int value) {
  nrFieldInfo* info = getFieldInfo(fieldIndex);
  return info ? info->mapEnum(value) : "(nameless)";
}
