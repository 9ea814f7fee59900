// Connected line strips of their own lengths, drawn with the set's width once
// it is written.
#pragma once

#include "nerio3d/geometry/nrLengthGeoSet.h"

class nrLineStripSet : public nrLengthGeoSet {
  NR_DECLARE_CONTAINER_TYPE(nrLineStripSet)

  enum { STRIP_LENGTH_FIELD = LENGTHS_FIELD, WIDTH_FIELD = 16 };

  nrLineStripSet() : nrLineStripSet(getClassType()) {}
  explicit nrLineStripSet(nrType* type);
  ~nrLineStripSet() override;

  void setWidth(float w) { setValue(width, w, WIDTH_FIELD); }
  float getWidth() const { return getFieldValue(width, WIDTH_FIELD); }

  void setStripLength(int count, const int* values) { setLengths(count, values); }
  void setStripLength(const nrIntArray& values) { setLengths(values); }
  const nrIntArray& getStripLength() const { return getLengths(); }

  bool beginDraw(nrGLAttrSet& attrs, nrContext* context) override;
  void fieldChanged(short index) override;

 protected:
  void drawGeometry(nrGLAttrSet& attrs, nrDrawAction* bpcAction) override {
    drawLengths(attrs, GL_LINE_STRIP, lengths, bpcAction);
  }

  float width;
};
