#include <gtest/gtest.h>

#include <cmath>

#include "../render/nrRenderFixture.h"
#include "nerio3d/actions/nrCompileAction.h"
#include "nerio3d/render/nrOrthoCamera.h"
#include "nerio3d/render/nrPerspCamera.h"
#include "nrCapture.h"
#include "nrTraversalTestTypes.h"

namespace {

using DrawAction = nrtest::ContextTest;

// Changes the OpenGL shade model the way geometry does, unrecorded, while the
// traversal's context state is pushed.
class tstFlatInBegin : public nrDrawAction {
 public:
  void begin(nrNode*) override {
    getContext()->setRecordEnable(0);
    getContext()->setShadeModel(nrContext::FLAT_SHADE);
    getContext()->setRecordEnable(1);
  }
};

}  // namespace

TEST_F(DrawAction, ApplyBracketsTheTraversalWithTheContextStateAndNeedsACamera) {
  tstFlatInBegin draw;
  context->setNormalizeEnable(1);
  // A null root needs no camera and still pushes and pops the state.
  EXPECT_EQ(draw.apply(nullptr), 0);
  EXPECT_EQ(draw.getContext(), context);
  EXPECT_EQ(getInt(GL_SHADE_MODEL), GL_SMOOTH);
  EXPECT_FALSE(isOn(GL_NORMALIZE));

  tstRecorder rec;
  tstVisited* leaf = nrtest::held<tstVisited>();
  tstTrace.clear();
  EXPECT_EQ(nrtest::captureStderr([&] { EXPECT_EQ(rec.apply(leaf), 0); }),
            "nrDrawAction::apply() - no camera set, nothing traversed\n");
  nrVFCullAction cull;
  EXPECT_EQ(nrtest::captureStderr([&] { EXPECT_EQ(cull.apply(leaf), 0); }),
            "nrVFCullAction::apply() - no camera set, nothing traversed\n");
  EXPECT_EQ(tstTrace, "");
  leaf->unref();
}

TEST_F(DrawAction, ViewVectorIsTheViewingAxisForOrthographicAndTheEyeForPerspective) {
  nrOrthoCamera* ortho = nrtest::held<nrOrthoCamera>();
  nrPerspCamera* persp = nrtest::held<nrPerspCamera>();
  nrDrawAction draw;
  for (nrCamera* camera : {static_cast<nrCamera*>(ortho), static_cast<nrCamera*>(persp)}) {
    camera->setPosition(1, 2, 3);
    // Turned to look down -x: the eye's z axis is +x.
    camera->setOrientation(0, 1, 0, float(M_PI / 2));
    draw.setCamera(camera);
    draw.apply(nullptr);
    draw.setViewVector(nrVec3f(0, 0, 0));
    draw.updateViewVector();
    nrVec3f expected = camera == ortho ? nrVec3f(1, 0, 0) : nrVec3f(1, 2, 3);
    EXPECT_TRUE(draw.getViewVector().almostEqual(expected, 1e-5f)) << camera->getType()->getName();
    EXPECT_EQ(draw.getOrthographic(), camera == ortho);
  }
  nrtest::unref(persp, ortho);
}

TEST_F(DrawAction, CompileActionHandsOverTheContextAndDrawsNothing) {
  nrCompileAction compile;
  EXPECT_EQ(compile.getContext(), context);
  EXPECT_EQ(compile.getDrawAction()->getContext(), context);

  tstVisited* leaf = nrtest::held<tstVisited>();
  nrGroup* root = nrtest::held<nrGroup>();
  root->addChild(leaf);
  tstTrace.clear();
  nrGLRecorder rec;
  EXPECT_EQ(compile.apply(root), 0);
  EXPECT_TRUE(rec.calls().empty());
  EXPECT_EQ(tstTrace, "");

  // A context destroyed after a traversal leaves no stale pointer behind:
  // drawing a camera before the next apply goes to the current context.
  nrPerspCamera* camera = nrtest::held<nrPerspCamera>();
  nrDrawAction* draw = nrtest::held<nrDrawAction>();
  nrContext* other = new nrContext(drawable);
  other->ref();
  other->makeCurrent(drawable);
  compile.apply(root);
  draw->setContext(other);
  other->unref();
  EXPECT_EQ(draw->getContext(), nullptr);
  context->makeCurrent(drawable);
  EXPECT_EQ(compile.getContext(), context);
  camera->draw(draw);
  nrtest::unref(root, leaf, camera, draw);
}
