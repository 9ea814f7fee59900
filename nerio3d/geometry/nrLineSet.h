// Independent line segments, two vertices each, drawn with the set's width
// once it is written.
#pragma once

#include "nerio3d/geometry/nrGeoSet.h"

class nrLineSet : public nrGeoSet {
  NR_DECLARE_CONTAINER_TYPE(nrLineSet)

  enum { WIDTH_FIELD = 15 };

  nrLineSet() : nrLineSet(getClassType()) {}
  explicit nrLineSet(nrType* type);
  ~nrLineSet() override;

  void setWidth(float w) { setValue(width, w, WIDTH_FIELD); }
  float getWidth() const { return getFieldValue(width, WIDTH_FIELD); }

  int getPrimLen(int) override { return 2; }
  bool beginDraw(nrGLAttrSet& attrs, nrContext* context) override;
  void fieldChanged(short index) override;

 protected:
  void drawGeometry(nrGLAttrSet& attrs, nrDrawAction* bpcAction) override { drawFixed(attrs, GL_LINES, 2, bpcAction); }

  float width;
};
