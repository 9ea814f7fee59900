// Transforms a list of points by the matrix (p' = p * M, translation
// included, no homogeneous division).
#pragma once

#include "nerio3d/events/nrTransformEng.h"

class nrTransformEng3f : public nrTransformEng {
  NR_DECLARE_CONTAINER_TYPE(nrTransformEng3f)

  nrTransformEng3f() : nrTransformEng3f(getClassType()) {}
  explicit nrTransformEng3f(nrType* type);
  ~nrTransformEng3f() override;

  void setInput(const nrVec3fArray& points);
  const nrVec3fArray& getValue();

  void eval() override;

 protected:
  nrVec3fArray input;
  nrVec3fArray value;
};
