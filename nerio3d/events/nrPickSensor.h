// Base of the sensors that react to the pointer over geometry. Once per
// pointer event the window hands the pointer to updateSensors, which picks the
// scene, collects the enabled sensors nearest to the geometry hit (the
// children of the groups that hold it, or of the groups above when those have
// none) and drives them through beginGrab, motion and endGrab. A press grabs
// the sensors under the pointer until the release, wherever the pointer goes.
#pragma once

#include "nerio3d/actions/nrHit.h"
#include "nerio3d/math/nrMatrix4f.h"
#include "nerio3d/math/nrSeg.h"
#include "nerio3d/nodes/nrNode.h"

class nrCamera;
class nrPtrArray;

class nrPickSensor : public nrNode {
  NR_DECLARE_TYPE(nrPickSensor)

  enum { ENABLED_FIELD = 2, IS_ACTIVE_FIELD = 3 };

  nrPickSensor() : nrPickSensor(getClassType()) {}
  explicit nrPickSensor(nrType* type);
  ~nrPickSensor() override;

  void setEnabled(unsigned char on) { setFieldValue(enabled, on, ENABLED_FIELD); }
  unsigned char getEnabled() const { return getFieldValue(enabled, ENABLED_FIELD); }
  unsigned char getIsActive() const { return getFieldValue(isActive, IS_ACTIVE_FIELD); }

  // The pointer went down over the sensor, moved, went up. hit is the pick of
  // this update; it is empty when the pointer is over nothing.
  virtual void beginGrab(const nrHit& hit);
  virtual void motion(const nrHit& hit);
  virtual void endGrab(const nrHit& hit);

  // A copy of a sensor under the pointer or in a grab is listed with it, so
  // that it is told when the pointer leaves or the grab ends, as its source is.
  void copy(nrContainer* from, nrCloneTable* table) override;
  using nrNode::copy;

  // One pointer event at window pixel (x, y), y from the bottom row, with the
  // button state; picks root through camera with the current context's
  // viewport. Nothing without root or camera.
  static void updateSensors(nrNode* root, nrCamera* camera, int x, int y, int buttonDown);
  // Sensors that left the pointer get a last motion and leave the over list;
  // then every sensor under the pointer gets motion and the over list becomes
  // the picked list.
  static void updatePickedSensors(const nrHit& hit);

  // Whether the sensor was found under the pointer in the update running now.
  bool isPicked() const { return frame == currentFrame; }
  // The number of the update running now; it goes up by one after each.
  static int getCurrentFrame() { return currentFrame; }
  // The pointer's ray of the update running now, in world coordinates; false
  // when no ray could be made (no current context).
  static bool getPickRay(nrSeg& ray);

  // The sensors collected in the update running now and those held by a grab.
  static const nrPtrArray& getPicked();
  static const nrPtrArray& getGrabbed();

 protected:
  // The sensor's coordinates to world coordinates at the hit: the transforms
  // on the hit's path above the level where the sensors were collected.
  void calcWorkingSpace(const nrHit& hit, nrMatrix4f& toWorld) const;
  // World to sensor coordinates at the hit, and the hit point in them.
  void calcLocalHit(const nrHit& hit, nrMatrix4f& toLocal, nrVec3f& point) const;
  // The pointer's ray of this update through toLocal, with a unit direction;
  // false without a ray.
  static bool getLocalPickRay(const nrMatrix4f& toLocal, nrSeg& ray);

  unsigned char enabled;
  unsigned char isActive;
  // The update in which the sensor was last collected.
  int frame;

 private:
  static void collect(const nrHit& hit);
  // Collects the enabled sensors among the children of the groups holding
  // node; true when there was one.
  static bool collectAround(nrContainer* node, int depth);

  static int currentFrame;
  static bool grabbing;
  // Path entries above the level where this update's sensors were found.
  static int pickedDepth;
  static nrSeg pickRay;
  static bool havePickRay;
};
