#include <gtest/gtest.h>

#include "nerio3d/nodes/nrBillboard.h"
#include "nerio3d/render/nrPerspCamera.h"
#include "nrCapture.h"
#include "nrHeld.h"
#include "nrTraversalTestTypes.h"

namespace {

// Leaves lie on the view axis in front of the eye unless placed elsewhere.
tstVisited* leaf(const char* name, const nrVec3f& at = nrVec3f(0, 0, -10)) {
  tstVisited* n = new tstVisited;
  n->setName(name);
  n->setSphereBound(nrSphereBound(at, 1));
  return n;
}

// Holds a root {a, sub {b}, c} and runs one of the four visits over it.
class nrActionTraversal : public testing::Test {
 protected:
  void SetUp() override {
    tstTrace.clear();
    a = leaf("a");
    b = leaf("b");
    c = leaf("c");
    sub = group("sub", {b});
    root = group("root", {a, sub, c});
    root->ref();
    rec.setCamera(new nrPerspCamera);
  }
  void TearDown() override { root->unref(); }

  nrTravDirective run(const char* kind) {
    tstTrace.clear();
    std::string k = kind;
    if (k == "visit") return rec.nrAction::apply(root);
    if (k == "transform") return rec.nrTransformAction::apply(root);
    if (k == "cull") return rec.nrVFCullAction::apply(root);
    return rec.apply(root);
  }

  tstRecorder rec;
  tstVisited *a, *b, *c;
  nrGroup *sub, *root;
};

}  // namespace

TEST_F(nrActionTraversal, EveryVisitBracketsChildrenWithPreAndPostAndTheWholeWithBeginAndEnd) {
  for (const char* kind : {"visit", "transform", "cull", "draw"}) {
    std::string k = kind;
    EXPECT_EQ(run(kind), 0) << k;
    EXPECT_EQ(tstTrace, "begin(root) pre(root) " + k + "(a) pre(sub) " + k + "(b) post(sub) " + k + "(c) post(root) end(root) ");
    EXPECT_EQ(rec.getCullDepth(), 0) << k;
  }
}

TEST_F(nrActionTraversal, DirectivesCombineByTheLargerValue) {
  // What a, b and the hooks answer; the result and the trace between the root's hooks.
  const struct { const char* kind; nrTravDirective a, b, preSub, postSub, postRoot, result; const char* inner; } cases[] = {
      {"visit", 0, 2, 0, 0, 0, 2, "visit(a) pre(sub) visit(b) post(sub) "},
      {"draw", 1, 0, 0, 0, 0, 0, "draw(a) pre(sub) draw(b) post(sub) draw(c) "},
      {"transform", 0, 0, 1, 0, 0, 0, "transform(a) pre(sub) post(sub) transform(c) "},
      {"cull", 0, 0, 2, 0, 0, 2, "cull(a) pre(sub) post(sub) "},
      {"visit", 0, 0, 0, 1, 1, 1, "visit(a) pre(sub) visit(b) post(sub) visit(c) "}};
  for (const auto& c : cases) {
    a->result = c.a;
    b->result = c.b;
    rec.pre["sub"] = c.preSub;
    rec.post["sub"] = c.postSub;
    rec.post["root"] = c.postRoot;
    EXPECT_EQ(run(c.kind), c.result) << &c - cases;
    EXPECT_EQ(tstTrace, "begin(root) pre(root) " + std::string(c.inner) + "post(root) end(root) ");
  }
  rec.pre.clear();
  rec.post.clear();
  b->result = 2;
  EXPECT_EQ(sub->visit(&rec), 2);
}

TEST_F(nrActionTraversal, GroupsOutsideTheViewArePrunedWithoutTheirHooks) {
  tstVisited* hidden = leaf("hidden", nrVec3f(0, 0, 10));
  sub->addChild(hidden);
  sub->removeChild(b);
  EXPECT_EQ(run("draw"), 0);
  EXPECT_EQ(tstTrace, "begin(root) pre(root) draw(a) draw(c) post(root) end(root) ");
  EXPECT_EQ(run("cull"), 0);
  EXPECT_EQ(tstTrace, "begin(root) pre(root) cull(a) cull(c) post(root) end(root) ");

  tstTrace.clear();
  EXPECT_EQ(sub->drawVisit(&rec), 1);
  EXPECT_EQ(tstTrace, "");
  EXPECT_EQ(rec.getCullDepth(), 0);

  a->setSphereBound(nrSphereBound(nrVec3f(0, 0, 10), 1));
  c->setSphereBound(nrSphereBound(nrVec3f(0, 0, 10), 1));
  EXPECT_EQ(run("draw"), 1);
  EXPECT_EQ(tstTrace, "begin(root) end(root) ");
}

TEST_F(nrActionTraversal, ScenesDeeperThanTheCullLimitReportEachLevelAndStillDraw) {
  nrGroup* chain = group("deep", {leaf("bottom")});
  for (int i = 1; i < 300; ++i) chain = group("deep", {chain});
  root->addChild(chain);
  nrTravDirective d = 1;
  std::string err = nrtest::captureStderr([&] { d = run("draw"); });
  EXPECT_EQ(d, 0);
  std::string line = "nrVFCullAction::pushCull() Scene graph is too deep (256)\n";
  std::string expected;
  // The root and 300 nested groups: every level from the 256th on reports.
  for (int i = 0; i < 301 - 255; ++i) expected += line;
  EXPECT_EQ(err, expected);
  EXPECT_NE(tstTrace.find("draw(bottom)"), std::string::npos);
  EXPECT_EQ(rec.getCullDepth(), 0);
}

TEST_F(nrActionTraversal, PickingEntersOnlyGroupsTheSegmentMeetsAndSoundEntersAll) {
  nrGroup* aside = group("aside", {leaf("far", nrVec3f(10, 0, -10))});
  // Null children, which a larger child count leaves, are passed over.
  sub->setChildCount(2);
  root->addChild(aside);
  nrBillboard* turned = new nrBillboard;
  turned->setChildCount(1);
  turned->addChild(leaf("d"));
  root->addChild(turned);
  nrIsectAction pick;
  pick.setSeg(nrSeg(nrVec3f(0, 0, 0), nrVec3f(0, 0, -1), 100));
  pick.apply(root);
  // The root enters the path once for the action and once as a group.
  EXPECT_EQ(tstTrace, "isect(a<root/2) isect(b<sub/3) isect(c<root/2) isect(d<null/3) ");
  EXPECT_EQ(pick.getPath().getCount(), 0u);

  tstTrace.clear();
  nrSoundAction sound;
  EXPECT_EQ(sound.apply(root), 0);
  EXPECT_EQ(tstTrace, "sound(a) sound(b) sound(c) sound(far) sound(d) ");
  for (const char* kind : {"visit", "transform", "cull", "draw"}) run(kind);

  // A leaf that empties its group from inside its visit: neither it nor the
  // siblings it drops are touched again.
  for (const char* kind : {"pick", "sound", "billboard pick"}) {
    tstVisited* dropper = leaf("dropper");
    dropper->dropsGroup = true;
    nrGroup* doomed = std::string(kind) == "billboard pick" ? new nrBillboard : new nrGroup;
    doomed->addChild(dropper);
    doomed->addChild(leaf("gone"));
    root->addChild(doomed);
    tstTrace.clear();
    if (std::string(kind) == "sound")
      sound.apply(root);
    else
      pick.apply(root);
    EXPECT_NE(tstTrace.find("(dropper"), std::string::npos) << kind;
    EXPECT_EQ(tstTrace.find("(gone"), std::string::npos) << kind;
    EXPECT_EQ(doomed->getNumChildren(), 0) << kind;
  }
}

TEST(nrAction, BaseActionsOnALeafReturnItsVisitAndNullDrawsNothing) {
  nrNode* plain = nrtest::held<nrNode>();
  nrAction base;
  nrTransformAction transform;
  nrVFCullAction cull;
  nrDrawAction draw;
  nrAction* actions[] = {&base, &transform, &cull, &draw};
  for (nrAction* action : actions) {
    EXPECT_EQ(action->apply(plain), 0) << action->getType()->getName();
    nrAction* made = action->instantiate();
    EXPECT_EQ(made->getType(), action->getType());
    made->unref();
  }
  tstVisited* stop = nrtest::held<tstVisited>();
  stop->result = 2;
  EXPECT_EQ(base.apply(stop), 2);
  nrtest::unref(stop, plain);

  tstRecorder rec;
  tstTrace.clear();
  EXPECT_EQ(rec.apply(nullptr), 0);
  EXPECT_EQ(tstTrace, "begin(null) end(null) ");
  nrSoundAction sound;
  EXPECT_EQ(base.apply(nullptr), 0);
  EXPECT_EQ(sound.apply(nullptr), 0);

  // Pops without pushes leave the base level and its scale flag in place.
  nrtest::captureStderr([&] {
    transform.popMatrix();
    transform.popMatrix();
  });
  EXPECT_EQ(transform.getScaleFlags().getCount(), 1u);
  EXPECT_EQ(transform.pushMatrix(), 1);
  EXPECT_EQ(transform.getScaleFlags().getCount(), 2u);
  // A level pushed on the stack itself and left through the action keeps the flags in step.
  transform.getMatStack()->push();
  transform.popMatrix();
  transform.popMatrix();
  EXPECT_EQ(transform.getScaleFlags().getCount(), 1u);

  nrBillboard* board = nrtest::held<nrBillboard>();
  nrMatrix4f turn;
  EXPECT_FALSE(board->calculateTransform(nullptr, turn));
  board->unref();
}

TEST(nrVFCullAction, PushCullTestsTheSphereInEyeCoordinates) {
  nrVFCullAction cull;
  cull.setCamera(new nrPerspCamera);
  cull.reset();
  nrSphereBound atEye(nrVec3f(0, 0, 0), 0.5f);
  EXPECT_EQ(cull.pushCull(atEye), 0);
  EXPECT_EQ(cull.getCullDepth(), 1);
  cull.popCull();
  cull.popCull();
  EXPECT_EQ(cull.getCullDepth(), 0);

  cull.getMatStack()->getTop()->makeTrans(0, 0, -10);
  EXPECT_EQ(cull.pushCull(atEye), 7);
  EXPECT_EQ(cull.pushCull(nrSphereBound(nrVec3f(0, 0, 0), 50)), 3);
  EXPECT_EQ(cull.getCullResult(), 3);

  cull.reset();
  EXPECT_EQ(cull.getCullDepth(), 0);
  EXPECT_EQ(cull.pushCull(atEye), 0);
}
