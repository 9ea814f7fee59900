#include "nerio3d/geometry/nrQuadSet.h"

NR_DEFINE_TYPE(nrQuadSet, nrGeoSet, "QuadSet") {}

nrQuadSet::nrQuadSet(nrType* type) : nrGeoSet(type) { initFieldDefaults(classType); }

nrQuadSet::~nrQuadSet() { destroyFieldContents(classType); }

// The split along a-c, the one OpenGL draws a convex quad with, unless b or d
// is a reflex corner: then b-d is the only diagonal inside the quad. A corner
// is reflex when its edges turn against the quad's normal, taken from the
// cross product of the diagonals (right for any simple quad).
int nrQuadSet::quadToTris(const nrVec3f& a, const nrVec3f& b, const nrVec3f& c, const nrVec3f& d) {
  nrVec3f ac, bd, normal;
  ac.sub(c, a);
  bd.sub(d, b);
  normal.cross(ac, bd);
  auto reflex = [&normal](const nrVec3f& prev, const nrVec3f& corner, const nrVec3f& next) {
    nrVec3f toNext, toPrev, turn;
    toNext.sub(next, corner);
    toPrev.sub(prev, corner);
    turn.cross(toNext, toPrev);
    return turn.dot(normal) < 0;
  };
  return reflex(a, b, c) || reflex(c, d, a) ? 1 : 0;
}

bool nrQuadSet::getPrimTri(int firstVertex, int count, int t, int v[3]) {
  if (t < 0 || t > 1 || count < 4) return false;
  static const int split[2][2][3] = {{{0, 1, 2}, {0, 2, 3}}, {{0, 1, 3}, {1, 2, 3}}};
  int diagonal =
      quadToTris(getCoord(firstVertex), getCoord(firstVertex + 1), getCoord(firstVertex + 2), getCoord(firstVertex + 3));
  for (int k = 0; k < 3; ++k) v[k] = firstVertex + split[diagonal][t][k];
  return true;
}
