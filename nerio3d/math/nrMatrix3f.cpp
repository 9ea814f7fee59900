#include "nerio3d/math/nrMatrix3f.h"

#include <algorithm>
#include <cmath>

#include "nerio3d/math/nrLUDecompose.h"
#include "nerio3d/math/nrTolerance.h"

namespace {

double det3(const double m[3][3]) {
  return m[0][0] * (m[1][1] * m[2][2] - m[1][2] * m[2][1]) -
         m[0][1] * (m[1][0] * m[2][2] - m[1][2] * m[2][0]) +
         m[0][2] * (m[1][0] * m[2][1] - m[1][1] * m[2][0]);
}

// Column c of m becomes the cross product of columns a and b.
void crossColumns(double m[3][3], int a, int b, int c) {
  m[0][c] = m[1][a] * m[2][b] - m[2][a] * m[1][b];
  m[1][c] = m[2][a] * m[0][b] - m[0][a] * m[2][b];
  m[2][c] = m[0][a] * m[1][b] - m[1][a] * m[0][b];
}

}  // namespace

int nrMatrix3f::LUdecompose(float a[3][3], int index[3], float* sign) {
  return nrDetail::luDecompose<3>(a, index, sign);
}

void nrMatrix3f::solveLXequalY(const float l[3][3], float x[3], const float y[3]) {
  for (int i = 0; i < 3; ++i) {
    double sum = y[i];
    for (int k = 0; k < i; ++k) sum -= double(l[i][k]) * x[k];
    x[i] = float(sum / l[i][i]);
  }
}

// One-sided Jacobi (Hestenes) in double precision: column pairs of a are
// rotated until orthogonal; the column lengths are then the singular values.
// It is accurate for small singular values, where eigen-decomposing aT a is not.
void nrMatrix3f::svd(float a[3][3], float u[3][3], float v[3][3]) {
  double w[3][3], vv[3][3] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
  for (int i = 0; i < 3; ++i)
    for (int j = 0; j < 3; ++j) w[i][j] = a[i][j];
  for (int sweep = 0; sweep < 40; ++sweep) {
    bool rotated = false;
    for (int p = 0; p < 2; ++p)
      for (int q = p + 1; q < 3; ++q) {
        double alpha = 0, beta = 0, gamma = 0;
        for (int i = 0; i < 3; ++i) {
          alpha += w[i][p] * w[i][p];
          beta += w[i][q] * w[i][q];
          gamma += w[i][p] * w[i][q];
        }
        if (gamma == 0.0 || std::fabs(gamma) <= 1e-15 * std::sqrt(alpha * beta)) continue;
        rotated = true;
        double zeta = (beta - alpha) / (2.0 * gamma);
        double t = (zeta >= 0 ? 1.0 : -1.0) / (std::fabs(zeta) + std::sqrt(1.0 + zeta * zeta));
        double c = 1.0 / std::sqrt(1.0 + t * t), s = c * t;
        for (int i = 0; i < 3; ++i) {
          double wp = w[i][p], wq = w[i][q];
          w[i][p] = c * wp - s * wq;
          w[i][q] = s * wp + c * wq;
          double vp = vv[i][p], vq = vv[i][q];
          vv[i][p] = c * vp - s * vq;
          vv[i][q] = s * vp + c * vq;
        }
      }
    if (!rotated) break;
  }
  double sv[3];
  int order[3] = {0, 1, 2};
  for (int j = 0; j < 3; ++j) sv[j] = std::sqrt(w[0][j] * w[0][j] + w[1][j] * w[1][j] + w[2][j] * w[2][j]);
  std::sort(order, order + 3, [&](int x, int y) { return sv[x] > sv[y]; });
  double uu[3][3], vs[3][3], s[3];
  for (int j = 0; j < 3; ++j) {
    int o = order[j];
    s[j] = sv[o];
    for (int i = 0; i < 3; ++i) {
      vs[i][j] = vv[i][o];
      uu[i][j] = s[j] > 0 ? w[i][o] / s[j] : 0.0;
    }
  }
  // Columns of u for zero singular values are free: complete an orthonormal basis.
  double tiny = 1e-12 * std::max(s[0], 1e-300);
  if (s[0] <= tiny) {
    for (int i = 0; i < 3; ++i)
      for (int j = 0; j < 3; ++j) uu[i][j] = i == j;
  } else if (s[1] <= tiny) {
    int k = std::fabs(uu[0][0]) < 0.6 ? 0 : std::fabs(uu[1][0]) < 0.6 ? 1 : 2;
    double e[3] = {0, 0, 0};
    e[k] = 1;
    double d = uu[k][0];
    double n = 0;
    for (int i = 0; i < 3; ++i) {
      uu[i][1] = e[i] - d * uu[i][0];
      n += uu[i][1] * uu[i][1];
    }
    n = std::sqrt(n);
    for (int i = 0; i < 3; ++i) uu[i][1] /= n;
    crossColumns(uu, 0, 1, 2);
  } else if (s[2] <= tiny) {
    crossColumns(uu, 0, 1, 2);
  }
  if (det3(vs) < 0)
    for (int i = 0; i < 3; ++i) {
      vs[i][2] = -vs[i][2];
      uu[i][2] = -uu[i][2];
    }
  if (det3(uu) < 0) {
    for (int i = 0; i < 3; ++i) uu[i][2] = -uu[i][2];
    s[2] = -s[2];
  }
  for (int i = 0; i < 3; ++i)
    for (int j = 0; j < 3; ++j) {
      a[i][j] = i == j ? float(s[i]) : 0.0f;
      u[i][j] = float(uu[i][j]);
      v[i][j] = float(vs[i][j]);
    }
}

void nrMatrix3f::cleanSvd(float a[3][3], float u[3][3], float v[3][3]) {
  svd(a, u, v);
  for (int i = 0; i < 3; ++i)
    for (int j = 0; j < 3; ++j) {
      double sum = 0;
      for (int k = 0; k < 3; ++k) sum += double(u[i][k]) * v[j][k];
      a[i][j] = float(sum);
    }
}

void nrMatrix3f::getQuat(const float m[3][3], float q[4]) {
  float trace = m[0][0] + m[1][1] + m[2][2];
  if (trace > 0.0f) {
    float s = std::sqrt(trace + 1.0f);
    q[3] = 0.5f * s;
    s = 0.5f / s;
    q[0] = (m[1][2] - m[2][1]) * s;
    q[1] = (m[2][0] - m[0][2]) * s;
    q[2] = (m[0][1] - m[1][0]) * s;
    return;
  }
  int i = 0;
  if (m[1][1] > m[0][0]) i = 1;
  if (m[2][2] > m[i][i]) i = 2;
  int j = (i + 1) % 3, k = (j + 1) % 3;
  float s = std::sqrt(std::max(m[i][i] - m[j][j] - m[k][k] + 1.0f, 0.0f));
  q[i] = 0.5f * s;
  s = s > 0.0f ? 0.5f / s : 0.0f;
  q[3] = (m[j][k] - m[k][j]) * s;
  q[j] = (m[i][j] + m[j][i]) * s;
  q[k] = (m[i][k] + m[k][i]) * s;
}

void nrMatrix3f::getAxis(const float m[3][3], float axis[3], float* angle) {
  float q[4];
  getQuat(m, q);
  float len = std::sqrt(q[0] * q[0] + q[1] * q[1] + q[2] * q[2]);
  if (len < nrEpsilon) {
    axis[0] = axis[1] = 0.0f;
    axis[2] = 1.0f;
    *angle = 0.0f;
    return;
  }
  // atan2 of the vector part against w stays accurate for small angles, where
  // acos of w alone loses half the digits.
  *angle = 2.0f * std::atan2(len, q[3]);
  for (int c = 0; c < 3; ++c) axis[c] = q[c] / len;
}
