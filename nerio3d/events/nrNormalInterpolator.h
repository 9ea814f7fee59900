// Interpolates a list of n normals between the key values and normalises each
// result; n is the number of key values divided by the number of keys.
#pragma once

#include "nerio3d/events/nrEngineIO.h"
#include "nerio3d/events/nrInterpolator.h"
#include "nerio3d/fields/nrMField.h"
#include "nerio3d/fields/nrSField.h"

class nrNormalInterpolator : public nrEngineIO<nrNormalInterpolator, nrInterpolator, nrMFVec3f, nrMFVec3f> {
  NR_DECLARE_CONTAINER_TYPE(nrNormalInterpolator)

  nrNormalInterpolator() : nrNormalInterpolator(getClassType()) {}
  explicit nrNormalInterpolator(nrType* typeOfClass) : nrEngineIO(typeOfClass) {}

  void setKeyValue(const nrVec3fArray& values) { setInputList(values); }

  void eval() override { interpolateVectors(input, getValueField(), true); }
};
