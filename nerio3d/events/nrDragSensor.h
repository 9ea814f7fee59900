// What the plane and sphere sensors share: a grab fixes the sensor's
// coordinates and the point grabbed there; each drag motion reports the point
// followed and the sensor's output (Value: a translation or a rotation); the
// release makes the last output the offset when autoOffset is on and the
// pointer moved. The subclasses register the fields at their own indices.
#pragma once

#include "nerio3d/events/nrPickSensor.h"
#include "nerio3d/math/nrVec3f.h"

template <typename Value>
class nrDragSensor : public nrPickSensor {
 public:
  void setAutoOffset(unsigned char on) { setFieldValue(autoOffset, on, autoOffsetIndex); }
  unsigned char getAutoOffset() const { return getFieldValue(autoOffset, autoOffsetIndex); }
  Value getOffset() const { return getFieldValue(offset, offsetIndex); }
  nrVec3f getTrackPoint() const { return getFieldValue(trackPoint, trackPointIndex); }

  void beginGrab(const nrHit& hit) override {
    calcLocalHit(hit, toLocal, start);
    moved = false;
    setFieldValue(isActive, static_cast<unsigned char>(1), IS_ACTIVE_FIELD);
  }
  void endGrab(const nrHit&) override {
    setFieldValue(isActive, static_cast<unsigned char>(0), IS_ACTIVE_FIELD);
    if (moved && getAutoOffset()) setFieldValue(offset, output, offsetIndex);
  }
  // A copy made during a grab drags on from the point its source was grabbed at.
  void copy(nrContainer* from, nrCloneTable* table) override {
    nrPickSensor::copy(from, table);
    if (!from || from == this || from->getType() != this->getType()) return;
    const nrDragSensor* source = static_cast<const nrDragSensor*>(from);
    toLocal = source->toLocal;
    start = source->start;
    moved = source->moved;
  }
  using nrPickSensor::copy;

 protected:
  nrDragSensor(nrType* typeOfClass, short autoOffsetField, short offsetField, short trackPointField, short outputField)
      : nrPickSensor(typeOfClass),
        autoOffsetIndex(autoOffsetField),
        offsetIndex(offsetField),
        trackPointIndex(trackPointField),
        outputIndex(outputField),
        moved(false) {
    toLocal.makeIdent();
    start.set(0, 0, 0);
  }

  // The pointer's ray of this update in the coordinates fixed by the grab;
  // false when there is no grab or no ray.
  bool getDragRay(nrSeg& ray) { return isActive && getLocalPickRay(toLocal, ray); }
  void report(const nrVec3f& track, const Value& value) {
    moved = true;
    setFieldValue(trackPoint, track, trackPointIndex);
    setFieldValue(output, value, outputIndex);
  }

  unsigned char autoOffset;
  Value offset;
  nrVec3f trackPoint;
  Value output;
  const short autoOffsetIndex, offsetIndex, trackPointIndex, outputIndex;
  // Fixed for the length of a grab: world to sensor coordinates and the point grabbed.
  nrMatrix4f toLocal;
  nrVec3f start;
  bool moved;
};
