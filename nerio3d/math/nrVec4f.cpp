#include "nerio3d/math/nrVec4f.h"

#include <cmath>
#include <cstdio>

#include "nerio3d/fields/nrOutput.h"
#include "nerio3d/math/nrMatrix4f.h"

float nrVec4f::length() const { return std::sqrt(dot(*this)); }

float nrVec4f::normalize() {
  float len = length();
  if (len > 0.0f)
    for (float& c : vec) c /= len;
  return len;
}

float nrVec4f::distance(const nrVec4f& v) const {
  nrVec4f d(vec[0] - v[0], vec[1] - v[1], vec[2] - v[2], vec[3] - v[3]);
  return d.length();
}

bool nrVec4f::almostEqual(const nrVec4f& v, float tol) const {
  for (int i = 0; i < 4; ++i)
    if (vec[i] < v[i] - tol || vec[i] > v[i] + tol) return false;
  return true;
}

void nrVec4f::xform(const nrVec4f& v, const nrMatrix4f& m) {
  float x = v[0], y = v[1], z = v[2], w = v[3];
  for (int j = 0; j < 4; ++j) vec[j] = x * m[0][j] + y * m[1][j] + z * m[2][j] + w * m[3][j];
}

void nrVec4f::write(nrOutput* out) const {
  if (!out || !out->getStream()) return;
  fprintf(out->getStream(), "%g %g %g %g", vec[0], vec[1], vec[2], vec[3]);
}
