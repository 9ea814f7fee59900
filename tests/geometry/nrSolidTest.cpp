#include <cmath>
#include <string>
#include <vector>

#include "nerio3d/geometry/nrBox.h"
#include "nerio3d/geometry/nrCone.h"
#include "nerio3d/geometry/nrCylinder.h"
#include "nerio3d/geometry/nrSphere.h"
#include "nerio3d/geometry/nrTexCoordSet2f.h"
#include "nerio3d/geometry/nrTriStripSet.h"
#include "nrGeometryFixture.h"

namespace {

using nrtest::Calls;
using Solid = nrtest::GeometryTest;

const std::initializer_list<const char*> placement = {"glPushMatrix", "glPopMatrix", "glScalef", "glTranslatef",
                                                      "glEnable(GL_NORMALIZE)", "glDisable(GL_NORMALIZE)"};

TEST_F(Solid, CurvedSolidsDrawTheSharedTessellationUnderTheirOwnPlacement) {
  nrGLRecorder rec;
  make<nrCylinder>()->draw(action);
  EXPECT_EQ(only(rec, placement), Calls{}) << "a default cylinder needs no matrix";
  // Each shared part is recorded into its display list on its first draw, its
  // strips as one list of triangles: 64 for the side, 30 for each cap, the caps first.
  const std::string side = "glDrawElements(GL_TRIANGLES, 192, GL_UNSIGNED_INT, ptr)",
                    cap = "glDrawElements(GL_TRIANGLES, 90, GL_UNSIGNED_INT, ptr)";
  EXPECT_EQ(only(rec, {"glDraw"}), (Calls{cap, cap, side}));

  nrCylinder* big = make<nrCylinder>();
  big->setRadius(2);
  big->setHeight(4);
  EXPECT_EQ(drawn(big, placement), (Calls{"glPushMatrix()", "glScalef(2, 2, 2)", "glEnable(GL_NORMALIZE)", "glPopMatrix()"}));
  EXPECT_EQ(context->getNormalizeEnable(), 1) << "left on for what follows in the frame";
  EXPECT_EQ(drawn(big, placement), (Calls{"glPushMatrix()", "glScalef(2, 2, 2)", "glPopMatrix()"}));

  nrCone* cone = make<nrCone>();
  cone->setBottom(0);
  cone->setCenter(nrVec3f(1, 0, 0));
  rec.clear();
  cone->draw(action);
  EXPECT_EQ(only(rec, placement), (Calls{"glPushMatrix()", "glTranslatef(1, 0, 0)", "glPopMatrix()"}));
  EXPECT_EQ(only(rec, {"glDraw"}), Calls{side}) << "only the side";

  context->setMaterialModeEnable(nrContext::COLOR_MATERIAL);
  rec.clear();
  make<nrSphere>()->draw(action);
  EXPECT_EQ(only(rec, {"glDraw"}), Calls{"glDrawElements(GL_TRIANGLES, 600, GL_UNSIGNED_INT, ptr)"});
  EXPECT_EQ(only(rec, {"glDisable(GL_COLOR"}), Calls{"glDisable(GL_COLOR_MATERIAL)"}) << "solids carry no colours";
  EXPECT_EQ(drawn(make<nrSphere>(), {"glDraw", "glNewList", "glCallList"}),
            Calls{"glCallList(" + std::to_string(nrSphere::getUnitSphere()->getDisplayListId()) + ")"})
      << "the shared tessellation is recorded once";
  nrTriStripSet* shared = nrSphere::getUnitSphere();
  EXPECT_EQ(shared->getPrimCount(), 40);
  int vertices = 0;
  for (int i = 0; i < 40; ++i) vertices += shared->getLength(i);
  EXPECT_EQ(vertices, (5 + 2) * 5 * 8);
  for (int n : {0, -1}) {
    nrTriStripSet* degenerate[] = {nrSphere::makeSphere(n), nrCylinder::makeCircle(n, 1, 1, 0),
                                   nrCylinder::makePipe(n, 1, 1, -1, 1)};
    EXPECT_EQ(degenerate[0]->getPrimCount() * 10 + degenerate[1]->getPrimCount() + degenerate[2]->getPrimCount(), 80)
        << "the coarsest sphere, and no rim without segments";
    for (nrTriStripSet* set : degenerate) set->unref();
  }

  rec.clear();
  make<nrBox>()->draw(action);
  EXPECT_EQ(only(rec, {"glBegin", "glEnd"}), (Calls{"glBegin(GL_QUADS)", "glEnd()"}));
  EXPECT_EQ(only(rec, {"glNormal3f"}).size(), 6u);
  EXPECT_EQ(only(rec, {"glVertex3f"}).size(), 24u);
}

TEST_F(Solid, UnitTessellationsFaceOutwardWithTheirNormalsAndMapTextures) {
  nrTriStripSet* parts[] = {nrCylinder::getUnitSide(), nrCylinder::getUnitTop(), nrCylinder::getUnitBottom(),
                            nrCone::getUnitSide(),     nrCone::getUnitBottom(),  nrSphere::getUnitSphere()};
  for (nrTriStripSet* part : parts) {
    auto* points = static_cast<nrCoordSet3f*>(part->getCoordSet());
    auto* normals = static_cast<nrNormalSet3f*>(part->getNormalSet());
    auto* texCoords = static_cast<nrTexCoordSet2f*>(part->getTexCoordSet());
    int triangles = 0, first = 0;
    for (int p = 0; p < part->getPrimCount(); first += part->getLength(p), ++p) {
      int v[3];
      for (int t = 0; part->getPrimTri(first, part->getLength(p), t, v); ++t) {
        nrVec3f face, smooth(0, 0, 0);
        nrGeoSet::getTriNormal(points->get(v[0]), points->get(v[1]), points->get(v[2]), face);
        for (int k : v) smooth.add(smooth, normals->get(k));
        if (face.length() == 0) continue;  // the cone's apex
        EXPECT_GT(face.dot(smooth), 0) << part << " triangle " << t << " of strip " << p;
        ++triangles;
      }
    }
    EXPECT_GT(triangles, 0);
    for (unsigned i = 0; i < texCoords->getCount(); ++i)
      for (float c : {texCoords->get(i)[0], texCoords->get(i)[1]}) EXPECT_TRUE(c >= 0 && c <= 1) << part << " " << i;
  }
  // The side's seam is at the back: s = 0 and s = 1 both lie on -z.
  auto* side = static_cast<nrCoordSet3f*>(nrCylinder::getUnitSide()->getCoordSet());
  auto* sideS = static_cast<nrTexCoordSet2f*>(nrCylinder::getUnitSide()->getTexCoordSet());
  int seam = 0;
  for (unsigned i = 0; i < side->getCount(); ++i)
    if (sideS->get(i)[0] == 0 || sideS->get(i)[0] == 1) {
      EXPECT_TRUE(side->get(i).almostEqual(nrVec3f(0, side->get(i)[1], -1), 1e-6f)) << i;
      ++seam;
    }
  EXPECT_EQ(seam, 4);
}

TEST_F(Solid, BoundsComeFromTheFieldsNamedAsTheSceneReaderSetsThem) {
  nrBox* box = make<nrBox>();
  box->setSize(2, -4, 6);  // drawn mirrored, bounded all the same
  box->setCenter(1, 0, 0);
  nrCone* cone = make<nrCone>();
  cone->setBottomRadius(3);
  nrCylinder* cylinder = make<nrCylinder>();
  cylinder->setHeight(10);
  nrSphere* sphere = make<nrSphere>();
  sphere->setRadius(0.5f);
  sphere->setCenter(0, 0, -1);
  const struct { nrGeometry* solid; nrVec3f min, max; std::vector<const char*> names; } cases[] = {
      {box, {0, -2, -3}, {2, 2, 3}, {"size", "center"}},
      {cone, {-3, -1, -3}, {3, 1, 3}, {"bottomRadius", "height", "side", "bottom", "center"}},
      {cylinder, {-1, -5, -1}, {1, 5, 1}, {"radius", "height", "side", "top", "bottom", "center"}},
      {sphere, {-0.5f, -0.5f, -1.5f}, {0.5f, 0.5f, -0.5f}, {"center", "radius"}}};
  for (const auto& c : cases) {
    EXPECT_EQ(c.solid->getBoxBound().min, c.min) << c.solid->getType()->getName();
    EXPECT_EQ(c.solid->getBoxBound().max, c.max) << c.solid->getType()->getName();
    for (const char* name : c.names) EXPECT_NE(c.solid->getField(name), nullptr) << name;
  }
  // The vector fields also read into a value of the caller's.
  nrVec3f size, center;
  static_cast<const nrBox*>(box)->getSize(size);
  sphere->getCenter(center);
  EXPECT_EQ(size, nrVec3f(2, -4, 6));
  EXPECT_EQ(center, nrVec3f(0, 0, -1));
}

TEST_F(Solid, PickingMeetsTheDrawnSurfacesExactly) {
  nrCylinder* open = make<nrCylinder>();
  open->setTop(0);
  nrCone* cone = make<nrCone>();
  nrSphere* sphere = make<nrSphere>();
  sphere->setRadius(2);
  nrBox* box = make<nrBox>();
  nrBox* mirrored = make<nrBox>();
  mirrored->setSize(-2, 2, 2);
  // Upside down: the same surfaces, the caps traded.
  nrCylinder* flipped = make<nrCylinder>();
  flipped->setHeight(-2);
  flipped->setBottom(0);
  nrCone* hanging = make<nrCone>();
  hanging->setHeight(-2);
  const struct { nrGeometry* solid; nrVec3f from, to; bool hits; nrVec3f point, normal; } cases[] = {
      {sphere, {0, 0, 5}, {0, 0, -5}, true, {0, 0, 2}, {0, 0, 1}},
      {sphere, {2.1f, 0, 5}, {2.1f, 0, -5}, false, {}, {}},
      {open, {0, 5, 0}, {0, -5, 0}, true, {0, -1, 0}, {0, -1, 0}},  // no top: the bottom from inside
      {open, {5, 0, 0}, {-5, 0, 0}, true, {1, 0, 0}, {1, 0, 0}},
      {cone, {0.9f, 5, 0.9f}, {0.9f, -5, 0.9f}, false, {}, {}},  // inside its box, outside the cone
      {cone, {0, 0, 5}, {0, 0, -5}, true, {0, 0, 0.5f}, {0, 0.5f, 1}},
      {cone, {0, -5, 0.5f}, {0, 5, 0.5f}, true, {0, -1, 0.5f}, {0, -1, 0}},
      {box, {5, 0.5f, 0.5f}, {-5, 0.5f, 0.5f}, true, {1, 0.5f, 0.5f}, {1, 0, 0}},
      {box, {3, 3, 0}, {-3, -3, 0}, true, {1, 1, 0}, {0, 0, 0}},  // an edge: no one normal
      {mirrored, {5, 0.5f, 0.5f}, {-5, 0.5f, 0.5f}, true, {1, 0.5f, 0.5f}, {1, 0, 0}},
      {flipped, {5, 0, 0}, {-5, 0, 0}, true, {1, 0, 0}, {1, 0, 0}},
      {flipped, {0, -5, 0}, {0, 5, 0}, true, {0, -1, 0}, {0, -1, 0}},  // the top cap, now below
      {flipped, {0, 5, 0}, {0, -5, 0}, true, {0, -1, 0}, {0, -1, 0}},
      {hanging, {0, 0, 5}, {0, 0, -5}, true, {0, 0, 0.5f}, {0, -0.5f, 1}},
      {hanging, {0, 5, 0.5f}, {0, -5, 0.5f}, true, {0, 1, 0.5f}, {0, 1, 0}},
  };
  for (const auto& c : cases) {
    nrShape* shape = shapeOf(c.solid);
    nrHit hit = pickBetween(shape, c.from, c.to);
    int i = static_cast<int>(&c - cases);
    ASSERT_EQ(hit.getGeometry() != nullptr, c.hits) << "case " << i;
    if (!c.hits) continue;
    EXPECT_EQ(hit.getShape(), shape);
    EXPECT_TRUE(hit.getWorldPoint().almostEqual(c.point, 1e-5f)) << "case " << i;
    nrVec3f normal = c.normal;
    EXPECT_TRUE(normal.normalize() == 0 || hit.getWorldNormal().almostEqual(normal, 1e-5f)) << "case " << i;
  }
}

}  // namespace
