#include "nerio3d/events/nrTransformEng3f.h"

#include "nerio3d/fields/nrMField.h"

NR_DEFINE_TYPE(nrTransformEng3f, nrTransformEng, "TransformEng3f") {
  nrMFVec3f::addTypeField(type, "input", INPUT_FIELD, &nrTransformEng3f::input);
  nrMFVec3f::addTypeField(type, "value", VALUE_FIELD, &nrTransformEng3f::value);
  short in[] = {INPUT_FIELD}, out[] = {VALUE_FIELD};
  type->setEngineIO(1, in, 1, out);
}

nrTransformEng3f::nrTransformEng3f(nrType* type) : nrTransformEng(type) {
  initFieldDefaults(getClassType());
  if (type == classType) initEngine();
}

nrTransformEng3f::~nrTransformEng3f() { destroyFieldContents(getClassType()); }

void nrTransformEng3f::setInput(const nrVec3fArray& points) {
  static_cast<nrMFVec3f*>(getField(INPUT_FIELD))->set(points);
}

const nrVec3fArray& nrTransformEng3f::getValue() {
  validateField(VALUE_FIELD);
  return value;
}

void nrTransformEng3f::eval() {
  unsigned n = input.getCount();
  nrVec3fArray result(n);
  result.setCount(n);
  for (unsigned i = 0; i < n; ++i) result[i].xformPt(input[i], matrix);
  static_cast<nrMFVec3f*>(getField(VALUE_FIELD))->set(result);
}
