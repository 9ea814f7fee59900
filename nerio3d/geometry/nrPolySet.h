// Convex polygons of their own lengths. In immediate mode consecutive
// triangles share one GL_TRIANGLES block and quads one GL_QUADS block.
#pragma once

#include "nerio3d/geometry/nrLengthGeoSet.h"

class nrPolySet : public nrLengthGeoSet {
  NR_DECLARE_CONTAINER_TYPE(nrPolySet)

  enum { POLY_LENGTH_FIELD = LENGTHS_FIELD };

  nrPolySet() : nrPolySet(getClassType()) {}
  explicit nrPolySet(nrType* type);
  ~nrPolySet() override;

  void setPolyLength(int count, const int* values) { setLengths(count, values); }
  void setPolyLength(const nrIntArray& values) { setLengths(values); }
  const nrIntArray& getPolyLength() const { return getLengths(); }

  // Picked as a fan around its first vertex.
  bool getPrimTri(int firstVertex, int count, int t, int v[3]) override { return fanTri(firstVertex, count, t, v); }

 protected:
  void drawGeometry(nrGLAttrSet& attrs, nrDrawAction* bpcAction) override;
};
