#include "nerio3d/events/nrNormalInterpolator.h"

NR_DEFINE_TYPE(nrNormalInterpolator, nrInterpolator, "NormalInterpolator") { addIOFields(type, "keyValue"); }
