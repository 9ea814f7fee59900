#include "nerio3d/events/nrColorInterpolator.h"

NR_DEFINE_TYPE(nrColorInterpolator, nrInterpolator, "ColorInterpolator") { addIOFields(type, "keyValue", nrVec3f(0, 0, 0)); }
