// Interpolates a list of n 3-vectors between the key values, vector by vector;
// n is the number of key values divided by the number of keys.
#pragma once

#include "nerio3d/events/nrEngineIO.h"
#include "nerio3d/events/nrInterpolator.h"
#include "nerio3d/fields/nrMField.h"
#include "nerio3d/fields/nrSField.h"

class nrCoordinateInterpolator : public nrEngineIO<nrCoordinateInterpolator, nrInterpolator, nrMFVec3f, nrMFVec3f> {
  NR_DECLARE_CONTAINER_TYPE(nrCoordinateInterpolator)

  nrCoordinateInterpolator() : nrCoordinateInterpolator(getClassType()) {}
  explicit nrCoordinateInterpolator(nrType* typeOfClass) : nrEngineIO(typeOfClass) {}

  void setKeyValue(const nrVec3fArray& values) { setInputList(values); }

  void eval() override { interpolateVectors(input, getValueField(), false); }
};
