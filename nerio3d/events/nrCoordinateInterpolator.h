// Interpolates a list of n 3-vectors between the key values, vector by vector;
// n is the number of key values divided by the number of keys.
#pragma once

#include "nerio3d/events/nrInterpolator.h"

class nrCoordinateInterpolator : public nrInterpolator {
  NR_DECLARE_CONTAINER_TYPE(nrCoordinateInterpolator)

  nrCoordinateInterpolator() : nrCoordinateInterpolator(getClassType()) {}
  explicit nrCoordinateInterpolator(nrType* type);
  ~nrCoordinateInterpolator() override;

  void setKeyValue(const nrVec3fArray& values);
  const nrVec3fArray& getValue();

  void eval() override;

 protected:
  nrVec3fArray keyValue;
  nrVec3fArray value;
};
