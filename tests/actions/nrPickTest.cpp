#include <gtest/gtest.h>

#include <climits>
#include <cmath>

#include "../render/nrRenderFixture.h"
#include "nerio3d/render/nrOrthoCamera.h"
#include "nerio3d/render/nrPerspCamera.h"
#include "nrCapture.h"
#include "nrTraversalTestTypes.h"

namespace {

const float tol = 1e-4f;
const nrSeg down(nrVec3f(0, 0, 0), nrVec3f(0, 0, -1), 100);

// Applies a pick along seg to root (which it holds meanwhile) and returns the hit.
nrHit pickAlong(nrNode* root, const nrSeg& seg = down) {
  root->ref();
  nrIsectAction pick;
  pick.setSeg(seg);
  pick.apply(root);
  EXPECT_EQ(pick.getSegDepth(), 0);
  EXPECT_EQ(pick.getMatStack()->getDepth(), 1);
  nrHit hit(pick.getHit());
  root->unref();
  return hit;
}

}  // namespace

TEST(nrIsectAction, ScalingOnTheWayChangesNeitherTheWorldHitNorTheNearest) {
  // The same ball of radius 1 at z = -10: placed directly, and as a ball of
  // radius 0.5 at -5 inside a scale of 2.
  nrHit plain = pickAlong(tstPlace(tstMakeBall(0, 0, 0, 1), nrVec3f(0, 0, -10)));
  tstBall* inner = tstMakeBall(0, 0, 0, 0.5f);
  nrTransform* shifted = tstPlace(inner, nrVec3f(0, 0, -5));
  nrGroup* root = group(nullptr, {tstPlace(shifted, nrVec3f(0, 0, 0), 2)});
  root->ref();
  nrHit scaled = pickAlong(root);

  for (const nrHit* hit : {&plain, &scaled}) {
    EXPECT_TRUE(hit->getWorldPoint().almostEqual(nrVec3f(0, 0, -9), tol));
    EXPECT_TRUE(hit->getWorldNormal().almostEqual(nrVec3f(0, 0, 1), tol));
    EXPECT_NEAR(hit->getFraction(), 0.09f, tol);
    EXPECT_EQ(hit->getPrimitive(), 7);
    nrVec3f mapped;
    mapped.xformPt(hit->getLocalPoint(), hit->getMatrix());
    EXPECT_TRUE(mapped.almostEqual(hit->getWorldPoint(), tol));
  }
  EXPECT_EQ(scaled.getGeometry(), inner->asGeometry());
  EXPECT_TRUE(scaled.getLocalPoint().almostEqual(nrVec3f(0, 0, 0.5f), tol));
  EXPECT_NEAR(scaled.getSegLength(), 4.5f, tol);
  // The root (twice: the action's and its own), then both transforms.
  ASSERT_EQ(scaled.getPath().getCount(), 4u);
  EXPECT_EQ(scaled.getPath()[3], shifted);
  root->unref();

  // A ball at -20 and one at -50 under a scale of 10, whose local distance
  // is the smaller, in either order: the nearer in the world wins.
  for (bool scaledFirst : {false, true}) {
    tstBall* nearBall = tstMakeBall(0, 0, -20, 1);
    nrNode* farPlaced = tstPlace(tstMakeBall(0, 0, -5, 0.1f), nrVec3f(0, 0, 0), 10);
    nrGroup* both = scaledFirst ? group(nullptr, {farPlaced, nearBall}) : group(nullptr, {nearBall, farPlaced});
    both->ref();
    nrHit hit = pickAlong(both);
    EXPECT_EQ(hit.getGeometry(), nearBall->asGeometry()) << scaledFirst;
    EXPECT_TRUE(hit.getWorldPoint().almostEqual(nrVec3f(0, 0, -19), tol));
    both->unref();
  }

  // A picked segment whose direction is not of unit length ends at the same
  // point as one that is.
  nrHit stretched = pickAlong(tstMakeBall(0, 0, -10, 1), nrSeg(nrVec3f(0, 0, 0), nrVec3f(0, 0, -4), 25));
  EXPECT_TRUE(stretched.getWorldPoint().almostEqual(nrVec3f(0, 0, -9), tol));
  EXPECT_NEAR(stretched.getFraction(), 0.09f, tol);
}

TEST(nrIsectAction, MissesLeaveTheRecordEmptyAndDeepScenesReportEachLevelBeyondTheStack) {
  nrHit miss = pickAlong(tstMakeBall(5, 0, -10, 1));
  EXPECT_EQ(miss.getGeometry(), nullptr);
  EXPECT_EQ(miss.getPath().getCount(), 0u);

  nrNode* chain = tstMakeBall(0, 0, -10, 1);
  for (int i = 0; i < 300; ++i) chain = tstPlace(chain, nrVec3f(0, 0, 0));
  nrHit hit;
  std::string err = nrtest::captureStderr([&] { hit = pickAlong(chain); });
  std::string expected;
  for (int i = 0; i < 300 - 255; ++i) expected += "nrIsectAction::pushSeg() Scene graph is too deep (256)\n";
  EXPECT_EQ(err, expected);
  EXPECT_TRUE(hit.getWorldPoint().almostEqual(nrVec3f(0, 0, -9), tol));
}

namespace {

using CameraPick = nrtest::ContextTest;

// A ball whose first pick makes the camera pick again from inside it.
struct tstRepicker : tstBall {
  nrCamera* camera = nullptr;
  nrNode* root = nullptr;
  nrHit inner;
  void isect(nrIsectAction* action) override {
    if (nrCamera* c = camera) {
      camera = nullptr;
      c->pick(root, 32, 32, inner);
    }
    tstBall::isect(action);
  }
};

}  // namespace

TEST_F(CameraPick, PixelCentresMapOntoTheNearRectangleAndTheRayFollowsThePlacement) {
  nrGroup* root = group(nullptr, {tstMakeBall(1, 0, 0, 0.5f)});
  root->ref();
  nrOrthoCamera* ortho = nrtest::held<nrOrthoCamera>();
  ortho->setPosition(0, 0, 10);
  ortho->setWidth(4);
  ortho->setHeight(4);
  // Pixel (48, 32) of a 64 x 64 viewport at (10, 20): its centre lies at
  // x = -2 + 4 * 48.5 / 64, y = -2 + 4 * 32.5 / 64.
  struct { int x, y, found; } pixels[] = {{58, 52, 1}, {74, 52, 0}, {58, 84, 0}, {9, 52, 0}, {58, 19, 0}, {10, 20, 0}};
  for (const auto& p : pixels) {
    nrHit hit;
    EXPECT_EQ(ortho->pick(root, p.x, p.y, hit, 10, 20, 64, 64), p.found) << p.x << "," << p.y;
    EXPECT_EQ(hit.getGeometry() != nullptr, p.found == 1);
    if (!p.found) continue;
    float x = 1.03125f, y = 0.03125f;
    nrVec3f expected(x, y, std::sqrt(0.25f - (x - 1) * (x - 1) - y * y));
    EXPECT_TRUE(hit.getWorldPoint().almostEqual(expected, tol));
  }
  // The pixel of the first row, in a viewport that ends past the largest int.
  nrHit edge;
  EXPECT_EQ(ortho->pick(root, INT_MAX, 52, edge, INT_MAX - 48, 20, 64, 64), 1);

  // Looking down -x from (10, 0, 0) with the context's 64 x 64 viewport: the
  // ray through the centre of pixel (32, 32) leaves the axis by d per unit.
  nrPerspCamera* persp = nrtest::held<nrPerspCamera>();
  persp->setPosition(10, 0, 0);
  persp->setOrientation(0, 1, 0, float(M_PI / 2));
  nrGroup* centred = group(nullptr, {tstMakeBall(0, 0, 0, 1)});
  centred->ref();
  nrHit hit;
  ASSERT_EQ(persp->pick(centred, 32, 32, hit), 1);
  const nrVec3f& p = hit.getWorldPoint();
  float d = 0.41421356f / 64;
  EXPECT_NEAR(p.length(), 1, tol);
  EXPECT_NEAR(p[1], d * (10 - p[0]), tol);
  EXPECT_NEAR(p[2], -p[1], tol);
  EXPECT_TRUE(hit.getWorldNormal().almostEqual(p, tol));

  // A pick made from inside a pick leaves the outer one as it was: that meets
  // the ball of radius 2 a scale makes, the inner one the unscaled ball.
  tstRepicker* repicker = new tstRepicker;
  repicker->setSphereBound(nrSphereBound(nrVec3f(0, 0, 0), 1));
  nrGroup* nested = group(nullptr, {tstPlace(repicker, nrVec3f(0, 0, 0), 2)});
  nested->ref();
  repicker->camera = persp;
  repicker->root = centred;
  EXPECT_EQ(nrtest::captureStderr([&] { ASSERT_EQ(persp->pick(nested, 32, 32, hit), 1); }), "");
  EXPECT_NEAR(hit.getWorldPoint().length(), 2, tol);
  EXPECT_NEAR(repicker->inner.getWorldPoint().length(), 1, tol);
  nested->unref();

  nrContext::releaseCurrent();
  EXPECT_EQ(persp->pick(centred, 32, 32, hit), 0);

  nrtest::unref(centred, persp, ortho, root);
}
