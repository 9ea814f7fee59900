// Reports the pointer over the geometry next to it: isOver while it hovers,
// the hit point, normal and texture coordinate in the sensor's coordinates,
// isActive while a button is held, and touchTime when a button goes up over it.
#pragma once

#include "nerio3d/core/nrTime.h"
#include "nerio3d/events/nrPickSensor.h"
#include "nerio3d/math/nrVec2f.h"
#include "nerio3d/math/nrVec3f.h"

class nrTouchSensor : public nrPickSensor {
  NR_DECLARE_CONTAINER_TYPE(nrTouchSensor)

  enum { HIT_NORMAL_FIELD = 4, HIT_POINT_FIELD, HIT_TEX_COORD_FIELD, IS_OVER_FIELD, TOUCH_TIME_FIELD };

  nrTouchSensor() : nrTouchSensor(getClassType()) {}
  explicit nrTouchSensor(nrType* type);
  ~nrTouchSensor() override;

  nrVec3f getHitNormal() const { return getFieldValue(hitNormal, HIT_NORMAL_FIELD); }
  nrVec3f getHitPoint() const { return getFieldValue(hitPoint, HIT_POINT_FIELD); }
  // Set only when the geometry hit has texture coordinates.
  nrVec2f getHitTexCoord() const { return getFieldValue(hitTexCoord, HIT_TEX_COORD_FIELD); }
  // The same, read into a value passed by reference.
  void getHitNormal(nrVec3f& v) const { v = getHitNormal(); }
  void getHitPoint(nrVec3f& v) const { v = getHitPoint(); }
  void getHitTexCoord(nrVec2f& v) const { v = getHitTexCoord(); }
  unsigned char getIsOver() const { return getFieldValue(isOver, IS_OVER_FIELD); }
  nrTime getTouchTime() const { return getFieldValue(touchTime, TOUCH_TIME_FIELD); }

  void beginGrab(const nrHit& hit) override;
  void motion(const nrHit& hit) override;
  void endGrab(const nrHit& hit) override;
  void copy(nrContainer* from, nrCloneTable* table) override;
  using nrPickSensor::copy;

 protected:
  nrVec3f hitNormal;
  nrVec3f hitPoint;
  nrVec2f hitTexCoord;
  unsigned char isOver;
  nrTime touchTime;

 private:
  bool over;
};
