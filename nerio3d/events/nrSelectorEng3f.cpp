#include "nerio3d/events/nrSelectorEng3f.h"

#include "nerio3d/fields/nrMField.h"
#include "nerio3d/fields/nrSField.h"

NR_DEFINE_TYPE(nrSelectorEng3f, nrSelectorEng, "SelectorEng3f") {
  nrMFVec3f::addTypeField(type, "input", INPUT_FIELD, &nrSelectorEng3f::input);
  nrSFVec3f::addTypeField(type, "value", VALUE_FIELD, nrVec3f(0, 0, 0), &nrSelectorEng3f::value);
  short in[] = {INPUT_FIELD}, out[] = {VALUE_FIELD};
  type->setEngineIO(1, in, 1, out);
}

nrSelectorEng3f::nrSelectorEng3f(nrType* type) : nrSelectorEng(type) {
  initFieldDefaults(getClassType());
  if (type == classType) initEngine();
}

nrSelectorEng3f::~nrSelectorEng3f() { destroyFieldContents(getClassType()); }

void nrSelectorEng3f::setInput(const nrVec3fArray& values) { static_cast<nrMFVec3f*>(getField(INPUT_FIELD))->set(values); }

void nrSelectorEng3f::getValue(nrVec3f& v) {
  validateField(VALUE_FIELD);
  v = value;
}
