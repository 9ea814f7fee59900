// Orthographic camera described by the width, height and centre of its view
// rectangle and the clip distances.
#pragma once

#include "nerio3d/math/nrVec2f.h"
#include "nerio3d/render/nrCamera.h"

class nrOrthoCamera : public nrCamera {
  NR_DECLARE_CONTAINER_TYPE(nrOrthoCamera)

  enum {
    WIDTH_FIELD = 2,
    HEIGHT_FIELD,
    CENTER_FIELD,
    NEAR_CLIP_FIELD,
    FAR_CLIP_FIELD,
    ASPECT_MODE_FIELD,
    ASPECT_RATIO_FIELD
  };

  nrOrthoCamera() : nrOrthoCamera(getClassType()) {}
  explicit nrOrthoCamera(nrType* type);

  void setWidth(float w) { setFieldValue(width, w, WIDTH_FIELD); }
  float getWidth() const { return getFieldValue(width, WIDTH_FIELD); }
  void setHeight(float h) { setFieldValue(height, h, HEIGHT_FIELD); }
  float getHeight() const { return getFieldValue(height, HEIGHT_FIELD); }
  void setCenter(float x, float y) { setFieldValue(center, nrVec2f(x, y), CENTER_FIELD); }
  void getCenter(float* x, float* y) const;
  const nrVec2f& getCenter() const { return getFieldValue(center, CENTER_FIELD); }
  void setCenter(const nrVec2f& value) { setFieldValue(center, value, CENTER_FIELD); }
  void getCenter(nrVec2f& value) const { value = getCenter(); }
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
  // The view rectangle from width, height and centre.
  void makeRect();

  float width;
  float height;
  nrVec2f center;
  float nearClip;
  float farClip;
  int aspectMode;
  float aspectRatio;
};
