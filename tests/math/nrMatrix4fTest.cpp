#include <cmath>
#include <random>
#include <utility>

#include "nerio3d/math/nrMatrix4f.h"
#include "nerio3d/math/nrRotation.h"
#include "nerio3d/math/nrVec3f.h"
#include "nrCapture.h"

namespace {

const float pi = 3.14159265f;

const nrMatrix4f identity(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1);

// Reference product in double precision.
nrMatrix4f product(const nrMatrix4f& a, const nrMatrix4f& b) {
  nrMatrix4f r;
  for (int i = 0; i < 4; ++i)
    for (int j = 0; j < 4; ++j) {
      double s = 0;
      for (int k = 0; k < 4; ++k) s += double(a[i][k]) * b[k][j];
      r[i][j] = float(s);
    }
  return r;
}

// Rodrigues' formula for rotating v about the unit axis k, in double.
nrVec3f rodrigues(const nrVec3f& v, double kx, double ky, double kz, double angle) {
  double c = std::cos(angle), s = std::sin(angle), d = kx * v[0] + ky * v[1] + kz * v[2];
  double cx = ky * v[2] - kz * v[1], cy = kz * v[0] - kx * v[2], cz = kx * v[1] - ky * v[0];
  return nrVec3f(float(v[0] * c + cx * s + kx * d * (1 - c)), float(v[1] * c + cy * s + ky * d * (1 - c)),
                 float(v[2] * c + cz * s + kz * d * (1 - c)));
}

nrMatrix4f randomMatrix(std::mt19937& gen) {
  std::uniform_real_distribution<float> u(-2.0f, 2.0f);
  nrMatrix4f m;
  for (auto& row : m.mat)
    for (float& e : row) e = u(gen);
  return m;
}

}  // namespace

TEST(nrMatrix4f, RotationsAgreeWithRodrigues) {
  const float axes[][3] = {{0, 0, 1}, {1, 2, 3}, {-0.3f, 0.9f, 0.1f}};
  for (const auto& a : axes)
    for (float angle : {0.0f, 0.4f, -1.2f, pi, 2.9f}) {
      nrMatrix4f m;
      m.makeRot(a[0], a[1], a[2], angle);
      double len = std::sqrt(double(a[0]) * a[0] + double(a[1]) * a[1] + double(a[2]) * a[2]);
      for (const nrVec3f& v : {nrVec3f(1, 0, 0), nrVec3f(0.2f, -1, 0.5f)}) {
        nrVec3f got, want = rodrigues(v, a[0] / len, a[1] / len, a[2] / len, angle);
        got.xformPt(v, m);
        EXPECT_TRUE(got.almostEqual(want, 1e-5f)) << angle;
      }
    }
}

TEST(nrMatrix4f, MakeRotTakesOneNewtonStepInsideTheBand) {
  // Inside (0.9996, 1.001) the reciprocal length is 1.5 - 0.5 s, which leaves
  // the axis measurably short of unit length near the band's edge.
  float z = std::sqrt(1.0009f);
  float s = z * z;
  nrMatrix4f m;
  m.makeRot(0, 0, z, pi);
  float rlen = 1.5f - 0.5f * s;
  EXPECT_NEAR(m[2][2], 2.0f * s * rlen * rlen - 1.0f, 2e-7f);
  EXPECT_GT(std::fabs(m[2][2] - 1.0f), 8e-7f);
  // Outside the band the exact reciprocal square root is used.
  m.makeRot(0, 0, 3, pi);
  EXPECT_FLOAT_EQ(m[2][2], 1.0f);
  // An axis without a direction turns nothing.
  m.makeRot(0, 0, 0, 1.0f);
  EXPECT_TRUE(m.almostEqual(nrMatrix4f(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1), 0));
}

TEST(nrMatrix4f, EulerAnglesAndVectorToVector) {
  nrMatrix4f e, r;
  nrVec3f v;
  e.makeEuler(0.7f, 0, 0);
  r.makeRot(0, 0, 1, 0.7f);
  EXPECT_TRUE(e.almostEqual(r, 1e-6f));
  // Roll (about y) acts first, heading last: +x goes to -z, which heading leaves.
  e.makeEuler(pi / 2, 0, pi / 2);
  v.xformVec(nrVec3f(1, 0, 0), e);
  EXPECT_TRUE(v.almostEqual(nrVec3f(0, 0, -1), 1e-6f));

  // General, parallel and opposite pairs.
  const nrVec3f pairs[][2] = {{{1, 2, 3}, {-2, 0.5f, 1}}, {{0, 0, 2}, {0, 0, 5}}, {{1, 1, 0}, {-1, -1, 0}},
                              {{0, 0, 1}, {0, 0, -3}}};
  for (const auto& p : pairs) {
    nrMatrix4f m;
    m.makeVecRotVec(p[0], p[1]);
    nrVec3f from = p[0], to = p[1], got;
    from.normalize();
    to.normalize();
    got.xformVec(from, m);
    EXPECT_TRUE(got.almostEqual(to, 1e-5f));
    // Still a rotation: the transpose is the inverse.
    nrMatrix4f t;
    t.transpose(m);
    EXPECT_TRUE(product(m, t).almostEqual(identity, 1e-5f));
  }
  // A direction of no length has nothing to turn.
  const nrVec3f degenerate[][2] = {{{0, 0, 0}, {0, 0, 0}}, {{1, 0, 0}, {0, 0, 0}}, {{0, 0, 0}, {0, 1, 0}}};
  for (const auto& p : degenerate) {
    nrMatrix4f m;
    m.makeVecRotVec(p[0], p[1]);
    EXPECT_TRUE(m == identity);
  }
}

TEST(nrMatrix4f, ProductsAndTheirShortcuts) {
  std::mt19937 gen(7);
  nrMatrix4f a = randomMatrix(gen), b = randomMatrix(gen), r, t, s, rot;
  t.makeTrans(1, -2, 3);
  s.makeScale(2, 3, -1);
  rot.makeRot(1, 1, 0, 0.8f);
  // mult treats column 3 of both as (0, 0, 0, 1), whatever they hold.
  nrMatrix4f aa = a, ba = b;
  for (int i = 0; i < 4; ++i) aa[i][3] = ba[i][3] = i == 3 ? 1.0f : 0.0f;
  nrMatrix4f got[10] = {a, a}, want[10] = {product(a, b), product(b, a),   product(a, b), product(aa, ba),
                                           product(t, a), product(a, t),   product(s, a), product(a, s),
                                           product(rot, a), product(a, rot)};
  got[0].postMult(b);
  got[1].preMult(b);
  got[2].fullMult(a, b);
  got[3].mult(a, b);
  got[4].preTrans(1, -2, 3, a);
  got[5].postTrans(a, 1, -2, 3);
  got[6].preScale(2, 3, -1, a);
  got[7].postScale(a, 2, 3, -1);
  got[8].preRot(1, 1, 0, 0.8f, a);
  got[9].postRot(a, 1, 1, 0, 0.8f);
  for (int i = 0; i < 10; ++i) EXPECT_TRUE(got[i].almostEqual(want[i], 1e-5f)) << i;

  r = a;
  r.transpose(r);
  EXPECT_EQ(r[1][3], a[3][1]);
  EXPECT_EQ(r[3][1], a[1][3]);
  r = a;
  r[2][1] += 0.5f;
  EXPECT_TRUE(r.almostEqual(a, 0.5f));
  EXPECT_FALSE(r.almostEqual(a, 0.49f));
}

TEST(nrMatrix4f, InvertFullAlwaysTakesTheGeneralPath) {
  std::mt19937 gen(11);
  for (int n = 0; n < 20; ++n) {
    nrMatrix4f m = randomMatrix(gen), inv = m;
    ASSERT_EQ(inv.invertFull(inv), 1);
    EXPECT_TRUE(product(m, inv).almostEqual(identity, 1e-3f));
  }
  // Row 3 = (0, 0, 0, 1) sends it through invertAffine first, which is wrong
  // for this projective matrix; the general path's inverse must win.
  nrMatrix4f p(2, 0, 0, 1, 0, 3, 0, 0.5f, 0, 0, 1, 2, 0, 0, 0, 1), inv;
  EXPECT_EQ(nrtest::captureStderr([&] { EXPECT_EQ(inv.invertFull(p), 1); }), "");
  EXPECT_TRUE(product(p, inv).almostEqual(identity, 1e-5f));

  // A zero row: 0 and the identity. With row 3 = (0, 0, 0, 1) the fast path
  // still reports its singular 3x3 first.
  const std::pair<nrMatrix4f, const char*> singular[] = {
      {{0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}, "(WARN, USAGE): No inverse: singular matrix\n\n"},
      {{1, 2, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 0}, ""}};
  for (const auto& z : singular) {
    inv = p;
    EXPECT_EQ(nrtest::captureStderr([&] { EXPECT_EQ(inv.invertFull(z.first), 0); }), z.second);
    EXPECT_EQ(inv, identity) << z.second;
  }
}

TEST(nrMatrix4f, AffineAndOrthogonalInverses) {
  nrMatrix4f m, inv;
  m.makeRot(1, -1, 2, 0.9f);
  m.preScale(2, 0.5f, 3, m);
  m.postTrans(m, 4, -5, 6);
  inv.invertAffine(m);
  EXPECT_TRUE(product(m, inv).almostEqual(identity, 1e-5f));

  // A zero scale: one message, det taken as 1, finite output.
  nrMatrix4f flat;
  flat.makeScale(1, 0, 1);
  flat.postTrans(flat, 1, 2, 3);
  EXPECT_EQ(nrtest::captureStderr([&] { inv.invertAffine(flat); }), "(WARN, USAGE): No inverse: singular matrix\n\n");
  for (auto& row : inv.mat)
    for (float e : row) EXPECT_TRUE(std::isfinite(e));
  EXPECT_FLOAT_EQ(inv[1][1], 1.0f);  // adjugate of diag(1, 0, 1)
  EXPECT_FLOAT_EQ(inv[3][1], -2.0f);

  // Rotation with uniform scale 2 and a translation.
  m.makeRot(0.2f, 0.4f, -1, 1.3f);
  m.postScale(m, 2, 2, 2);
  m.postTrans(m, -1, 3, 0.5f);
  inv.invertOrtho(m);
  EXPECT_TRUE(product(m, inv).almostEqual(identity, 1e-5f));
  flat.makeScale(0, 0, 0);
  EXPECT_EQ(nrtest::captureStderr([&] { inv.invertOrtho(flat); }), "(WARN, USAGE): singular matrix\n\n");

  m.makeRot(0.2f, 0.4f, -1, 1.3f);
  m.postTrans(m, -1, 3, 0.5f);
  inv = m;
  inv.invertOrthoNorm(inv);
  EXPECT_TRUE(product(m, inv).almostEqual(identity, 1e-5f));
}

TEST(nrMatrix4f, OrthoRotationRoundTripsAndReportsScaling) {
  const float axes[][3] = {{0, 0, 1}, {1, 0, 0}, {0, 1, 0}, {1, 2, -3}, {-1, 1, 1}};
  for (const auto& a : axes)
    for (float angle : {0.001f, 0.7f, 3.0f, pi}) {
      nrMatrix4f m, back;
      m.makeRot(a[0], a[1], a[2], angle);
      nrRotation rot;
      EXPECT_EQ(nrtest::captureStderr([&] { m.getOrthoRotation(rot); }), "");
      back.makeRot(rot.axis[0], rot.axis[1], rot.axis[2], rot.angle);
      EXPECT_TRUE(back.almostEqual(m, 1e-4f)) << angle;
      EXPECT_NEAR(rot.axis.length(), 1.0f, 1e-6f);
    }
  nrRotation rot(1, 0, 0, 1);
  identity.getOrthoRotation(&rot);
  EXPECT_EQ(rot, nrRotation(0, 0, 1, 0));

  // Scaled matrices: both texts go straight to standard error, and a rotation
  // still comes out.
  nrMatrix4f s;
  s.makeScale(2, 2, 2);
  std::string err = nrtest::captureStderr([&] { s.getOrthoRotation(rot); });
  EXPECT_EQ(err,
            "Warning: Magnitude of the matrix trace is > 3\n"
            "Matrix is scaled - cannot calculate rotation\n");
  EXPECT_TRUE(std::isfinite(rot.angle));
  // A negative trace takes the diagonal branch, where only the cosine test fires.
  s.makeRot(1, 0, 0, 2.5f);
  s.postScale(s, 10, 10, 10);
  EXPECT_EQ(nrtest::captureStderr([&] { s.getOrthoRotation(rot); }), "Matrix is scaled - cannot calculate rotation\n");
  EXPECT_NEAR(rot.axis[0], 1.0f, 1e-5f);
}
