#include "nerio3d/geometry/nrTexCoordSet2f.h"

#include "nerio3d/fields/nrMField.h"

NR_DEFINE_TYPE(nrTexCoordSet2f, nrTexCoordSet, "TexCoordSet2f") {
  nrMFVec2f::addTypeField(type, "point", ARRAY_FIELD, &nrTexCoordSet2f::array);
}

nrTexCoordSet2f::nrTexCoordSet2f(nrType* type) : nrArraySet(type) { initFieldDefaults(classType); }

nrTexCoordSet2f::nrTexCoordSet2f(int count) : nrTexCoordSet2f(getClassType()) { startCount(count); }

nrTexCoordSet2f::nrTexCoordSet2f(nrData* block, short offset, short stride) : nrArraySet(getClassType(), block, offset, stride) {
  initFieldDefaults(classType);
  startView();
}

nrTexCoordSet2f::~nrTexCoordSet2f() { destroyFieldContents(classType); }
