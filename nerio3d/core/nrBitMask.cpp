#include "nerio3d/core/nrBitMask.h"

#include <cstdio>

#include "nerio3d/fields/nrOutput.h"

void nrBitMask::write(nrOutput* out) const { fprintf(out->getStream(), "0x%x%x", high, low); }
