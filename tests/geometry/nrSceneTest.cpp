// Whole scenes: a camera, a light, transforms and one shape of every kind, as pixels;
// a routed clock moving a shape; picking against a brute-force test in world space.
#include <array>
#include <cmath>
#include <vector>

#include "nerio3d/events/nrPositionInterpolator.h"
#include "nerio3d/events/nrTimeSensor.h"
#include "nerio3d/geometry/nrBox.h"
#include "nerio3d/geometry/nrCone.h"
#include "nerio3d/geometry/nrCylinder.h"
#include "nerio3d/geometry/nrLineSet.h"
#include "nerio3d/geometry/nrLineStripSet.h"
#include "nerio3d/geometry/nrPointSet.h"
#include "nerio3d/geometry/nrPolySet.h"
#include "nerio3d/geometry/nrQuadSet.h"
#include "nerio3d/geometry/nrSphere.h"
#include "nerio3d/geometry/nrTriFanSet.h"
#include "nerio3d/geometry/nrTriSet.h"
#include "nerio3d/geometry/nrTriStripSet.h"
#include "nerio3d/nodes/nrGroup.h"
#include "nerio3d/nodes/nrTransform.h"
#include "nerio3d/render/nrAppearance.h"
#include "nerio3d/render/nrDirectionalLight.h"
#include "nerio3d/render/nrMaterial.h"
#include "nerio3d/render/nrPerspCamera.h"
#include "nrGeometryFixture.h"

namespace {

class Scene : public nrtest::SceneTest {
 protected:
  nrTransform* place(nrNode* child, float x, float y, float z, float scale) {
    nrTransform* t = make<nrTransform>();
    t->setTranslation(x, y, z);
    t->setScale(scale, scale, scale);
    t->addChild(child);
    return t;
  }
  // A lit appearance of one diffuse colour, or an unlit one.
  nrAppearance* look(const nrVec3f& color, bool lit) {
    nrAppearance* app = make<nrAppearance>();
    app->setDepthEnable(1);
    app->setLightEnable(lit);
    nrMaterial* m = make<nrMaterial>();
    m->setDiffuseColor(color);
    app->setMaterial(m);
    return app;
  }
  // Unit-sized sets of one primitive over all points: overall normal facing
  // the viewer, or an overall colour.
  template <typename T>
  T* facing(std::initializer_list<nrVec3f> points, const nrVec3f* color = nullptr) {
    T* s = set<T>(points, 1);
    if (auto* strip = dynamic_cast<nrLengthGeoSet*>(static_cast<nrGeoSet*>(s))) strip->setLength(0, int(points.size()));
    if (color) {
      s->setColorSet(colors({*color}));
      s->setColorBind(nrGeoSet::OVERALL_COLOR);
    } else {
      s->setNormalSet(normals({{0, 0, 1}}));
      s->setNormalBind(nrGeoSet::OVERALL_NORMAL);
    }
    return s;
  }
};

TEST_F(Scene, EveryKindShowsItsColourWhereItStandsAndTheBackgroundElsewhere) {
  const nrVec3f palette[12] = {{1, 0, 0},    {0, 1, 0},    {0, 0, 1},    {1, 1, 0}, {0, 1, 1},    {1, 0, 1},
                               {1, 0.5f, 0}, {0.5f, 0, 1}, {0.5f, 1, 0}, {1, 1, 1}, {0, 0.5f, 1}, {1, 0, 0.5f}};
  const float s = 0.8f;
  std::vector<nrGeometry*> kinds = {
      facing<nrPointSet>({{0, 0, 0}}, &palette[0]),
      facing<nrLineSet>({{-s, 0, 0}, {s, 0, 0}}, &palette[1]),
      facing<nrLineStripSet>({{-s, 0, 0}, {0, 0, 0}, {s, 0, 0}}, &palette[2]),
      facing<nrTriSet>({{-s, -s, 0}, {s, -s, 0}, {0, s, 0}}),
      facing<nrTriStripSet>({{-s, -s, 0}, {s, -s, 0}, {-s, s, 0}, {s, s, 0}}),
      facing<nrTriFanSet>({{0, 0, 0}, {s, 0, 0}, {0, s, 0}, {-s, 0, 0}, {0, -s, 0}, {s, 0, 0}}),
      facing<nrQuadSet>({{-s, -s, 0}, {s, -s, 0}, {s, s, 0}, {-s, s, 0}}),
      facing<nrPolySet>({{-s, -s, 0}, {s, -s, 0}, {s, 0, 0}, {0, s, 0}, {-s, 0, 0}}),
      make<nrBox>(), make<nrCone>(), make<nrCylinder>(), make<nrSphere>()};
  static_cast<nrPointSet*>(kinds[0])->setSize(8);
  static_cast<nrLineSet*>(kinds[1])->setWidth(6);
  static_cast<nrLineStripSet*>(kinds[2])->setWidth(6);

  nrGroup* root = make<nrGroup>();
  // A white light shining from the viewer into the scene.
  nrDirectionalLight* light = make<nrDirectionalLight>();
  light->setDirection(0, 0, -1);
  root->addChild(light);
  for (int i = 0; i < 12; ++i) {
    float x = -3.3f + 2.2f * (i % 4), y = 2.2f - 2.2f * (i / 4);
    nrShape* shape = shapeOf(kinds[i], look(palette[i], i >= 3));
    // Solids and every other set sit under a second, scaling transform.
    nrNode* inner = shape;
    if (i >= 8 || i % 2) inner = place(shape, 0, 0, 0, i >= 8 ? 0.7f : 1);
    root->addChild(place(inner, x, y, 0, 1));
  }

  nrPerspCamera* camera = make<nrPerspCamera>();
  camera->setPosition(0, 0, 10);
  action->setCamera(camera);
  context->clear(nrContext::COLOR_CLEAR | nrContext::DEPTH_CLEAR);
  camera->draw(action);
  action->apply(root);

  readFrame();
  for (int i = 0; i < 12; ++i) {
    float x = -3.3f + 2.2f * (i % 4), y = 2.2f - 2.2f * (i / 4);
    uint32_t p = at(x, y);
    float rgb[3] = {(p & 0xff) / 255.0f, ((p >> 8) & 0xff) / 255.0f, ((p >> 16) & 0xff) / 255.0f};
    float bright = std::fmax(rgb[0], std::fmax(rgb[1], rgb[2]));
    EXPECT_GT(bright, 0.6f) << "kind " << i;
    for (int c = 0; c < 3; ++c) EXPECT_NEAR(rgb[c], bright * palette[i][c], 0.08f) << "kind " << i << " channel " << c;
    EXPECT_EQ(at(x + 1.05f, y + 1.05f), BLACK) << "between the cells of kind " << i;
  }
}

// Without depth testing (the context's default) the last face drawn wins: solids
// seen from +z show their lit front, not their back.
TEST_F(Scene, LitSolidsWithoutDepthTestingShowTheirFront) {
  nrAppearance* app = look(nrVec3f(1, 0, 0), true);
  app->setDepthEnable(0);
  nrDirectionalLight* light = make<nrDirectionalLight>();
  light->setDirection(0, 0, -1);
  nrGroup* root = make<nrGroup>();
  root->addChild(light);
  nrGeometry* kinds[] = {make<nrBox>(), make<nrSphere>(), make<nrCylinder>(), make<nrCone>()};
  for (int i = 0; i < 4; ++i) root->addChild(place(shapeOf(kinds[i], app), -3.3f + 2.2f * i, 0, 0, 1));
  nrPerspCamera* camera = make<nrPerspCamera>();
  camera->setPosition(0, 0, 10);
  action->setCamera(camera);
  camera->draw(action);
  action->apply(root);
  readFrame();
  for (int i = 0; i < 4; ++i)
    for (float dx : {-0.3f, 0.0f, 0.3f}) {
      uint32_t p = at(-3.3f + 2.2f * i + dx, -0.3f);
      EXPECT_GT(p & 0xff, 0x80u) << "kind " << i << " at " << dx << ": " << std::hex << p;
    }
  // Near the rims the caps, which face away, stay behind the side.
  for (float y : {-1.0f, 1.0f}) EXPECT_GT(at(1.1f, y) & 0xff, 0x80u) << "cylinder at " << y;
  EXPECT_GT(at(3.3f, -1.0f) & 0xff, 0x80u) << "cone";
}

TEST_F(Scene, RoutedTimeMovesTheTransformAndItsPixels) {
  nrTimeSensor* clock = make<nrTimeSensor>();
  clock->setCycleInterval(2);
  clock->setLoop(1);
  nrPositionInterpolator* path = make<nrPositionInterpolator>();
  nrFloatArray keys;
  nrVec3fArray places;
  for (int k = 0; k < 2; ++k) {
    keys.append(float(k));
    places.append(nrVec3f(4.0f * k - 2, 0, 0));
  }
  path->setKey(keys);
  path->setKeyValue(places);
  // Lit without lights: only the emissive red (and the ambient share of the red diffuse) shows.
  nrAppearance* red = look(nrVec3f(1, 0, 0), true);
  red->getMaterial()->setEmissiveColor(nrVec3f(1, 0, 0));
  // Out of view at first, under a group whose sphere is taken there: the routed
  // values bring it into view before they are pulled.
  nrTransform* mover = place(shapeOf(make<nrBox>(), red), 100, 0, 0, 1);
  nrGroup* root = make<nrGroup>();
  root->addChild(mover);
  nrPerspCamera* camera = make<nrPerspCamera>();
  camera->setPosition(0, 0, 10);
  action->setCamera(camera);
  camera->draw(action);
  action->apply(root);
  clock->getField("fraction_changed")->connect(path->getField("set_fraction"));
  path->getField("value_changed")->connect(mover->getField("set_translation"));

  for (float x : {-1.0f, 1.0f}) {
    nrTimeSensor::updateSensors(1 + x / 2);
    context->clear(nrContext::COLOR_CLEAR | nrContext::DEPTH_CLEAR);
    camera->draw(action);
    action->apply(root);
    EXPECT_FLOAT_EQ(mover->getMatrix()[3][0], x);
    readFrame();
    EXPECT_EQ(at(-1, 0), x < 0 ? RED : BLACK) << x;
    EXPECT_EQ(at(1, 0), x > 0 ? RED : BLACK) << x;
  }
}

// Moeller-Trumbore in double precision: the distance along (o, d) or -1.
double rayTriangle(const nrVec3f& o, const nrVec3f& d, const nrVec3f& a, const nrVec3f& b, const nrVec3f& c) {
  using V = std::array<double, 3>;
  // Differences taken in single precision, as the points are given.
  auto sub = [](const nrVec3f& p, const nrVec3f& q) { return V{p[0] - q[0], p[1] - q[1], p[2] - q[2]}; };
  auto cross = [](const V& u, const V& v) {
    return V{u[1] * v[2] - u[2] * v[1], u[2] * v[0] - u[0] * v[2], u[0] * v[1] - u[1] * v[0]};
  };
  auto dot = [](const V& u, const V& v) { return u[0] * v[0] + u[1] * v[1] + u[2] * v[2]; };
  V e1 = sub(b, a), e2 = sub(c, a), s = sub(o, a), dd{d[0], d[1], d[2]}, p = cross(dd, e2), q = cross(s, e1);
  double det = dot(e1, p);
  if (std::fabs(det) < 1e-12) return -1;
  double u = dot(s, p) / det, v = dot(dd, q) / det, t = dot(e2, q) / det;
  return u < 0 || v < 0 || u + v > 1 || t < 0 ? -1 : t;
}

TEST_F(Scene, PickingFindsTheNearestShapeUnderNestedScaledTransforms) {
  // Overlapping quads, triangles and strips at several depths, each under two
  // transforms that scale, rotate and move, all under one more.
  struct Placed {
    nrShape* shape;
    std::vector<nrVec3f> triangles;  // world space, three per triangle
  };
  std::vector<Placed> placed;
  nrTransform* outer = make<nrTransform>();
  outer->setScale(2, 2, 2);
  outer->setRotation(0, 1, 0, 0.3f);
  outer->setTranslation(0.5f, 0, 0);
  nrMatrix4f outerM;
  outer->getMatrix(outerM);
  const std::initializer_list<nrVec3f> square = {{-1, -1, 0}, {1, -1, 0}, {1, 1, 0}, {-1, 1, 0}};
  nrGeoSet* sets[4] = {set<nrQuadSet>(square, 1), set<nrTriSet>({{-1, -1, 0}, {1, -1, 0}, {0, 1, 0}}, 1),
                       set<nrTriStripSet>({{-1, -1, 0}, {1, -1, 0}, {-1, 1, 0}, {1, 1, 0}}, 1),
                       set<nrQuadSet>(square, 1)};
  static_cast<nrTriStripSet*>(sets[2])->setLength(0, 4);
  const int tris[4][2][3] = {{{0, 1, 2}, {0, 2, 3}}, {{0, 1, 2}, {0, 1, 2}}, {{0, 1, 2}, {1, 3, 2}}, {{0, 1, 2}, {0, 2, 3}}};
  for (int k = 0; k < 4; ++k) {
    sets[k]->setCullFace(nrContext::NO_CULL);
    nrShape* shape = shapeOf(sets[k], nullptr);
    nrTransform* inner = place(shape, 0.3f * k - 0.4f, 0.2f * k - 0.3f, 0.25f * k, 0.5f + 0.3f * k);
    inner->setRotation(1, 0, 0, 0.2f * k);
    nrTransform* middle = place(inner, 0, 0, -0.1f * k, 1.5f);
    outer->addChild(middle);
    nrMatrix4f innerM, middleM, world;
    inner->getMatrix(innerM);
    middle->getMatrix(middleM);
    world.mult(innerM, middleM);
    world.postMult(outerM);
    Placed p{shape, {}};
    auto* points = static_cast<nrCoordSet3f*>(sets[k]->getCoordSet());
    for (const auto& tri : tris[k])
      for (int v : tri) {
        nrVec3f w;
        w.xformPt(points->get(v), world);
        p.triangles.push_back(w);
      }
    placed.push_back(p);
  }

  int hits = 0;
  for (int ix = 0; ix < 15; ++ix)
    for (int iy = 0; iy < 15; ++iy) {
      nrVec3f from(-3 + 6 * ix / 14.0f, -3 + 6 * iy / 14.0f, 20), to(from[0] * 0.8f, from[1] * 0.9f, -20);
      nrSeg seg;
      seg.makePts(from, to);
      double best = -1;
      nrShape* expected = nullptr;
      for (const Placed& p : placed)
        for (size_t t = 0; t < p.triangles.size(); t += 3) {
          double d = rayTriangle(seg.pos, seg.dir, p.triangles[t], p.triangles[t + 1], p.triangles[t + 2]);
          if (d >= 0 && d <= seg.length && (best < 0 || d < best)) {
            best = d;
            expected = p.shape;
          }
        }
      nrIsectAction pick;
      pick.setSeg(seg);
      pick.apply(outer);
      const nrHit& hit = pick.getHit();
      ASSERT_EQ(hit.getShape(), expected) << ix << "," << iy;
      if (!expected) continue;
      ++hits;
      nrVec3f point;
      seg.getPoint(float(best), point);
      EXPECT_TRUE(hit.getWorldPoint().almostEqual(point, 1e-4f)) << ix << "," << iy;
    }
  EXPECT_GT(hits, 30);
}

}  // namespace
