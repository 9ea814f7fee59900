// Perspective camera described by horizontal and vertical fields of view, their
// offsets from the viewing axis, and the clip distances.
#pragma once

#include "nerio3d/render/nrCamera.h"

class nrPerspCamera : public nrCamera {
  NR_DECLARE_CONTAINER_TYPE(nrPerspCamera)

  enum {
    HORIZ_FOV_FIELD = 2,
    VERT_FOV_FIELD,
    HORIZ_FOV_OFF_FIELD,
    VERT_FOV_OFF_FIELD,
    NEAR_CLIP_FIELD,
    FAR_CLIP_FIELD,
    ASPECT_MODE_FIELD,
    ASPECT_RATIO_FIELD
  };

  nrPerspCamera() : nrPerspCamera(getClassType()) {}
  explicit nrPerspCamera(nrType* type);

  // Angles in radians. A positive horizontal offset moves the view window
  // toward -x, a positive vertical one toward +y.
  void setHorizFOV(float fov) { setFieldValue(horizFOV, fov, HORIZ_FOV_FIELD); }
  float getHorizFOV() const { return getFieldValue(horizFOV, HORIZ_FOV_FIELD); }
  void setVertFOV(float fov) { setFieldValue(vertFOV, fov, VERT_FOV_FIELD); }
  float getVertFOV() const { return getFieldValue(vertFOV, VERT_FOV_FIELD); }
  void setHorizFOVOff(float off) { setFieldValue(horizFOVOff, off, HORIZ_FOV_OFF_FIELD); }
  float getHorizFOVOff() const { return getFieldValue(horizFOVOff, HORIZ_FOV_OFF_FIELD); }
  void setVertFOVOff(float off) { setFieldValue(vertFOVOff, off, VERT_FOV_OFF_FIELD); }
  float getVertFOVOff() const { return getFieldValue(vertFOVOff, VERT_FOV_OFF_FIELD); }
  void setNearClip(float d) { setFieldValue(nearClip, d, NEAR_CLIP_FIELD); }
  float getNearClip() const { return getFieldValue(nearClip, NEAR_CLIP_FIELD); }
  void setFarClip(float d) { setFieldValue(farClip, d, FAR_CLIP_FIELD); }
  float getFarClip() const { return getFieldValue(farClip, FAR_CLIP_FIELD); }
  // A value of nrFrustum::AspectModeEnum.
  void setAspectMode(int mode) { setFieldValue(aspectMode, mode, ASPECT_MODE_FIELD); }
  int getAspectMode() const { return getFieldValue(aspectMode, ASPECT_MODE_FIELD); }
  void setAspectRatio(float ratio) { setFieldValue(aspectRatio, ratio, ASPECT_RATIO_FIELD); }
  float getAspectRatio() const { return getFieldValue(aspectRatio, ASPECT_RATIO_FIELD); }
  void fieldChanged(short index) override;

 protected:
  float horizFOV;
  float vertFOV;
  float horizFOVOff;
  float vertFOVOff;
  float nearClip;
  float farClip;
  int aspectMode;
  float aspectRatio;
};
