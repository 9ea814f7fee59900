// Independent triangles, three vertices each.
#pragma once

#include "nerio3d/geometry/nrGeoSet.h"

class nrTriSet : public nrGeoSet {
  NR_DECLARE_CONTAINER_TYPE(nrTriSet)

  nrTriSet() : nrTriSet(getClassType()) {}
  explicit nrTriSet(nrType* type);
  ~nrTriSet() override;

  int getPrimLen(int) override { return 3; }
  bool getPrimTri(int firstVertex, int count, int t, int v[3]) override;

 protected:
  void drawGeometry(nrGLAttrSet& attrs, nrDrawAction* bpcAction) override {
    drawFixed(attrs, GL_TRIANGLES, 3, bpcAction);
  }
};
