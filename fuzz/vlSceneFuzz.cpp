// libFuzzer target: a scene read from arbitrary bytes is then used as an
// application would use it: bounded, drawn offscreen, picked, animated by its
// time sensors, written out, copied and drawn again. Whatever the scene,
// each of these must end without errors of memory or behaviour.
#include "vlFuzzRead.h"

namespace {

const int kSize = 32;
nrContext* context = nullptr;
nrPerspCamera* camera = nullptr;

void draw(nrNode* root) {
  context->clear(nrContext::COLOR_CLEAR | nrContext::DEPTH_CLEAR, 0, 0, 0, 1);
  nrDrawAction action;
  action.setCamera(camera);
  camera->draw(&action);
  action.apply(root);
}

void pick(nrNode* root) {
  static const int pixels[][2] = {{kSize / 2, kSize / 2}, {1, 2}, {kSize - 3, kSize - 5}};
  for (const auto& p : pixels) {
    nrHit* hit = new nrHit;
    hit->ref();
    camera->pick(root, p[0], p[1], *hit, 0, 0, kSize, kSize);
    hit->unref();
  }
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  if (!vlFuzzInit()) return 1;
  nrDrawable* drawable = nrDrawable::createOffscreen(kSize, kSize);
  if (!drawable) return 1;
  context = new nrContext(drawable);
  context->ref();
  context->makeCurrent(drawable);
  context->setViewport(0, 0, kSize, kSize);
  camera = new nrPerspCamera;
  camera->ref();
  camera->setPosition(0, 0, 10);
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  nrContainer* read = vlFuzzRead(data, size);
  if (!read) return 0;
  if (read->isOfType(nrNode::getClassType())) {
    nrNode* root = static_cast<nrNode*>(read);
    root->getSphereBound();
    draw(root);
    pick(root);
    nrTimeSensor::updateSensors();
    draw(root);
    {
      nrOutput out("/dev/null");
      out.write(root);
    }
    nrContainer* copy = root->clone(nrContainer::DEEP_CLONE);
    if (copy) {
      copy->ref();
      if (copy->isOfType(nrNode::getClassType())) draw(static_cast<nrNode*>(copy));
      copy->unref();
    }
  }
  read->unref();
  return 0;
}
