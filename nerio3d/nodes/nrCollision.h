// Group that carries the collision settings of a scene file: whether its
// children collide, and a simpler proxy to collide with instead. No collision
// detection is performed; the node draws and picks as a plain group.
#pragma once

#include "nerio3d/math/nrVec3f.h"
#include "nerio3d/nodes/nrGroup.h"

class nrCollision : public nrGroup {
  NR_DECLARE_CONTAINER_TYPE(nrCollision)

  enum { COLLIDE_FIELD = 3, PROXY_FIELD, BBOX_CENTER_FIELD, BBOX_SIZE_FIELD };

  nrCollision() : nrCollision(getClassType()) {}
  explicit nrCollision(nrType* type);
  ~nrCollision() override;

  void setCollide(unsigned char on) { setFieldValue(collide, on, COLLIDE_FIELD); }
  unsigned char getCollide() const;
  // Held, never drawn; refused with a warning when node is this collision or holds it.
  void setProxy(nrNode* node);
  nrNode* getProxy() const;
  // The box the file declares around the children (a size of -1 declares
  // none); kept as given, the bound is computed from the children.
  void setBboxCenter(float x, float y, float z) { setFieldValue(bboxCenter, nrVec3f(x, y, z), BBOX_CENTER_FIELD); }
  void getBboxCenter(float* x, float* y, float* z) const { getVec(bboxCenter, BBOX_CENTER_FIELD, x, y, z); }
  void setBboxSize(float x, float y, float z) { setFieldValue(bboxSize, nrVec3f(x, y, z), BBOX_SIZE_FIELD); }
  void getBboxSize(float* x, float* y, float* z) const { getVec(bboxSize, BBOX_SIZE_FIELD, x, y, z); }

 protected:
  unsigned char collide;
  nrContainer* proxy;
  nrVec3f bboxCenter;
  nrVec3f bboxSize;
};
