// Base of the interpolators: maps a fraction to a value by piecewise-linear
// interpolation over ascending keys, clamping outside them. An interpolator
// without keys, or with fewer values than its keys need, sets nothing and
// prints nothing.
#pragma once

#include "nerio3d/events/nrEngine.h"
#include "nerio3d/math/nrVec3f.h"

class nrMFVec3f;

class nrInterpolator : public nrEngine {
  NR_DECLARE_TYPE(nrInterpolator)

  enum FieldEnum { FRACTION_FIELD = 3, KEY_FIELD, KEY_VALUE_FIELD, VALUE_FIELD };

  nrInterpolator() : nrInterpolator(getClassType()) {}
  explicit nrInterpolator(nrType* type);
  ~nrInterpolator() override;

  void setFraction(float f);
  float getFraction() const;
  void setKey(const nrFloatArray& keys);

 protected:
  // The key index i and the parameter t between keys i - 1 and i; t is 1 at or
  // outside the keys and exactly on a key. -1 when there are no keys.
  int getParam(float& t);

  // Sets value (held in member) for the fraction: keyValue[i] when t is 1,
  // else blend(keyValue[i - 1], keyValue[i], t); nothing when there is
  // nothing to interpolate. Without a blend, component-wise linear.
  template <typename Array, typename T, typename Blend>
  void interpolate(const Array& keyValue, T& member, Blend blend) {
    float t;
    int i = getParam(t);
    if (i < 0 || static_cast<unsigned>(i) >= keyValue.getCount()) return;
    setFieldValue(member, t == 1 ? keyValue[i] : blend(keyValue[i - 1], keyValue[i], t), VALUE_FIELD);
  }
  template <typename Array, typename T>
  void interpolate(const Array& keyValue, T& member) {
    interpolate(keyValue, member, [](const T& a, const T& b, float t) { return lerp(a, b, t); });
  }
  // Sets the n vectors of the fraction into value, n = keyValue count / key
  // count; key i owns entries i*n to i*n + n - 1.
  void interpolateVectors(const nrVec3fArray& keyValue, nrMFVec3f* value, bool normalise);

  static float lerp(float a, float b, float t) { return a * (1 - t) + b * t; }
  static nrVec3f lerp(const nrVec3f& a, const nrVec3f& b, float t) {
    return nrVec3f(lerp(a[0], b[0], t), lerp(a[1], b[1], t), lerp(a[2], b[2], t));
  }

  float fraction;
  nrFloatArray key;
};
