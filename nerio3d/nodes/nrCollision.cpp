#include "nerio3d/nodes/nrCollision.h"

#include "nerio3d/fields/nrSFRef.h"
#include "nerio3d/fields/nrSField.h"

NR_DEFINE_TYPE(nrCollision, nrGroup, "Collision") {
  nrSFUByte::addTypeField(type, "collide", COLLIDE_FIELD, static_cast<unsigned char>(1), &nrCollision::collide);
  nrSFRef::addTypeField(type, "proxy", PROXY_FIELD, nrNode::getClassType(), &nrCollision::proxy);
  nrSFVec3f::addTypeField(type, "bboxCenter", BBOX_CENTER_FIELD, nrVec3f(0, 0, 0), &nrCollision::bboxCenter);
  nrSFVec3f::addTypeField(type, "bboxSize", BBOX_SIZE_FIELD, nrVec3f(-1, -1, -1), &nrCollision::bboxSize);
}

nrCollision::nrCollision(nrType* type) : nrGroup(type) { initFieldDefaults(getClassType()); }

nrCollision::~nrCollision() { destroyFieldContents(getClassType()); }

unsigned char nrCollision::getCollide() const {
  return getFieldValue(collide, COLLIDE_FIELD);
}

// Refused with a warning, as by the field, when node is this collision or
// holds it: the proxy would close a cycle that writing and cloning follow.
void nrCollision::setProxy(nrNode* node) {
  const nrRefInfo* info = static_cast<nrRefInfo*>(getClassType()->getFieldInfo(PROXY_FIELD));
  if (!info->checkType("nrCollision::setProxy()", node, this)) return;
  refer(proxy, node);
  proxy = node;
  fieldChanged(PROXY_FIELD);
}

nrNode* nrCollision::getProxy() const {
  return static_cast<nrNode*>(getFieldValue(proxy, PROXY_FIELD));
}
