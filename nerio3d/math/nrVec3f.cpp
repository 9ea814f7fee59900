#include "nerio3d/math/nrVec3f.h"

#include <cmath>
#include <cstdio>

#include "nerio3d/fields/nrOutput.h"
#include "nerio3d/math/nrMatrix4f.h"
#include "nerio3d/math/nrTolerance.h"

float nrVec3f::length() const { return std::sqrt(dot(*this)); }

float nrVec3f::normalize() {
  float len = length();
  if (len > 0.0f) {
    vec[0] /= len;
    vec[1] /= len;
    vec[2] /= len;
  }
  return len;
}

float nrVec3f::distance(const nrVec3f& v) const {
  nrVec3f d;
  d.sub(*this, v);
  return d.length();
}

bool nrVec3f::almostEqual(const nrVec3f& v, float tol) const {
  for (int i = 0; i < 3; ++i)
    if (vec[i] < v[i] - tol || vec[i] > v[i] + tol) return false;
  return true;
}

void nrVec3f::cross(const nrVec3f& a, const nrVec3f& b) {
  set(a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]);
}

void nrVec3f::xformPt(const nrVec3f& p, const nrMatrix4f& m) {
  float x = p[0], y = p[1], z = p[2];
  for (int j = 0; j < 3; ++j) vec[j] = x * m[0][j] + y * m[1][j] + z * m[2][j] + m[3][j];
}

void nrVec3f::xformVec(const nrVec3f& v, const nrMatrix4f& m) {
  float x = v[0], y = v[1], z = v[2];
  for (int j = 0; j < 3; ++j) vec[j] = x * m[0][j] + y * m[1][j] + z * m[2][j];
}

void nrVec3f::fullXformPt(const nrVec3f& p, const nrMatrix4f& m) {
  float x = p[0], y = p[1], z = p[2];
  float r[4];
  for (int j = 0; j < 4; ++j) r[j] = x * m[0][j] + y * m[1][j] + z * m[2][j] + m[3][j];
  float w = r[3];
  if (std::fabs(w - 1.0f) < nrEpsilon) {
    set(r[0], r[1], r[2]);
    return;
  }
  if (std::fabs(w) < nrEta) w = nrEta;
  set(r[0] / w, r[1] / w, r[2] / w);
}

void nrVec3f::write(nrOutput* out) const {
  if (!out || !out->getStream()) return;
  fprintf(out->getStream(), "%g %g %g", vec[0], vec[1], vec[2]);
}
