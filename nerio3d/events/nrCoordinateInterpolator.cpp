#include "nerio3d/events/nrCoordinateInterpolator.h"

NR_DEFINE_TYPE(nrCoordinateInterpolator, nrInterpolator, "CoordinateInterpolator") { addIOFields(type, "keyValue"); }
