// Interpolates an RGB colour between the key values, component by component in RGB.
#pragma once

#include "nerio3d/events/nrEngineIO.h"
#include "nerio3d/events/nrInterpolator.h"
#include "nerio3d/fields/nrMField.h"
#include "nerio3d/fields/nrSField.h"

class nrColorInterpolator : public nrEngineIO<nrColorInterpolator, nrInterpolator, nrMFVec3f, nrSFVec3f> {
  NR_DECLARE_CONTAINER_TYPE(nrColorInterpolator)

  nrColorInterpolator() : nrColorInterpolator(getClassType()) {}
  explicit nrColorInterpolator(nrType* typeOfClass) : nrEngineIO(typeOfClass) {}

  void setKeyValue(const nrVec3fArray& values) { setInputList(values); }

  void eval() override { interpolate(input, value); }
};
