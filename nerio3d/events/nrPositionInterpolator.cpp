#include "nerio3d/events/nrPositionInterpolator.h"

NR_DEFINE_TYPE(nrPositionInterpolator, nrInterpolator, "PositionInterpolator") { addIOFields(type, "keyValue", nrVec3f(0, 0, 0)); }
