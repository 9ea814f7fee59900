// Rotation as a normalised axis and an angle in radians; identity is (0, 0, 1), 0.
#pragma once

#include "nerio3d/math/nrVec3f.h"

class nrOutput;

class nrRotation {
 public:
  nrVec3f axis{0.0f, 0.0f, 1.0f};
  float angle = 0.0f;

  nrRotation() = default;
  nrRotation(float x, float y, float z, float a) : axis(x, y, z), angle(a) {}

  // Writes axis and angle as four space-separated numbers.
  void write(nrOutput* out) const;
};
