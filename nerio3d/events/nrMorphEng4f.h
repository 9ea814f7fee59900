// Morphs lists of 4-vectors by weights.
#pragma once

#include "nerio3d/events/nrEngineIO.h"
#include "nerio3d/events/nrMorphEng.h"
#include "nerio3d/fields/nrMField.h"
#include "nerio3d/fields/nrSField.h"

class nrMorphEng4f : public nrEngineIO<nrMorphEng4f, nrMorphEng, nrMFVec4f, nrMFVec4f> {
  NR_DECLARE_CONTAINER_TYPE(nrMorphEng4f)

  nrMorphEng4f() : nrMorphEng4f(getClassType()) {}
  explicit nrMorphEng4f(nrType* typeOfClass) : nrEngineIO(typeOfClass) {}

  void setInput(const nrVec4fArray& values) { setInputList(values); }

  void eval() override { morph<4>(input, getValueField()); }
};
