// 4x4 single-precision matrix in the row-vector convention (p' = p * M), so the
// translation lives in row 3 and the matrix loads into OpenGL unchanged.
#pragma once

#include "nerio3d/math/nrTolerance.h"

class nrOutput;
class nrRotation;
class nrVec3f;

class nrMatrix4f {
 public:
  float mat[4][4];

  nrMatrix4f() = default;
  nrMatrix4f(float a00, float a01, float a02, float a03, float a10, float a11, float a12, float a13,
             float a20, float a21, float a22, float a23, float a30, float a31, float a32, float a33)
      : mat{{a00, a01, a02, a03}, {a10, a11, a12, a13}, {a20, a21, a22, a23}, {a30, a31, a32, a33}} {}

  float* operator[](int row) { return mat[row]; }
  const float* operator[](int row) const { return mat[row]; }

  bool operator==(const nrMatrix4f& m) const;
  bool operator!=(const nrMatrix4f& m) const { return !(*this == m); }

  void makeIdent();
  // Identity with row 3 = (x, y, z, 1).
  void makeTrans(float x, float y, float z);
  // Diagonal (x, y, z, 1).
  void makeScale(float x, float y, float z);
  // Rotation by angle (radians, counter-clockwise seen from the axis tip)
  // about the axis (x, y, z), which need not be normalised.
  void makeRot(float x, float y, float z, float angle);
  // Roll r about y, then pitch p about x, then heading h about z: the usual
  // order for a vehicle whose forward axis is +y and up axis +z.
  void makeEuler(float h, float p, float r);
  // Rotation that turns direction from onto direction to; the identity when
  // either has no length, there being no direction to turn.
  void makeVecRotVec(const nrVec3f& from, const nrVec3f& to);

  // this = a * b for affine matrices (column 3 taken as (0, 0, 0, 1)).
  void mult(const nrMatrix4f& a, const nrMatrix4f& b);
  // this = a * b with all sixteen terms.
  void fullMult(const nrMatrix4f& a, const nrMatrix4f& b);
  // this = this * m
  void postMult(const nrMatrix4f& m);
  // this = m * this
  void preMult(const nrMatrix4f& m);
  // this = T * m and this = m * T, T translating by (x, y, z).
  void preTrans(float x, float y, float z, const nrMatrix4f& m);
  void postTrans(const nrMatrix4f& m, float x, float y, float z);
  // this = R * m and this = m * R, R as built by makeRot.
  void preRot(float x, float y, float z, float angle, const nrMatrix4f& m);
  void postRot(const nrMatrix4f& m, float x, float y, float z, float angle);
  // this = S * m and this = m * S, S scaling by (x, y, z).
  void preScale(float x, float y, float z, const nrMatrix4f& m);
  void postScale(const nrMatrix4f& m, float x, float y, float z);
  // this = transpose of m; m may be this.
  void transpose(const nrMatrix4f& m);

  // General inverse by LU decomposition; returns 1, or 0 leaving the identity
  // when m is singular.
  int invertFull(const nrMatrix4f& m);
  // Inverse of an affine matrix; a singular 3x3 part is reported and inverted
  // with a determinant of 1.
  void invertAffine(const nrMatrix4f& m);
  // Inverse of a rotation with uniform scale plus translation.
  void invertOrtho(const nrMatrix4f& m);
  // Inverse of a pure rotation plus translation.
  void invertOrthoNorm(const nrMatrix4f& m);

  // True when all sixteen elements are within tol of those of m.
  bool almostEqual(const nrMatrix4f& m, float tol) const;
  // The rotation of an orthonormal matrix.
  void getOrthoRotation(nrRotation& rot) const;
  void getOrthoRotation(nrRotation* rot) const { getOrthoRotation(*rot); }

  // Writes the sixteen elements row by row as space-separated numbers.
  void write(nrOutput* out) const;
};
