// Transforms a list of points by the matrix (p' = p * M, translation
// included, no homogeneous division).
#pragma once

#include "nerio3d/events/nrEngineIO.h"
#include "nerio3d/events/nrTransformEng.h"
#include "nerio3d/fields/nrMField.h"
#include "nerio3d/fields/nrSField.h"

class nrTransformEng3f : public nrEngineIO<nrTransformEng3f, nrTransformEng, nrMFVec3f, nrMFVec3f> {
  NR_DECLARE_CONTAINER_TYPE(nrTransformEng3f)

  nrTransformEng3f() : nrTransformEng3f(getClassType()) {}
  explicit nrTransformEng3f(nrType* typeOfClass) : nrEngineIO(typeOfClass) {}

  void setInput(const nrVec3fArray& values) { setInputList(values); }

  void eval() override;
};
