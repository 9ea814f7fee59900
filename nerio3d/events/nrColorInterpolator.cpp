#include "nerio3d/events/nrColorInterpolator.h"

#include "nerio3d/fields/nrMField.h"
#include "nerio3d/fields/nrSField.h"

NR_DEFINE_TYPE(nrColorInterpolator, nrInterpolator, "ColorInterpolator") {
  nrMFVec3f::addTypeField(type, "keyValue", KEY_VALUE_FIELD, &nrColorInterpolator::keyValue);
  nrSFVec3f::addTypeField(type, "value", VALUE_FIELD, nrVec3f(0, 0, 0), &nrColorInterpolator::value);
  short in[] = {KEY_VALUE_FIELD}, out[] = {VALUE_FIELD};
  type->setEngineIO(1, in, 1, out);
}

nrColorInterpolator::nrColorInterpolator(nrType* type) : nrInterpolator(type) {
  initFieldDefaults(getClassType());
  if (type == classType) initEngine();
}

nrColorInterpolator::~nrColorInterpolator() { destroyFieldContents(getClassType()); }

void nrColorInterpolator::setKeyValue(const nrVec3fArray& values) { static_cast<nrMFVec3f*>(getField(KEY_VALUE_FIELD))->set(values); }

void nrColorInterpolator::getValue(nrVec3f& v) {
  validateField(VALUE_FIELD);
  v = value;
}

void nrColorInterpolator::eval() {
  nrVec3f v;
  if (interpolate(keyValue, v, [](const nrVec3f& a, const nrVec3f& b, float t) { return lerp(a, b, t); })) setOutput(value, v, VALUE_FIELD);
}
