// Drags in a plane: while a button is held over the geometry next to it, the
// pointer is followed on the plane parallel to the sensor's z = 0 plane
// through the point first grabbed, and translation_changed reports how far
// it moved there, plus offset. Each coordinate of x and y is held between
// minPosition and maxPosition when the minimum is not above the maximum
// (the defaults, 0 and -1, leave both free); z is offset's. trackPoint_changed
// reports the point followed, unclamped. With autoOffset on (the default) the
// release makes the last translation the new offset, so the next drag goes on
// from there.
#pragma once

#include "nerio3d/events/nrDragSensor.h"
#include "nerio3d/math/nrVec2f.h"

class nrPlaneSensor : public nrDragSensor<nrVec3f> {
  NR_DECLARE_CONTAINER_TYPE(nrPlaneSensor)

  enum {
    AUTO_OFFSET_FIELD = 4,
    MAX_POSITION_FIELD,
    MIN_POSITION_FIELD,
    OFFSET_FIELD,
    TRACK_POINT_FIELD,
    TRANSLATION_FIELD
  };

  nrPlaneSensor() : nrPlaneSensor(getClassType()) {}
  explicit nrPlaneSensor(nrType* type);
  ~nrPlaneSensor() override;

  void setMaxPosition(float x, float y) { setFieldValue(maxPosition, nrVec2f(x, y), MAX_POSITION_FIELD); }
  nrVec2f getMaxPosition() const { return getFieldValue(maxPosition, MAX_POSITION_FIELD); }
  void setMinPosition(float x, float y) { setFieldValue(minPosition, nrVec2f(x, y), MIN_POSITION_FIELD); }
  nrVec2f getMinPosition() const { return getFieldValue(minPosition, MIN_POSITION_FIELD); }
  void setOffset(float x, float y, float z) { setFieldValue(offset, nrVec3f(x, y, z), OFFSET_FIELD); }
  nrVec3f getTranslation() const { return getFieldValue(output, TRANSLATION_FIELD); }

  void motion(const nrHit& hit) override;

 protected:
  nrVec2f maxPosition;
  nrVec2f minPosition;
};
