#include "nerio3d/fields/nrContainer.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <unordered_set>
#include <vector>

#include "nerio3d/arrays/nrData.h"
#include "nerio3d/core/nrDict.h"
#include "nerio3d/core/nrGlobal.h"
#include "nerio3d/core/nrKeepAlive.h"
#include "nerio3d/fields/nrCloneTable.h"
#include "nerio3d/fields/nrFieldInfo.h"
#include "nerio3d/fields/nrMFRef.h"
#include "nerio3d/fields/nrMField.h"
#include "nerio3d/fields/nrOutput.h"
#include "nerio3d/fields/nrSFRef.h"
#include "nerio3d/fields/nrSField.h"

NR_DEFINE_TYPE(nrContainer, nrObject, "Container") {}

// Side-effect bits and validation use a true 64-bit shift; fields past 63 have none.
static uint64_t bit64(int index) { return index >= 0 && index < 64 ? uint64_t(1) << index : 0; }

// Routed fields a pull is passing through on this thread.
static thread_local int pullDepth = 0;

nrContainer::nrContainer(nrType* t) : nrObject(t), fields(nullptr), userData(nullptr), name(nullptr) {
  parent.single = nullptr;
  flags &= ~3u;
}

nrContainer::~nrContainer() {
  free(name);
  if (userData) userData->unref();
  if (fields) {
    for (unsigned i = 0; i < fields->getCount(); ++i) delete (*fields)[i];
    delete fields;
  }
  if (flags & PARENT_ARRAY_FLAG) delete parent.array;
}

int nrContainer::getNumFields() const { return type->getNumFields(); }

void nrContainer::addField(nrField* field) {
  if (!fields) fields = new nrFieldArray(static_cast<unsigned>(getNumFields()));
  fields->set(static_cast<unsigned>(field->getIndex()), field);
}

nrField* nrContainer::getField(int index) {
  // Existing field objects are found first: routes and reads look them up often.
  if (fields && index >= 0 && static_cast<unsigned>(index) < fields->getCount() && (*fields)[index])
    return (*fields)[index];
  if (index < 0 || index >= getNumFields()) return nullptr;
  if (!fields) fields = new nrFieldArray(static_cast<unsigned>(getNumFields()));
  nrFieldInfo* info = type->getFieldInfo(index);
  return info ? info->instantiate(this) : nullptr;
}

static int findField(nrType* type, const char* name) {
  for (int i = 0; i < type->getNumFields(); ++i) {
    nrFieldInfo* info = type->getFieldInfo(i);
    if (info && info->match(name)) return i;
  }
  return -1;
}

nrField* nrContainer::getField(const char* fieldName) {
  if (!fieldName) return nullptr;
  int index = findField(type, fieldName);
  if (index < 0) {
    // "set_" found anywhere drops the first four characters, whatever they are.
    if (strstr(fieldName, "set_")) {
      index = findField(type, fieldName + 4);
    } else if (const char* suffix = strstr(fieldName, "_changed")) {
      char* cut = strndup(fieldName, static_cast<size_t>(suffix - fieldName));
      index = findField(type, cut);
      free(cut);
    }
  }
  return index < 0 ? nullptr : getField(index);
}

int nrContainer::getParentCount() const {
  if (flags & PARENT_ARRAY_FLAG) return static_cast<int>(parent.array->getCount());
  return parent.single ? 1 : 0;
}

nrContainer* nrContainer::getParent(int i) const {
  if (flags & PARENT_ARRAY_FLAG) {
    if (i < 0 || static_cast<unsigned>(i) >= parent.array->getCount()) return nullptr;
    return static_cast<nrContainer*>((*parent.array)[static_cast<unsigned>(i)]);
  }
  return i == 0 ? parent.single : nullptr;
}

// Only a container with reference fields can hold another, so most values
// are settled without walking the parents. The containers seen are kept in a
// hash set: a linear search would make building a deep chain top-down cost
// the cube of its depth.
bool nrContainer::liesUnder(const nrContainer* value) const {
  if (!value) return false;
  if (value == this) return true;
  if (getParentCount() == 0) return false;
  nrType* type = value->getType();
  bool holdsOthers = false;
  for (int i = 0; i < type->getNumFields() && !holdsOthers; ++i)
    holdsOthers = dynamic_cast<nrRefInfo*>(type->getFieldInfo(i)) != nullptr;
  if (!holdsOthers) return false;
  std::vector<const nrContainer*> pending{this};
  std::unordered_set<const nrContainer*> seen;
  while (!pending.empty()) {
    const nrContainer* c = pending.back();
    pending.pop_back();
    if (c == value) return true;
    if (!seen.insert(c).second) continue;
    for (int i = 0; i < c->getParentCount(); ++i) pending.push_back(c->getParent(i));
  }
  return false;
}

void nrContainer::addParent(nrContainer* p) {
  if (flags & PARENT_ARRAY_FLAG) {
    parent.array->append(p);
  } else if (parent.single) {
    nrPtrArray* array = new nrPtrArray(2);
    array->append(parent.single);
    array->append(p);
    parent.array = array;
    flags |= PARENT_ARRAY_FLAG;
  } else {
    parent.single = p;
  }
}

int nrContainer::removeParent(nrContainer* p) {
  if (!(flags & PARENT_ARRAY_FLAG)) {
    if (parent.single != p) return -1;
    parent.single = nullptr;
    return 0;
  }
  bool found = parent.array->remove(p);
  if (parent.array->getCount() == 1) {
    nrContainer* last = static_cast<nrContainer*>((*parent.array)[0]);
    delete parent.array;
    parent.single = last;
    flags &= ~PARENT_ARRAY_FLAG;
  }
  return found ? 1 : 0;
}

void nrContainer::refer(nrContainer* old, nrContainer* value) {
  refer(value);
  unrefer(old);
}

void nrContainer::refer(nrContainer* value) {
  if (!value) return;
  value->ref();
  value->addParent(this);
}

void nrContainer::unrefer(nrContainer* old) {
  if (!old) return;
  old->removeParent(this);
  old->unref();
}

void nrContainer::refListAppend(nrRefArray& list, nrContainer* value) {
  if (!value) return;
  refer(value);
  list.append(value);
}

void nrContainer::refListInsert(nrRefArray& list, int index, nrContainer* value) {
  if (index < 0 || static_cast<unsigned>(index) > list.getCount()) return;
  refer(value);
  list.insert(static_cast<unsigned>(index), value);
}

void nrContainer::refListSet(nrRefArray& list, int index, nrContainer* value) {
  if (index < 0 || static_cast<unsigned>(index) >= list.getCount()) return;
  unsigned i = static_cast<unsigned>(index);
  refer(list[i], value);
  list[i] = value;
}

void nrContainer::refListSetCount(nrRefArray& list, int n) {
  unsigned count = n > 0 ? static_cast<unsigned>(n) : 0;
  while (list.getCount() > count) {
    nrContainer* last = list[list.getCount() - 1];
    list.setCount(list.getCount() - 1);
    unrefer(last);
  }
  while (list.getCount() < count) list.append(nullptr);
}

void nrContainer::refListRemove(nrRefArray& list, int index) {
  if (index < 0 || static_cast<unsigned>(index) >= list.getCount()) return;
  nrContainer* old = list[static_cast<unsigned>(index)];
  list.removeIndex(static_cast<unsigned>(index));
  unrefer(old);
}

long nrContainer::refListRemove(nrRefArray& list, nrContainer* value) {
  long i = list.find(value);
  if (i >= 0) refListRemove(list, static_cast<int>(i));
  return i;
}

long nrContainer::refListReplace(nrRefArray& list, nrContainer* old, nrContainer* value) {
  long i = list.find(old);
  if (i >= 0) refListSet(list, static_cast<int>(i), value);
  return i;
}

void nrContainer::setUserData(nrData* data) {
  if (data) data->ref();
  if (userData) userData->unref();
  userData = data;
}

void nrContainer::setName(const char* n) {
  char* copy = n && *n ? strdup(n) : nullptr;
  free(name);
  name = copy;
}

void nrContainer::connect(short fromIndex, nrContainer* to, short toIndex) {
  nrField* from = getField(fromIndex);
  nrField* dest = to ? to->getField(toIndex) : nullptr;
  if (from && dest) from->connect(dest);
}

void nrContainer::disconnect(short fromIndex, nrContainer* to, short toIndex) {
  nrField* from = getField(fromIndex);
  nrField* dest = to ? to->getField(toIndex) : nullptr;
  if (from && dest) from->disconnect(dest);
}

void nrContainer::validateField(short index) { validateKnownField(index, nullptr); }

// field, when the caller has it, saves looking it up again.
void nrContainer::validateKnownField(short index, nrField* field) {
  uint64_t bit = bit64(index);
  if (sideEffects.getBits() & bit) {
    cleanSideEffect(index);
    sideEffects = nrBitMask::fromBits(sideEffects.getBits() & ~bit);
  }
  if (staleInputs.getBits() & bit) {
    if (!field) field = getField(index);
    if (field)
      cleanFieldInputs(field);
    else
      staleInputs = nrBitMask::fromBits(staleInputs.getBits() & ~bit);
  }
}

void nrContainer::touchField(short index) {
  nrField* field = fields && index >= 0 && static_cast<unsigned>(index) < fields->getCount() ? (*fields)[index] : nullptr;
  if (!field) return;
  sideEffects = nrBitMask::fromBits(sideEffects.getBits() & ~bit64(index));
  if (field->isDirty()) {
    field->setDirty(false);
    nrField* src = field->source;
    if (src && src->isDirty()) src->container->cleanFieldInputs(src);
  }
  if (!field->isBusy() && field->getNumOutputs()) {
    field->setBusy(true);
    field->dirtyOutputs();
    field->setBusy(false);
  }
}

// Busy marks nest: a pull or push through a field that is already busy (an
// engine evaluated inside a route cycle) leaves the outer mark in place, so
// that the cycle still ends at the field.
void nrContainer::dirtyFieldOutputs(nrField* field) {
  field->setDirty(true);
  const bool wasBusy = field->isBusy();
  field->setBusy(true);
  if (field->getNumOutputs()) field->dirtyOutputs();
  field->setBusy(wasBusy);
}

void nrContainer::cleanFieldInputs(nrField* field) {
  field->setDirty(false);
  // A disconnected source stays recorded and may since have been destroyed:
  // only a source that still feeds the field is read.
  nrField* src = field->source;
  if (!src || !field->inputs || field->inputs->find(src) < 0) return;
  // Each routed field a pull passes through nests one call deeper: past the
  // limit the value stays as it is rather than the stack running out.
  if (pullDepth >= nrField::MAX_ROUTE_DEPTH) {
    nrGlobal::notify(nrGlobal::WARN, nrGlobal::USAGE, "Route chain too deep: value not brought up to date");
    return;
  }
  // Bringing the source up to date may release its owner (an engine's
  // evaluation, a destination's fieldChanged): a referenced owner is held
  // until its value is copied.
  const nrKeepAlive hold(src->container);
  const bool wasBusy = field->isBusy();
  field->setBusy(true);
  ++pullDepth;
  field->copy(src);
  --pullDepth;
  field->setBusy(wasBusy);
}

void nrContainer::notifyParents(short index) {
  if (flags & PARENT_ARRAY_FLAG) {
    for (unsigned i = 0; i < parent.array->getCount(); ++i)
      static_cast<nrContainer*>((*parent.array)[i])->childChanged(this, index);
  } else if (parent.single) {
    parent.single->childChanged(this, index);
  }
}

void nrContainer::propagateSideEffect(short index) {
  uint64_t bit = bit64(index);
  if (sideEffects.getBits() & bit) return;
  sideEffects = nrBitMask::fromBits(sideEffects.getBits() | bit);
  notifyParents(index);
  if (nrField::isDirtyFieldTrackingEnabled()) {
    nrField* field = getField(index);
    if (field) nrField::pushDirty(field);
  }
}

void nrContainer::internalCleanFields(nrBitMask mask) {
  uint64_t bits = mask.getBits();
  while (bits) {
    for (int i = 0; i < 64; ++i)
      if (bits & (uint64_t(1) << i)) validateField(static_cast<short>(i));
    bits = (sideEffects | staleInputs).getBits();
  }
}

void nrContainer::initFieldDefaults(nrType* t) {
  for (int i = t->getNumInheritedFields(); i < t->getNumFields(); ++i)
    if (nrFieldInfo* info = t->getFieldInfo(i)) info->reset(this);
}

void nrContainer::destroyFieldContents(nrType* t) {
  for (int i = t->getNumInheritedFields(); i < t->getNumFields(); ++i)
    if (nrFieldInfo* info = t->getFieldInfo(i)) info->release(this);
}

void nrContainer::freeUnconnectedFields() {
  nrType* engine = nrType::getType("Engine");
  if (!fields || (engine && isOfType(engine))) return;
  nrField::cleanFields();
  bool kept = false;
  for (unsigned i = 0; i < fields->getCount(); ++i) {
    nrField* field = (*fields)[i];
    if (!field) continue;
    if (field->isOfType(nrMField::getClassType()) || field->getNumInputs() || field->getNumOutputs() ||
        !field->getFieldInfo()->hasStorage()) {
      kept = true;
      continue;
    }
    delete field;
    fields->set(i, nullptr);
  }
  if (!kept) {
    delete fields;
    fields = nullptr;
  }
}

void nrContainer::copy(nrContainer* from) {
  // The copy releases what this container held, which may be from itself:
  // a referenced from is held until the copy is done.
  const nrKeepAlive hold(from);
  nrCloneTable table;
  copy(from, &table);
}

nrContainer* nrContainer::clone(CloneEnum mode) {
  nrCloneTable table;
  return clone(mode, &table);
}

nrContainer* nrContainer::clone(CloneEnum mode, nrCloneTable* table) {
  // Without a table of its own, a deep clone keeps one for this call.
  if (!table && mode != SHALLOW_CLONE && mode != COPY_CLONE) return clone(mode);
  nrContainer* c = instantiate();
  if (!c) return nullptr;
  if (mode == SHALLOW_CLONE || mode == COPY_CLONE)
    c->copy(this);
  else
    c->recursiveCopy(this, table);
  // Work the new instance's constructor left pending (a bound to compute) was
  // never reported to the parents it has since been given, which took copied,
  // current values: done now, the clone reports its next change like any other.
  for (short i = 0; i < 64; ++i)
    if (c->sideEffects.isBitSet(i)) c->validateField(i);
  return c;
}

// Whether a container that from refers to through its first n fields is this
// one or holds it: taken over, it would close a cycle that writing, cloning
// and the traversals follow forever. Each such field warns as when set.
bool nrContainer::copyClosesCycle(nrContainer* from, int n) {
  // Without parents nothing lies above this container (a reference makes its
  // holder a parent), and the copy goes ahead at once.
  if (getParentCount() == 0) return false;
  for (int i = 0; i < n; ++i) {
    nrFieldInfo* info = type->getFieldInfo(i);
    if (!info) continue;
    if (info->getFieldType() == nrSFRef::getClassType()) {
      nrSFRefInfo* ref = static_cast<nrSFRefInfo*>(info);
      if (!ref->checkType("nrContainer::copy()", *ref->valueIn(from), this)) return true;
    } else if (info->getFieldType() == nrMFRef::getClassType()) {
      nrMFRefInfo* ref = static_cast<nrMFRefInfo*>(info);
      const nrRefArray& list = *ref->valueIn(from);
      for (unsigned k = 0; k < list.getCount(); ++k)
        if (!ref->checkType("nrContainer::copy()", list[k], this)) return true;
    }
  }
  return false;
}

void nrContainer::copy(nrContainer* from, nrCloneTable* table) {
  // Copying a container into itself would reference everything it holds twice.
  if (!from || from == this) return;
  if (!table) {
    copy(from);
    return;
  }
  from->cleanPendingFields();
  // Fields are taken up to the count of the nearest type both are of: for
  // related types the smaller count, for unrelated ones only what their
  // common ancestor stores, so no descriptor reads storage `from` lacks.
  nrType* common = from->getType();
  while (common && !isOfType(common)) common = common->getParent();
  int n = common ? common->getNumFields() : 0;
  if (copyClosesCycle(from, n)) return;
  if (from->name) setName(from->name);
  setUserData(from->userData);
  // An index a type registered no field at is skipped, here and below.
  for (int i = 0; i < n; ++i) {
    nrFieldInfo* info = type->getFieldInfo(i);
    if (!info) continue;
    info->copy(this, from);
    nrField* field = from->fields && static_cast<unsigned>(i) < from->fields->getCount() ? (*from->fields)[i] : nullptr;
    if (field) field->copyConnections(getField(i), table);
  }
  // The values arrived without a change being signalled: the containers that
  // refer to this one learn of it as of a change of field 0, which holds the
  // bound of nodes and geometry and the values of attribute sets.
  notifyParents(0);
}

void nrContainer::recursiveCopy(nrContainer* from, nrCloneTable* table) {
  if (!from) return;
  if (!table) {
    nrCloneTable own;
    recursiveCopy(from, &own);
    return;
  }
  table->addClonedInstance(from, this);
  copy(from, table);
  for (int i = 0; i < getNumFields(); ++i)
    if (nrFieldInfo* info = type->getFieldInfo(i)) info->cloneReferences(this, table);
}

nrContainer* nrContainer::findByName(const char* wanted) {
  if (!wanted) return nullptr;
  // A shared container is looked at once, and references that loop end.
  nrDict seen(64);
  nrPtrArray pending;
  pending.append(this);
  while (pending.getCount()) {
    nrContainer* c = static_cast<nrContainer*>(pending[pending.getCount() - 1]);
    pending.setCount(pending.getCount() - 1);
    void* unused;
    if (!c || seen.find(reinterpret_cast<uintptr_t>(c), unused)) continue;
    seen.enter(reinterpret_cast<uintptr_t>(c), c);
    if (c->name && !strcmp(c->name, wanted)) return c;
    // Pushed last field first and last element first, so that the first is met first.
    nrType* t = c->getType();
    for (int i = t->getNumFields() - 1; i >= 0; --i) {
      nrFieldInfo* info = t->getFieldInfo(i);
      if (!info) continue;
      if (info->getFieldType() == nrSFRef::getClassType()) {
        pending.append(*static_cast<nrSFRefInfo*>(info)->valueIn(c));
      } else if (info->getFieldType() == nrMFRef::getClassType()) {
        nrRefArray* list = static_cast<nrMFRefInfo*>(info)->valueIn(c);
        for (unsigned k = list->getCount(); k-- > 0;) pending.append((*list)[k]);
      }
    }
  }
  return nullptr;
}

void nrContainer::write(nrOutput* out) { writeAs(out, getType()->getName()); }

void nrContainer::writeAs(nrOutput* out, const char* typeName) {
  if (!typeName) typeName = getType()->getName();
  cleanPendingFields();
  if (writeHeader(out, typeName)) return;
  nrType* t = getType();
  for (int i = 0; i < t->getNumFields(); ++i)
    if (nrFieldInfo* info = t->getFieldInfo(i)) info->write(out, this);
  writeClose(out);
}

// Text in double quotes, a quote inside escaped with a backslash. A quoted
// text cannot end with a backslash (it would escape the closing quote): such
// a text without white space, as files give it, is written bare, a space
// ending it.
static void writeQuoted(FILE* f, const nrString& text) {
  const char* t = text.isNull() ? "" : text.getString();
  size_t n = strlen(t);
  if (n && t[n - 1] == '\\' && t[0] != '"' && !strpbrk(t, " \t\n\v\f\r")) {
    fputs(t, f);
    fputc(' ', f);
    return;
  }
  fputc('"', f);
  for (const char* p = t; *p; ++p) {
    if (*p == '"') fputc('\\', f);
    fputc(*p, f);
  }
  fputc('"', f);
}

void nrContainer::writeFields(nrOutput* out, std::initializer_list<short> indices) {
  cleanPendingFields();
  if (writeHeader(out)) return;
  FILE* f = out->getStream();
  for (short i : indices) {
    nrFieldInfo* info = type->getFieldInfo(i);
    nrType* kind = info->getFieldType();
    bool single = kind == nrSFString::getClassType();
    if ((!single && kind != nrMFString::getClassType()) || info->isDefault(this)) {
      info->write(out, this);
      continue;
    }
    out->indent();
    fprintf(f, "%s ", info->getName().getString());
    if (single) {
      writeQuoted(f, *static_cast<nrSFStringInfo*>(info)->valueIn(this));
    } else {
      const nrStringArray& list = *static_cast<nrMFStringInfo*>(info)->valueIn(this);
      fputs("[", f);
      for (unsigned k = 0; k < list.getCount(); ++k) {
        fputs(k ? ", " : " ", f);
        writeQuoted(f, list[k]);
      }
      fputs(" ]", f);
    }
    fputs("\n", f);
  }
  writeClose(out);
}

void nrContainer::writeClose(nrOutput* out) {
  out->decLevel();
  out->indent();
  fputs("}", out->getStream());
  fflush(out->getStream());
}

// Without a stream to write to nothing is written, as after a USE.
int nrContainer::writeHeader(nrOutput* out, const char* typeName) {
  FILE* f = out ? out->getStream() : nullptr;
  if (!f) return 1;
  int number = -1;
  if (getParentCount() > 1) {
    if (out->alreadyWritten(this, number)) {
      if (name)
        fprintf(f, "USE %s", name);
      else
        fprintf(f, "USE Obj%d", number);
      return 1;
    }
    number = out->addInstance(this);
  }
  fputs("\n", f);
  out->indent();
  if (name)
    fprintf(f, "DEF %s ", name);
  else if (number >= 0)
    fprintf(f, "DEF Obj%d ", number);
  fprintf(f, "%s {\n", typeName);
  out->incLevel();
  return 0;
}
