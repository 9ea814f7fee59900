#include "SceneView.h"

#include "SceneStats.h"
#include "nerio3d/actions/nrDrawAction.h"
#include "nerio3d/nodes/nrSwitch.h"
#include "nerio3d/nodes/nrTransform.h"
#include "nerio3d/render/nrAppearance.h"
#include "nerio3d/render/nrContext.h"
#include "nerio3d/render/nrDirectionalLight.h"
#include "nerio3d/render/nrPerspCamera.h"

SceneView::SceneView(nrGroup* scene)
    : root(new nrGroup),
      headlight(new nrSwitch),
      headlightPlace(new nrTransform),
      camera(new nrPerspCamera),
      action(new nrDrawAction),
      lines(new nrAppearance) {
  root->ref();
  camera->ref();
  action->ref();
  lines->ref();
  // The headlight shines along the view, from a transform that follows the camera.
  nrDirectionalLight* light = new nrDirectionalLight;
  light->setDirection(0, 0, -1);
  headlightPlace->addChild(light);
  headlight->addChild(headlightPlace);
  root->addChild(headlight);
  root->addChild(scene);
  SceneStats stats(scene);
  setHeadlight(stats.lights == 0);
  examiner.frame(stats.bound);
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

void SceneView::setHeadlight(bool on) {
  headlightOn = on;
  headlight->setWhichChild(on ? 0 : nrSwitch::NO_CHILD);
}

void SceneView::draw(nrContext* context, int width, int height) {
  examiner.setViewport(width, height);
  examiner.place(camera);
  nrVec3f eye = examiner.getEye();
  const nrRotation& turn = examiner.getOrientation();
  headlightPlace->setTranslation(eye[0], eye[1], eye[2]);
  headlightPlace->setRotation(turn.axis[0], turn.axis[1], turn.axis[2], turn.angle);

  context->setViewport(0, 0, width, height);
  context->setDepthEnable(1);
  context->clear(nrContext::COLOR_CLEAR | nrContext::DEPTH_CLEAR, 0.11f, 0.12f, 0.15f, 1);
  if (wireframe) context->pushOverrideAppearance(lines);
  camera->draw(action);
  action->apply(root);
  if (wireframe) context->popOverrideAppearance();
}
