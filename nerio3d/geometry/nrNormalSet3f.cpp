#include "nerio3d/geometry/nrNormalSet3f.h"

#include "nerio3d/fields/nrMField.h"

NR_DEFINE_TYPE(nrNormalSet3f, nrNormalSet, "NormalSet3f") {
  nrMFVec3f::addTypeField(type, "vector", ARRAY_FIELD, &nrNormalSet3f::array);
}

nrNormalSet3f::nrNormalSet3f(nrType* type) : nrArraySet(type) { initFieldDefaults(classType); }

nrNormalSet3f::nrNormalSet3f(int count) : nrNormalSet3f(getClassType()) { startCount(count); }

nrNormalSet3f::nrNormalSet3f(nrData* block, short offset, short stride) : nrArraySet(getClassType(), block, offset, stride) {
  initFieldDefaults(classType);
  startView();
}

nrNormalSet3f::~nrNormalSet3f() { destroyFieldContents(classType); }
