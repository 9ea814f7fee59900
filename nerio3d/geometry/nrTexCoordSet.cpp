#include "nerio3d/geometry/nrTexCoordSet.h"

NR_DEFINE_TYPE(nrTexCoordSet, nrContainer, "TexCoordSet") {}
