#include "nerio3d/events/nrMorphEng3f.h"

#include "nerio3d/fields/nrMField.h"

NR_DEFINE_TYPE(nrMorphEng3f, nrMorphEng, "MorphEng3f") {
  nrMFVec3f::addTypeField(type, "input", INPUT_FIELD, &nrMorphEng3f::input);
  nrMFVec3f::addTypeField(type, "value", VALUE_FIELD, &nrMorphEng3f::value);
  short in[] = {INPUT_FIELD}, out[] = {VALUE_FIELD};
  type->setEngineIO(1, in, 1, out);
}

nrMorphEng3f::nrMorphEng3f(nrType* type) : nrMorphEng(type) {
  initFieldDefaults(getClassType());
  if (type == classType) initEngine();
}

nrMorphEng3f::~nrMorphEng3f() { destroyFieldContents(getClassType()); }

void nrMorphEng3f::setInput(const nrVec3fArray& values) { static_cast<nrMFVec3f*>(getField(INPUT_FIELD))->set(values); }

const nrVec3fArray& nrMorphEng3f::getValue() {
  validateField(VALUE_FIELD);
  return value;
}

void nrMorphEng3f::eval() { morph<3>(input, static_cast<nrMFVec3f*>(getField(VALUE_FIELD))); }
