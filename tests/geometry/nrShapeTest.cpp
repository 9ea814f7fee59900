#include "nerio3d/geometry/nrShape.h"

#include "nerio3d/actions/nrCompileAction.h"
#include "nerio3d/geometry/nrBox.h"
#include "nerio3d/geometry/nrQuadSet.h"
#include "nerio3d/geometry/nrTriFanSet.h"
#include "nerio3d/geometry/nrTriStripSet.h"
#include "nerio3d/render/nrAppearance.h"
#include "nerio3d/render/nrMaterial.h"
#include "nerio3d/render/nrOrthoCamera.h"
#include "nrGeometryFixture.h"

namespace {

using nrtest::Calls;
using Shape = nrtest::GeometryTest;

const std::initializer_list<nrVec3f> fullView = {{-1, -1, 0}, {1, -1, 0}, {1, 1, 0}, {-1, 1, 0}};

TEST_F(Shape, WithoutAppearanceItDrawsWithTheApplicationsState) {
  nrAppearance* lit = make<nrAppearance>();
  lit->setLightEnable(1);
  nrShape* first = shapeOf(set<nrQuadSet>(fullView, 1), lit);
  nrShape* second = shapeOf(set<nrQuadSet>(fullView, 1));
  nrGLRecorder rec;
  first->draw(action);
  second->draw(action);
  EXPECT_EQ(only(rec, {"glEnable(GL_LIGHTING", "glDisable(GL_LIGHTING", "glDraw"}),
            (Calls{"glEnable(GL_LIGHTING)", "glDrawArrays(GL_QUADS, 0, 4)", "glDisable(GL_LIGHTING)",
                   "glDrawArrays(GL_QUADS, 0, 4)"}));
}

TEST_F(Shape, GeometryListEditsKeepReferencesAndTheBound) {
  nrShape* shape = make<nrShape>();
  nrQuadSet* a = set<nrQuadSet>(fullView, 1);
  nrQuadSet* b = set<nrQuadSet>({{0, 0, 0}, {4, 0, 0}, {4, 4, 0}, {0, 4, 0}}, 1);
  nrQuadSet* stranger = make<nrQuadSet>();
  shape->addGeometry(a);
  shape->addGeometry(b);
  EXPECT_EQ(a->getParentCount(), 1);
  EXPECT_EQ(shape->removeGeometry(stranger), 0);
  const nrShape* seen = shape;
  EXPECT_EQ(seen->getGeometryCount(), 2);
  EXPECT_EQ(seen->getGeometry(1), b);
  EXPECT_EQ(static_cast<const nrQuadSet*>(b)->getPrimCount(), 1);
  auto centre = [](nrShape* s) { nrSphereBound sphere; s->getSphereBound(sphere); return sphere.center; };
  EXPECT_TRUE(centre(shape).almostEqual(nrVec3f(1.5f, 1.5f, 0), 1e-5f)) << "around the union of the boxes";

  EXPECT_EQ(shape->replaceGeometry(a, stranger), 1);
  EXPECT_EQ(a->getParentCount(), 0);
  EXPECT_EQ(shape->findGeometry(stranger), 0);
  shape->insertGeometry(0, a);
  EXPECT_EQ(shape->getGeometry(0), a);
  EXPECT_EQ(shape->removeGeometry(b), 1);
  shape->setGeometryCount(1);
  EXPECT_EQ(stranger->getParentCount(), 0);
  EXPECT_TRUE(centre(shape).almostEqual(nrVec3f(0, 0, 0), 1e-5f));

  // A deep clone's geometry, fresh from its constructor, reports its changes
  // to the cloned shape, whose copied bound it then moves.
  shape->setGeometry(0, make<nrBox>());
  centre(shape);
  auto* clone = keep(static_cast<nrShape*>(shape->clone(nrContainer::DEEP_CLONE)));
  static_cast<nrBox*>(clone->getGeometry(0))->setCenter(5, 0, 0);
  EXPECT_TRUE(centre(clone).almostEqual(nrVec3f(5, 0, 0), 1e-5f));
  // Copied into, the shape's geometry moves the shape's bound as a change
  // does; a box copied from another kind of geometry keeps a box's bound.
  shape->getGeometry(0)->copy(clone->getGeometry(0));
  EXPECT_TRUE(centre(shape).almostEqual(nrVec3f(5, 0, 0), 1e-5f));
  shape->getGeometry(0)->copy(set<nrQuadSet>({{0, 0, 0}, {4, 0, 0}, {4, 4, 0}, {0, 4, 0}}, 1));
  EXPECT_TRUE(centre(shape).almostEqual(nrVec3f(5, 0, 0), 1e-5f));
  // Bounds cleaned on request, as the application may call it, give the same.
  shape->getGeometry(0)->cleanSideEffect(nrGeometry::BOX_BOUND_FIELD);
  shape->cleanSideEffect(nrShape::SPHERE_BOUND_FIELD);
  EXPECT_TRUE(shape->getSphereBound().center.almostEqual(nrVec3f(5, 0, 0), 1e-5f));
}

TEST_F(Shape, OutsideTheViewItIsNeitherDrawnNorVisited) {
  nrOrthoCamera* camera = make<nrOrthoCamera>();
  camera->setPosition(0, 0, 5);
  action->setCamera(camera);
  nrShape* shape = shapeOf(set<nrQuadSet>({{10, 10, 0}, {11, 10, 0}, {11, 11, 0}, {10, 11, 0}}, 1));
  nrGLRecorder rec;
  EXPECT_EQ(action->apply(shape), PRUNE_TRAV);
  EXPECT_EQ(shape->getLastCullResult(), 0);
  EXPECT_EQ(only(rec, {"glDraw"}), Calls{});

  shape->setGeometry(0, set<nrQuadSet>(fullView, 1));
  nrVFCullAction cull;
  cull.setCamera(camera);
  EXPECT_EQ(cull.apply(shape), CONTINUE_TRAV);
  EXPECT_NE(shape->getLastCullResult(), 0);
  EXPECT_EQ(only(rec, {"glDraw"}), Calls{}) << "culling alone draws nothing";
}

TEST_F(Shape, CompiledStripsReplayTheirListUntilTheyChange) {
  nrTriStripSet* strip = set<nrTriStripSet>(fullView, 1);
  strip->setLength(0, 4);
  nrCompileAction compile;
  compile.apply(nullptr);
  nrGLRecorder rec;
  strip->compile(&compile);
  int id = strip->getDisplayListId();
  ASSERT_GE(id, 1);
  const std::string list = std::to_string(id);
  EXPECT_EQ(only(rec, {"glNewList", "glEndList", "glCallList"}),
            (Calls{"glNewList(" + list + ", GL_COMPILE)", "glEndList()"}));
  rec.clear();
  strip->draw(action);
  strip->draw(action);
  EXPECT_EQ(only(rec, {"glNewList", "glCallList", "glDraw"}),
            (Calls{"glCallList(" + list + ")", "glCallList(" + list + ")"}));
  EXPECT_EQ(pixel(50, 10), 0xffffffff);

  static_cast<nrCoordSet3f*>(strip->getCoordSet())->set(3, nrVec3f(-1, 0, 0));
  rec.clear();
  strip->draw(action);
  strip->draw(action);
  // The list holds the strip's triangles as one primitive, each wound as
  // the strip winds it: under back-face culling the second (clockwise) one
  // goes and the first stays.
  EXPECT_EQ(only(rec, {"glNewList", "glCallList", "glDraw"}),
            (Calls{"glNewList(" + list + ", GL_COMPILE)", "glDrawElements(GL_TRIANGLES, 6, GL_UNSIGNED_INT, ptr)",
                   "glCallList(" + list + ")", "glCallList(" + list + ")"}));
  EXPECT_EQ(pixel(38, 44), 0xffffffff);
  strip->setCullFace(nrContext::BACK_CULL);
  clearFrame();
  strip->draw(action);
  EXPECT_EQ(pixel(50, 10), 0xffffffff);
  EXPECT_EQ(pixel(38, 44), 0xff000000);

  // A fan's triangles keep its winding too: around the square, all face front.
  nrTriFanSet* fan = set<nrTriFanSet>(fullView, 1);
  fan->setLength(0, 4);
  fan->setCullFace(nrContext::BACK_CULL);
  fan->compile(&compile);
  clearFrame();
  fan->draw(action);
  EXPECT_EQ(histogram(), (std::map<uint32_t, int>{{0xffffffff, SIZE * SIZE}}));

  // Strips too short for a triangle draw nothing: lists leave them out.
  nrTriStripSet* stubs = set<nrTriStripSet>(fullView, 2);
  const int stubLengths[] = {2, 1};
  stubs->setStripLength(2, stubLengths);
  stubs->setColorSet(colors({{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}));
  stubs->setColorBind(nrGeoSet::PER_VERTEX_COLOR);
  stubs->setCoordIndexSet(indices({0, 1, 2}));
  stubs->setColorIndexSet(indices({0, 1, 2}));
  rec.clear();
  stubs->compile(&compile);
  EXPECT_EQ(only(rec, {"glNewList", "glBegin", "glVertex", "glEndList"}),
            (Calls{"glNewList(" + std::to_string(stubs->getDisplayListId()) + ", GL_COMPILE)", "glEndList()"}));
}

TEST_F(Shape, ScreenDoorTransparencyHalfLetsHalfThePixelsThrough) {
  nrMaterial* glass = make<nrMaterial>();
  glass->setTransparency(0.5f);
  nrAppearance* app = make<nrAppearance>();
  app->setMaterial(glass);
  app->setTranspMode(nrContext::SCREEN_DOOR_TRANSP);
  app->setTranspEnable(1);
  shapeOf(set<nrQuadSet>(fullView, 1), app)->draw(action);
  EXPECT_EQ(histogram()[BLACK], SIZE * SIZE / 2);
}

}  // namespace
