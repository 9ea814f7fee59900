// Interpolates a rotation between the key values along the shorter arc.
#pragma once

#include "nerio3d/events/nrEngineIO.h"
#include "nerio3d/events/nrInterpolator.h"
#include "nerio3d/fields/nrMField.h"
#include "nerio3d/fields/nrSField.h"

class nrOrientationInterpolator : public nrEngineIO<nrOrientationInterpolator, nrInterpolator, nrMFRotation, nrSFRotation> {
  NR_DECLARE_CONTAINER_TYPE(nrOrientationInterpolator)

  nrOrientationInterpolator() : nrOrientationInterpolator(getClassType()) {}
  explicit nrOrientationInterpolator(nrType* typeOfClass) : nrEngineIO(typeOfClass) {}

  void setKeyValue(const nrRotationArray& values) { setInputList(values); }

  void eval() override;
};
