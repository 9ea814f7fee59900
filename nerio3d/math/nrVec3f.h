// Three-component float vector: points, directions, colours.
#pragma once

#include "nerio3d/math/nrTolerance.h"

class nrOutput;
class nrMatrix4f;

class nrVec3f {
 public:
  // The components by index or by name: vec[0] and x are the same float.
#pragma GCC diagnostic push  // clang too: the named struct is an extension it warns of
#pragma GCC diagnostic ignored "-Wpedantic"
  union {
    float vec[3];
    __extension__ struct {
      float x, y, z;
    };
  };
#pragma GCC diagnostic pop

  nrVec3f() = default;
  nrVec3f(float x0, float y0, float z0) : vec{x0, y0, z0} {}

  float& operator[](int i) { return vec[i]; }
  const float& operator[](int i) const { return vec[i]; }

  void set(float x0, float y0, float z0) {
    vec[0] = x0;
    vec[1] = y0;
    vec[2] = z0;
  }
  float dot(const nrVec3f& v) const { return vec[0] * v[0] + vec[1] * v[1] + vec[2] * v[2]; }
  void add(const nrVec3f& a, const nrVec3f& b) { set(a[0] + b[0], a[1] + b[1], a[2] + b[2]); }
  void sub(const nrVec3f& a, const nrVec3f& b) { set(a[0] - b[0], a[1] - b[1], a[2] - b[2]); }
  void negate(const nrVec3f& v) { set(-v[0], -v[1], -v[2]); }
  // this = a + s * b
  void addScaled(const nrVec3f& a, float s, const nrVec3f& b) {
    set(a[0] + s * b[0], a[1] + s * b[1], a[2] + s * b[2]);
  }
  void scale(float s, const nrVec3f& v) { set(s * v[0], s * v[1], s * v[2]); }
  bool operator==(const nrVec3f& v) const {
    return vec[0] == v[0] && vec[1] == v[1] && vec[2] == v[2];
  }
  bool operator!=(const nrVec3f& v) const { return !(*this == v); }

  float length() const;
  // Divides by the length and returns the length before; a zero vector stays zero.
  float normalize();
  float distance(const nrVec3f& v) const;
  // True when every component lies in [v - tol, v + tol].
  bool almostEqual(const nrVec3f& v, float tol) const;
  // this = a x b (right-handed); a or b may be this.
  void cross(const nrVec3f& a, const nrVec3f& b);

  // this = p * M with rows 0-2 and the translation row; w is not computed.
  void xformPt(const nrVec3f& p, const nrMatrix4f& m);
  // this = v * M with rows 0-2 only: a direction.
  void xformVec(const nrVec3f& v, const nrMatrix4f& m);
  // Full homogeneous transform, divided by w unless w is within nrEpsilon of 1;
  // a w smaller than nrEta in magnitude is replaced by nrEta.
  void fullXformPt(const nrVec3f& p, const nrMatrix4f& m);

  // Writes the components as space-separated numbers.
  void write(nrOutput* out) const;
};
