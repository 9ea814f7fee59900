#include "nerio3d/events/nrOrientationInterpolator.h"

#include "nerio3d/fields/nrMField.h"
#include "nerio3d/fields/nrSField.h"

NR_DEFINE_TYPE(nrOrientationInterpolator, nrInterpolator, "OrientationInterpolator") {
  nrMFRotation::addTypeField(type, "keyValue", KEY_VALUE_FIELD, &nrOrientationInterpolator::keyValue);
  nrSFRotation::addTypeField(type, "value", VALUE_FIELD, nrRotation(), &nrOrientationInterpolator::value);
  short in[] = {KEY_VALUE_FIELD}, out[] = {VALUE_FIELD};
  type->setEngineIO(1, in, 1, out);
}

nrOrientationInterpolator::nrOrientationInterpolator(nrType* type) : nrInterpolator(type) {
  initFieldDefaults(getClassType());
  if (type == classType) initEngine();
}

nrOrientationInterpolator::~nrOrientationInterpolator() { destroyFieldContents(getClassType()); }

void nrOrientationInterpolator::setKeyValue(const nrRotationArray& values) { static_cast<nrMFRotation*>(getField(KEY_VALUE_FIELD))->set(values); }

void nrOrientationInterpolator::getValue(nrRotation& v) {
  validateField(VALUE_FIELD);
  v = value;
}

void nrOrientationInterpolator::eval() {
  nrRotation r;
  auto slerp = [](const nrRotation& a, const nrRotation& b, float t) {
    nrRotation between;
    between.slerp(t, a, b);
    return between;
  };
  if (interpolate(keyValue, r, slerp)) setOutput(value, r, VALUE_FIELD);
}
