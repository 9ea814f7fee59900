#include "nerio3d/events/nrSelectorEng4f.h"

#include "nerio3d/fields/nrMField.h"
#include "nerio3d/fields/nrSField.h"

NR_DEFINE_TYPE(nrSelectorEng4f, nrSelectorEng, "SelectorEng4f") {
  nrMFVec4f::addTypeField(type, "input", INPUT_FIELD, &nrSelectorEng4f::input);
  nrSFVec4f::addTypeField(type, "value", VALUE_FIELD, nrVec4f(0, 0, 0, 0), &nrSelectorEng4f::value);
  short in[] = {INPUT_FIELD}, out[] = {VALUE_FIELD};
  type->setEngineIO(1, in, 1, out);
}

nrSelectorEng4f::nrSelectorEng4f(nrType* type) : nrSelectorEng(type) {
  initFieldDefaults(getClassType());
  if (type == classType) initEngine();
}

nrSelectorEng4f::~nrSelectorEng4f() { destroyFieldContents(getClassType()); }

void nrSelectorEng4f::setInput(const nrVec4fArray& values) { static_cast<nrMFVec4f*>(getField(INPUT_FIELD))->set(values); }

void nrSelectorEng4f::getValue(nrVec4f& v) {
  validateField(VALUE_FIELD);
  v = value;
}
