#include "nerio3d/geometry/nrGeoSet.h"

#include <climits>
#include <cmath>

#include "nerio3d/arrays/nrData.h"
#include "nerio3d/fields/nrSFRef.h"
#include "nerio3d/fields/nrMField.h"
#include "nerio3d/geometry/nrColorSet4f.h"
#include "nerio3d/geometry/nrLineSet.h"
#include "nerio3d/geometry/nrNormalSet3s.h"
#include "nerio3d/geometry/nrTexCoordSet2f.h"
#include "nerio3d/geometry/nrTriSet.h"
#include "nerio3d/geometry/nrTriStripSet.h"
#include "nerio3d/render/nrOrthoCamera.h"
#include "nerio3d/render/nrPerspCamera.h"
#include "nerio3d/render/_nrGfx.h"
#include "nrCapture.h"
#include "nrGeometryFixture.h"

namespace {

using nrtest::Calls;
using GeoSet = nrtest::GeometryTest;

const nrVec3f red(1, 0, 0), green(0, 1, 0);

TEST_F(GeoSet, BindingsAndIndexSetsDecideTheDrawCode) {
  enum { NONE, SHARED, EQUAL_COPIES, COORDS_ONLY };
  struct Case { int normalBind, colorBind, texBind; bool withColors; int indexing, code; } cases[] = {
      {0, 0, 0, false, NONE, 1 << 9},
      {0, nrGeoSet::PER_VERTEX_COLOR, 0, false, NONE, 1 << 9},  // no colour set: no colours
      {0, nrGeoSet::PER_VERTEX_COLOR, 0, true, SHARED, 0x100 | 3 << 9},
      {0, nrGeoSet::PER_VERTEX_COLOR, 0, true, EQUAL_COPIES, 0x100},
      {0, nrGeoSet::PER_PRIM_COLOR, 0, true, NONE, 0x10 | 2 << 9},
      {0, nrGeoSet::PER_PRIM_COLOR, 0, true, SHARED, 0x10 | 4 << 9},
      {nrGeoSet::OVERALL_NORMAL, 0, nrGeoSet::PER_VERTEX_TEX_COORD, false, NONE, 0x1 | 1 << 9},
      {nrGeoSet::PER_VERTEX_NORMAL, nrGeoSet::OVERALL_COLOR, 0, true, COORDS_ONLY, 0x80 | 0x2},
      {nrGeoSet::PER_PRIM_NORMAL, 0, 0, false, COORDS_ONLY, 0x8},
  };
  for (const Case& c : cases) {
    nrTriSet* s = set<nrTriSet>({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}, 1);
    s->setNormalSet(make<nrNormalSet3f>());
    s->setNormalBind(nrGeoSet::NormalBindEnum(c.normalBind));
    s->setColorBind(nrGeoSet::ColorBindEnum(c.colorBind));
    s->setTexCoordBind(nrGeoSet::TexCoordBindEnum(c.texBind));
    if (c.withColors) s->setColorSet(colors({red}));
    if (c.indexing != NONE) s->setCoordIndexSet(indices({0, 1, 2}));
    if (c.indexing == SHARED) s->setColorIndexSet(s->getCoordIndexSet());
    if (c.indexing == EQUAL_COPIES) s->setColorIndexSet(indices({0, 1, 2}));
    EXPECT_EQ(s->getDrawCode(), c.code) << "case " << &c - cases;
    // Clones, deep or shallow, draw as their source does.
    s->setCullFace(nrContext::BACK_CULL);
    for (int mode : {nrContainer::SHALLOW_CLONE, nrContainer::DEEP_CLONE}) {
      auto* clone = keep(static_cast<nrTriSet*>(s->clone(mode)));
      EXPECT_EQ(clone->getDrawCode(), c.code) << "case " << &c - cases << " mode " << mode;
      EXPECT_EQ(clone->getUserSetMask().getBits(), s->getUserSetMask().getBits());
    }
  }
}

TEST_F(GeoSet, AllFiveStrategiesDrawTheSamePixelsEachWithItsOwnCalls) {
  // Two triangles filling the left and right halves of the view, red and green.
  auto halves = [&](int strategy) {
    nrTriSet* s = set<nrTriSet>({{-1, -1, 0}, {0, -1, 0}, {-1, 1, 0}, {0, -1, 0}, {1, -1, 0}, {1, 1, 0}}, 2);
    nrIndexSet* all = indices({0, 1, 2, 3, 4, 5});
    bool perPrim = strategy == 0 || strategy == 2 || strategy == 4;
    s->setColorBind(perPrim ? nrGeoSet::PER_PRIM_COLOR : nrGeoSet::PER_VERTEX_COLOR);
    s->setColorSet(perPrim ? colors({red, green}) : colors({red, red, red, green, green, green}));
    if (strategy == 0 || strategy >= 3) s->setCoordIndexSet(all);
    if (strategy == 0) s->setColorIndexSet(indices({0, 1}));
    if (strategy >= 3) s->setColorIndexSet(all);
    return s;
  };
  const Calls expected[5] = {
      {"glBegin(GL_TRIANGLES)", "glColor3fv({1, 0, 0})", "glColor3fv({0, 1, 0})", "glEnd()"},
      {"glDrawArrays(GL_TRIANGLES, 0, 6)"},
      {"glColor3fv({1, 0, 0})", "glDrawArrays(GL_TRIANGLES, 0, 3)", "glColor3fv({0, 1, 0})",
       "glDrawArrays(GL_TRIANGLES, 3, 3)"},
      {"glDrawElements(GL_TRIANGLES, 6, GL_UNSIGNED_INT, ptr)"},
      {"glColor3fv({1, 0, 0})", "glDrawElements(GL_TRIANGLES, 3, GL_UNSIGNED_INT, ptr)", "glColor3fv({0, 1, 0})",
       "glDrawElements(GL_TRIANGLES, 3, GL_UNSIGNED_INT, ptr)"},
  };
  std::vector<uint32_t> first;
  for (int strategy = 0; strategy < 5; ++strategy) {
    nrTriSet* s = halves(strategy);
    ASSERT_EQ(s->getStrategy(), strategy);
    clearFrame();
    EXPECT_EQ(drawn(s, {"glBegin", "glEnd", "glDraw", "glColor3fv"}), expected[strategy]) << strategy;
    if (strategy == 0) {
      first = frame();
      std::map<uint32_t, int> h = histogram();
      EXPECT_GT(h[RED], 1000);
      EXPECT_GT(h[GREEN], 1000);
    } else {
      EXPECT_EQ(frame(), first) << "strategy " << strategy;
    }
  }
  nrTriSet* again = halves(1);
  again->draw(action);
  EXPECT_EQ(drawn(again, {"glEnable", "glDisable"}), Calls{}) << "client arrays are enabled only when they change";
}

TEST_F(GeoSet, EveryPerVertexCombinationSendsItsAttributesInOrderAndArraysDrawAlike) {
  // Lit, so that the normals show in the pixels; normals as shorts.
  context->setMaterialModeEnable(nrContext::COLOR_MATERIAL);
  context->setLightEnable(1);
  nrgl::Enable(GL_LIGHT0);
  const Calls perVertex[3] = {
      {"glColor3fv({1, 0, 0})", "glNormal3sv({0, 0, 32767})", "glTexCoord2fv({0, 0})", "glVertex3fv({-1, -1, 0})"},
      {"glColor3fv({0, 1, 0})", "glNormal3sv({0, 23170, 23170})", "glTexCoord2fv({1, 0})", "glVertex3fv({1, -1, 0})"},
      {"glColor3fv({0, 0, 1})", "glNormal3sv({23170, 0, 23170})", "glTexCoord2fv({0, 1})", "glVertex3fv({-1, 1, 0})"}};
  const char* pointers[3] = {"glColorPointer(3, GL_FLOAT, 12, ptr)", "glNormalPointer(GL_SHORT, 6, ptr)",
                             "glTexCoordPointer(2, GL_FLOAT, 8, ptr)"};
  auto* shorts = filled<nrNormalSet3s>({nrVec3s(0, 0, 32767), nrVec3s(0, 23170, 23170), nrVec3s(23170, 0, 23170)});
  nrTexCoordSet2f* texCoords = filled<nrTexCoordSet2f>({nrVec2f(0, 0), nrVec2f(1, 0), nrVec2f(0, 1)});
  for (int attrs = 0; attrs < 8; ++attrs) {  // bit 0 colour, 1 normal, 2 texture coordinate
    std::vector<uint32_t> frames[2];
    for (bool immediate : {false, true}) {
      nrTriSet* s = set<nrTriSet>({{-1, -1, 0}, {1, -1, 0}, {-1, 1, 0}}, 1);
      s->setColorSet(colors({red, green, {0, 0, 1}}));
      s->setNormalSet(shorts);
      s->setTexCoordSet(texCoords);
      if (attrs & 1) s->setColorBind(nrGeoSet::PER_VERTEX_COLOR);
      if (attrs & 2) s->setNormalBind(nrGeoSet::PER_VERTEX_NORMAL);
      if (attrs & 4) s->setTexCoordBind(nrGeoSet::PER_VERTEX_TEX_COORD);
      // Coordinates indexed on their own force immediate mode once an attribute is bound.
      if (immediate) s->setCoordIndexSet(indices({0, 1, 2}));
      clearFrame();
      nrGLRecorder rec;
      s->draw(action);
      frames[immediate] = frame();
      Calls expected;
      if (!immediate) {
        for (int k = 0; k < 3; ++k)
          if (attrs & (1 << k)) expected.push_back(pointers[k]);
      } else if (attrs) {
        for (const Calls& vertex : perVertex)
          for (int k = 0; k < 4; ++k)
            if (k == 3 || (attrs & (1 << k))) expected.push_back(vertex[k]);
      }
      EXPECT_EQ(immediate ? only(rec, {"glColor3", "glNormal3", "glTexCoord2", "glVertex3"})
                          : only(rec, {"glColorP", "glNormalP", "glTexCoordP"}),
                expected)
          << "attributes " << attrs << (immediate ? " immediate" : " arrays");
    }
    EXPECT_EQ(frames[0], frames[1]) << "attributes " << attrs;
  }
  nrgl::Disable(GL_LIGHT0);
}

TEST_F(GeoSet, InterleavedAttributesDrawFromOneBlock) {
  nrData* block = keep(nrData::create(3 * 24));
  const float data[18] = {-1, -1, 0, 0, 0, 1, 1, -1, 0, 0, 0, 1, -1, 1, 0, 0, 0, 1};
  std::copy(data, data + 18, static_cast<float*>(block->getPayload()));
  nrCoordSet3f* points = keep(new nrCoordSet3f(block, 0, 24));
  nrColorSet3f* blue = keep(new nrColorSet3f(block, 12, 24));
  EXPECT_EQ(points->getCount(), 3u);
  EXPECT_EQ(blue->getCount(), 3u);
  nrTriSet* s = set<nrTriSet>(points, 1);
  s->setColorSet(blue);
  s->setColorBind(nrGeoSet::PER_VERTEX_COLOR);
  EXPECT_EQ(drawn(s, {"glColorPointer", "glVertexPointer"}),
            (Calls{"glColorPointer(3, GL_FLOAT, 24, ptr)", "glVertexPointer(3, GL_FLOAT, 24, ptr)"}));
  EXPECT_EQ(pixel(5, 5), BLUE);

  // A count past what the block holds at the stride: the view keeps it, the
  // set counts only the vertices there and draws no further.
  points->setCount(6);
  EXPECT_EQ(points->getCount(), 3u);
  EXPECT_EQ(drawn(set<nrTriSet>(points, 2)), Calls{"glDrawArrays(GL_TRIANGLES, 0, 3)"});
}

TEST_F(GeoSet, BeginDrawAppliesWhiteForColourMaterialAndTheCullFaceRule) {
  nrTriSet* s = set<nrTriSet>({{-1, -1, 0}, {1, -1, 0}, {-1, 1, 0}}, 1);
  context->setMaterialModeEnable(nrContext::COLOR_MATERIAL);
  context->setCullFace(nrContext::FRONT_CULL);
  EXPECT_EQ(drawn(s, {"glColor", "glCullFace", "glEnable(GL_CULL"}), Calls{"glColor4f(1, 1, 1, 1)"})
      << "an unwritten cull face leaves the application's in force";

  s->setCullFace(nrContext::FRONT_CULL);
  context->setCullFace(nrContext::NO_CULL);
  EXPECT_EQ(drawn(s, {"glCullFace", "glEnable(GL_CULL", "glDisable(GL_CULL"}),
            (Calls{"glEnable(GL_CULL_FACE)", "glCullFace(GL_FRONT)"}))
      << "written once, even to the value in force, the set's own wins";
  EXPECT_EQ(context->getGlobalState().cullFace, nrContext::NO_CULL) << "drawing records nothing";
}

TEST_F(GeoSet, ScreenDoorOpacityComesFromTheFourthByteOfTheColour) {
  context->setTranspMode(nrContext::SCREEN_DOOR_TRANSP);
  context->setTranspEnable(1);
  // First component 0 and negative: solid; positive (at least 2^-125): nothing drawn.
  const struct { float first; int drawn; } cases[] = {
      {0.0f, SIZE * SIZE}, {-0.5f, SIZE * SIZE}, {0.5f, 0}, {1e-37f, 0}};
  for (const auto& c : cases) {
    nrTriSet* s = set<nrTriSet>({{-1, -1, 0}, {1, -1, 0}, {1, 1, 0}, {-1, -1, 0}, {1, 1, 0}, {-1, 1, 0}}, 2);
    s->setColorSet(filled<nrColorSet4f>({nrVec4f(c.first, 1, 0, 1)}));
    s->setColorBind(nrGeoSet::OVERALL_COLOR);
    clearFrame();
    s->draw(action);
    EXPECT_EQ(SIZE * SIZE - histogram()[BLACK], c.drawn) << c.first;
  }
  // With normals, overall and per primitive: the stipple goes before the
  // colour, and per primitive each triangle picks its own pattern.
  const Calls stippled = {"glPolygonStipple(ptr)", "glColor4fv({0, 1, 0, 1})", "glNormal3fv({0, 0, 1})"};
  for (bool perPrim : {false, true}) {
    nrTriSet* s = set<nrTriSet>({{-1, -1, 0}, {1, -1, 0}, {1, 1, 0}, {-1, -1, 0}, {1, 1, 0}, {-1, 1, 0}}, 2);
    s->setColorSet(filled<nrColorSet4f>({nrVec4f(0, 1, 0, 1), nrVec4f(0.5f, 1, 0, 1)}));
    s->setNormalSet(normals({{0, 0, 1}, {0, 0, 1}}));
    s->setColorBind(perPrim ? nrGeoSet::PER_PRIM_COLOR : nrGeoSet::OVERALL_COLOR);
    s->setNormalBind(perPrim ? nrGeoSet::PER_PRIM_NORMAL : nrGeoSet::OVERALL_NORMAL);
    Calls expected = stippled;
    if (perPrim)
      expected.insert(expected.end(),
                      {"glPolygonStipple(ptr)", "glColor4fv({0.5, 1, 0, 1})", "glNormal3fv({0, 0, 1})"});
    clearFrame();
    EXPECT_EQ(drawn(s, {"glPolygonStipple", "glColor4fv", "glNormal3fv"}), expected) << perPrim;
    EXPECT_EQ(pixel(60, 3), GREEN);
    EXPECT_EQ(pixel(3, 60), perPrim ? BLACK : GREEN);
  }
}

TEST_F(GeoSet, ChangesRaiseTheVersionAndKeepTheBoundCurrent) {
  nrTriSet* s = set<nrTriSet>({{0, 0, 0}, {1, 0, 0}, {0, 2, 0}}, 1);
  nrShape* shape = shapeOf(s);
  nrSphereBound sphere;
  shape->getSphereBound(sphere);
  EXPECT_NEAR(sphere.radius, std::sqrt(5.0f) / 2, 1e-4);

  int version = s->getVersion();
  nrCoordSet3f* points = static_cast<nrCoordSet3f*>(s->getCoordSet());
  points->set(2, nrVec3f(0, 4, 0));
  EXPECT_GT(s->getVersion(), version) << "a change inside an attribute set counts";
  EXPECT_EQ(s->getBoxBound().max, nrVec3f(1, 4, 0));
  shape->getSphereBound(sphere);
  EXPECT_NEAR(sphere.radius, std::sqrt(17.0f) / 2, 1e-4) << "the shape's sphere follows its geometry";
  version = s->getVersion();
  points->copy(coords({{0, 0, 0}, {1, 0, 0}, {0, 2, 0}}));
  EXPECT_GT(s->getVersion(), version) << "so does a copy into an attribute set";
  shape->getSphereBound(sphere);
  EXPECT_NEAR(sphere.radius, std::sqrt(5.0f) / 2, 1e-4);
  // A box set while a recomputation is pending holds, as one set by name does,
  // until the contents change again.
  points->set(2, nrVec3f(0, 6, 0));
  s->setBoxBound(nrBoxBound(nrVec3f(-1, -1, -1), nrVec3f(1, 1, 1)));
  EXPECT_EQ(s->getBoxBound().max, nrVec3f(1, 1, 1));
  points->set(2, nrVec3f(0, 4, 0));
  EXPECT_EQ(s->getBoxBound().max, nrVec3f(1, 4, 0));

  version = s->getVersion();
  s->setBoundMode(nrGeometry::STATIC);
  EXPECT_EQ(s->getVersion(), version + 1) << "the fields of every geometry count too";
  points->set(2, nrVec3f(0, 8, 0));
  EXPECT_EQ(s->getBoxBound().max, nrVec3f(1, 4, 0)) << "a static box stays as it was";
  nrBoxBound box;
  nrIntArray lengths;
  lengths.append(2);
  s->boundCoords(box, 3, &lengths);
  EXPECT_EQ(box.max, nrVec3f(1, 0, 0)) << "as many vertices as the lengths give";
  s->boundCoords(box, 3, nullptr);
  EXPECT_EQ(box.max, nrVec3f(1, 8, 0));
}

TEST_F(GeoSet, FlattenVRMLIndicesSplitsAtNegativeValues) {
  nrIndexSet* out = make<nrIndexSet>();
  // Index sets' own fields serve as the lists.
  nrMFInt* vrml = static_cast<nrMFInt*>(make<nrIndexSet>()->getField("index"));
  nrMFInt* lengths = static_cast<nrMFInt*>(make<nrIndexSet>()->getField("index"));
  const int list[] = {0, 1, 2, -1, 3, 4, 5};
  vrml->setRange(0, 7, list);
  EXPECT_EQ(nrGeoSet::flattenVRMLIndices(vrml, out, lengths), 2);
  EXPECT_EQ(out->getCount(), 6u);
  EXPECT_EQ(lengths->getArray().getCount(), 2u);
  EXPECT_EQ(lengths->get(0) * 10 + lengths->get(1), 33);
  EXPECT_EQ(nrGeoSet::flattenVRMLIndices(vrml, out, nullptr), 0);
  vrml->setCount(0);
  EXPECT_EQ(nrGeoSet::flattenVRMLIndices(vrml, out, lengths), 0);
  EXPECT_EQ(out->getCount(), 0u);
  EXPECT_EQ(nrGeoSet::flattenVRMLIndices(nullptr, out, lengths), 0) << "no list is an empty list";
}

TEST_F(GeoSet, BackFacingPrimitivesAreSkippedByTheirNormalCones) {
  // A triangle facing the viewer (+z) and one facing away.
  nrTriSet* s = set<nrTriSet>({{-1, -1, 0}, {0, -1, 0}, {-1, 1, 0}, {0, -1, 0}, {1, 1, 0}, {1, -1, 0}}, 2);
  s->buildBPCullData();
  ASSERT_TRUE(s->existsBPCullData());
  EXPECT_EQ((*s->getBPCullDelta())[0], 0.0f) << "one flat face: a single direction";
  action->setBPCullEnable(1);
  action->setViewVector(nrVec3f(0, 0, 1));
  EXPECT_EQ(drawn(s), Calls{"glDrawArrays(GL_TRIANGLES, 0, 3)"});
  // Copies and clones take the culling data and settings along.
  s->setBPCullEpsilon(0.001f);
  s->setBPCullDynamicBuildMode(0);
  for (int mode : {nrContainer::SHALLOW_CLONE, nrContainer::DEEP_CLONE}) {
    auto* clone = keep(static_cast<nrTriSet*>(s->clone(mode)));
    EXPECT_EQ(clone->getBPCullEpsilon(), 0.001f);
    EXPECT_EQ(clone->getBPCullDynamicBuildMode(), 0);
    ASSERT_TRUE(clone->existsBPCullData());
    EXPECT_NE(clone->getBPCullDelta(), s->getBPCullDelta());
    EXPECT_EQ(drawn(clone), Calls{"glDrawArrays(GL_TRIANGLES, 0, 3)"}) << "mode " << mode;
  }
  s->setBPCullEpsilon(0.000001f);
  s->setBPCullDynamicBuildMode(1);
  // One array handed over as both the points and the axes is freed once; a
  // rebuild gives the axes their own.
  nrTriSet* aliased = set<nrTriSet>({{-1, -1, 0}, {0, -1, 0}, {-1, 1, 0}}, 1);
  nrVec3fArray* given = new nrVec3fArray;
  aliased->setBPCullPoint(given);
  aliased->setBPCullCenter(given);
  aliased->setBPCullPoint(nullptr);
  aliased->setBPCullPoint(given);
  aliased->buildBPCullData();
  EXPECT_NE(aliased->getBPCullCenter(), given);
  EXPECT_EQ((*aliased->getBPCullCenter())[0], nrVec3f(0, 0, 1));
  EXPECT_EQ((*aliased->getBPCullPoint())[0], nrVec3f(-1, -1, 0));
  aliased->setBPCullCenter(given);

  // Under a perspective camera the view vector is the eye: behind the plane
  // of the first triangle it faces away, in front of it towards the eye.
  action->setCamera(make<nrPerspCamera>());
  action->apply(nullptr);
  ASSERT_EQ(action->getOrthographic(), 0);
  action->setViewVector(nrVec3f(-0.5f, 0, -5));
  EXPECT_FALSE(s->isPrimBpcFrontFacing(0, action));
  EXPECT_TRUE(s->isPrimBpcFrontFacing(1, action));
  action->setViewVector(nrVec3f(-0.5f, 0, 0.1f));
  EXPECT_TRUE(s->isPrimBpcFrontFacing(0, action));
  action->setCamera(make<nrOrthoCamera>());
  action->apply(nullptr);

  // Replacing the coordinates rebuilds the data: now the first faces away.
  s->setCoordSet(coords({{-1, -1, 0}, {-1, 1, 0}, {0, -1, 0}, {0, -1, 0}, {1, -1, 0}, {1, 1, 0}}));
  action->setViewVector(nrVec3f(0, 0, 1));
  EXPECT_EQ(drawn(s), Calls{"glDrawArrays(GL_TRIANGLES, 3, 3)"});

  // Normals that cancel out give a cone that is never culled.
  nrTriSet* t = set<nrTriSet>({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}, 1);
  t->setNormalSet(normals({{0, 0, 1}, {0, 0, -1}, {0, 0, 1}}));
  t->setNormalBind(nrGeoSet::PER_VERTEX_NORMAL);
  t->setBPCullPrimNormModeEnable(1);
  t->buildBPCullData();
  EXPECT_EQ((*t->getBPCullDelta())[0], -2.0f);
  EXPECT_EQ((*t->getBPCullCenter())[0], nrVec3f(0, 0, 0));
  // The primitive helpers read data that is missing as the origin.
  nrVec3f lo, hi;
  t->getNormBB(1, 4, lo, hi);
  EXPECT_EQ(hi, nrVec3f(0, 0, 1));
  EXPECT_EQ(t->getRefPoint(0, 5, 3), nrVec3f(0, 0, 0));
  make<nrTriSet>()->getPrimFaceNormBB(0, 0, 3, lo, hi);
  EXPECT_EQ(hi, nrVec3f(0, 0, 0));

  // Per-primitive normals give the cones; immediate mode skips a culled
  // primitive's per-vertex colours with it. Arrays the application sets
  // replace the built ones; missing or short ones cull nothing.
  nrTriSet* u = set<nrTriSet>({{-1, -1, 0}, {0, -1, 0}, {-1, 1, 0}, {0, -1, 0}, {1, 1, 0}, {1, -1, 0}}, 2);
  u->setNormalSet(normals({{0, 0, -1}, {0, 0, 1}}));
  u->setNormalBind(nrGeoSet::PER_PRIM_NORMAL);
  u->setColorSet(colors({red, red, red, green, green, green}));
  u->setColorIndexSet(indices({0, 1, 2, 3, 4, 5}));
  u->setColorBind(nrGeoSet::PER_VERTEX_COLOR);
  u->setBPCullPrimNormModeEnable(1);
  u->buildBPCullData();
  auto drawnU = [&] { return drawn(u, {"glNormal3fv", "glColor3fv({1", "glVertex3fv({-1, -1"}); };
  const Calls first = {"glNormal3fv({0, 0, -1})", "glColor3fv({1, 0, 0})", "glVertex3fv({-1, -1, 0})",
                       "glColor3fv({1, 0, 0})", "glColor3fv({1, 0, 0})"};
  const Calls second = {"glNormal3fv({0, 0, 1})"};
  EXPECT_EQ(drawnU(), second);
  nrVec3fArray* axes = new nrVec3fArray;
  axes->append(nrVec3f(0, 0, 1));
  axes->append(nrVec3f(0, 0, -1));
  u->setBPCullCenter(axes);
  EXPECT_EQ(drawnU(), first);
  nrFloatArray* shortDeltas = new nrFloatArray;
  shortDeltas->append(0);
  u->setBPCullDelta(shortDeltas);
  Calls both = first;
  both.insert(both.end(), second.begin(), second.end());
  EXPECT_EQ(drawnU(), both);
  u->setBPCullPoint(nullptr);
  u->setBPCullCenter(nullptr);
  nrVec3fArray* points = new nrVec3fArray;
  points->append(nrVec3f(0, 0, 0));
  u->setBPCullPoint(points);
  EXPECT_EQ(drawnU(), both);
  nrVec3f wide(1, 0, 1);
  wide.normalize();
  EXPECT_NEAR(t->getNormBBDelta(nrVec3f(0, 0, 1), nrVec3f(1, 0, 1), wide), -std::sqrt(0.5f), 1e-5);
}

TEST_F(GeoSet, PickingHonoursTheSetsOwnCullFace) {
  // A triangle facing +z, picked from in front and from behind.
  const struct { nrContext::CullFaceEnum face; bool front, back; } cases[] = {
      {nrContext::NO_CULL, true, true}, {nrContext::BACK_CULL, true, false},
      {nrContext::FRONT_CULL, false, true}, {nrContext::BOTH_CULL, false, false}};
  for (const auto& c : cases) {
    nrTriSet* s = set<nrTriSet>({{-1, -1, 0}, {1, -1, 0}, {0, 1, 0}}, 1);
    s->setCullFace(c.face);
    nrShape* shape = shapeOf(s);
    for (float z : {5.0f, -5.0f}) {
      bool hit = z > 0 ? c.front : c.back;
      EXPECT_EQ(pickBetween(shape, nrVec3f(0, 0, z), nrVec3f(0, 0, -z)).getGeometry() != nullptr, hit)
          << c.face << " from " << z;
      // The set itself tells whether it was hit.
      nrIsectAction direct;
      direct.setSeg(nrSeg(nrVec3f(0, 0, z), nrVec3f(0, 0, z > 0 ? -1 : 1), 2 * std::fabs(z)));
      EXPECT_EQ(s->isect(&direct), int(hit)) << c.face << " from " << z;
    }
  }
}

TEST_F(GeoSet, VRMLFieldNamesReachTheFields) {
  nrTriSet* s = make<nrTriSet>();
  nrShape* shape = make<nrShape>();
  const struct { nrContainer* owner; const char* name; int index; } cases[] = {
      {s, "coord", nrGeoSet::COORD_SET_FIELD},          {s, "normal", nrGeoSet::NORMAL_SET_FIELD},
      {s, "color", nrGeoSet::COLOR_SET_FIELD},          {s, "texCoord", nrGeoSet::TEX_COORD_SET_FIELD},
      {shape, "appearance", nrShape::APPEARANCE_FIELD}, {shape, "geometry", nrShape::GEOMETRY_FIELD}};
  for (const auto& c : cases) EXPECT_EQ(c.owner->getField(c.name), c.owner->getField(c.index)) << c.name;
  nrCoordSet3f* points = coords({{0, 0, 0}});
  static_cast<nrSFRef*>(s->getField("coord"))->set(points);
  EXPECT_EQ(s->getCoordSet(), points);
}

TEST_F(GeoSet, PrimitivesWithMissingDataAreLeftOutSilently) {
  nrTriSet* s = set<nrTriSet>({{-1, -1, 0}, {0, -1, 0}, {-1, 1, 0}, {0, -1, 0}, {1, -1, 0}, {1, 1, 0}}, 3);
  nrGLRecorder rec;
  EXPECT_EQ(nrtest::captureStderr([&] { s->draw(action); }), "");
  EXPECT_EQ(only(rec, {"glDraw"}), Calls{"glDrawArrays(GL_TRIANGLES, 0, 6)"});

  s->setPrimCount(2);
  s->setCoordIndexSet(indices({0, 1, 2, 3, 4, 9}));
  rec.clear();
  EXPECT_EQ(nrtest::captureStderr([&] { s->draw(action); }), "");
  EXPECT_EQ(only(rec, {"glDraw"}), Calls{"glDrawElements(GL_TRIANGLES, 3, GL_UNSIGNED_INT, ptr)"})
      << "an index past the coordinates ends the drawable part";

  // Hostile lengths and counts: no overflow, no read past exactly three coordinates.
  nrData* block = keep(nrData::create(3 * 12));
  std::fill_n(static_cast<float*>(block->getPayload()), 9, 0.5f);
  auto* strips = set<nrTriStripSet>(keep(new nrCoordSet3f(block, 0, 12)), 3);
  const int lengths[] = {3, 0, INT_MAX};
  strips->setStripLength(3, lengths);
  strips->buildBPCullData();
  EXPECT_EQ(strips->getBPCullDelta()->getCount(), 2u) << "the empty strip is drawable, the huge one is not";
  EXPECT_EQ((*strips->getBPCullDelta())[1], -2.0f) << "a strip without vertices is never culled";
  nrBoxBound box;
  strips->setPrimCount(INT_MAX);
  strips->boundCoords(box, INT_MAX, nullptr);
  EXPECT_EQ(box.max, nrVec3f(0.5f, 0.5f, 0.5f));
  // Vertex ranges outside the data, asked for directly: the origin, no read
  // before the index list, no sum past the int range.
  strips->setCoordIndexSet(indices({2, 1, 0}));
  nrVec3f min, max;
  strips->getNormBB(INT_MIN, -3, min, max);
  strips->getPrimFaceNormBB(0, INT_MAX - 1, INT_MAX, min, max);
  EXPECT_EQ(max, nrVec3f(0, 0, 0));
  EXPECT_EQ(strips->getRefPoint(0, -1, 3), nrVec3f(0, 0, 0));
  nrLineSet* lines = set<nrLineSet>({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}}, INT_MAX);
  EXPECT_EQ(drawn(lines), Calls{"glDrawArrays(GL_LINES, 0, 2)"})
      << "counted up to where the coordinates end, not to the count";

  // Coordinates routed into a set that had none are taken before the
  // drawable part is counted again.
  nrTriSet* late = set<nrTriSet>(make<nrCoordSet3f>(), 1);
  late->draw(action);
  coords({{-1, -1, 0}, {1, -1, 0}, {0, 1, 0}})->connect(nrCoordSet3f::ARRAY_FIELD, late->getCoordSet(),
                                                        nrCoordSet3f::ARRAY_FIELD);
  EXPECT_EQ(drawn(late), Calls{"glDrawArrays(GL_TRIANGLES, 0, 3)"});
}

}  // namespace
