#include <cmath>
#include <cstring>
#include <random>

#include "nerio3d/math/nrMatrix3f.h"
#include "nerio3d/math/nrMatrix4f.h"

#include <gtest/gtest.h>

namespace {

const float ident[3][3] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};

void mul(const float a[3][3], const float b[3][3], float r[3][3], bool transposeB = false) {
  for (int i = 0; i < 3; ++i)
    for (int j = 0; j < 3; ++j) {
      double s = 0;
      for (int k = 0; k < 3; ++k) s += double(a[i][k]) * (transposeB ? b[j][k] : b[k][j]);
      r[i][j] = float(s);
    }
}

double det(const float m[3][3]) {
  return double(m[0][0]) * (double(m[1][1]) * m[2][2] - double(m[1][2]) * m[2][1]) -
         double(m[0][1]) * (double(m[1][0]) * m[2][2] - double(m[1][2]) * m[2][0]) +
         double(m[0][2]) * (double(m[1][0]) * m[2][1] - double(m[1][1]) * m[2][0]);
}

void expectNear(const float a[3][3], const float b[3][3], float tol) {
  for (int i = 0; i < 3; ++i)
    for (int j = 0; j < 3; ++j) EXPECT_NEAR(a[i][j], b[i][j], tol) << i << "," << j;
}

void upperLeft(const nrMatrix4f& m, float out[3][3]) {
  for (int i = 0; i < 3; ++i)
    for (int j = 0; j < 3; ++j) out[i][j] = m[i][j];
}

void expectRotation(const float m[3][3]) {
  float mmT[3][3];
  mul(m, m, mmT, true);
  expectNear(mmT, ident, 1e-5f);
  EXPECT_NEAR(det(m), 1.0, 1e-5);
}

// Checks a = u * a_out * transpose(v) after svd, with the outputs' shape.
void checkSvd(const float a[3][3]) {
  float w[3][3], u[3][3], v[3][3], uw[3][3], back[3][3];
  std::memcpy(w, a, sizeof w);
  nrMatrix3f::svd(w, u, v);
  expectRotation(u);
  expectRotation(v);
  EXPECT_GE(std::fabs(w[0][0]), std::fabs(w[1][1]));
  EXPECT_GE(std::fabs(w[1][1]), std::fabs(w[2][2]));
  EXPECT_GE(w[1][1], 0.0f);
  EXPECT_EQ(w[0][1], 0.0f);
  mul(u, w, uw);
  mul(uw, v, back, true);
  expectNear(back, a, 1e-5f);
  // The sign of the determinant lives in the last singular value.
  EXPECT_NEAR(double(w[0][0]) * w[1][1] * w[2][2], det(a), 1e-4);
}

}  // namespace

TEST(nrMatrix3f, LUDecompositionReconstructsThePermutedMatrix) {
  const float a[3][3] = {{0, 2, 1}, {4, 1, -1}, {2, 5, 3}};
  float lu[3][3];
  std::memcpy(lu, a, sizeof lu);
  int index[3];
  float sign = 0;
  ASSERT_EQ(nrMatrix3f::LUdecompose(lu, index, &sign), 1);
  float l[3][3] = {}, u[3][3] = {}, prod[3][3], pa[3][3];
  std::memcpy(pa, a, sizeof pa);
  for (int i = 0; i < 3; ++i)
    for (int j = 0; j < 3; ++j) (j < i ? l : u)[i][j] = lu[i][j];
  for (int i = 0; i < 3; ++i) l[i][i] = 1;
  for (int i = 0; i < 3; ++i)
    for (int j = 0; j < 3; ++j) std::swap(pa[i][j], pa[index[i]][j]);
  mul(l, u, prod);
  expectNear(prod, pa, 1e-5f);
  EXPECT_NEAR(sign * u[0][0] * u[1][1] * u[2][2], det(a), 1e-4);

  float singular[3][3] = {{1, 2, 3}, {0, 0, 0}, {4, 5, 6}};
  EXPECT_EQ(nrMatrix3f::LUdecompose(singular, index, sign), 0);

  const float lower[3][3] = {{2, 9, 9}, {1, 4, 9}, {-1, 3, 0.5f}};
  const float y[3] = {4, 9, 0.5f};
  float x[3];
  nrMatrix3f::solveLXequalY(lower, x, y);
  EXPECT_FLOAT_EQ(x[0], 2.0f);
  EXPECT_FLOAT_EQ(x[1], 1.75f);
  EXPECT_FLOAT_EQ(x[2], (0.5f + 2.0f - 3 * 1.75f) / 0.5f);
}

TEST(nrMatrix3f, SingularValueDecomposition) {
  std::mt19937 gen(3);
  std::uniform_real_distribution<float> d(-3, 3);
  for (int n = 0; n < 25; ++n) {
    float a[3][3];
    for (auto& row : a)
      for (float& e : row) e = d(gen);
    checkSvd(a);
  }
  // Rank 1, zero and a mirror.
  const float special[3][3][3] = {{{1, 2, 3}, {2, 4, 6}, {-1, -2, -3}}, {}, {{-1, 0, 0}, {0, 2, 0}, {0, 0, 3}}};
  for (const auto& a : special) checkSvd(a);

  // cleanSvd keeps the rotation of a rotation with a non-uniform scale.
  nrMatrix4f r, rs;
  r.makeRot(1, 2, 2, 0.8f);
  rs.preScale(3, 1, 0.5f, r);
  float a[3][3], u[3][3], v[3][3], rot[3][3];
  upperLeft(rs, a);
  upperLeft(r, rot);
  nrMatrix3f::cleanSvd(a, u, v);
  expectNear(a, rot, 1e-5f);
}

TEST(nrMatrix3f, AxisAndAngleOfARotation) {
  const float axes[][3] = {{0, 0, 1}, {1, 0, 0}, {0, -1, 0}, {1, 2, 3}, {-2, 1, 0.5f}};
  for (const auto& ax : axes)
    for (float angle : {1e-4f, 0.5f, 2.0f, 3.14159265f, 4.0f}) {
      nrMatrix4f m;
      m.makeRot(ax[0], ax[1], ax[2], angle);
      float m3[3][3], axis[3], got;
      upperLeft(m, m3);
      nrMatrix3f::getAxis(m3, axis, &got);
      nrMatrix4f back;
      back.makeRot(axis[0], axis[1], axis[2], got);
      EXPECT_TRUE(back.almostEqual(m, 2e-5f)) << angle;
      EXPECT_NEAR(std::sqrt(axis[0] * axis[0] + axis[1] * axis[1] + axis[2] * axis[2]), 1.0f, 1e-6f);
    }
  float axis[3], angle = 1;
  nrMatrix3f::getAxis(ident, axis, angle);
  EXPECT_EQ(angle, 0.0f);
  EXPECT_EQ(axis[2], 1.0f);
}
