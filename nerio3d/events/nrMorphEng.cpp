#include "nerio3d/events/nrMorphEng.h"

#include "nerio3d/fields/nrMField.h"

NR_DEFINE_TYPE(nrMorphEng, nrEngine, "MorphEng") {
  nrMFFloat::addTypeField(type, "weight", WEIGHT_FIELD, &nrMorphEng::weight);
  short in[] = {WEIGHT_FIELD};
  type->setEngineIO(1, in, 0, nullptr);
}

nrMorphEng::nrMorphEng(nrType* type) : nrEngine(type) {
  initFieldDefaults(getClassType());
  if (type == classType) initEngine();
}

nrMorphEng::~nrMorphEng() { destroyFieldContents(getClassType()); }

void nrMorphEng::setWeight(const nrFloatArray& weights) { static_cast<nrMFFloat*>(getField(WEIGHT_FIELD))->set(weights); }
