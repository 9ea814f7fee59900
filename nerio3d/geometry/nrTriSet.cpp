#include "nerio3d/geometry/nrTriSet.h"

NR_DEFINE_TYPE(nrTriSet, nrGeoSet, "TriSet") {}

nrTriSet::nrTriSet(nrType* type) : nrGeoSet(type) { initFieldDefaults(classType); }

nrTriSet::~nrTriSet() { destroyFieldContents(classType); }

bool nrTriSet::getPrimTri(int firstVertex, int count, int t, int v[3]) {
  if (t != 0 || count < 3) return false;
  v[0] = firstVertex;
  v[1] = firstVertex + 1;
  v[2] = firstVertex + 2;
  return true;
}
