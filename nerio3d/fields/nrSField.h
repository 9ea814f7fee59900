// Single-valued field kinds and their descriptors, written once over the value
// type: nrSFFloat holds a float, nrSFVec3f an nrVec3f, and so on.
#pragma once

#include <cstdio>
#include <type_traits>

#include "nerio3d/core/nrBitMask.h"
#include "nerio3d/core/nrName.h"
#include "nerio3d/core/nrString.h"
#include "nerio3d/fields/nrContainer.h"
#include "nerio3d/fields/nrFieldInfo.h"
#include "nerio3d/fields/nrOutput.h"
#include "nerio3d/math/nrBoxBound.h"
#include "nerio3d/math/nrMatrix4f.h"
#include "nerio3d/core/nrTime.h"
#include "nerio3d/math/nrRotation.h"
#include "nerio3d/math/nrSphereBound.h"
#include "nerio3d/math/nrVec2f.h"
#include "nerio3d/math/nrVec3f.h"
#include "nerio3d/math/nrVec3s.h"
#include "nerio3d/math/nrVec4f.h"
#include "nerio3d/math/nrVec4ub.h"

// Text of a value after the field name; composite values write themselves.
void nrFieldValueWrite(nrOutput* out, unsigned char v);
void nrFieldValueWrite(nrOutput* out, short v);
void nrFieldValueWrite(nrOutput* out, int v);
void nrFieldValueWrite(nrOutput* out, unsigned int v);
void nrFieldValueWrite(nrOutput* out, float v);
void nrFieldValueWrite(nrOutput* out, double v);
inline void nrFieldValueWrite(nrOutput* out, const nrTime& v) { nrFieldValueWrite(out, v.getValue()); }
template <typename T>
void nrFieldValueWrite(nrOutput* out, const T& v) {
  v.write(out);
}

// Equality with the default: composite values component by component.
template <typename T>
bool nrFieldValueEqual(const T& a, const T& b) {
  return nrArrayElementEqual(a, b);
}
inline bool nrFieldValueEqual(const nrVec4ub& a, const nrVec4ub& b) {
  return a[0] == b[0] && a[1] == b[1] && a[2] == b[2] && a[3] == b[3];
}
inline bool nrFieldValueEqual(const nrSphereBound& a, const nrSphereBound& b) {
  return nrFieldValueEqual(a.center, b.center) && a.radius == b.radius;
}
inline bool nrFieldValueEqual(const nrBoxBound& a, const nrBoxBound& b) {
  return nrFieldValueEqual(a.min, b.min) && nrFieldValueEqual(a.max, b.max);
}

template <typename Field>
class nrSFInfo;

template <typename Field, typename T>
class nrSFieldOf : public nrField {
 public:
  typedef T Value;
  // Scalars travel by value, composite values by const reference.
  typedef typename std::conditional<std::is_scalar<T>::value, T, const T&>::type Param;
  typedef nrSFInfo<Field> Info;

  T get() const {
    validate();
    return *value;
  }
  void get(T& v) const {
    validate();
    v = *value;
  }
  void set(Param v) {
    *value = v;
    changed();
  }
  T* getStorage() const { return value; }

  // The source is brought up to date first; composite values are copied
  // whole (a string gets its own text) and the change notifies as set does.
  void copy(nrField* from) override {
    if (from && from->getType() == getType()) set(static_cast<Field*>(from)->get());
  }
  void write(nrOutput* out) override {
    if (!out || !out->getStream()) return;
    validate();
    Field::writeValue(out, *value, getFieldInfo());
  }
  // Writes v in the kind's format; false when the format writes nothing.
  static bool writeValue(nrOutput* out, const T& v, const nrFieldInfo*) {
    nrFieldValueWrite(out, v);
    return true;
  }

  // Registers field `name` of `type` at `index`; storage may be a member of
  // any container class (or null: the field object then keeps the value).
  static void addTypeField(nrType* type, const char* name, short index, Param defaultValue,
                           T nrContainer::*storage) {
    type->setFieldInfo(index, new Info(name, index, defaultValue, storage));
  }
  template <typename C>
  static void addTypeField(nrType* type, const char* name, short index, Param defaultValue, T C::*storage) {
    addTypeField(type, name, index, defaultValue, static_cast<T nrContainer::*>(storage));
  }

 protected:
  nrSFieldOf(nrContainer* owner, short fieldIndex);
  ~nrSFieldOf() override {
    if (!getFieldInfo()->hasStorage()) delete value;
  }

 private:
  T* value;
};

// Descriptor of a single-valued field: storage member and default value.
template <typename Field>
class nrSFInfo : public nrFieldInfo {
 public:
  typedef typename Field::Value T;
  typedef typename Field::Param Param;

  nrSFInfo(const char* fieldName, short fieldIndex, Param fieldDefault, T nrContainer::*member)
      : nrFieldInfo(fieldName, fieldIndex, Field::getClassType()), storage(member), defaultValue(fieldDefault) {}

  using nrFieldInfo::write;
  nrField* instantiate(nrContainer* owner) override { return new Field(owner, getIndex()); }
  void reset(nrContainer* owner) override { *valueIn(owner) = defaultValue; }
  bool isDefault(nrContainer* owner) override { return nrFieldValueEqual(*valueIn(owner), defaultValue); }
  void copy(nrContainer* to, nrContainer* from) override { *valueIn(to) = *valueIn(from); }
  void write(nrOutput* out, nrContainer* owner) override {
    if (preWrite(out, owner) == 0 && Field::writeValue(out, *valueIn(owner), this)) fputs("\n", out->getStream());
  }
  bool hasStorage() const override { return storage != nullptr; }

  T getDefault() const { return defaultValue; }
  T nrContainer::*getStorage() const { return storage; }
  T* valueIn(nrContainer* owner) {
    return storage ? &(owner->*storage) : static_cast<Field*>(owner->getField(getIndex()))->getStorage();
  }

 private:
  T nrContainer::*storage;
  T defaultValue;
};

template <typename Field, typename T>
nrSFieldOf<Field, T>::nrSFieldOf(nrContainer* owner, short fieldIndex) : nrField(owner, fieldIndex) {
  Info* info = static_cast<Info*>(getFieldInfo());
  value = info->hasStorage() ? &(owner->*info->getStorage()) : new T(info->getDefault());
}

// Declares single-valued field class Class over value type T, and Class##Info.
#define NR_SFIELD_KIND(Class, T)                                                   \
  class Class : public nrSFieldOf<Class, T> {                                      \
    NR_DECLARE_TYPE(Class)                                                         \
    nrType* getType() const override { return getClassType(); }                    \
                                                                                   \
   protected:                                                                      \
    friend class nrSFInfo<Class>;                                                  \
    Class(nrContainer* owner, short fieldIndex) : nrSFieldOf(owner, fieldIndex) {} \
  };                                                                               \
  typedef nrSFInfo<Class> Class##Info;

NR_SFIELD_KIND(nrSFUByte, unsigned char)
NR_SFIELD_KIND(nrSFShort, short)
NR_SFIELD_KIND(nrSFInt, int)
NR_SFIELD_KIND(nrSFUInt, unsigned int)
NR_SFIELD_KIND(nrSFFloat, float)
NR_SFIELD_KIND(nrSFDouble, double)
// Seconds, written as a double.
NR_SFIELD_KIND(nrSFTime, nrTime)
NR_SFIELD_KIND(nrSFVec2f, nrVec2f)
NR_SFIELD_KIND(nrSFVec3f, nrVec3f)
NR_SFIELD_KIND(nrSFVec3s, nrVec3s)
NR_SFIELD_KIND(nrSFVec4f, nrVec4f)
NR_SFIELD_KIND(nrSFVec4ub, nrVec4ub)
NR_SFIELD_KIND(nrSFBitMask, nrBitMask)
NR_SFIELD_KIND(nrSFName, nrName)
NR_SFIELD_KIND(nrSFMatrix4f, nrMatrix4f)
NR_SFIELD_KIND(nrSFRotation, nrRotation)
NR_SFIELD_KIND(nrSFSphereBound, nrSphereBound)
NR_SFIELD_KIND(nrSFBoxBound, nrBoxBound)
NR_SFIELD_KIND(nrSFString, nrString)

// An int written as its enumeration name (nothing at all when it has none).
class nrSFEnum : public nrSFieldOf<nrSFEnum, int> {
  NR_DECLARE_TYPE(nrSFEnum)
  nrType* getType() const override { return getClassType(); }
  static bool writeValue(nrOutput* out, const int& v, const nrFieldInfo* info);

 protected:
  friend class nrSFInfo<nrSFEnum>;
  nrSFEnum(nrContainer* owner, short fieldIndex) : nrSFieldOf(owner, fieldIndex) {}
};
typedef nrSFInfo<nrSFEnum> nrSFEnumInfo;
