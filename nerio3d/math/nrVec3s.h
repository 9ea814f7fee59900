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

  void set(short x, short y, short z) {
    vec[0] = x;
    vec[1] = y;
    vec[2] = z;
  }
  bool operator==(const nrVec3s& v) const {
    return vec[0] == v[0] && vec[1] == v[1] && vec[2] == v[2];
  }
  bool operator!=(const nrVec3s& v) const { return !(*this == v); }

  // Writes the components as space-separated numbers.
  void write(nrOutput* out) const;
};
