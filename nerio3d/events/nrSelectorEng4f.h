// Selects one 4-vector from a list.
#pragma once

#include "nerio3d/events/nrSelectorEng.h"

class nrSelectorEng4f : public nrSelectorEng {
  NR_DECLARE_CONTAINER_TYPE(nrSelectorEng4f)

  nrSelectorEng4f() : nrSelectorEng4f(getClassType()) {}
  explicit nrSelectorEng4f(nrType* type);
  ~nrSelectorEng4f() override;

  void setInput(const nrVec4fArray& values);
  void getValue(nrVec4f& v);

  void eval() override { select(input, value); }

 protected:
  nrVec4fArray input;
  nrVec4f value;
};
