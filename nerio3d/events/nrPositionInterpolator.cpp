#include "nerio3d/events/nrPositionInterpolator.h"

#include "nerio3d/fields/nrMField.h"
#include "nerio3d/fields/nrSField.h"

NR_DEFINE_TYPE(nrPositionInterpolator, nrInterpolator, "PositionInterpolator") {
  nrMFVec3f::addTypeField(type, "keyValue", KEY_VALUE_FIELD, &nrPositionInterpolator::keyValue);
  nrSFVec3f::addTypeField(type, "value", VALUE_FIELD, nrVec3f(0, 0, 0), &nrPositionInterpolator::value);
  short in[] = {KEY_VALUE_FIELD}, out[] = {VALUE_FIELD};
  type->setEngineIO(1, in, 1, out);
}

nrPositionInterpolator::nrPositionInterpolator(nrType* type) : nrInterpolator(type) {
  initFieldDefaults(getClassType());
  if (type == classType) initEngine();
}

nrPositionInterpolator::~nrPositionInterpolator() { destroyFieldContents(getClassType()); }

void nrPositionInterpolator::setKeyValue(const nrVec3fArray& values) { static_cast<nrMFVec3f*>(getField(KEY_VALUE_FIELD))->set(values); }

void nrPositionInterpolator::getValue(nrVec3f& v) {
  validateField(VALUE_FIELD);
  v = value;
}

void nrPositionInterpolator::eval() {
  nrVec3f v;
  if (interpolate(keyValue, v, [](const nrVec3f& a, const nrVec3f& b, float t) { return lerp(a, b, t); })) setOutput(value, v, VALUE_FIELD);
}
