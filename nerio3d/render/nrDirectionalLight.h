// A light from infinitely far away, shining along a direction.
#pragma once

#include "nerio3d/render/nrLight.h"

class nrDirectionalLight : public nrLight {
  NR_DECLARE_CONTAINER_TYPE(nrDirectionalLight)

  enum { DIRECTION_FIELD = 6 };

  nrDirectionalLight() : nrDirectionalLight(getClassType()) {}
  explicit nrDirectionalLight(nrType* type);

  void setDirection(float x, float y, float z) { setDirection(nrVec3f(x, y, z)); }
  void setDirection(const nrVec3f& value) { setFieldValue(direction, value, DIRECTION_FIELD); }
  const nrVec3f& getDirection() const { return getFieldValue(direction, DIRECTION_FIELD); }
  void getDirection(nrVec3f& value) const { value = getDirection(); }
  void getDirection(float* x, float* y, float* z) const { split(getDirection(), x, y, z); }

 protected:
  void define(int slot) override;

  nrVec3f direction;
};
