#include "nerio3d/math/nrVec4ub.h"

#include <cstdio>

#include "nerio3d/fields/nrOutput.h"

void nrVec4ub::write(nrOutput* out) const {
  if (!out || !out->getStream()) return;
  fprintf(out->getStream(), "%u %u %u %u", vec[0], vec[1], vec[2], vec[3]);
}
