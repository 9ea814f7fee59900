#include "nerio3d/geometry/nrLineSet.h"
#include "nerio3d/geometry/nrLineStripSet.h"
#include "nerio3d/geometry/nrPointSet.h"
#include "nerio3d/geometry/nrPolySet.h"
#include "nerio3d/geometry/nrQuadSet.h"
#include "nerio3d/geometry/nrTriFanSet.h"
#include "nerio3d/geometry/nrTriStripSet.h"
#include "nerio3d/render/_nrGfx.h"
#include "nerio3d/geometry/nrOverrideGeoProp.h"
#include "nrGeometryFixture.h"

namespace {

using nrtest::Calls;
using PrimSet = nrtest::GeometryTest;

// Vertices 0..n-1 spread over the view.
std::initializer_list<nrVec3f> points15 = {{-1, -1, 0}, {0, -1, 0}, {0, 0, 0},  {1, -1, 0},  {1, 0, 0},
                                           {0, 0, 0},   {-1, 0, 0}, {0, 0, 0},  {0, 1, 0},   {-1, 1, 0},
                                           {0, 0, 0},   {1, 0, 0},  {1, 1, 0},  {0.5, 1, 0}, {0, 1, 0}};

TEST_F(PrimSet, PolygonsBatchTrianglesAndQuadsInImmediateMode) {
  nrPolySet* s = set<nrPolySet>(points15, 4);
  s->setLengths(4, std::vector<int>{3, 3, 4, 5}.data());
  // A colour index list of its own forces immediate mode.
  s->setColorSet(colors({{1, 1, 1}}));
  s->setColorIndexSet(indices({0, 0, 0, 0}));
  s->setColorBind(nrGeoSet::PER_PRIM_COLOR);
  ASSERT_EQ(s->getStrategy(), nrGeoSet::IMMEDIATE_STRATEGY);
  nrGLRecorder rec;
  s->draw(action);
  EXPECT_EQ(only(rec, {"glBegin", "glEnd"}), (Calls{"glBegin(GL_TRIANGLES)", "glEnd()", "glBegin(GL_QUADS)", "glEnd()",
                                                     "glBegin(GL_POLYGON)", "glEnd()"}));
  EXPECT_EQ(only(rec, {"glVertex3fv"}).size(), 15u);
  EXPECT_EQ(only(rec, {"glColor3fv"}).size(), 4u);

  s->setColorBind(nrGeoSet::NO_COLOR);
  EXPECT_EQ(drawn(s), (Calls{"glDrawArrays(GL_POLYGON, 0, 3)", "glDrawArrays(GL_POLYGON, 3, 3)",
                                           "glDrawArrays(GL_POLYGON, 6, 4)", "glDrawArrays(GL_POLYGON, 10, 5)"}));
}

TEST_F(PrimSet, EachKindDrawsItsPrimitiveAndBoundsItsVertices) {
  const int lengths[2] = {3, 4};
  struct Case { nrGeoSet* set; Calls calls; } cases[] = {
      {set<nrPointSet>(points15, 3), {"glDrawArrays(GL_POINTS, 0, 3)"}},
      {set<nrLineSet>(points15, 2), {"glDrawArrays(GL_LINES, 0, 4)"}},
      {set<nrQuadSet>(points15, 2), {"glDrawArrays(GL_QUADS, 0, 8)"}},
      {set<nrLineStripSet>(points15, 2), {"glDrawArrays(GL_LINE_STRIP, 0, 3)", "glDrawArrays(GL_LINE_STRIP, 3, 4)"}},
      {set<nrTriStripSet>(points15, 2),
       {"glDrawArrays(GL_TRIANGLE_STRIP, 0, 3)", "glDrawArrays(GL_TRIANGLE_STRIP, 3, 4)"}},
      {set<nrTriFanSet>(points15, 2), {"glDrawArrays(GL_TRIANGLE_FAN, 0, 3)", "glDrawArrays(GL_TRIANGLE_FAN, 3, 4)"}},
  };
  for (const Case& c : cases) {
    if (auto* withLengths = dynamic_cast<nrLengthGeoSet*>(c.set)) withLengths->setLengths(2, lengths);
    EXPECT_EQ(drawn(c.set), c.calls) << c.set->getType()->getName();
  }
  // Bounds cover exactly the vertices used: points use 3, quads 8.
  EXPECT_EQ(cases[0].set->getBoxBound().max, nrVec3f(0, 0, 0));
  EXPECT_EQ(cases[2].set->getBoxBound().max, nrVec3f(1, 0, 0));
  EXPECT_EQ(cases[2].set->getBoxBound().min, nrVec3f(-1, -1, 0));

  // A count without values empties the list.
  static_cast<nrLengthGeoSet*>(cases[3].set)->setLengths(2, nullptr);
  EXPECT_EQ(static_cast<nrLengthGeoSet*>(cases[3].set)->getLengths().getCount(), 0u);
}

TEST_F(PrimSet, WidthAndSizeWinOnlyOnceWrittenAndYieldToAnOverride) {
  nrLineSet* written = set<nrLineSet>(points15, 1);
  nrLineSet* unwritten = set<nrLineSet>(points15, 1);
  nrPointSet* dots = set<nrPointSet>(points15, 1);
  written->setWidth(1);
  written->setCullFace(nrContext::FRONT_CULL);
  dots->setSize(4);
  context->setLineWidth(3);
  nrGLRecorder rec;
  written->draw(action);
  unwritten->draw(action);
  dots->draw(action);
  EXPECT_EQ(only(rec, {"glLineWidth", "glPointSize"}),
            (Calls{"glLineWidth(1)", "glLineWidth(3)", "glPointSize(4)"}))
      << "an unwritten width is the application's, even with the field at 1.0";
  EXPECT_EQ(context->getGlobalState().lineWidth, 3.0f);

  nrOverrideGeoProp* over = keep(new nrOverrideGeoProp);
  over->setPointSize(9);
  over->setLineWidth(7);
  over->setOverride(nrBitMask::fromBits(1ull << 30));
  context->pushOverrideGeoProp(over);
  rec.clear();
  written->draw(action);
  dots->setSize(5);
  dots->draw(action);
  EXPECT_EQ(only(rec, {"glLineWidth", "glPointSize", "glCullFace"}),
            (Calls{"glCullFace(GL_FRONT)", "glLineWidth(7)", "glPointSize(5)"}));
  context->popOverrideGeoProp();
}

TEST_F(PrimSet, QuadsSplitThroughAReflexCorner) {
  // A square, then the reflex corner at B and at C.
  const nrVec3f q[3][4] = {{{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}},
                           {{0, 0, 0}, {1, 0.3f, 0}, {2, 0, 0}, {1, 2, 0}},
                           {{1, 2, 0}, {0, 0, 0}, {1, 0.3f, 0}, {2, 0, 0}}};
  for (int i = 0; i < 3; ++i) EXPECT_EQ(nrQuadSet::quadToTris(q[i][0], q[i][1], q[i][2], q[i][3]), int(i == 1)) << i;
  nrQuadSet* reflexB = set<nrQuadSet>({q[1][0], q[1][1], q[1][2], q[1][3]}, 1);
  int v[3];
  ASSERT_TRUE(reflexB->getPrimTri(0, 4, 1, v));
  EXPECT_EQ(v[0] * 100 + v[1] * 10 + v[2], 123);
  EXPECT_FALSE(reflexB->getPrimTri(0, 4, 2, v));
}

}  // namespace
