#include "SceneView.h"

#include "SceneStats.h"
#include "nerio3d/actions/nrDrawAction.h"
#include "nerio3d/nodes/nrGroup.h"
#include "nerio3d/render/nrAppearance.h"
#include "nerio3d/render/nrContext.h"
#include "nerio3d/render/nrDirectionalLight.h"
#include "nerio3d/render/nrPerspCamera.h"

SceneView::SceneView(nrGroup* scene)
    : root(new nrGroup),
      headlight(new nrDirectionalLight),
      camera(new nrPerspCamera),
      action(new nrDrawAction),
      lines(new nrAppearance) {
  root->ref();
  camera->ref();
  action->ref();
  lines->ref();
  // Beside the scene rather than under a transform: groups end the lights
  // placed inside them.
  root->addChild(headlight);
  root->addChild(scene);
  SceneStats stats(scene);
  setHeadlight(stats.lights == 0);
  box = stats.box;
  action->setCamera(camera);
  // Every element but the polygon mode stays the scene's own.
  lines->setInherit(nrBitMask::fromBits(~uint64_t(0)));
  lines->setPolyMode(nrContext::LINE_PMODE);
}

SceneView::~SceneView() {
  lines->unref();
  action->unref();
  camera->unref();
  root->unref();
}

void SceneView::setHeadlight(bool on) { headlight->setOn(on); }

bool SceneView::getHeadlight() const { return headlight->getOn(); }

void SceneView::draw(nrContext* context, int width, int height) {
  examiner.setViewport(width, height);
  if (!framed) examiner.frame(box);
  framed = true;
  examiner.place(camera);
  // The headlight shines along the view.
  nrVec3f forward;
  forward.negate(examiner.getAxis(2));
  headlight->setDirection(forward);

  context->setViewport(0, 0, width, height);
  context->setDepthEnable(1);
  context->clear(nrContext::COLOR_CLEAR | nrContext::DEPTH_CLEAR, 0.11f, 0.12f, 0.15f, 1);
  if (wireframe) context->pushOverrideAppearance(lines);
  camera->draw(action);
  action->apply(root);
  if (wireframe) context->popOverrideAppearance();
}
