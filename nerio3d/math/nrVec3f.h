// Three-component float vector: points, directions, colours.
#pragma once

class nrOutput;

class nrVec3f {
 public:
  float vec[3];

  nrVec3f() = default;
  nrVec3f(float x, float y, float z) : vec{x, y, z} {}

  float& operator[](int i) { return vec[i]; }
  const float& operator[](int i) const { return vec[i]; }

  // Writes the components as space-separated numbers.
  void write(nrOutput* out) const;
};
