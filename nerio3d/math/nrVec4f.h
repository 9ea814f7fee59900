// Four-component float vector: homogeneous points, colours with alpha.
#pragma once

class nrOutput;
class nrMatrix4f;

class nrVec4f {
 public:
  // The components by index or by name: vec[0] and x are the same float.
#pragma GCC diagnostic push  // clang too: the named struct is an extension it warns of
#pragma GCC diagnostic ignored "-Wpedantic"
  union {
    float vec[4];
    __extension__ struct {
      float x, y, z, w;
    };
  };
#pragma GCC diagnostic pop

  nrVec4f() = default;
  nrVec4f(float x0, float y0, float z0, float w0) : vec{x0, y0, z0, w0} {}

  float& operator[](int i) { return vec[i]; }
  const float& operator[](int i) const { return vec[i]; }

  void set(float x0, float y0, float z0, float w0) {
    vec[0] = x0;
    vec[1] = y0;
    vec[2] = z0;
    vec[3] = w0;
  }
  float dot(const nrVec4f& v) const {
    return vec[0] * v[0] + vec[1] * v[1] + vec[2] * v[2] + vec[3] * v[3];
  }
  bool operator==(const nrVec4f& v) const {
    return vec[0] == v[0] && vec[1] == v[1] && vec[2] == v[2] && vec[3] == v[3];
  }
  bool operator!=(const nrVec4f& v) const { return !(*this == v); }

  float length() const;
  // Divides by the length and returns the length before; a zero vector stays zero.
  float normalize();
  float distance(const nrVec4f& v) const;
  // True when every component lies in [v - tol, v + tol].
  bool almostEqual(const nrVec4f& v, float tol) const;
  // this = v * M, all four components; v may be this.
  void xform(const nrVec4f& v, const nrMatrix4f& m);

  // Writes the components as space-separated numbers.
  void write(nrOutput* out) const;
};
