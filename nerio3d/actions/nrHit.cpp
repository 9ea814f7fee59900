#include "nerio3d/actions/nrHit.h"

NR_DEFINE_TYPE(nrHit, nrObject, "Hit") {}

nrHit::nrHit(nrType* type) : nrObject(type), path(8) { clear(); }

nrHit::nrHit(const nrHit& other) : nrObject(other.getType()), path(8) { *this = other; }

nrHit& nrHit::operator=(const nrHit& other) {
  if (this == &other) return *this;
  path = other.path;
  geometry = other.geometry;
  shape = other.shape;
  primitive = other.primitive;
  segLength = other.segLength;
  fraction = other.fraction;
  localPoint = other.localPoint;
  worldPoint = other.worldPoint;
  localNormal = other.localNormal;
  worldNormal = other.worldNormal;
  texCoord = other.texCoord;
  hasTexCoord = other.hasTexCoord;
  matrix = other.matrix;
  return *this;
}

void nrHit::clear() {
  path.setCount(0);
  geometry = nullptr;
  shape = nullptr;
  primitive = -1;
  segLength = 0;
  fraction = 1;
  localPoint.set(0, 0, 0);
  worldPoint.set(0, 0, 0);
  localNormal.set(0, 0, 0);
  worldNormal.set(0, 0, 0);
  texCoord.set(0, 0);
  hasTexCoord = false;
  matrix.makeIdent();
}

bool nrHit::getTexCoord(nrVec2f& tc) const {
  if (hasTexCoord) tc = texCoord;
  return hasTexCoord;
}
