#include <cmath>
#include <utility>

#include "nerio3d/math/nrBoxBound.h"
#include "nerio3d/math/nrFrustum.h"
#include "nerio3d/math/nrMatrix4f.h"
#include "nerio3d/math/nrSphereBound.h"
#include "nrCapture.h"

#include <gtest/gtest.h>

namespace {

void corners(const nrFrustum& f, nrVec3f c[8]) {
  f.getNear(c[0], c[1], c[2], c[3]);
  f.getFar(&c[4], &c[5], &c[6], &c[7]);
}

void expectExtents(const nrFrustum& f, float l, float r, float b, float t) {
  float got[6], want[4] = {l, r, b, t};
  f.getDiagCorners(&got[0], &got[1], &got[2], &got[3], &got[4], &got[5]);
  for (int i = 0; i < 4; ++i) EXPECT_NEAR(got[i], want[i], 1e-6f) << "lrbt"[i];
}

}  // namespace

TEST(nrFrustum, DefaultsKindsAndCorners) {
  nrFrustum f;
  EXPECT_EQ(f.getKind(), nrFrustum::PERSP_KIND);
  float n, fa;
  f.getNearFar(&n, &fa);
  EXPECT_EQ(std::make_pair(n, fa), std::make_pair(1.0f, 1000.0f));
  expectExtents(f, -0.5578517f, 0.5578517f, -0.5578517f, 0.5578517f);
  nrVec3f c[8];
  corners(f, c);
  EXPECT_TRUE(c[6].almostEqual(nrVec3f(557.8517f, 557.8517f, -1000), 1e-3f));

  f.makePersp(-1, 2, -1, 1);
  EXPECT_EQ(f.getKind(), nrFrustum::OFFCENTER_PERSP_KIND);
  nrPlane right = f.getPlane(nrFrustum::RIGHT_PLANE);
  // The same extents again change the kind but recompute nothing.
  f.makeOrtho(-1, 2, -1, 1);
  EXPECT_EQ(f.getKind(), nrFrustum::ORTHO_KIND);
  EXPECT_EQ(f.getPlane(nrFrustum::RIGHT_PLANE).normal, right.normal);
  f.makeOrtho(-2, 2, -1, 1);
  EXPECT_EQ(f.getPlane(nrFrustum::RIGHT_PLANE).normal, nrVec3f(1, 0, 0));
  f.makePersp(-2, 2, -1, 1);
  EXPECT_EQ(f.getKind(), nrFrustum::PERSP_KIND);
  EXPECT_EQ(f.getPlane(nrFrustum::RIGHT_PLANE).normal, nrVec3f(1, 0, 0));

  // Every corner lies on the three planes that meet there.
  const int meet[8][3] = {{0, 2, 4}, {1, 2, 4}, {1, 2, 5}, {0, 2, 5},
                          {0, 3, 4}, {1, 3, 4}, {1, 3, 5}, {0, 3, 5}};
  f.makePersp(-0.3f, 0.7f, -0.2f, 0.4f);
  f.setNearFar(2, 50);
  corners(f, c);
  for (int i = 0; i < 8; ++i)
    for (int p : meet[i]) {
      const nrPlane& pl = f.getPlane(p);
      EXPECT_NEAR(pl.normal.dot(c[i]), pl.offset, 1e-4f * (1 + std::fabs(c[i][2]))) << i << " " << p;
      EXPECT_NEAR(pl.normal.length(), 1.0f, 1e-6f);
    }
  // Inside is where every plane gives normal . p < offset.
  for (auto [p, in] : {std::pair(nrVec3f(0.1f, 0.1f, -10), 1), std::pair(nrVec3f(0.1f, 0.1f, -1), 0),
                       std::pair(nrVec3f(6.9f, 0.1f, -10), 1), std::pair(nrVec3f(8, 0.1f, -10), 0)})
    EXPECT_EQ(f.contains(p), in) << p[0] << " " << p[2];
}

TEST(nrFrustum, NearFarAndAspect) {
  nrFrustum f;
  f.makePersp(-0.5f, 0.5f, -0.25f, 0.25f);
  f.setNearFar(2, 100);  // the field of view stays
  expectExtents(f, -1, 1, -0.5f, 0.5f);
  nrVec3f ll, lr, ur, ul;
  f.getFar(ll, lr, ur, ul);
  EXPECT_TRUE(ur.almostEqual(nrVec3f(50, 25, -100), 1e-4f));
  // Distances that project nothing are refused, the frustum left as it was.
  for (auto [n, fa] : {std::pair(0.0f, 100.0f), std::pair(-1.0f, 100.0f), std::pair(5.0f, 5.0f)})
    EXPECT_EQ(nrtest::captureStderr([&, n = n, fa = fa] { f.setNearFar(n, fa); }),
              "(WARN, USAGE): nrFrustum::setNearFar() - unusable near and far distances\n");
  expectExtents(f, -1, 1, -0.5f, 0.5f);
  f.makeOrtho(-3, 3, -1, 1);
  f.setNearFar(4, 10);
  expectExtents(f, -3, 3, -1, 1);

  // Mode 1 keeps the height, mode 2 the width; both around the centre.
  f.makePersp(0, 2, 1, 2);
  f.setAspectRatio(4);
  expectExtents(f, 0, 2, 1, 2);  // mode 0 ignores the ratio
  f.setAspectMode(nrFrustum::FIXED_HEIGHT_ASPECT);
  expectExtents(f, -1, 3, 1, 2);
  f.setAspectRatio(2);
  expectExtents(f, 0, 2, 1, 2);
  f.setAspectRatio(0);
  f.setAspectRatio(-3);
  EXPECT_EQ(std::pair(f.getAspectMode(), f.getAspectRatio()), std::pair(nrFrustum::FIXED_HEIGHT_ASPECT, 2.0f));
  expectExtents(f, 0, 2, 1, 2);
  f.setAspectMode(nrFrustum::FIXED_WIDTH_ASPECT);
  f.setAspectRatio(4);
  expectExtents(f, 0, 2, 1.25f, 1.75f);
}

TEST(nrFrustum, ProjectionMatrixMapsTheVolumeOntoTheUnitCube) {
  // Corners of the view volume must land on the corners of the OpenGL clip cube.
  const float ndc[8][3] = {{-1, -1, -1}, {1, -1, -1}, {1, 1, -1}, {-1, 1, -1},
                           {-1, -1, 1},  {1, -1, 1},  {1, 1, 1},  {-1, 1, 1}};
  nrFrustum f;
  f.makePersp(-0.4f, 0.9f, -0.3f, 0.5f);
  f.setNearFar(1.5f, 40);
  nrMatrix4f m;
  f.getGLProjMat(m);
  nrVec3f c[8];
  corners(f, c);
  for (int i = 0; i < 8; ++i) {
    nrVec3f q;
    q.fullXformPt(c[i], m);
    EXPECT_TRUE(q.almostEqual(nrVec3f(ndc[i][0], ndc[i][1], ndc[i][2]), 1e-4f)) << i;
  }
  f.makeOrtho(-2, 1, -1, 3);
  f.setNearFar(0.5f, 20);
  f.getGLProjMat(m);
  for (int i = 0; i < 8; ++i) {
    float x = ndc[i][0] < 0 ? -2.0f : 1.0f, y = ndc[i][1] < 0 ? -1.0f : 3.0f;
    float z = ndc[i][2] < 0 ? -0.5f : -20.0f;
    nrVec3f q;
    q.fullXformPt(nrVec3f(x, y, z), m);
    EXPECT_TRUE(q.almostEqual(nrVec3f(ndc[i][0], ndc[i][1], ndc[i][2]), 1e-5f)) << i;
  }
}

TEST(nrFrustum, ContainmentOfBoundsCombinesPlaneResults) {
  nrFrustum f;
  f.makePersp(-1, 1, -1, 1);
  f.setNearFar(1, 100);
  // Over the right plane, beyond it, and six of eight corners inside it, which
  // still counts as inside there.
  const nrBoxBound boxes[] = {{nrVec3f(-1, -1, -11), nrVec3f(1, 1, -9)}, {nrVec3f(8, -1, -11), nrVec3f(12, 1, -9)},
                              {nrVec3f(20, -1, -11), nrVec3f(30, 1, -9)}, {},
                              {nrVec3f(8, -1, -10), nrVec3f(9.5f, 1, -9)}};
  const int want[] = {7, 1, 0, 0, 7};
  for (int i = 0; i < 5; ++i) EXPECT_EQ(f.contains(&boxes[i]), want[i]) << i;
  // Inside, over the right plane, and empty with its centre inside.
  const nrSphereBound spheres[] = {{nrVec3f(0, 0, -10), 1}, {nrVec3f(10, 0, -10), 1}, {nrVec3f(0, 0, -10), -1}};
  const int wantSph[] = {7, 3, 0};
  for (int i = 0; i < 3; ++i) EXPECT_EQ(f.contains(&spheres[i]), wantSph[i]) << i;
  EXPECT_EQ(f.contains(static_cast<const nrSphereBound*>(nullptr)), 0);
  EXPECT_EQ(f.contains(static_cast<const nrBoxBound*>(nullptr)), 0);
  f.copy(nullptr);
  EXPECT_EQ(f.contains(&boxes[0]), 7) << "copying nothing changes nothing";
}
