// Rotation as a normalised axis and an angle in radians; identity is (0, 0, 1), 0.
#pragma once

#include "nerio3d/math/nrVec3f.h"
#include "nerio3d/math/nrVec4f.h"

class nrOutput;

class nrRotation {
 public:
  nrVec3f axis{0.0f, 0.0f, 1.0f};
  float angle = 0.0f;

  nrRotation() = default;
  nrRotation(float x, float y, float z, float a) : axis(x, y, z), angle(a) {}
  nrRotation(const nrVec3f& axisOfRotation, float a) : axis(axisOfRotation), angle(a) {}

  void set(float x, float y, float z, float a) {
    axis.set(x, y, z);
    angle = a;
  }
  void set(const nrVec3f& axisOfRotation, float a) {
    axis = axisOfRotation;
    angle = a;
  }
  // Components in storage order: axis x, y, z, then the angle.
  float& operator[](int i) { return i < 3 ? axis[i] : angle; }
  const float& operator[](int i) const { return i < 3 ? axis[i] : angle; }
  bool operator==(const nrRotation& r) const { return axis == r.axis && angle == r.angle; }
  bool operator!=(const nrRotation& r) const { return !(*this == r); }

  // this = a followed by b, so that its matrix is makeRot(a) * makeRot(b) in
  // the row-vector convention; a or b may be this.
  void mult(const nrRotation& a, const nrRotation& b);
  // this = the inverse of r (the angle negated).
  void invert(const nrRotation& r);
  // Spherical interpolation from a (t = 0) to b (t = 1) along the shorter arc.
  void slerp(float t, const nrRotation& a, const nrRotation& b);

  // Writes axis and angle as four space-separated numbers.
  void write(nrOutput* out) const;

 private:
  // q = (axis * sin(angle / 2), cos(angle / 2)).
  void makeQuat(nrVec4f& q) const;
  // Back from a unit quaternion; a vector part shorter than nrEpsilon gives the identity.
  void setQuat(const nrVec4f& q);
};
