#include "nerio3d/events/nrOrientationInterpolator.h"

NR_DEFINE_TYPE(nrOrientationInterpolator, nrInterpolator, "OrientationInterpolator") { addIOFields(type, "keyValue", nrRotation()); }

void nrOrientationInterpolator::eval() {
  auto slerp = [](const nrRotation& a, const nrRotation& b, float t) {
    nrRotation between;
    between.slerp(t, a, b);
    return between;
  };
  interpolate(input, value, slerp);
}
