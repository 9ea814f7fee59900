#include "nerio3d/geometry/nrNormalSet3s.h"

#include "nerio3d/fields/nrMField.h"

NR_DEFINE_TYPE(nrNormalSet3s, nrNormalSet, "NormalSet3s") {
  nrMFVec3s::addTypeField(type, "vector3s", ARRAY_FIELD, &nrNormalSet3s::array);
}

nrNormalSet3s::nrNormalSet3s(nrType* type) : nrArraySet(type) { initFieldDefaults(classType); }

nrNormalSet3s::nrNormalSet3s(int count) : nrNormalSet3s(getClassType()) { startCount(count); }

nrNormalSet3s::nrNormalSet3s(nrData* block, short offset, short stride) : nrArraySet(getClassType(), block, offset, stride) {
  initFieldDefaults(classType);
  startView();
}

nrNormalSet3s::~nrNormalSet3s() { destroyFieldContents(classType); }
