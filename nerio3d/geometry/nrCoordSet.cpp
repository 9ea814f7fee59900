#include "nerio3d/geometry/nrCoordSet.h"

NR_DEFINE_TYPE(nrCoordSet, nrContainer, "CoordSet") {}
