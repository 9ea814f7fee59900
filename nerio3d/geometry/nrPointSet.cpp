#include "nerio3d/geometry/nrPointSet.h"

#include "nerio3d/fields/nrSField.h"

NR_DEFINE_TYPE(nrPointSet, nrGeoSet, "PointSet") {
  nrSFFloat::addTypeField(type, "size", SIZE_FIELD, 1.0f, &nrPointSet::size);
}

nrPointSet::nrPointSet(nrType* type) : nrGeoSet(type) { initFieldDefaults(classType); }

nrPointSet::~nrPointSet() { destroyFieldContents(classType); }

void nrPointSet::fieldChanged(short index) {
  if (index == SIZE_FIELD) userSet.setBit(POINT_SIZE_SET_BIT);
  nrGeoSet::fieldChanged(index);
}

bool nrPointSet::beginDraw(nrGLAttrSet& attrs, nrContext* context) {
  if (!nrGeoSet::beginDraw(attrs, context)) return false;
  applyPointSize(context, size);
  return true;
}
