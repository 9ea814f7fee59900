// Morphs lists of 3-vectors by weights.
#pragma once

#include "nerio3d/events/nrMorphEng.h"

class nrMorphEng3f : public nrMorphEng {
  NR_DECLARE_CONTAINER_TYPE(nrMorphEng3f)

  nrMorphEng3f() : nrMorphEng3f(getClassType()) {}
  explicit nrMorphEng3f(nrType* type);
  ~nrMorphEng3f() override;

  void setInput(const nrVec3fArray& values);
  const nrVec3fArray& getValue();

  void eval() override;

 protected:
  nrVec3fArray input;
  nrVec3fArray value;
};
