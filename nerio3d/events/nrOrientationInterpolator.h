// Interpolates a rotation between the key values along the shorter arc.
#pragma once

#include "nerio3d/events/nrInterpolator.h"

class nrOrientationInterpolator : public nrInterpolator {
  NR_DECLARE_CONTAINER_TYPE(nrOrientationInterpolator)

  nrOrientationInterpolator() : nrOrientationInterpolator(getClassType()) {}
  explicit nrOrientationInterpolator(nrType* type);
  ~nrOrientationInterpolator() override;

  void setKeyValue(const nrRotationArray& values);
  void getValue(nrRotation& v);

  void eval() override;

 protected:
  nrRotationArray keyValue;
  nrRotation value;
};
