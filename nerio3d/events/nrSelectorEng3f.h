// Selects one 3-vector from a list.
#pragma once

#include "nerio3d/events/nrEngineIO.h"
#include "nerio3d/events/nrSelectorEng.h"
#include "nerio3d/fields/nrMField.h"
#include "nerio3d/fields/nrSField.h"

class nrSelectorEng3f : public nrEngineIO<nrSelectorEng3f, nrSelectorEng, nrMFVec3f, nrSFVec3f> {
  NR_DECLARE_CONTAINER_TYPE(nrSelectorEng3f)

  nrSelectorEng3f() : nrSelectorEng3f(getClassType()) {}
  explicit nrSelectorEng3f(nrType* typeOfClass) : nrEngineIO(typeOfClass) {}

  void setInput(const nrVec3fArray& values) { setInputList(values); }

  void eval() override { select(input, value); }
};
