#include <cmath>

#include "nerio3d/math/nrMatrix4f.h"
#include "nerio3d/math/nrRotation.h"

#include <gtest/gtest.h>

namespace {

const float pi = 3.14159265f;

nrMatrix4f matrixOf(const nrRotation& r) {
  nrMatrix4f m;
  m.makeRot(r.axis[0], r.axis[1], r.axis[2], r.angle);
  return m;
}

}  // namespace

TEST(nrRotation, ComposesLikeMatrixProducts) {
  nrRotation a(1, 0, 0, 0.6f), b(0, 0.6f, 0.8f, -1.1f), r;
  r.mult(a, b);
  nrMatrix4f ab;
  ab.fullMult(matrixOf(a), matrixOf(b));
  EXPECT_NEAR(r.axis.length(), 1.0f, 1e-6f);
  r = a;
  r.mult(r, b);
  EXPECT_TRUE(matrixOf(r).almostEqual(ab, 1e-5f));

  // A vanishing vector part gives exactly the identity rotation.
  r.mult(nrRotation(), nrRotation());
  EXPECT_EQ(r, nrRotation(0, 0, 1, 0));
  r.mult(nrRotation(1, 0, 0, 0.3f), nrRotation(1, 0, 0, -0.3f));
  EXPECT_EQ(r, nrRotation(0, 0, 1, 0));

  r.invert(b);
  EXPECT_EQ(r, nrRotation(0, 0.6f, 0.8f, 1.1f));
  EXPECT_EQ(r, nrRotation(nrVec3f(0, 0.6f, 0.8f), 1.1f));
  // Components read by index in storage order, the angle last.
  const nrRotation& cr = r;
  EXPECT_EQ(cr[1], 0.6f);
  r[3] = 0.5f;
  EXPECT_EQ(r.angle, 0.5f);
}

TEST(nrRotation, SlerpFollowsTheShorterArc) {
  nrRotation r;
  r.slerp(0.5f, nrRotation(0, 0, 1, 0), nrRotation(0, 0, 1, pi / 2));
  EXPECT_TRUE(r.axis.almostEqual(nrVec3f(0, 0, 1), 1e-6f));
  EXPECT_NEAR(r.angle, pi / 4, 1e-6f);

  nrRotation a(1, 0, 0, 0.6f), b(0, 0.6f, 0.8f, -1.1f);
  r.slerp(0, a, b);
  EXPECT_TRUE(matrixOf(r).almostEqual(matrixOf(a), 1e-5f));
  r.slerp(1, a, b);
  EXPECT_TRUE(matrixOf(r).almostEqual(matrixOf(b), 1e-5f));

  // 170 and -170 degrees about z are 20 degrees apart through 180.
  float d170 = 170.0f * pi / 180.0f;
  r.slerp(0.5f, nrRotation(0, 0, 1, d170), nrRotation(0, 0, 1, -d170));
  nrMatrix4f half;
  half.makeRot(0, 0, 1, pi);
  EXPECT_TRUE(matrixOf(r).almostEqual(half, 1e-5f));

  // A half turn apart both ways round are equally short: the turn goes the way
  // the keys are written, also when the angle rounds to a float just past pi.
  // Then nearly identical rotations.
  r.slerp(0.5f, nrRotation(), nrRotation(1, 0, 0, pi));
  EXPECT_TRUE(r.axis.almostEqual(nrVec3f(1, 0, 0), 1e-5f));
  EXPECT_NEAR(r.angle, pi / 2, 1e-5f);
  r.slerp(0.25f, nrRotation(0, 1, 0, 0), nrRotation(0, 1, 0, 3.14159265f));
  EXPECT_TRUE(r.axis.almostEqual(nrVec3f(0, 1, 0), 1e-5f));
  EXPECT_NEAR(r.angle, pi / 4, 1e-5f);
  r.slerp(0.5f, nrRotation(0, 1, 0, 0.3f), nrRotation(0, 1, 0, 0.3002f));
  EXPECT_TRUE(r.axis.almostEqual(nrVec3f(0, 1, 0), 1e-5f));
  EXPECT_NEAR(r.angle, 0.3001f, 1e-5f);
}
