// Turns a virtual ball: while a button is held over the geometry next to it,
// the pointer is followed on the sphere about the sensor's origin through the
// point first grabbed (off the sphere, on the point of it nearest the
// pointer's ray), and rotation_changed reports offset followed by the turn
// that carries the grabbed point to the followed one. trackPoint_changed
// reports the point followed. With autoOffset on (the default) the release
// makes the last rotation the new offset.
#pragma once

#include "nerio3d/events/nrDragSensor.h"
#include "nerio3d/math/nrRotation.h"

class nrSphereSensor : public nrDragSensor<nrRotation> {
  NR_DECLARE_CONTAINER_TYPE(nrSphereSensor)

  enum { AUTO_OFFSET_FIELD = 4, OFFSET_FIELD, ROTATION_FIELD, TRACK_POINT_FIELD };

  nrSphereSensor() : nrSphereSensor(getClassType()) {}
  explicit nrSphereSensor(nrType* type);
  ~nrSphereSensor() override;

  void setOffset(float x, float y, float z, float angle) {
    setFieldValue(offset, nrRotation(x, y, z, angle), OFFSET_FIELD);
  }
  nrRotation getRotation() const { return getFieldValue(output, ROTATION_FIELD); }

  void motion(const nrHit& hit) override;
};
