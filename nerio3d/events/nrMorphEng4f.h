// Morphs lists of 4-vectors by weights.
#pragma once

#include "nerio3d/events/nrMorphEng.h"

class nrMorphEng4f : public nrMorphEng {
  NR_DECLARE_CONTAINER_TYPE(nrMorphEng4f)

  nrMorphEng4f() : nrMorphEng4f(getClassType()) {}
  explicit nrMorphEng4f(nrType* type);
  ~nrMorphEng4f() override;

  void setInput(const nrVec4fArray& values);
  const nrVec4fArray& getValue();

  void eval() override;

 protected:
  nrVec4fArray input;
  nrVec4fArray value;
};
