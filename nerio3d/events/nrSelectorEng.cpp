#include "nerio3d/events/nrSelectorEng.h"

#include "nerio3d/fields/nrSField.h"

NR_DEFINE_TYPE(nrSelectorEng, nrEngine, "SelectorEng") {
  nrSFInt::addTypeField(type, "selector", SELECTOR_FIELD, 0, &nrSelectorEng::selector);
  short in[] = {SELECTOR_FIELD};
  type->setEngineIO(1, in, 0, nullptr);
}

nrSelectorEng::nrSelectorEng(nrType* type) : nrEngine(type) {
  initFieldDefaults(getClassType());
  if (type == classType) initEngine();
}

nrSelectorEng::~nrSelectorEng() { destroyFieldContents(getClassType()); }

void nrSelectorEng::setSelector(int i) { static_cast<nrSFInt*>(getField(SELECTOR_FIELD))->set(i); }

int nrSelectorEng::getSelector() const { return getFieldValue(selector, SELECTOR_FIELD); }
