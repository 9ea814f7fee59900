// Four-component float vector: homogeneous points, colours with alpha.
#pragma once

class nrOutput;

class nrVec4f {
 public:
  float vec[4];

  nrVec4f() = default;
  nrVec4f(float x, float y, float z, float w) : vec{x, y, z, w} {}

  float& operator[](int i) { return vec[i]; }
  const float& operator[](int i) const { return vec[i]; }

  // Writes the components as space-separated numbers.
  void write(nrOutput* out) const;
};
