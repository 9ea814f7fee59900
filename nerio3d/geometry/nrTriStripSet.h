// Triangle strips of their own lengths, drawn through a display list once compiled.
#pragma once

#include "nerio3d/geometry/nrLengthGeoSet.h"

class nrTriStripSet : public nrLengthGeoSet {
  NR_DECLARE_CONTAINER_TYPE(nrTriStripSet)

  enum { STRIP_LENGTH_FIELD = LENGTHS_FIELD };

  nrTriStripSet() : nrTriStripSet(getClassType()) {}
  explicit nrTriStripSet(nrType* type);
  ~nrTriStripSet() override;

  // A new set of strips with per-vertex normals and texture coordinates.
  static nrTriStripSet* create(const nrVec3fArray& coords, const nrVec3fArray& normals,
                               const nrVec2fArray& texCoords, const nrIntArray& lengths);

  void setStripLength(int count, const int* values) { setLengths(count, values); }
  void setStripLength(const nrIntArray& values) { setLengths(values); }
  const nrIntArray& getStripLength() const { return getLengths(); }

  void draw(nrDrawAction* action) override { drawCompiled(action); }
  void compile(nrCompileAction* action) override { compileList(action); }
  // Consecutive triangles, every other one turned so all keep the strip's winding.
  bool getPrimTri(int firstVertex, int count, int t, int v[3]) override;

 protected:
  void drawGeometry(nrGLAttrSet& attrs, nrDrawAction* bpcAction) override {
    drawLengths(attrs, GL_TRIANGLE_STRIP, lengths, bpcAction);
  }
};
