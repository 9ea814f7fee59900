// Interpolates an RGB colour between the key values, component by component in RGB.
#pragma once

#include "nerio3d/events/nrInterpolator.h"

class nrColorInterpolator : public nrInterpolator {
  NR_DECLARE_CONTAINER_TYPE(nrColorInterpolator)

  nrColorInterpolator() : nrColorInterpolator(getClassType()) {}
  explicit nrColorInterpolator(nrType* type);
  ~nrColorInterpolator() override;

  void setKeyValue(const nrVec3fArray& values);
  void getValue(nrVec3f& v);

  void eval() override;

 protected:
  nrVec3fArray keyValue;
  nrVec3f value;
};
