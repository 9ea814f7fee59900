// A point light restricted to a cone around a direction.
#pragma once

#include "nerio3d/render/nrPointLight.h"

class nrSpotLight : public nrPointLight {
  NR_DECLARE_CONTAINER_TYPE(nrSpotLight)

  enum { DIRECTION_FIELD = 9, EXPONENT_FIELD, CUT_OFF_ANGLE_FIELD };

  nrSpotLight() : nrSpotLight(getClassType()) {}
  explicit nrSpotLight(nrType* type);

  void setDirection(float x, float y, float z) { setDirection(nrVec3f(x, y, z)); }
  void setDirection(const nrVec3f& value) { setFieldValue(direction, value, DIRECTION_FIELD); }
  const nrVec3f& getDirection() const { return getFieldValue(direction, DIRECTION_FIELD); }
  void getDirection(nrVec3f& value) const { value = getDirection(); }
  void getDirection(float* x, float* y, float* z) const { split(getDirection(), x, y, z); }
  void setExponent(float value) { setFieldValue(exponent, value, EXPONENT_FIELD); }
  float getExponent() const { return getFieldValue(exponent, EXPONENT_FIELD); }
  // Half the opening of the cone in degrees, as OpenGL takes it: 0 to 90, or
  // 180 for no cone at all.
  void setCutOffAngle(float value) { setFieldValue(cutOffAngle, value, CUT_OFF_ANGLE_FIELD); }
  float getCutOffAngle() const { return getFieldValue(cutOffAngle, CUT_OFF_ANGLE_FIELD); }

 protected:
  void define(int slot) override;

  nrVec3f direction;
  float exponent;
  float cutOffAngle;
};
