// Two-component float vector.
#pragma once

class nrOutput;

class nrVec2f {
 public:
  // The components by index or by name: vec[0] and x are the same float.
#pragma GCC diagnostic push  // clang too: the named struct is an extension it warns of
#pragma GCC diagnostic ignored "-Wpedantic"
  union {
    float vec[2];
    __extension__ struct {
      float x, y;
    };
  };
#pragma GCC diagnostic pop

  nrVec2f() = default;
  nrVec2f(float x0, float y0) : vec{x0, y0} {}

  float& operator[](int i) { return vec[i]; }
  const float& operator[](int i) const { return vec[i]; }

  void set(float x0, float y0) {
    vec[0] = x0;
    vec[1] = y0;
  }
  float dot(const nrVec2f& v) const { return vec[0] * v[0] + vec[1] * v[1]; }
  void add(const nrVec2f& a, const nrVec2f& b) { set(a[0] + b[0], a[1] + b[1]); }
  void sub(const nrVec2f& a, const nrVec2f& b) { set(a[0] - b[0], a[1] - b[1]); }
  void scale(float s, const nrVec2f& v) { set(s * v[0], s * v[1]); }
  bool operator==(const nrVec2f& v) const { return vec[0] == v[0] && vec[1] == v[1]; }
  bool operator!=(const nrVec2f& v) const { return !(*this == v); }

  float length() const;
  // Divides by the length and returns the length before; a zero vector stays zero.
  float normalize();
  float distance(const nrVec2f& v) const;
  // True when every component lies in [v - tol, v + tol].
  bool almostEqual(const nrVec2f& v, float tol) const;

  // Writes the components as space-separated numbers.
  void write(nrOutput* out) const;
};
