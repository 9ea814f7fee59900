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

  // Writes the components as space-separated numbers.
  void write(nrOutput* out) const;
};
