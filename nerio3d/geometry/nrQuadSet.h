// Independent quadrilaterals, four vertices each.
#pragma once

#include "nerio3d/geometry/nrGeoSet.h"

class nrQuadSet : public nrGeoSet {
  NR_DECLARE_CONTAINER_TYPE(nrQuadSet)

  nrQuadSet() : nrQuadSet(getClassType()) {}
  explicit nrQuadSet(nrType* type);
  ~nrQuadSet() override;

  int getPrimLen(int) override { return 4; }
  bool getPrimTri(int firstVertex, int count, int t, int v[3]) override;

  // The diagonal that splits quad a b c d into two triangles: 0 for a-c
  // (triangles a b c and a c d), 1 for b-d (a b d and b c d).
  static int quadToTris(const nrVec3f& a, const nrVec3f& b, const nrVec3f& c, const nrVec3f& d);

 protected:
  void drawGeometry(nrGLAttrSet& attrs, nrDrawAction* bpcAction) override { drawFixed(attrs, GL_QUADS, 4, bpcAction); }
};
