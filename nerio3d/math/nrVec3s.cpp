#include "nerio3d/math/nrVec3s.h"

#include <cstdio>

#include "nerio3d/fields/nrOutput.h"

void nrVec3s::write(nrOutput* out) const {
  if (!out || !out->getStream()) return;
  fprintf(out->getStream(), "%d %d %d", vec[0], vec[1], vec[2]);
}
