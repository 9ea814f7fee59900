#include "nrTraversalTestTypes.h"

std::string tstTrace;

NR_DEFINE_TYPE(tstRecorder, nrDrawAction, "tstRecorder") {}
NR_DEFINE_TYPE(tstVisited, nrNode, "tstVisited") {}
NR_DEFINE_TYPE(tstBall, nrNode, "tstBall") {}

tstBall* tstMakeBall(float x, float y, float z, float r) {
  tstBall* ball = new tstBall;
  ball->setSphereBound(nrSphereBound(nrVec3f(x, y, z), r));
  return ball;
}

nrTransform* tstPlace(nrNode* child, const nrVec3f& translation, float scale) {
  nrTransform* t = new nrTransform;
  t->setTranslation(translation[0], translation[1], translation[2]);
  if (scale != 1) t->setScale(scale, scale, scale);
  t->addChild(child);
  return t;
}
