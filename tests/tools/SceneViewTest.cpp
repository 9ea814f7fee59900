// What the programs share: examiner navigation, the figures of a scene, and
// the view that draws a scene under a headlight or as wireframe.
#include <algorithm>
#include <cmath>
#include <tuple>

#include "../render/nrRenderFixture.h"
#include "Examiner.h"
#include "SceneStats.h"
#include "SceneView.h"
#include "nerio3d/geometry/nrBox.h"
#include "nerio3d/geometry/nrCoordSet3f.h"
#include "nerio3d/geometry/nrLineSet.h"
#include "nerio3d/geometry/nrQuadSet.h"
#include "nerio3d/geometry/nrShape.h"
#include "nerio3d/geometry/nrSphere.h"
#include "nerio3d/geometry/nrTriStripSet.h"
#include "nerio3d/nodes/nrGroup.h"
#include "nerio3d/render/nrAppearance.h"
#include "nerio3d/render/nrDirectionalLight.h"
#include "nerio3d/render/nrMaterial.h"
#include "nerio3d/render/nrPerspCamera.h"

namespace {

void expectNear(const nrVec3f& a, const nrVec3f& b) {
  for (int i = 0; i < 3; ++i) EXPECT_NEAR(a[i], b[i], 1e-3) << "component " << i;
}

// The window pixel (x, y up) at which camera shows world point p.
void project(nrPerspCamera* camera, const nrVec3f& p, int w, int h, float& x, float& y) {
  nrVec3f e;
  e.xformPt(p, camera->getViewMatrix());
  float perUnit = std::min(w, h) / (2 * std::tan(Examiner::FIELD_OF_VIEW / 2) * -e[2]);
  x = w / 2.0f + e[0] * perUnit;
  y = h / 2.0f + e[1] * perUnit;
}

TEST(Examiner, DragsTurnAboutTheCentrePanUnderThePointerAndZoomWithinLimits) {
  Examiner examiner;
  const nrVec3f c(1, 2, 3);
  examiner.setViewport(200, 100);
  examiner.frame(nrBoxBound(nrVec3f(-1, 0, 1), nrVec3f(3, 4, 5)));
  const float d = examiner.getDistance();
  expectNear(examiner.getEye(), nrVec3f(1, 2, 3 + d));

  // Half the viewport's height turns a quarter: dragging right swings the eye
  // to the scene's left, dragging up below it.
  struct Turn {
    int dx, dy;
    nrVec3f eye;
  };
  for (Turn t :
       {Turn{50, 0, nrVec3f(1 - d, 2, 3)}, Turn{100, 0, nrVec3f(1, 2, 3 - d)}, Turn{0, 50, nrVec3f(1, 2 - d, 3)}}) {
    examiner.reset();
    examiner.rotate(t.dx, t.dy);
    expectNear(examiner.getEye(), t.eye);
    EXPECT_NEAR(examiner.getCenter().distance(examiner.getEye()), d, 1e-3);
  }

  // After a turn, panning still moves what lies at the centre with the pointer.
  nrPerspCamera* camera = nrtest::held<nrPerspCamera>();
  examiner.rotate(-30, 20);
  examiner.place(camera);
  for (auto [dx, dy] : {std::pair(0, 0), std::pair(30, -20)}) {
    examiner.pan(dx, dy);
    examiner.place(camera);
    float x, y;
    project(camera, c, 200, 100, x, y);
    EXPECT_NEAR(x, 100 + dx, 1e-2);
    EXPECT_NEAR(y, 50 + dy, 1e-2);
  }
  camera->unref();

  examiner.reset();
  examiner.zoom(0.5f);
  EXPECT_FLOAT_EQ(examiner.getDistance(), d / 2);
  examiner.zoom(1e-9f);
  EXPECT_FLOAT_EQ(examiner.getDistance(), 0.01f * std::sqrt(12.0f));
  examiner.reset();
  EXPECT_FLOAT_EQ(examiner.getDistance(), d);
}

nrShape* shapeOf(std::initializer_list<nrGeometry*> geometry, bool lit = true) {
  nrShape* shape = new nrShape;
  nrAppearance* look = new nrAppearance;
  look->setLightEnable(lit);
  look->setMaterial(new nrMaterial);
  shape->setAppearance(look);
  for (nrGeometry* g : geometry) shape->addGeometry(g);
  return shape;
}

// A set of type T over count points along x.
template <typename T>
T* setOf(int primCount, int points) {
  nrCoordSet3f* coords = new nrCoordSet3f;
  for (int i = 0; i < points; ++i) coords->append(nrVec3f(float(i), float(i % 2), 0));
  T* set = new T;
  set->setCoordSet(coords);
  set->setPrimCount(primCount);
  return set;
}

TEST(SceneStats, CountsSharedContainersOnceAndTrianglesByPrimitiveKind) {
  nrGroup* root = nrtest::held<nrGroup>();
  nrShape* boxes = shapeOf({new nrBox});
  root->addChild(boxes);
  root->addChild(boxes);
  nrTriStripSet* strip = setOf<nrTriStripSet>(2, 9);
  int lengths[] = {4, 5};
  strip->setLengths(2, lengths);
  root->addChild(shapeOf({strip, setOf<nrQuadSet>(2, 8), setOf<nrLineSet>(3, 6), new nrTriStripSet}));
  root->addChild(new nrDirectionalLight);

  SceneStats stats(root);
  EXPECT_EQ(std::tuple(stats.nodes, stats.shapes, stats.lights, stats.triangles),
            std::tuple(4, 2, 1, 12 + (2 + 3) + 2 * 2));
  EXPECT_EQ(std::tuple(stats.byType["Shape"], stats.byType["Material"], stats.byType["Box"], stats.byType["CoordSet3f"]),
            std::tuple(2, 2, 1, 3));
  root->unref();
}

class SceneViewDraw : public nrtest::ContextTest {
 protected:
  enum { SIZE = 64 };
  // Pixels whose red channel is above the background's.
  int litPixels() {
    std::vector<unsigned char> rgba(SIZE * SIZE * 4);
    nrgl::ReadPixels(0, 0, SIZE, SIZE, GL_RGBA, GL_UNSIGNED_BYTE, rgba.data());
    int n = 0;
    for (size_t i = 0; i < rgba.size(); i += 4) n += rgba[i] > 60;
    return n;
  }
  unsigned char redAt(int x, int y) {
    unsigned char rgba[4];
    nrgl::ReadPixels(x, y, 1, 1, GL_RGBA, GL_UNSIGNED_BYTE, rgba);
    return rgba[0];
  }
};

TEST_F(SceneViewDraw, FramesTheSceneUnderAHeadlightThatTogglesAndDrawsWireframe) {
  nrGroup* scene = nrtest::held<nrGroup>();
  scene->addChild(shapeOf({new nrSphere}));
  SceneView view(scene);
  // No light in the scene: the headlight is on, the ball lit and whole in view.
  ASSERT_TRUE(view.getHeadlight());
  view.draw(context, SIZE, SIZE);
  EXPECT_GT(redAt(SIZE / 2, SIZE / 2), 150);
  int filled = litPixels();
  EXPECT_GT(filled, SIZE * SIZE / 4);
  for (int i = 0; i < SIZE; ++i) {
    EXPECT_LT(redAt(i, 0), 60);
    EXPECT_LT(redAt(0, i), 60);
  }
  view.setHeadlight(false);
  view.draw(context, SIZE, SIZE);
  EXPECT_LT(redAt(SIZE / 2, SIZE / 2), 60);

  view.setHeadlight(true);
  view.setWireframe(true);
  view.draw(context, SIZE, SIZE);
  const int wire = litPixels();
  EXPECT_TRUE(wire > 0 && wire < filled / 2) << wire << " of " << filled;

  scene->addChild(new nrDirectionalLight);
  EXPECT_FALSE(SceneView(scene).getHeadlight());
  scene->unref();
}

}  // namespace
