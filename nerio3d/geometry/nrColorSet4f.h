// Colours as red, green, blue and alpha floats.
#pragma once

#include "nerio3d/geometry/nrArraySet.h"
#include "nerio3d/geometry/nrColorSet.h"

class nrColorSet4f : public nrArraySet<nrColorSet, nrVec4fArray> {
  NR_DECLARE_CONTAINER_TYPE(nrColorSet4f)

  // Empty; with count elements (all zero); or over interleaved data in block.
  nrColorSet4f() : nrColorSet4f(getClassType()) {}
  explicit nrColorSet4f(int count);
  nrColorSet4f(nrData* block, short offset, short stride);
  explicit nrColorSet4f(nrType* type);
  ~nrColorSet4f() override;

  void getGLAttr(nrGLAttr& attr) override { fillGLAttr(attr, GL_FLOAT, 4, nrGLAttr::color4f); }
};
