#include "nerio3d/geometry/nrColorSet.h"

NR_DEFINE_TYPE(nrColorSet, nrContainer, "ColorSet") {}
