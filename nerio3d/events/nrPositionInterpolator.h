// Interpolates a 3-vector between the key values, component by component.
#pragma once

#include "nerio3d/events/nrInterpolator.h"

class nrPositionInterpolator : public nrInterpolator {
  NR_DECLARE_CONTAINER_TYPE(nrPositionInterpolator)

  nrPositionInterpolator() : nrPositionInterpolator(getClassType()) {}
  explicit nrPositionInterpolator(nrType* type);
  ~nrPositionInterpolator() override;

  void setKeyValue(const nrVec3fArray& values);
  void getValue(nrVec3f& v);

  void eval() override;

 protected:
  nrVec3fArray keyValue;
  nrVec3f value;
};
