#include "nerio3d/geometry/nrColorSet3f.h"

#include "nerio3d/fields/nrMField.h"

NR_DEFINE_TYPE(nrColorSet3f, nrColorSet, "ColorSet3f") {
  nrMFVec3f::addTypeField(type, "color", ARRAY_FIELD, &nrColorSet3f::array);
}

nrColorSet3f::nrColorSet3f(nrType* type) : nrArraySet(type) { initFieldDefaults(classType); }

nrColorSet3f::nrColorSet3f(int count) : nrColorSet3f(getClassType()) { startCount(count); }

nrColorSet3f::nrColorSet3f(nrData* block, short offset, short stride) : nrArraySet(getClassType(), block, offset, stride) {
  initFieldDefaults(classType);
  startView();
}

nrColorSet3f::~nrColorSet3f() { destroyFieldContents(classType); }
