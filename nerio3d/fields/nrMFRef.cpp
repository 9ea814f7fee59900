#include "nerio3d/fields/nrMFRef.h"

#include <algorithm>
#include <cstdio>

#include "nerio3d/fields/nrOutput.h"

NR_DEFINE_TYPE(nrMFRef, nrMField, "nrMFRef") {}

nrMFRef::nrMFRef(nrContainer* owner, short index) : nrMField(owner, index) {
  nrMFRefInfo* info = static_cast<nrMFRefInfo*>(getFieldInfo());
  value = info->hasStorage() ? &(owner->*info->getStorage()) : new nrRefArray;
}

nrMFRef::~nrMFRef() {
  if (getFieldInfo()->hasStorage()) return;
  for (unsigned i = 0; i < value->getCount(); ++i) getContainer()->unrefer((*value)[i]);
  delete value;
}

bool nrMFRef::check(const char* operation, nrContainer* v) {
  return static_cast<nrRefInfo*>(getFieldInfo())->checkType(operation, v, getContainer());
}

void nrMFRef::set(unsigned i, nrContainer* v) {
  if (!check("nrMFRef::set(int, nrContainer*)", v)) return;
  if (i < value->getCount()) {
    getContainer()->refer((*value)[i], v);
  } else {
    if (!makeRoom(i, i + 1)) return;
    getContainer()->refer(v);
  }
  value->set(i, v);
  forwardOrNotify<nrMFRef>([&](nrMFRef* f) { f->set(i, v); });
}

void nrMFRef::set(const nrRefArray& a) {
  for (unsigned i = 0; i < a.getCount(); ++i)
    if (!check("nrMFRef::set(const nrRefArray&) Bad type\n", a[i])) return;
  nrContainer* owner = getContainer();
  // a may be the list of an element that only this list holds: the new
  // elements are taken and stored before any old one is released.
  unsigned had = value->getCount();
  nrRefArray old(had ? had : 1);
  old.setRange(0, had, value->getArray());
  for (unsigned i = 0; i < a.getCount(); ++i) owner->refer(a[i]);
  value->set(a);
  for (unsigned i = 0; i < had; ++i) owner->unrefer(old[i]);
  forwardOrNotify<nrMFRef>([&](nrMFRef* f) { f->set(*value); });
}

void nrMFRef::setRange(unsigned start, unsigned n, nrContainer* const* values) {
  if (n && !values) return;
  // Values taken from this list would move when it grows.
  if (n && value->holds(values)) {
    nrRefArray kept(n);
    kept.setRange(0, n, values);
    setRange(start, n, kept.getArray());
    return;
  }
  for (unsigned k = 0; k < n; ++k)
    if (!check("nrMFRef::setRange(int, int, nrContainer*[])", values[k])) return;
  if (!makeRoom(start, start + n)) return;
  nrContainer* owner = getContainer();
  // values may lie in the list of an element replaced here that only this
  // list holds: they are taken and stored before any replaced one is released.
  unsigned had = value->getCount(), replaced = start < had ? std::min(n, had - start) : 0;
  nrRefArray old(replaced ? replaced : 1);
  old.setRange(0, replaced, value->getArray() + start);
  for (unsigned k = 0; k < n; ++k) owner->refer(values[k]);
  value->setRange(start, n, values);
  for (unsigned k = 0; k < replaced; ++k) owner->unrefer(old[k]);
  forwardOrNotify<nrMFRef>([&](nrMFRef* f) { f->setRange(start, n, value->getArray() + start); });
}

void nrMFRef::fillRange(unsigned start, unsigned n, nrContainer* v) {
  if (!check("nrMFRef::fillRange(int, int, nrContainer*)\n", v)) return;
  if (!makeRoom(start, start + n)) return;
  nrContainer* owner = getContainer();
  for (unsigned k = 0; k < n; ++k) {
    if (start + k < value->getCount())
      owner->refer((*value)[start + k], v);
    else
      owner->refer(v);
  }
  value->fillRange(start, n, v);
  forwardOrNotify<nrMFRef>([&](nrMFRef* f) { f->fillRange(start, n, v); });
}

void nrMFRef::append(nrContainer* v) {
  if (!check("nrMFRef::append(int, nrContainer*)", v)) return;
  getContainer()->refer(v);
  value->append(v);
  forwardOrNotify<nrMFRef>([&](nrMFRef* f) { f->append(v); });
}

// Inserting past the count would leave the element outside the list and a
// stale slot inside it, so it is refused, as containers refuse it.
void nrMFRef::insert(unsigned i, nrContainer* v) {
  if (i > value->getCount() || !check("nrMFRef::insert(int, nrContainer*)", v)) return;
  getContainer()->refer(v);
  value->insert(i, v);
  forwardOrNotify<nrMFRef>([&](nrMFRef* f) { f->insert(i, v); });
}

long nrMFRef::replace(nrContainer* old, nrContainer* v) {
  long i = value->find(old);
  if (i < 0 || !check("nrMFRef::replace(nrContainer*, nrContainer*)", v)) return -1;
  getContainer()->refer(old, v);
  (*value)[static_cast<unsigned>(i)] = v;
  forwardOrNotify<nrMFRef>([&](nrMFRef* f) { f->replace(old, v); });
  return i;
}

bool nrMFRef::remove(nrContainer* v) {
  long i = value->find(v);
  if (i < 0) return false;
  drop(static_cast<unsigned>(i), false);
  forwardOrNotify<nrMFRef>([&](nrMFRef* f) { f->remove(v); });
  return true;
}

bool nrMFRef::fastRemove(nrContainer* v) {
  long i = value->find(v);
  if (i < 0) return false;
  drop(static_cast<unsigned>(i), true);
  forwardOrNotify<nrMFRef>([&](nrMFRef* f) { f->fastRemove(v); });
  return true;
}

void nrMFRef::removeIndex(unsigned i) {
  if (i >= value->getCount()) return;
  drop(i, false);
  forwardOrNotify<nrMFRef>([&](nrMFRef* f) { f->removeIndex(i); });
}

void nrMFRef::fastRemoveIndex(unsigned i) {
  if (i >= value->getCount()) return;
  drop(i, true);
  forwardOrNotify<nrMFRef>([&](nrMFRef* f) { f->fastRemoveIndex(i); });
}

bool nrMFRef::makeRoom(unsigned start, unsigned end) {
  unsigned n = value->getCount();
  if (end < start) return false;
  value->setCount(end > n ? end : n);
  if (value->getCount() < end) return false;
  value->setCount(n);
  if (start > n) value->fillRange(n, start - n, nullptr);
  return true;
}

void nrMFRef::drop(unsigned i, bool fast) {
  nrContainer* old = (*value)[i];
  if (fast)
    value->fastRemoveIndex(i);
  else
    value->removeIndex(i);
  getContainer()->unrefer(old);
}

void nrMFRef::copy(nrField* from) {
  if (from && from->getType() == getType()) set(static_cast<nrMFRef*>(from)->getArray());
}

void nrMFRef::write(nrOutput* out) {
  validate();
  value->write(out);
}

void nrMFRef::addTypeField(nrType* type, const char* name, short index, nrType* requiredType,
                           nrRefArray nrContainer::*storage) {
  type->setFieldInfo(index, new nrMFRefInfo(name, index, requiredType, storage));
}

nrRefArray* nrMFRefInfo::valueIn(nrContainer* owner) {
  return storage ? &(owner->*storage) : static_cast<nrMFRef*>(owner->getField(getIndex()))->getStorage();
}

// What the destination held is released only after the new elements are
// referenced, so that an element of both lists survives the copy.
void nrMFRefInfo::copy(nrContainer* to, nrContainer* from) {
  nrRefArray* src = valueIn(from);
  nrRefArray* dst = valueIn(to);
  if (src == dst) return;
  unsigned n = src->getCount(), had = dst->getCount();
  nrRefArray old(had ? had : 1);
  old.setRange(0, had, dst->getArray());
  for (unsigned i = 0; i < n; ++i) to->refer((*src)[i]);
  // The copy holds exactly the source's elements, without room to spare.
  dst->setSize(n);
  dst->set(*src);
  for (unsigned i = 0; i < had; ++i) to->unrefer(old[i]);
}

void nrMFRefInfo::write(nrOutput* out, nrContainer* owner) {
  if (preWrite(out, owner)) return;
  valueIn(owner)->write(out);
  fputs("\n", out->getStream());
}

void nrMFRefInfo::release(nrContainer* owner) {
  nrRefArray* list = valueIn(owner);
  while (list->getCount()) {
    nrContainer* old = (*list)[list->getCount() - 1];
    list->setCount(list->getCount() - 1);
    owner->unrefer(old);
  }
}

void nrMFRefInfo::cloneReferences(nrContainer* owner, nrCloneTable* table) {
  nrRefArray* list = valueIn(owner);
  for (unsigned i = 0; i < list->getCount(); ++i) {
    nrContainer* child = (*list)[i];
    if (!child) continue;
    nrContainer* clone = cloneOf(child, table);
    owner->refer(child, clone);
    (*list)[i] = clone;
  }
}
