// Interpolates a 3-vector between the key values, component by component.
#pragma once

#include "nerio3d/events/nrEngineIO.h"
#include "nerio3d/events/nrInterpolator.h"
#include "nerio3d/fields/nrMField.h"
#include "nerio3d/fields/nrSField.h"

class nrPositionInterpolator : public nrEngineIO<nrPositionInterpolator, nrInterpolator, nrMFVec3f, nrSFVec3f> {
  NR_DECLARE_CONTAINER_TYPE(nrPositionInterpolator)

  nrPositionInterpolator() : nrPositionInterpolator(getClassType()) {}
  explicit nrPositionInterpolator(nrType* typeOfClass) : nrEngineIO(typeOfClass) {}

  void setKeyValue(const nrVec3fArray& values) { setInputList(values); }

  void eval() override { interpolate(input, value); }
};
