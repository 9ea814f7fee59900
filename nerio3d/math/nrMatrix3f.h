// Linear-algebra routines on plain 3x3 float arrays, in the row-vector
// convention of nrMatrix4f; the class holds no state.
#pragma once

class nrMatrix3f {
 public:
  // LU decomposition in place (Crout, partial pivoting, implicit row scaling):
  // a receives L below the diagonal (unit diagonal implied) and U on and above
  // it, index the row swaps, sign their parity (+1 or -1). Returns 0 when a is
  // singular to within nrEpsilon.
  static int LUdecompose(float a[3][3], int index[3], float* sign);
  static int LUdecompose(float a[3][3], int index[3], float& sign) { return LUdecompose(a, index, &sign); }
  // Solves l x = y by forward substitution, l being lower triangular (its
  // diagonal included, the elements above it ignored).
  static void solveLXequalY(const float l[3][3], float x[3], const float y[3]);
  // Singular value decomposition a = u * diag(w) * transpose(v): on return a
  // holds diag(w) with |w| descending, u and v are rotations (determinant +1)
  // and a reflection shows as a negative last singular value.
  static void svd(float a[3][3], float u[3][3], float v[3][3]);
  // As svd, but a is replaced by u * transpose(v): the rotation nearest to a.
  static void cleanSvd(float a[3][3], float u[3][3], float v[3][3]);
  // Axis (unit) and angle (0 to 2 pi) of the rotation matrix m; no rotation
  // gives the axis (0, 0, 1) and angle 0.
  static void getAxis(const float m[3][3], float axis[3], float* angle);
  static void getAxis(const float m[3][3], float axis[3], float& angle) { getAxis(m, axis, &angle); }
  // Unit quaternion (x, y, z, w) of the rotation matrix m by Shoemake's method;
  // a scaled m gives a quaternion of the wrong length.
  static void getQuat(const float m[3][3], float q[4]);
};
