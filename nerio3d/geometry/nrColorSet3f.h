// Colours as red, green and blue floats.
#pragma once

#include "nerio3d/geometry/nrArraySet.h"
#include "nerio3d/geometry/nrColorSet.h"

class nrColorSet3f : public nrArraySet<nrColorSet, nrVec3fArray> {
  NR_DECLARE_CONTAINER_TYPE(nrColorSet3f)

  // Empty; with count elements (all zero); or over interleaved data in block.
  nrColorSet3f() : nrColorSet3f(getClassType()) {}
  explicit nrColorSet3f(int count);
  nrColorSet3f(nrData* block, short offset, short stride);
  explicit nrColorSet3f(nrType* type);
  ~nrColorSet3f() override;

  void getGLAttr(nrGLAttr& attr) override { fillGLAttr(attr, GL_FLOAT, 3, nrGLAttr::color3f); }
};
