// 4x4 single-precision matrix in the row-vector convention (p' = p * M), so the
// translation lives in row 3 and the matrix loads into OpenGL unchanged.
#pragma once

class nrOutput;

class nrMatrix4f {
 public:
  float mat[4][4];

  nrMatrix4f() = default;
  nrMatrix4f(float a00, float a01, float a02, float a03, float a10, float a11, float a12, float a13,
             float a20, float a21, float a22, float a23, float a30, float a31, float a32, float a33)
      : mat{{a00, a01, a02, a03}, {a10, a11, a12, a13}, {a20, a21, a22, a23}, {a30, a31, a32, a33}} {}

  float* operator[](int row) { return mat[row]; }
  const float* operator[](int row) const { return mat[row]; }

  // Writes the sixteen elements row by row as space-separated numbers.
  void write(nrOutput* out) const;
};
