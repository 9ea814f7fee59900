#include "nerio3d/geometry/nrColorSet4f.h"

#include "nerio3d/fields/nrMField.h"

NR_DEFINE_TYPE(nrColorSet4f, nrColorSet, "ColorSet4f") {
  nrMFVec4f::addTypeField(type, "color", ARRAY_FIELD, &nrColorSet4f::array);
}

nrColorSet4f::nrColorSet4f(nrType* type) : nrArraySet(type) { initFieldDefaults(classType); }

nrColorSet4f::nrColorSet4f(int count) : nrColorSet4f(getClassType()) { startCount(count); }

nrColorSet4f::nrColorSet4f(nrData* block, short offset, short stride) : nrArraySet(getClassType(), block, offset, stride) {
  initFieldDefaults(classType);
  startView();
}

nrColorSet4f::~nrColorSet4f() { destroyFieldContents(classType); }
