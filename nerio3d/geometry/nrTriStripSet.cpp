#include "nerio3d/geometry/nrTriStripSet.h"

#include "nerio3d/fields/nrMField.h"

NR_DEFINE_TYPE(nrTriStripSet, nrGeoSet, "TriStripSet") {
  nrMFInt::addTypeField(type, "stripLength", STRIP_LENGTH_FIELD, &nrTriStripSet::lengths);
}

nrTriStripSet::nrTriStripSet(nrType* type) : nrLengthGeoSet(type) { initFieldDefaults(classType); }

nrTriStripSet::~nrTriStripSet() { destroyFieldContents(classType); }

bool nrTriStripSet::getPrimTri(int firstVertex, int count, int t, int v[3]) {
  if (t < 0 || t >= count - 2) return false;
  v[0] = firstVertex + t + (t & 1);
  v[1] = firstVertex + t + 1 - (t & 1);
  v[2] = firstVertex + t + 2;
  return true;
}
