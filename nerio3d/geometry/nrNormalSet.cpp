#include "nerio3d/geometry/nrNormalSet.h"

NR_DEFINE_TYPE(nrNormalSet, nrContainer, "NormalSet") {}
