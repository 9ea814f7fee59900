#include "nerio3d/events/nrCoordinateInterpolator.h"

#include "nerio3d/fields/nrMField.h"

NR_DEFINE_TYPE(nrCoordinateInterpolator, nrInterpolator, "CoordinateInterpolator") {
  nrMFVec3f::addTypeField(type, "keyValue", KEY_VALUE_FIELD, &nrCoordinateInterpolator::keyValue);
  nrMFVec3f::addTypeField(type, "value", VALUE_FIELD, &nrCoordinateInterpolator::value);
  short in[] = {KEY_VALUE_FIELD}, out[] = {VALUE_FIELD};
  type->setEngineIO(1, in, 1, out);
}

nrCoordinateInterpolator::nrCoordinateInterpolator(nrType* type) : nrInterpolator(type) {
  initFieldDefaults(getClassType());
  if (type == classType) initEngine();
}

nrCoordinateInterpolator::~nrCoordinateInterpolator() { destroyFieldContents(getClassType()); }

void nrCoordinateInterpolator::setKeyValue(const nrVec3fArray& values) { static_cast<nrMFVec3f*>(getField(KEY_VALUE_FIELD))->set(values); }

const nrVec3fArray& nrCoordinateInterpolator::getValue() {
  validateField(VALUE_FIELD);
  return value;
}

void nrCoordinateInterpolator::eval() { interpolateVectors(keyValue, static_cast<nrMFVec3f*>(getField(VALUE_FIELD)), false); }
