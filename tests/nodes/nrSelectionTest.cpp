#include <gtest/gtest.h>

#include <climits>
#include <cmath>

#include "../render/nrRenderFixture.h"
#include "nerio3d/actions/nrIsectAction.h"
#include "nerio3d/fields/nrCloneTable.h"
#include "nerio3d/nodes/nrBillboard.h"
#include "nerio3d/nodes/nrCollision.h"
#include "nerio3d/nodes/nrInline.h"
#include "nerio3d/nodes/nrLOD.h"
#include "nerio3d/nodes/nrTransform.h"
#include "nerio3d/render/nrOrthoCamera.h"
#include "nerio3d/render/nrPerspCamera.h"
#include "nrCapture.h"
#include "nrNodeTestTypes.h"

namespace {

const nrVec3f red(1, 0, 0), green(0, 1, 0), blue(0, 0, 1), white(1, 1, 1), black(0, 0, 0);
const nrSeg down(nrVec3f(0.5f, 0.5f, 10), nrVec3f(0, 0, -1), 100);

template <typename G>
G* groupOf(const char* name, std::initializer_list<nrNode*> children) {
  G* g = nrtest::held<G>();
  g->setName(name);
  for (nrNode* c : children) g->addChild(c);
  return g;
}

nrHit pick(nrNode* root, const nrSeg& seg) {
  nrIsectAction action;
  action.setSeg(seg);
  action.apply(root);
  return action.getHit();
}

class Selection : public nrtest::ContextTest {
 protected:
  void SetUp() override {
    ContextTest::SetUp();
    camera = nrtest::held<nrPerspCamera>();
    camera->setPosition(0, 0, 10);
  }
  void TearDown() override {
    camera->unref();
    ContextTest::TearDown();
  }

  // Draws root into a cleared frame as cam sees it; tstDrawn tells what was
  // drawn between which hooks.
  nrTravDirective draw(nrNode* root, nrCamera* cam = nullptr) {
    tstDrawn.clear();
    tstHooks action;
    action.setCamera(cam ? cam : camera);
    action.setContext(context);
    action.getCamera()->draw(&action);
    nrgl::ClearColor(0, 0, 0, 1);
    nrgl::Clear(GL_COLOR_BUFFER_BIT);
    return action.apply(root);
  }
  static nrVec3f pixel(int x, int y) {
    unsigned char p[4];
    nrgl::ReadPixels(x, y, 1, 1, GL_RGBA, GL_UNSIGNED_BYTE, p);
    return nrVec3f(p[0] / 255.0f, p[1] / 255.0f, p[2] / 255.0f);
  }

  nrPerspCamera* camera = nullptr;
};

}  // namespace

TEST(nrSelection, SceneFileNamesFindTheFieldsAtTheirIndices) {
  nrContainer* nodes[] = {groupOf<nrSwitch>("", {}),    groupOf<nrLOD>("", {}),    groupOf<nrBillboard>("", {}),
                          groupOf<nrCollision>("", {}), groupOf<nrInline>("", {}), groupOf<nrGroup>("", {})};
  struct { int node; const char* name; int index; } names[] = {
      {0, "whichChoice", 3}, {0, "choice", 2}, {1, "level", 2},      {1, "range", 5},       {1, "offsetOverride", 6},
      {2, "up", 7},          {3, "proxy", 4},  {3, "bboxSize", 6},   {4, "url", 4},         {4, "bboxCenter", 5},
      {5, "choice", -1},     {0, "level", -1}};
  for (const auto& n : names) {
    nrField* f = nodes[n.node]->getField(n.name);
    EXPECT_EQ(f ? f->getIndex() : -1, n.index) << nodes[n.node]->getType()->getName() << "." << n.name;
  }
  for (nrContainer* c : nodes) c->unref();
}

TEST(nrSelection, CopyFromNullLeavesEveryGroupAsItWas) {
  nrGroup* groups[] = {groupOf<nrLOD>("", {}), groupOf<nrTransform>("", {}), groupOf<nrSwitch>("", {}),
                       groupOf<nrBillboard>("", {})};
  nrCloneTable table;
  for (nrGroup* g : groups) {
    g->addChild(new tstLeaf);
    g->copy(nullptr, &table);
    g->copy(nullptr);
    EXPECT_EQ(g->getNumChildren(), 1) << g->getType()->getName();
    g->unref();
  }
}

TEST(nrLOD, RangesAreBoundariesAndOnlyTenCanBeSet) {
  nrLOD* lod = groupOf<nrLOD>("", {});
  EXPECT_EQ(lod->getWhichChild(), 0);
  for (int bad : {10, -1}) {
    lod->setRange(bad, 5, 6);
    lod->setRangeNear(bad, 5);
    lod->setRangeFar(bad, 5);
  }
  EXPECT_EQ(lod->getNumRanges(), 1);
  EXPECT_EQ(lod->getRangeNear(0), 0);
  EXPECT_EQ(lod->getRangeFar(0), 1000000);
  char address[32];
  snprintf(address, sizeof address, "%p", static_cast<void*>(lod));
  EXPECT_EQ(nrtest::captureStderr([&] {
              EXPECT_EQ(lod->getRangeNear(1), -1);
              EXPECT_EQ(lod->getRangeFar(-1), -1);
            }),
            std::string("nrLOD(0x") + address + ")::getRangeNear: attempting to read uninitialized range 1\n" +
                "nrLOD(0x" + address + ")::getRangeFar: attempting to read uninitialized range -1\n");
  // Range 3 needs boundary 2, which takes the new near value.
  lod->setRange(3, 30, 40);
  EXPECT_EQ(lod->getNumRanges(), 4);
  EXPECT_EQ(lod->getRangeNear(2), 30);
  EXPECT_EQ(lod->getRangeFar(3), 40);
  lod->unref();
}

TEST_F(Selection, SwitchDrawsAndPicksTheChosenChildrenBetweenItsHooks) {
  tstQuad* quads[] = {new tstQuad("a", red), new tstQuad("b", red), new tstQuad("c", red)};
  nrSwitch* sw = groupOf<nrSwitch>("s", {quads[0], quads[1], quads[2]});
  // The quads coincide: a pick keeps the first one it meets.
  struct { int which; const char* drawn; nrTravDirective result; int hit; } cases[] = {
      {-2, "pre(s) a b c post(s) ", 0, 0}, {1, "pre(s) b post(s) ", 0, 1}, {5, "pre(s) post(s) ", 0, -1},
      {-3, "pre(s) post(s) ", 0, -1},      {-1, "", 1, -1}};
  for (const auto& c : cases) {
    sw->setWhichChild(c.which);
    EXPECT_EQ(draw(sw), c.result) << c.which;
    EXPECT_EQ(tstDrawn, c.drawn) << c.which;
    EXPECT_EQ(pick(sw, down).getGeometry(), c.hit < 0 ? nullptr : quads[c.hit]->asGeometry()) << c.which;
  }
  sw->unref();
}

TEST_F(Selection, LodDrawsShowsAndPicksTheChildOfTheRangeTheEyeIsIn) {
  // The eye is at z = 10; the centre is placed d away from it.
  nrLOD* one = groupOf<nrLOD>("l", {new tstQuad("a", red)});
  for (float d : {999999.0f, 1000000.0f, 2000000.0f}) {
    one->setCenter(nrVec3f(0, 0, 10 - d));
    EXPECT_EQ(draw(one), 0);
    EXPECT_EQ(tstDrawn, d < 1000000 ? "pre(l) a post(l) " : "") << d;
  }
  one->unref();

  tstQuad* quads[] = {new tstQuad("a", red), new tstQuad("b", green), new tstQuad("c", blue)};
  nrLOD* lod = groupOf<nrLOD>("l", {quads[0], quads[1], quads[2]});
  for (int i = 0; i < 3; ++i) lod->setRange(i, float(4 << i), float(8 << i));
  struct { float distance; int override, offset; const char* drawn; } cases[] = {
      {3, 0, 0, ""}, {4, 0, 0, "a"}, {8, 0, 0, "b"},  {31, 0, 0, "c"}, {32, 0, 0, ""},       {3, 1, 0, ""},
      {4, 1, 0, "b"}, {16, 1, 0, "c"}, {4, 0, 1, "b"}, {4, 2, 1, "c"}, {8, 0, INT_MAX, "c"}, {8, INT_MAX, 0, "c"}};
  for (const auto& c : cases) {
    SCOPED_TRACE(testing::Message() << c.distance << " " << c.override << " " << c.offset);
    lod->setOffsetOverride(c.override);
    nrLOD::setOffset(c.offset);
    lod->setCenter(nrVec3f(0, 0, 10 - c.distance));
    EXPECT_EQ(draw(lod), 0);
    EXPECT_EQ(tstDrawn, *c.drawn ? std::string("pre(l) ") + c.drawn + " post(l) " : "");
    // What shows right of the centre; picking follows the last draw, nothing when that drew nothing.
    tstQuad* shown = *c.drawn ? quads[*c.drawn - 'a'] : nullptr;
    EXPECT_TRUE(pixel(33, 33).almostEqual(shown ? shown->color : black, 0.02f));
    EXPECT_EQ(pick(lod, down).getGeometry(), shown ? shown->asGeometry() : nullptr);
    nrContainer* copy = lod->clone(nrContainer::COPY_CLONE);
    copy->ref();
    EXPECT_EQ(pick(static_cast<nrNode*>(copy), down).getGeometry(), shown ? shown->asGeometry() : nullptr)
        << "a copy picks as its source";
    copy->unref();
  }
  nrLOD::setOffset(0);
  lod->setOffsetOverride(0);
  lod->setCenter(nrVec3f(0, 0, 6));
  nrLOD* copy = static_cast<nrLOD*>(lod->clone(nrContainer::COPY_CLONE));
  copy->ref();
  draw(copy);
  EXPECT_EQ(tstDrawn, "pre(l) a post(l) ") << "a copy keeps the given centre, not its bound's";
  copy->unref();
  nrTransformAction placed;
  lod->setCenter(nrVec3f(0, 0, -3));
  EXPECT_EQ(lod->whichChild(&placed), -1);
  EXPECT_EQ(lod->whichChild(nullptr), -1) << "no action, no eye";
  lod->unref();
}

TEST_F(Selection, CullingEntersWhatDrawingDraws) {
  nrTransform* behind = groupOf<nrTransform>("u", {new tstQuad("b", red)});
  behind->setTranslation(0, 0, 20);
  nrSwitch* sw = groupOf<nrSwitch>("s", {new tstQuad("c", red), new tstQuad("d", red)});
  sw->setWhichChild(1);
  nrLOD* lod = groupOf<nrLOD>("l", {new tstQuad("e", red), new tstQuad("f", red)});
  lod->setRange(0, 0, 5);
  lod->setRange(1, 5, 50);
  nrBillboard* board = groupOf<nrBillboard>("b", {new tstQuad("g", red), new tstQuad("h", red)});
  board->setPosition(1, 2, 0, 0);
  nrTransform* seen = groupOf<nrTransform>("t", {new tstQuad("a", red)});
  nrGroup* root = groupOf<nrGroup>("r", {seen, behind, sw, lod, board});
  const char* expected = "pre(r) pre(t) a post(t) pre(s) d post(s) pre(l) f post(l) pre(b) g h post(b) post(r) ";
  draw(root);
  EXPECT_EQ(tstDrawn, expected);
  tstDrawn.clear();
  tstHooks cull;
  cull.setCamera(camera);
  EXPECT_EQ(cull.nrVFCullAction::apply(root), 0);
  EXPECT_EQ(tstDrawn, expected);
  EXPECT_EQ(cull.getCullDepth(), 0);
  nrtest::unref(seen, behind, sw, lod, board, root);
}

TEST_F(Selection, AxialBillboardShowsTheSameFaceAllAroundAndPicksItAsDrawn) {
  tstQuad* quad = new tstQuad("q", blue);
  nrBillboard* board = groupOf<nrBillboard>("", {quad});
  // Along +x beside the quad's unturned plane: only the turned quad is met.
  const nrSeg along(nrVec3f(-10, 0.5f, 0.3f), nrVec3f(1, 0, 0), 100);
  EXPECT_EQ(pick(board, along).getGeometry(), nullptr);
  nrOrthoCamera* ortho = nrtest::held<nrOrthoCamera>();
  ortho->setWidth(4);
  ortho->setHeight(4);
  for (nrCamera* cam : {static_cast<nrCamera*>(ortho), static_cast<nrCamera*>(camera)}) {
    for (float degrees : {0.0f, 90.0f, 150.0f, 180.0f, 270.0f}) {
      float a = degrees * float(M_PI) / 180;
      cam->setPosition(5 * std::sin(a), 0.5f, 5 * std::cos(a));
      cam->setOrientation(0, 1, 0, a);
      draw(board, cam);
      EXPECT_TRUE(pixel(26, 33).almostEqual(white, 0.02f)) << degrees;
      EXPECT_TRUE(pixel(38, 33).almostEqual(blue, 0.02f)) << degrees;
    }
  }
  // Last drawn from -x.
  nrHit hit = pick(board, along);
  EXPECT_EQ(hit.getGeometry(), quad->asGeometry());
  EXPECT_TRUE(hit.getWorldPoint().almostEqual(nrVec3f(0, 0.5f, 0.3f), 1e-4f));
  auto* copy = static_cast<nrBillboard*>(board->clone(nrContainer::COPY_CLONE));
  copy->ref();
  EXPECT_EQ(pick(copy, along).getGeometry(), quad->asGeometry()) << "a copy picks as its source was drawn";
  nrtest::unref(copy, ortho, board);
}

TEST_F(Selection, FacingRotationTurnsForwardToTheViewerAndKeepsTheChosenUp) {
  // Cameras looking at the origin: rolled by 0.5 on the z axis, tilted down
  // from (0, 3, 4), from the side at (4, 0, 3), and straight down the axis.
  struct { nrVec3f at; nrRotation turn; } cameras[] = {
      {{0, 0, 5}, {0, 0, 1, 0.5f}}, {{0, 3, 4}, {1, 0, 0, -std::atan2(3.0f, 4.0f)}},
      {{4, 0, 3}, {0, 1, 0, std::atan2(4.0f, 3.0f)}}, {{0, 5, 0}, {1, 0, 0, -float(M_PI / 2)}}};
  const nrVec3f y(0, 1, 0), z(0, 0, 1), side(0.8f, 0, 0.6f), tilted(0, 0.6f, 0.8f), tiltedUp(0, 0.8f, -0.6f);
  // Where the children's forward (+z) and up (+y) turn to; no rotation at all
  // for an axial billboard seen along its axis.
  struct { int camera; nrBillboard::ModeEnum mode; nrVec3f forward, up; } cases[] = {
      {1, nrBillboard::AXIAL, z, y},          {2, nrBillboard::AXIAL, side, y},
      {3, nrBillboard::AXIAL, z, y},          {0, nrBillboard::POINT_SCREEN, z, {-std::sin(0.5f), std::cos(0.5f), 0}},
      {1, nrBillboard::POINT_SCREEN, tilted, tiltedUp}, {2, nrBillboard::POINT_SCREEN, side, y},
      {0, nrBillboard::POINT_OBJECT, z, y},   {1, nrBillboard::POINT_OBJECT, tilted, tiltedUp}};
  nrBillboard* board = groupOf<nrBillboard>("", {});
  for (const auto& c : cases) {
    const nrVec3f& at = cameras[c.camera].at;
    const nrRotation& o = cameras[c.camera].turn;
    camera->setPosition(at[0], at[1], at[2]);
    camera->setOrientation(o.axis[0], o.axis[1], o.axis[2], o.angle);
    board->setMode(c.mode);
    nrDrawAction action;
    action.setCamera(camera);
    action.apply(nullptr);
    nrMatrix4f R;
    EXPECT_EQ(board->calculateTransform(&action, R), c.camera != 3);
    nrVec3f forward, up, x, sideways;
    forward.xformVec(z, R);
    up.xformVec(y, R);
    x.xformVec(nrVec3f(1, 0, 0), R);
    sideways.cross(up, forward);
    EXPECT_TRUE(forward.almostEqual(c.forward, 1e-4f) && up.almostEqual(c.up, 1e-4f) && x.almostEqual(sideways, 1e-4f))
        << c.camera << " " << c.mode;
  }
  // The axis also goes in and comes out as a vector.
  board->setAxisOfRotation(nrVec3f(1, 0, 0));
  nrVec3f axis;
  board->getAxisOfRotation(axis);
  EXPECT_EQ(axis, nrVec3f(1, 0, 0));
  board->unref();
}

TEST(nrBillboard, BoundEnclosesEveryOrientationAtEachPosition) {
  tstLeaf* off = new tstLeaf(nrSphereBound(nrVec3f(1, 0, 0), 0.5f));
  nrBillboard* board = groupOf<nrBillboard>("", {off});
  board->setPosition(0, 0, 2, 0);
  nrSphereBound s;
  board->getSphereBound(s);
  EXPECT_TRUE(s.center.almostEqual(nrVec3f(0, 2, 0), 1e-5f));
  EXPECT_NEAR(s.radius, 1.5f, 1e-5f);
  // A second child past the positions sits at the origin.
  board->addChild(new tstLeaf(nrSphereBound(nrVec3f(0, 0, 0), 0.5f)));
  board->getSphereBound(s);
  EXPECT_NEAR(s.radius, 2.0f, 1e-4f);
  board->unref();
}
