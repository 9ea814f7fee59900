// Triangle fans of their own lengths around their first vertex, drawn through
// a display list once compiled.
#pragma once

#include "nerio3d/geometry/nrLengthGeoSet.h"

class nrTriFanSet : public nrLengthGeoSet {
  NR_DECLARE_CONTAINER_TYPE(nrTriFanSet)

  enum { FAN_LENGTH_FIELD = LENGTHS_FIELD };

  nrTriFanSet() : nrTriFanSet(getClassType()) {}
  explicit nrTriFanSet(nrType* type);
  ~nrTriFanSet() override;

  void setFanLength(int count, const int* values) { setLengths(count, values); }
  void setFanLength(const nrIntArray& values) { setLengths(values); }
  const nrIntArray& getFanLength() const { return getLengths(); }

  void draw(nrDrawAction* action) override { drawCompiled(action); }
  void compile(nrCompileAction* action) override { compileList(action); }
  bool getPrimTri(int firstVertex, int count, int t, int v[3]) override { return fanTri(firstVertex, count, t, v); }

 protected:
  void drawGeometry(nrGLAttrSet& attrs, nrDrawAction* bpcAction) override {
    drawLengths(attrs, GL_TRIANGLE_FAN, lengths, bpcAction);
  }
};
