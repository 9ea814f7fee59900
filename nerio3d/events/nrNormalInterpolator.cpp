#include "nerio3d/events/nrNormalInterpolator.h"

#include "nerio3d/fields/nrMField.h"

NR_DEFINE_TYPE(nrNormalInterpolator, nrInterpolator, "NormalInterpolator") {
  nrMFVec3f::addTypeField(type, "keyValue", KEY_VALUE_FIELD, &nrNormalInterpolator::keyValue);
  nrMFVec3f::addTypeField(type, "value", VALUE_FIELD, &nrNormalInterpolator::value);
  short in[] = {KEY_VALUE_FIELD}, out[] = {VALUE_FIELD};
  type->setEngineIO(1, in, 1, out);
}

nrNormalInterpolator::nrNormalInterpolator(nrType* type) : nrInterpolator(type) {
  initFieldDefaults(getClassType());
  if (type == classType) initEngine();
}

nrNormalInterpolator::~nrNormalInterpolator() { destroyFieldContents(getClassType()); }

void nrNormalInterpolator::setKeyValue(const nrVec3fArray& values) { static_cast<nrMFVec3f*>(getField(KEY_VALUE_FIELD))->set(values); }

const nrVec3fArray& nrNormalInterpolator::getValue() {
  validateField(VALUE_FIELD);
  return value;
}

void nrNormalInterpolator::eval() { interpolateVectors(keyValue, static_cast<nrMFVec3f*>(getField(VALUE_FIELD)), true); }
