// Morphs lists of 3-vectors by weights.
#pragma once

#include "nerio3d/events/nrEngineIO.h"
#include "nerio3d/events/nrMorphEng.h"
#include "nerio3d/fields/nrMField.h"
#include "nerio3d/fields/nrSField.h"

class nrMorphEng3f : public nrEngineIO<nrMorphEng3f, nrMorphEng, nrMFVec3f, nrMFVec3f> {
  NR_DECLARE_CONTAINER_TYPE(nrMorphEng3f)

  nrMorphEng3f() : nrMorphEng3f(getClassType()) {}
  explicit nrMorphEng3f(nrType* typeOfClass) : nrEngineIO(typeOfClass) {}

  void setInput(const nrVec3fArray& values) { setInputList(values); }

  void eval() override { morph<3>(input, getValueField()); }
};
