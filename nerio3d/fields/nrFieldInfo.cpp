#include "nerio3d/fields/nrFieldInfo.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "nerio3d/fields/nrOutput.h"

nrFieldInfo::nrFieldInfo(const char* n, short i, nrType* t)
    : name(n), index(i), aliases(nullptr), fieldType(t), enums(0) {}

nrFieldInfo::~nrFieldInfo() {
  delete aliases;
  for (unsigned i = 0; i < enums.getCount(); ++i) {
    EnumEntry* e = static_cast<EnumEntry*>(enums[i]);
    free(e->name);
    delete e;
  }
}

void nrFieldInfo::addAlias(const char* alias) {
  if (!aliases) aliases = new nrPtrArray(1);
  aliases->append(const_cast<nrNameEntry*>(nrName(alias).getEntry()));
}

int nrFieldInfo::getNumAliases() const { return aliases ? static_cast<int>(aliases->getCount()) : 0; }

void nrFieldInfo::addEnum(int value, const char* enumName) {
  if (enumName) enums.append(new EnumEntry{strdup(enumName), value});
}

const char* nrFieldInfo::findEnum(int value) const {
  for (unsigned i = 0; i < enums.getCount(); ++i) {
    const EnumEntry* e = static_cast<const EnumEntry*>(enums[i]);
    if (e->value == value) return e->name;
  }
  return nullptr;
}

bool nrFieldInfo::findEnumValue(const char* enumName, int& value) const {
  if (!enumName) return false;
  for (unsigned i = 0; i < enums.getCount(); ++i) {
    const EnumEntry* e = static_cast<const EnumEntry*>(enums[i]);
    if (!strcmp(e->name, enumName)) {
      value = e->value;
      return true;
    }
  }
  return false;
}

const char* nrFieldInfo::mapEnum(int value) const {
  const char* n = findEnum(value);
  return n ? n : "(nameless)";
}

bool nrFieldInfo::match(const char* text) const {
  if (!text) return false;
  if (strcmp(text, name.getString()) == 0) return true;
  for (int i = 0; i < getNumAliases(); ++i)
    if (strcmp(text, static_cast<const nrNameEntry*>((*aliases)[i])->string) == 0) return true;
  return false;
}

int nrFieldInfo::preWrite(nrOutput* out, nrContainer* owner) {
  if (!out || !out->getStream() || isDefault(owner)) return 1;
  out->indent();
  fprintf(out->getStream(), "%s ", name.getString());
  return 0;
}
