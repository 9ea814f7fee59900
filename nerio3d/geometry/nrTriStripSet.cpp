#include "nerio3d/geometry/nrTriStripSet.h"

#include "nerio3d/fields/nrMField.h"
#include "nerio3d/geometry/nrCoordSet3f.h"
#include "nerio3d/geometry/nrNormalSet3f.h"
#include "nerio3d/geometry/nrTexCoordSet2f.h"

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

nrTriStripSet* nrTriStripSet::create(const nrVec3fArray& coords, const nrVec3fArray& normals,
                                     const nrVec2fArray& texCoords, const nrIntArray& lengths) {
  nrTriStripSet* set = new nrTriStripSet;
  nrCoordSet3f* c = new nrCoordSet3f;
  c->set(coords);
  nrNormalSet3f* n = new nrNormalSet3f;
  n->set(normals);
  nrTexCoordSet2f* t = new nrTexCoordSet2f;
  t->set(texCoords);
  set->setCoordSet(c);
  set->setNormalSet(n);
  set->setTexCoordSet(t);
  set->setNormalBind(PER_VERTEX_NORMAL);
  set->setTexCoordBind(PER_VERTEX_TEX_COORD);
  set->setLengths(lengths);
  set->setPrimCount(static_cast<int>(lengths.getCount()));
  return set;
}
