// Two-component float vector.
#pragma once

class nrOutput;

class nrVec2f {
 public:
  float vec[2];

  nrVec2f() = default;
  nrVec2f(float x, float y) : vec{x, y} {}

  float& operator[](int i) { return vec[i]; }
  const float& operator[](int i) const { return vec[i]; }

  // Writes the components as space-separated numbers.
  void write(nrOutput* out) const;
};
