#include "nerio3d/events/nrTransformEng3f.h"

NR_DEFINE_TYPE(nrTransformEng3f, nrTransformEng, "TransformEng3f") { addIOFields(type, "input"); }

void nrTransformEng3f::eval() {
  unsigned n = input.getCount();
  nrVec3fArray result(n);
  result.setCount(n);
  for (unsigned i = 0; i < n; ++i) result[i].xformPt(input[i], matrix);
  getValueField()->set(result);
}
