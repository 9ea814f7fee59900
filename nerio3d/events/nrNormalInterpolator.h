// Interpolates a list of n normals between the key values and normalises each
// result; n is the number of key values divided by the number of keys.
#pragma once

#include "nerio3d/events/nrInterpolator.h"

class nrNormalInterpolator : public nrInterpolator {
  NR_DECLARE_CONTAINER_TYPE(nrNormalInterpolator)

  nrNormalInterpolator() : nrNormalInterpolator(getClassType()) {}
  explicit nrNormalInterpolator(nrType* type);
  ~nrNormalInterpolator() override;

  void setKeyValue(const nrVec3fArray& values);
  const nrVec3fArray& getValue();

  void eval() override;

 protected:
  nrVec3fArray keyValue;
  nrVec3fArray value;
};
