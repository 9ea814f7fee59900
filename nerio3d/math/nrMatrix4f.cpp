#include "nerio3d/math/nrMatrix4f.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "nerio3d/core/nrGlobal.h"
#include "nerio3d/fields/nrOutput.h"
#include "nerio3d/math/nrLUDecompose.h"
#include "nerio3d/math/nrMatrix3f.h"
#include "nerio3d/math/nrRotation.h"
#include "nerio3d/math/nrTolerance.h"
#include "nerio3d/math/nrVec3f.h"

namespace {

const nrMatrix4f identity(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1);

float det3(const nrMatrix4f& m) {
  return m[0][0] * (m[1][1] * m[2][2] - m[1][2] * m[2][1]) -
         m[0][1] * (m[1][0] * m[2][2] - m[1][2] * m[2][0]) +
         m[0][2] * (m[1][0] * m[2][1] - m[1][1] * m[2][0]);
}

// Row 3 of r becomes -t * (upper 3x3 of r), t being row 3 of m; column 3 (0, 0, 0, 1).
void finishInverse(nrMatrix4f& r, const nrMatrix4f& m) {
  for (int j = 0; j < 3; ++j)
    r[3][j] = -(m[3][0] * r[0][j] + m[3][1] * r[1][j] + m[3][2] * r[2][j]);
  r[0][3] = r[1][3] = r[2][3] = 0.0f;
  r[3][3] = 1.0f;
}

}  // namespace

bool nrMatrix4f::operator==(const nrMatrix4f& m) const {
  for (int i = 0; i < 4; ++i)
    for (int j = 0; j < 4; ++j)
      if (mat[i][j] != m[i][j]) return false;
  return true;
}

void nrMatrix4f::makeIdent() { *this = identity; }

void nrMatrix4f::makeTrans(float x, float y, float z) {
  *this = identity;
  mat[3][0] = x;
  mat[3][1] = y;
  mat[3][2] = z;
}

void nrMatrix4f::makeScale(float x, float y, float z) {
  *this = identity;
  mat[0][0] = x;
  mat[1][1] = y;
  mat[2][2] = z;
}

void nrMatrix4f::makeRot(float x, float y, float z, float angle) {
  float sq = x * x + y * y + z * z;
  // An axis without a direction turns nothing, as for rotations themselves.
  if (!(sq > 0.0f)) {
    makeIdent();
    return;
  }
  // Axes that are already almost unit length take one Newton step for the
  // reciprocal square root instead of a full one.
  float rlen = (sq > 0.9996f && sq < 1.001f) ? 1.5f - 0.5f * sq : 1.0f / std::sqrt(sq);
  x *= rlen;
  y *= rlen;
  z *= rlen;
  float c = std::cos(angle), s = std::sin(angle), t = 1.0f - c;
  *this = nrMatrix4f(t * x * x + c, t * x * y + s * z, t * x * z - s * y, 0,
                     t * x * y - s * z, t * y * y + c, t * y * z + s * x, 0,
                     t * x * z + s * y, t * y * z - s * x, t * z * z + c, 0,
                     0, 0, 0, 1);
}

void nrMatrix4f::makeEuler(float h, float p, float r) {
  nrMatrix4f rh, rp;
  rh.makeRot(0, 0, 1, h);
  rp.makeRot(1, 0, 0, p);
  makeRot(0, 1, 0, r);
  postMult(rp);
  postMult(rh);
}

void nrMatrix4f::makeVecRotVec(const nrVec3f& from, const nrVec3f& to) {
  nrVec3f f = from, t = to, axis;
  const bool noDirection = f.normalize() == 0.0f || t.normalize() == 0.0f;
  axis.cross(f, t);
  float s = axis.length(), c = f.dot(t);
  if (s > 1e-6f) {
    makeRot(axis[0], axis[1], axis[2], std::atan2(s, c));
    return;
  }
  if (c > 0.0f || noDirection) {
    makeIdent();
    return;
  }
  // Opposite directions: any axis perpendicular to from serves; crossing with
  // the coordinate axis least aligned with from keeps it well conditioned.
  int k = 0;
  if (std::fabs(f[1]) < std::fabs(f[k])) k = 1;
  if (std::fabs(f[2]) < std::fabs(f[k])) k = 2;
  nrVec3f e(0, 0, 0);
  e[k] = 1.0f;
  axis.cross(f, e);
  makeRot(axis[0], axis[1], axis[2], 3.14159265f);
}

void nrMatrix4f::mult(const nrMatrix4f& a, const nrMatrix4f& b) {
  nrMatrix4f r;
  for (int i = 0; i < 4; ++i) {
    for (int j = 0; j < 3; ++j)
      r[i][j] = a[i][0] * b[0][j] + a[i][1] * b[1][j] + a[i][2] * b[2][j] + (i == 3 ? b[3][j] : 0.0f);
    r[i][3] = i == 3 ? 1.0f : 0.0f;
  }
  *this = r;
}

void nrMatrix4f::fullMult(const nrMatrix4f& a, const nrMatrix4f& b) {
  nrMatrix4f r;
  for (int i = 0; i < 4; ++i)
    for (int j = 0; j < 4; ++j)
      r[i][j] = a[i][0] * b[0][j] + a[i][1] * b[1][j] + a[i][2] * b[2][j] + a[i][3] * b[3][j];
  *this = r;
}

void nrMatrix4f::postMult(const nrMatrix4f& m) { fullMult(*this, m); }

void nrMatrix4f::preMult(const nrMatrix4f& m) { fullMult(m, *this); }

void nrMatrix4f::preTrans(float x, float y, float z, const nrMatrix4f& m) {
  *this = m;
  for (int j = 0; j < 4; ++j) mat[3][j] += x * m[0][j] + y * m[1][j] + z * m[2][j];
}

void nrMatrix4f::postTrans(const nrMatrix4f& m, float x, float y, float z) {
  *this = m;
  for (int i = 0; i < 4; ++i) {
    mat[i][0] += m[i][3] * x;
    mat[i][1] += m[i][3] * y;
    mat[i][2] += m[i][3] * z;
  }
}

void nrMatrix4f::preRot(float x, float y, float z, float angle, const nrMatrix4f& m) {
  nrMatrix4f r;
  r.makeRot(x, y, z, angle);
  fullMult(r, m);
}

void nrMatrix4f::postRot(const nrMatrix4f& m, float x, float y, float z, float angle) {
  nrMatrix4f r;
  r.makeRot(x, y, z, angle);
  fullMult(m, r);
}

void nrMatrix4f::preScale(float x, float y, float z, const nrMatrix4f& m) {
  *this = m;
  for (int j = 0; j < 4; ++j) {
    mat[0][j] *= x;
    mat[1][j] *= y;
    mat[2][j] *= z;
  }
}

void nrMatrix4f::postScale(const nrMatrix4f& m, float x, float y, float z) {
  *this = m;
  for (int i = 0; i < 4; ++i) {
    mat[i][0] *= x;
    mat[i][1] *= y;
    mat[i][2] *= z;
  }
}

void nrMatrix4f::transpose(const nrMatrix4f& m) {
  nrMatrix4f r;
  for (int i = 0; i < 4; ++i)
    for (int j = 0; j < 4; ++j) r[i][j] = m[j][i];
  *this = r;
}

int nrMatrix4f::invertFull(const nrMatrix4f& m) {
  nrMatrix4f src = m;
  // The affine fast path still runs (and may report a singular 3x3), but the
  // general path below always provides the result.
  if (src[3][0] == 0.0f && src[3][1] == 0.0f && src[3][2] == 0.0f && src[3][3] == 1.0f)
    invertAffine(src);
  *this = src;
  int index[4];
  float sign;
  if (!nrDetail::luDecompose<4>(mat, index, &sign)) {
    makeIdent();
    return 0;
  }
  nrMatrix4f cols;
  for (int c = 0; c < 4; ++c) {
    float* col = cols[c];
    for (int i = 0; i < 4; ++i) col[i] = i == c ? 1.0f : 0.0f;
    nrDetail::luBackSubstitute<4>(mat, index, col);
  }
  transpose(cols);
  return 1;
}

void nrMatrix4f::invertAffine(const nrMatrix4f& m) {
  float det = det3(m);
  if (std::fabs(det) < nrEta) {
    nrGlobal::notify(nrGlobal::WARN, nrGlobal::USAGE, "No inverse: singular matrix\n");
    det = 1.0f;
  }
  nrMatrix4f r;
  r[0][0] = (m[1][1] * m[2][2] - m[1][2] * m[2][1]) / det;
  r[0][1] = (m[0][2] * m[2][1] - m[0][1] * m[2][2]) / det;
  r[0][2] = (m[0][1] * m[1][2] - m[0][2] * m[1][1]) / det;
  r[1][0] = (m[1][2] * m[2][0] - m[1][0] * m[2][2]) / det;
  r[1][1] = (m[0][0] * m[2][2] - m[0][2] * m[2][0]) / det;
  r[1][2] = (m[0][2] * m[1][0] - m[0][0] * m[1][2]) / det;
  r[2][0] = (m[1][0] * m[2][1] - m[1][1] * m[2][0]) / det;
  r[2][1] = (m[0][1] * m[2][0] - m[0][0] * m[2][1]) / det;
  r[2][2] = (m[0][0] * m[1][1] - m[0][1] * m[1][0]) / det;
  finishInverse(r, m);
  *this = r;
}

void nrMatrix4f::invertOrtho(const nrMatrix4f& m) {
  float det = det3(m);
  if (std::fabs(det) < nrEta) {
    nrGlobal::notify(nrGlobal::WARN, nrGlobal::USAGE, "singular matrix\n");
    // As invertAffine does: carry on with a determinant of 1 to stay finite.
    det = 1.0f;
  }
  float cb = std::cbrt(det);
  float k = 1.0f / (cb * cb);
  nrMatrix4f r;
  for (int i = 0; i < 3; ++i)
    for (int j = 0; j < 3; ++j) r[i][j] = m[j][i] * k;
  finishInverse(r, m);
  *this = r;
}

void nrMatrix4f::invertOrthoNorm(const nrMatrix4f& m) {
  nrMatrix4f r;
  for (int i = 0; i < 3; ++i)
    for (int j = 0; j < 3; ++j) r[i][j] = m[j][i];
  finishInverse(r, m);
  *this = r;
}

bool nrMatrix4f::almostEqual(const nrMatrix4f& m, float tol) const {
  for (int i = 0; i < 4; ++i)
    for (int j = 0; j < 4; ++j)
      if (mat[i][j] < m[i][j] - tol || mat[i][j] > m[i][j] + tol) return false;
  return true;
}

void nrMatrix4f::getOrthoRotation(nrRotation& rot) const {
  float m3[3][3];
  for (int i = 0; i < 3; ++i)
    for (int j = 0; j < 3; ++j) m3[i][j] = mat[i][j];
  float trace = m3[0][0] + m3[1][1] + m3[2][2];
  if (trace > 0.0f && std::sqrt(trace + 1.0f) > 2.0f)
    fputs("Warning: Magnitude of the matrix trace is > 3\n", stderr);
  float q[4];
  nrMatrix3f::getQuat(m3, q);
  if (q[3] > 1.0f) fputs("Matrix is scaled - cannot calculate rotation\n", stderr);
  float len = std::sqrt(q[0] * q[0] + q[1] * q[1] + q[2] * q[2]);
  if (len < nrEpsilon) {
    rot.set(0.0f, 0.0f, 1.0f, 0.0f);
    return;
  }
  rot.set(q[0] / len, q[1] / len, q[2] / len, 2.0f * std::acos(std::clamp(q[3], -1.0f, 1.0f)));
}

void nrMatrix4f::write(nrOutput* out) const {
  FILE* f = out ? out->getStream() : nullptr;
  if (!f) return;
  for (int r = 0; r < 4; ++r)
    for (int c = 0; c < 4; ++c) fprintf(f, c == 0 && r == 0 ? "%g" : " %g", mat[r][c]);
}
