#include "nerio3d/math/nrVec2f.h"

#include <cmath>
#include <cstdio>

#include "nerio3d/fields/nrOutput.h"

float nrVec2f::length() const { return std::sqrt(dot(*this)); }

float nrVec2f::normalize() {
  float len = length();
  if (len > 0.0f) {
    vec[0] /= len;
    vec[1] /= len;
  }
  return len;
}

float nrVec2f::distance(const nrVec2f& v) const {
  nrVec2f d;
  d.sub(*this, v);
  return d.length();
}

bool nrVec2f::almostEqual(const nrVec2f& v, float tol) const {
  for (int i = 0; i < 2; ++i)
    if (vec[i] < v[i] - tol || vec[i] > v[i] + tol) return false;
  return true;
}

void nrVec2f::write(nrOutput* out) const {
  if (out && out->getStream()) fprintf(out->getStream(), "%g %g", vec[0], vec[1]);
}
