#include "nerio3d/fields/nrSFRef.h"

#include <cstdio>
#include <string>

#include "nerio3d/core/nrGlobal.h"
#include "nerio3d/fields/nrCloneTable.h"
#include "nerio3d/fields/nrOutput.h"

NR_DEFINE_TYPE(nrSFRef, nrField, "nrSFRef") {}

bool nrRefInfo::checkType(const char* operation, nrContainer* value, nrContainer* owner) const {
  if (!value) return true;
  if (value->getType()->isDerivedFrom(requiredType)) {
    if (!owner->liesUnder(value)) return true;
    std::string message = std::string("Field ") + getName().getString() + " of " + owner->getType()->getName() +
                          " cannot hold this " + value->getType()->getName() + " - a container cannot be placed under itself";
    nrGlobal::notify(nrGlobal::WARN, nrGlobal::USAGE, message.c_str());
    return false;
  }
  // A nameless owner prints as the C library renders a null string.
  const char* ownerName = owner->getName();
  fprintf(stderr, "%s: Bad type - %s not derived from %s.  parent %s type %s\n", operation,
          value->getType()->getName(), requiredType->getName(), ownerName ? ownerName : "(null)",
          owner->getType()->getName());
  return false;
}

nrContainer* nrRefInfo::cloneOf(nrContainer* child, nrCloneTable* table) {
  nrContainer* clone = table->getClonedInstance(child);
  if (!clone) clone = child->clone(nrContainer::DEEP_CLONE, table);
  return clone ? clone : child;
}

nrSFRef::nrSFRef(nrContainer* owner, short index) : nrField(owner, index) {
  nrSFRefInfo* info = static_cast<nrSFRefInfo*>(getFieldInfo());
  value = info->hasStorage() ? &(owner->*info->getStorage()) : new nrContainer*(nullptr);
}

nrSFRef::~nrSFRef() {
  if (getFieldInfo()->hasStorage()) return;
  getContainer()->unrefer(*value);
  delete value;
}

void nrSFRef::set(nrContainer* v) {
  if (!static_cast<nrRefInfo*>(getFieldInfo())->checkType("nrSFRef::set()", v, getContainer())) return;
  getContainer()->refer(*value, v);
  *value = v;
  forwardOrNotify<nrSFRef>([&](nrSFRef* f) { f->set(v); });
}

void nrSFRef::copy(nrField* from) {
  if (from && from->getType() == getType()) set(static_cast<nrSFRef*>(from)->get());
}

void nrSFRef::write(nrOutput* out) {
  validate();
  if (*value) (*value)->write(out);
}

void nrSFRef::addTypeField(nrType* type, const char* name, short index, nrType* requiredType,
                           nrContainer* nrContainer::*storage) {
  type->setFieldInfo(index, new nrSFRefInfo(name, index, requiredType, storage));
}

nrContainer** nrSFRefInfo::valueIn(nrContainer* owner) {
  return storage ? &(owner->*storage) : static_cast<nrSFRef*>(owner->getField(getIndex()))->getStorage();
}

void nrSFRefInfo::copy(nrContainer* to, nrContainer* from) {
  nrContainer* v = *valueIn(from);
  nrContainer** slot = valueIn(to);
  nrContainer* old = *slot;
  *slot = v;
  to->refer(old, v);
}

void nrSFRefInfo::write(nrOutput* out, nrContainer* owner) {
  if (preWrite(out, owner)) return;
  (*valueIn(owner))->write(out);
  fputs("\n", out->getStream());
}

void nrSFRefInfo::release(nrContainer* owner) {
  nrContainer** slot = valueIn(owner);
  nrContainer* old = *slot;
  *slot = nullptr;
  owner->unrefer(old);
}

void nrSFRefInfo::cloneReferences(nrContainer* owner, nrCloneTable* table) {
  nrContainer** slot = valueIn(owner);
  if (!*slot) return;
  nrContainer* clone = cloneOf(*slot, table);
  owner->refer(*slot, clone);
  *slot = clone;
}
