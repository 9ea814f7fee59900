// Multi-valued field kinds and their descriptors, written once over the typed
// array: nrMFFloat holds an nrFloatArray, nrMFVec3f an nrVec3fArray, and so on.
#pragma once

#include <cstdio>

#include "nerio3d/arrays/nrTypedArray.h"
#include "nerio3d/fields/nrContainer.h"
#include "nerio3d/fields/nrFieldInfo.h"
#include "nerio3d/fields/nrOutput.h"

// Base of the fields that hold a typed array.
class nrMField : public nrField {
  NR_DECLARE_TYPE(nrMField)
  nrType* getType() const override { return getClassType(); }

 protected:
  nrMField(nrContainer* owner, short fieldIndex) : nrField(owner, fieldIndex) {}
};

template <typename Field>
class nrMFInfo;

template <typename Field, typename A>
class nrMFieldOf : public nrMField {
 public:
  typedef A Array;
  typedef typename A::ElementType T;
  typedef nrMFInfo<Field> Info;

  // Reads bring the value up to date first.
  unsigned getCount() const {
    validate();
    return value->getCount();
  }
  // A read past the end gives the element type's default, not memory past the list.
  const T& operator[](unsigned i) const {
    validate();
    static const T none{};
    return i < value->getCount() ? (*value)[i] : none;
  }
  T get(unsigned i) const { return (*this)[i]; }
  void get(unsigned i, T& v) const { v = (*this)[i]; }
  void getRange(unsigned start, unsigned n, T* out) const {
    validate();
    value->getRange(start, n, out);
  }
  const A& getArray() const {
    validate();
    return *value;
  }
  // The elements, for changing them in place.
  T* edit() {
    validate();
    return value->getArray();
  }

  // Edits of some elements apply to the whole value: one that its owner
  // makes on demand (a list kept in another form) is made first. Outputs are
  // sent the stored elements, not the arguments: an argument taken from this
  // array may point into storage the edit has just replaced. A store the
  // array refused (an index that was negative) sends nothing.
  void set(unsigned i, const T& v) {
    catchUp();
    value->set(i, v);
    forwardOrNotify<Field>([&](Field* f) {
      if (i < value->getCount()) f->set(i, (*value)[i]);
    });
  }
  void set(const A& a) {
    value->set(a);
    forwardOrNotify<Field>([&](Field* f) { f->set(*value); });
  }
  void setRange(unsigned start, unsigned n, const T* values) {
    catchUp();
    value->setRange(start, n, values);
    forwardOrNotify<Field>([&](Field* f) { f->setRange(start, n, value->getArray() + start); });
  }
  void fillRange(unsigned start, unsigned n, const T& v) {
    catchUp();
    value->fillRange(start, n, v);
    forwardOrNotify<Field>([&](Field* f) {
      if (!n || start < value->getCount()) f->fillRange(start, n, n ? (*value)[start] : v);
    });
  }
  void append(const T& v) {
    catchUp();
    value->append(v);
    forwardOrNotify<Field>([&](Field* f) {
      if (value->getCount()) f->append((*value)[value->getCount() - 1]);
    });
  }
  void setCount(unsigned n) {
    catchUp();
    value->setCount(n);
    forwardOrNotify<Field>([&](Field* f) { f->setCount(n); });
  }
  void setExtension(unsigned n) { value->setExtension(n); }
  // The array itself, for filling in place; report with valuesChanged().
  A* getStorage() const { return value; }
  // Reports a change made through getStorage(), once for the whole array.
  void valuesChanged() {
    forwardOrNotify<Field>([&](Field* f) { f->set(*value); });
  }

  void copy(nrField* from) override {
    if (from && from->getType() == getType()) set(static_cast<Field*>(from)->getArray());
  }
  void write(nrOutput* out) override {
    validate();
    value->write(out);
  }

  static void addTypeField(nrType* type, const char* name, short index, A nrContainer::*storage) {
    type->setFieldInfo(index, new Info(name, index, storage));
  }
  template <typename C>
  static void addTypeField(nrType* type, const char* name, short index, A C::*storage) {
    addTypeField(type, name, index, static_cast<A nrContainer::*>(storage));
  }

 protected:
  nrMFieldOf(nrContainer* owner, short fieldIndex);
  ~nrMFieldOf() override {
    if (!getFieldInfo()->hasStorage()) delete value;
  }

 private:
  void catchUp() {
    if (getContainer()->getSideEffectMask().isBitSet(getIndex())) validate();
  }

  A* value;
};

// Descriptor of a multi-valued field; the default is the empty array.
template <typename Field>
class nrMFInfo : public nrFieldInfo {
 public:
  typedef typename Field::Array A;

  nrMFInfo(const char* fieldName, short fieldIndex, A nrContainer::*member)
      : nrFieldInfo(fieldName, fieldIndex, Field::getClassType()), storage(member) {}

  using nrFieldInfo::write;
  nrField* instantiate(nrContainer* owner) override { return new Field(owner, getIndex()); }
  void reset(nrContainer* owner) override { valueIn(owner)->setCount(0); }
  bool isDefault(nrContainer* owner) override { return valueIn(owner)->getCount() == 0; }
  void copy(nrContainer* to, nrContainer* from) override { valueIn(to)->set(*valueIn(from)); }
  void write(nrOutput* out, nrContainer* owner) override {
    if (preWrite(out, owner)) return;
    valueIn(owner)->write(out);
    fputs("\n", out->getStream());
  }
  bool hasStorage() const override { return storage != nullptr; }

  A nrContainer::*getStorage() const { return storage; }
  A* valueIn(nrContainer* owner) {
    return storage ? &(owner->*storage) : static_cast<Field*>(owner->getField(getIndex()))->getStorage();
  }

 private:
  A nrContainer::*storage;
};

template <typename Field, typename A>
nrMFieldOf<Field, A>::nrMFieldOf(nrContainer* owner, short fieldIndex) : nrMField(owner, fieldIndex) {
  Info* info = static_cast<Info*>(getFieldInfo());
  value = info->hasStorage() ? &(owner->*info->getStorage()) : new A;
}

// Declares multi-valued field class Class over array type A, and Class##Info.
#define NR_MFIELD_KIND(Class, A)                                                   \
  class Class : public nrMFieldOf<Class, A> {                                      \
    NR_DECLARE_TYPE(Class)                                                         \
    nrType* getType() const override { return getClassType(); }                    \
                                                                                   \
   protected:                                                                      \
    friend class nrMFInfo<Class>;                                                  \
    Class(nrContainer* owner, short fieldIndex) : nrMFieldOf(owner, fieldIndex) {} \
  };                                                                               \
  typedef nrMFInfo<Class> Class##Info;

NR_MFIELD_KIND(nrMFByte, nrByteArray)
NR_MFIELD_KIND(nrMFInt, nrIntArray)
NR_MFIELD_KIND(nrMFFloat, nrFloatArray)
NR_MFIELD_KIND(nrMFMatrix4f, nrMatrix4fArray)
NR_MFIELD_KIND(nrMFRotation, nrRotationArray)
NR_MFIELD_KIND(nrMFVec2f, nrVec2fArray)
NR_MFIELD_KIND(nrMFVec3f, nrVec3fArray)
NR_MFIELD_KIND(nrMFVec3s, nrVec3sArray)
NR_MFIELD_KIND(nrMFVec4f, nrVec4fArray)
NR_MFIELD_KIND(nrMFString, nrStringArray)
