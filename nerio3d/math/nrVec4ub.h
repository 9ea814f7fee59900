// Four unsigned bytes: a packed colour.
#pragma once

class nrOutput;

class nrVec4ub {
 public:
  unsigned char vec[4];

  nrVec4ub() = default;
  nrVec4ub(unsigned char r, unsigned char g, unsigned char b, unsigned char a) : vec{r, g, b, a} {}

  unsigned char& operator[](int i) { return vec[i]; }
  const unsigned char& operator[](int i) const { return vec[i]; }

  void set(unsigned char r, unsigned char g, unsigned char b, unsigned char a) {
    vec[0] = r;
    vec[1] = g;
    vec[2] = b;
    vec[3] = a;
  }
  bool operator==(const nrVec4ub& v) const {
    return vec[0] == v[0] && vec[1] == v[1] && vec[2] == v[2] && vec[3] == v[3];
  }
  bool operator!=(const nrVec4ub& v) const { return !(*this == v); }

  // Writes the components as space-separated numbers.
  void write(nrOutput* out) const;
};
