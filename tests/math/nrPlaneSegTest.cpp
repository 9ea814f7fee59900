#include "nerio3d/math/nrBoxBound.h"
#include "nerio3d/math/nrMatrix4f.h"
#include "nerio3d/math/nrPlane.h"
#include "nerio3d/math/nrSeg.h"
#include "nerio3d/math/nrSphereBound.h"

#include <gtest/gtest.h>

#include <utility>

TEST(nrSeg, EndPointsAndClipping) {
  nrSeg s;
  s.makePts(nrVec3f(1, 1, 1), nrVec3f(4, 5, 1));
  EXPECT_FLOAT_EQ(s.length, 5.0f);
  EXPECT_TRUE(s.dir.almostEqual(nrVec3f(0.6f, 0.8f, 0), 1e-6f));
  nrVec3f end;
  s.getPoint(s.length, end);
  EXPECT_TRUE(end.almostEqual(nrVec3f(4, 5, 1), 1e-6f));

  s.makePts(nrVec3f(0, 0, 0), nrVec3f(10, 0, 0));
  s.clip(s, 2, 7);
  EXPECT_EQ(s.pos, nrVec3f(2, 0, 0));
  EXPECT_FLOAT_EQ(s.length, 5.0f);
}

TEST(nrPlane, ConstructionProjectionAndSegments) {
  nrPlane p;
  p.makePts(nrVec3f(0, 0, 2), nrVec3f(1, 0, 2), nrVec3f(0, 1, 2));
  EXPECT_TRUE(p.normal.almostEqual(nrVec3f(0, 0, 1), 1e-6f));
  EXPECT_FLOAT_EQ(p.offset, 2.0f);
  p.makeNormPt(nrVec3f(0, 3, 4), nrVec3f(0, 0, 5));
  EXPECT_TRUE(p.normal.almostEqual(nrVec3f(0, 0.6f, 0.8f), 1e-6f));
  EXPECT_FLOAT_EQ(p.offset, 4.0f);
  EXPECT_FLOAT_EQ(p.d, 4.0f);  // the offset's other name
  nrVec3f q;
  p.closestPtOn(nrVec3f(1, 3, 4), &q);
  EXPECT_TRUE(q.almostEqual(nrVec3f(1, 3 - 0.6f, 4 - 0.8f), 1e-5f));

  nrPlane z(nrVec3f(0, 0, 1), 3);
  nrSeg s;
  s.makePts(nrVec3f(0, 0, 0), nrVec3f(0, 0, 5));
  float t = -1, tn = -1, tf = -1;
  EXPECT_EQ(z.isect(&s, &t), 1);
  EXPECT_FLOAT_EQ(t, 3.0f);
  EXPECT_EQ(z.isect(&s, &tn, &tf), 1);  // the inside is below z = 3
  EXPECT_FLOAT_EQ(tn, 0.0f);
  EXPECT_FLOAT_EQ(tf, 3.0f);
  s.makePts(nrVec3f(0, 0, 5), nrVec3f(0, 0, 0));
  EXPECT_EQ(z.isect(&s, &tn, &tf), 1);
  EXPECT_FLOAT_EQ(tn, 2.0f);
  EXPECT_FLOAT_EQ(tf, 5.0f);
  EXPECT_EQ(z.isect(s, nullptr, nullptr) + z.isect(s, nullptr), 2) << "results are optional";
  EXPECT_EQ(z.isect(nullptr, &t) + z.isect(nullptr, &tn, &tf), 0);
  s.makePts(nrVec3f(0, 0, 0), nrVec3f(0, 0, 2));  // too short to reach
  EXPECT_EQ(z.isect(s, &t), 0);
  s.makePts(nrVec3f(0, 0, 4), nrVec3f(1, 0, 4));  // parallel, outside
  EXPECT_EQ(z.isect(s, &tn, &tf), 0);

  // A quarter turn about x then a shift: z = 3 becomes y = 3 + 1.
  nrMatrix4f m;
  m.makeRot(1, 0, 0, -3.14159265f / 2);
  m.postTrans(m, 0, 1, 0);
  nrPlane moved;
  moved.orthoXform(&z, m);
  EXPECT_TRUE(moved.normal.almostEqual(nrVec3f(0, 1, 0), 1e-6f));
  EXPECT_NEAR(moved.offset, 4.0f, 1e-5f);
}

TEST(nrPlane, ContainmentOfSpheresAndBoxes) {
  nrPlane p(nrVec3f(1, 0, 0), 0);  // inside: x < 0
  // Deep inside, touching from inside (still partly), dist == radius (outside), empty.
  const std::pair<nrSphereBound, int> spheres[] = {{{nrVec3f(-2, 0, 0), 1}, 7},
                                                   {{nrVec3f(-1, 0, 0), 1}, 3},
                                                   {{nrVec3f(1, 0, 0), 1}, 0},
                                                   {{nrVec3f(-5, 0, 0), -1}, 0}};
  for (const auto& [s, want] : spheres) EXPECT_EQ(p.contains(&s), want) << s.center[0];

  // Corners on the plane count as outside. x + y < 1.5: six corners in, two
  // out, which counts as entirely inside; x + y < 1: four in.
  nrBoxBound box(nrVec3f(0, 0, 0), nrVec3f(1, 1, 1));
  nrPlane diag, half;
  diag.makeNormPt(nrVec3f(1, 1, 0), nrVec3f(0.75f, 0.75f, 0));
  half.makeNormPt(nrVec3f(1, 1, 0), nrVec3f(0.5f, 0.5f, 0));
  const std::pair<nrPlane, int> planes[] = {
      {{nrVec3f(0, 0, 1), 2}, 7}, {{nrVec3f(0, 0, 1), 0.5f}, 3}, {{nrVec3f(0, 0, 1), 0}, 0}, {diag, 7}, {half, 3}};
  for (const auto& [q, want] : planes) EXPECT_EQ(q.contains(&box), want) << q.offset;
  nrBoxBound empty;
  EXPECT_EQ(nrPlane(nrVec3f(0, 0, 1), 100).contains(&empty), 0);
  EXPECT_EQ(p.contains(static_cast<const nrBoxBound*>(nullptr)), 0);
  EXPECT_EQ(p.contains(static_cast<const nrSphereBound*>(nullptr)), 0);
}
