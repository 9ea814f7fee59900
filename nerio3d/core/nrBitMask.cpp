#include "nerio3d/core/nrBitMask.h"

#include <cstdio>

#include "nerio3d/fields/nrOutput.h"

void nrBitMask::write(nrOutput* out) const {
  if (out && out->getStream()) fprintf(out->getStream(), "0x%x%x", high, low);
}
