// Interpolates a float between the key values.
#pragma once

#include "nerio3d/events/nrInterpolator.h"

class nrScalarInterpolator : public nrInterpolator {
  NR_DECLARE_CONTAINER_TYPE(nrScalarInterpolator)

  nrScalarInterpolator() : nrScalarInterpolator(getClassType()) {}
  explicit nrScalarInterpolator(nrType* type);
  ~nrScalarInterpolator() override;

  void setKeyValue(const nrFloatArray& values);
  float getValue();

  void eval() override;

 protected:
  nrFloatArray keyValue;
  float value;
};
