// Interpolates a float between the key values.
#pragma once

#include "nerio3d/events/nrEngineIO.h"
#include "nerio3d/events/nrInterpolator.h"
#include "nerio3d/fields/nrMField.h"
#include "nerio3d/fields/nrSField.h"

class nrScalarInterpolator : public nrEngineIO<nrScalarInterpolator, nrInterpolator, nrMFFloat, nrSFFloat> {
  NR_DECLARE_CONTAINER_TYPE(nrScalarInterpolator)

  nrScalarInterpolator() : nrScalarInterpolator(getClassType()) {}
  explicit nrScalarInterpolator(nrType* typeOfClass) : nrEngineIO(typeOfClass) {}

  void setKeyValue(const nrFloatArray& values) { setInputList(values); }

  void eval() override { interpolate(input, value); }
};
