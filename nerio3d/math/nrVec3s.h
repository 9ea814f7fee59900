// Three-component vector of 16-bit integers (packed normals).
#pragma once

class nrOutput;

class nrVec3s {
 public:
  short vec[3];

  nrVec3s() = default;
  nrVec3s(short x, short y, short z) : vec{x, y, z} {}

  short& operator[](int i) { return vec[i]; }
  const short& operator[](int i) const { return vec[i]; }

  // Writes the components as space-separated numbers.
  void write(nrOutput* out) const;
};
