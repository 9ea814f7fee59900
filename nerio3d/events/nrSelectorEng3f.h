// Selects one 3-vector from a list.
#pragma once

#include "nerio3d/events/nrSelectorEng.h"

class nrSelectorEng3f : public nrSelectorEng {
  NR_DECLARE_CONTAINER_TYPE(nrSelectorEng3f)

  nrSelectorEng3f() : nrSelectorEng3f(getClassType()) {}
  explicit nrSelectorEng3f(nrType* type);
  ~nrSelectorEng3f() override;

  void setInput(const nrVec3fArray& values);
  void getValue(nrVec3f& v);

  void eval() override { select(input, value); }

 protected:
  nrVec3fArray input;
  nrVec3f value;
};
