// Selects one 4-vector from a list.
#pragma once

#include "nerio3d/events/nrEngineIO.h"
#include "nerio3d/events/nrSelectorEng.h"
#include "nerio3d/fields/nrMField.h"
#include "nerio3d/fields/nrSField.h"

class nrSelectorEng4f : public nrEngineIO<nrSelectorEng4f, nrSelectorEng, nrMFVec4f, nrSFVec4f> {
  NR_DECLARE_CONTAINER_TYPE(nrSelectorEng4f)

  nrSelectorEng4f() : nrSelectorEng4f(getClassType()) {}
  explicit nrSelectorEng4f(nrType* typeOfClass) : nrEngineIO(typeOfClass) {}

  void setInput(const nrVec4fArray& values) { setInputList(values); }

  void eval() override { select(input, value); }
};
