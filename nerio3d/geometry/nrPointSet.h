// Points, drawn with the set's size once it is written.
#pragma once

#include "nerio3d/geometry/nrGeoSet.h"

class nrPointSet : public nrGeoSet {
  NR_DECLARE_CONTAINER_TYPE(nrPointSet)

  enum { SIZE_FIELD = 15 };

  nrPointSet() : nrPointSet(getClassType()) {}
  explicit nrPointSet(nrType* type);
  ~nrPointSet() override;

  void setSize(float s) { setValue(size, s, SIZE_FIELD); }
  float getSize() const { return getFieldValue(size, SIZE_FIELD); }

  int getPrimLen(int) override { return 1; }
  bool beginDraw(nrGLAttrSet& attrs, nrContext* context) override;
  void fieldChanged(short index) override;

 protected:
  void drawGeometry(nrGLAttrSet& attrs, nrDrawAction* bpcAction) override { drawFixed(attrs, GL_POINTS, 1, bpcAction); }

  float size;
};
