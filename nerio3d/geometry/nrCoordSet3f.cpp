#include "nerio3d/geometry/nrCoordSet3f.h"

#include "nerio3d/fields/nrMField.h"

NR_DEFINE_TYPE(nrCoordSet3f, nrCoordSet, "CoordSet3f") {
  nrMFVec3f::addTypeField(type, "point", ARRAY_FIELD, &nrCoordSet3f::array);
}

nrCoordSet3f::nrCoordSet3f(nrType* type) : nrArraySet(type) { initFieldDefaults(classType); }

nrCoordSet3f::nrCoordSet3f(int count) : nrCoordSet3f(getClassType()) { startCount(count); }

nrCoordSet3f::nrCoordSet3f(nrData* block, short offset, short stride) : nrArraySet(getClassType(), block, offset, stride) {
  initFieldDefaults(classType);
  startView();
}

nrCoordSet3f::~nrCoordSet3f() { destroyFieldContents(classType); }
