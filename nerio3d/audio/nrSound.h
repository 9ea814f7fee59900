// A sound source placed in the scene: plays its audio clip from a location,
// audible within two ellipsoids around the direction it faces.
#pragma once

#include "nerio3d/math/nrVec3f.h"
#include "nerio3d/nodes/nrNode.h"

class nrAudioClip;

class nrSound : public nrNode {
  NR_DECLARE_CONTAINER_TYPE(nrSound)

  enum {
    DIRECTION = 2,
    INTENSITY,
    LOCATION,
    MAX_BACK,
    MAX_FRONT,
    MIN_BACK,
    MIN_FRONT,
    PRIORITY,
    SOURCE,
    SPATIALIZE
  };

  nrSound() : nrSound(getClassType()) {}
  explicit nrSound(nrType* type);
  ~nrSound() override;

  // Getters bring a value arriving through a connection up to date first.
  void setDirection(float x, float y, float z) { setDirection(nrVec3f(x, y, z)); }
  void setDirection(const nrVec3f& v) { setFieldValue(direction, v, DIRECTION); }
  const nrVec3f& getDirection() const { return getFieldValue(direction, DIRECTION); }
  void setIntensity(float v) { setFieldValue(intensity, v, INTENSITY); }
  float getIntensity() const { return getFieldValue(intensity, INTENSITY); }
  void setLocation(float x, float y, float z) { setLocation(nrVec3f(x, y, z)); }
  void setLocation(const nrVec3f& v) { setFieldValue(location, v, LOCATION); }
  const nrVec3f& getLocation() const { return getFieldValue(location, LOCATION); }
  void setMaxBack(float v) { setFieldValue(maxBack, v, MAX_BACK); }
  float getMaxBack() const { return getFieldValue(maxBack, MAX_BACK); }
  void setMaxFront(float v) { setFieldValue(maxFront, v, MAX_FRONT); }
  float getMaxFront() const { return getFieldValue(maxFront, MAX_FRONT); }
  void setMinBack(float v) { setFieldValue(minBack, v, MIN_BACK); }
  float getMinBack() const { return getFieldValue(minBack, MIN_BACK); }
  void setMinFront(float v) { setFieldValue(minFront, v, MIN_FRONT); }
  float getMinFront() const { return getFieldValue(minFront, MIN_FRONT); }
  void setPriority(float v) { setFieldValue(priority, v, PRIORITY); }
  float getPriority() const { return getFieldValue(priority, PRIORITY); }
  void setSource(nrAudioClip* clip);
  nrAudioClip* getSource() const;
  void setSpatialize(unsigned char on) { setFieldValue(spatialize, on, SPATIALIZE); }
  unsigned char getSpatialize() const { return getFieldValue(spatialize, SPATIALIZE); }

 private:
  nrVec3f direction;
  float intensity;
  nrVec3f location;
  float maxBack;
  float maxFront;
  float minBack;
  float minFront;
  float priority;
  nrContainer* source;
  unsigned char spatialize;
};
