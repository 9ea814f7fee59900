#include "nerio3d/events/nrScalarInterpolator.h"

NR_DEFINE_TYPE(nrScalarInterpolator, nrInterpolator, "ScalarInterpolator") { addIOFields(type, "keyValue", 0.0f); }
