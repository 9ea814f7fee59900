#include "nerio3d/events/nrScalarInterpolator.h"

#include "nerio3d/fields/nrMField.h"
#include "nerio3d/fields/nrSField.h"

NR_DEFINE_TYPE(nrScalarInterpolator, nrInterpolator, "ScalarInterpolator") {
  nrMFFloat::addTypeField(type, "keyValue", KEY_VALUE_FIELD, &nrScalarInterpolator::keyValue);
  nrSFFloat::addTypeField(type, "value", VALUE_FIELD, 0.0f, &nrScalarInterpolator::value);
  short in[] = {KEY_VALUE_FIELD}, out[] = {VALUE_FIELD};
  type->setEngineIO(1, in, 1, out);
}

nrScalarInterpolator::nrScalarInterpolator(nrType* type) : nrInterpolator(type) {
  initFieldDefaults(getClassType());
  if (type == classType) initEngine();
}

nrScalarInterpolator::~nrScalarInterpolator() { destroyFieldContents(getClassType()); }

void nrScalarInterpolator::setKeyValue(const nrFloatArray& values) { static_cast<nrMFFloat*>(getField(KEY_VALUE_FIELD))->set(values); }

float nrScalarInterpolator::getValue() {
  validateField(VALUE_FIELD);
  return value;
}

void nrScalarInterpolator::eval() {
  float v;
  if (interpolate(keyValue, v, [](float a, float b, float t) { return lerp(a, b, t); })) setOutput(value, v, VALUE_FIELD);
}
