#include "nerio3d/events/nrMorphEng4f.h"

#include "nerio3d/fields/nrMField.h"

NR_DEFINE_TYPE(nrMorphEng4f, nrMorphEng, "MorphEng4f") {
  nrMFVec4f::addTypeField(type, "input", INPUT_FIELD, &nrMorphEng4f::input);
  nrMFVec4f::addTypeField(type, "value", VALUE_FIELD, &nrMorphEng4f::value);
  short in[] = {INPUT_FIELD}, out[] = {VALUE_FIELD};
  type->setEngineIO(1, in, 1, out);
}

nrMorphEng4f::nrMorphEng4f(nrType* type) : nrMorphEng(type) {
  initFieldDefaults(getClassType());
  if (type == classType) initEngine();
}

nrMorphEng4f::~nrMorphEng4f() { destroyFieldContents(getClassType()); }

void nrMorphEng4f::setInput(const nrVec4fArray& values) { static_cast<nrMFVec4f*>(getField(INPUT_FIELD))->set(values); }

const nrVec4fArray& nrMorphEng4f::getValue() {
  validateField(VALUE_FIELD);
  return value;
}

void nrMorphEng4f::eval() { morph<4>(input, static_cast<nrMFVec4f*>(getField(VALUE_FIELD))); }
