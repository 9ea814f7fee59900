// Vertex coordinates as three floats.
#pragma once

#include "nerio3d/geometry/nrArraySet.h"
#include "nerio3d/geometry/nrCoordSet.h"

class nrCoordSet3f : public nrArraySet<nrCoordSet, nrVec3fArray> {
  NR_DECLARE_CONTAINER_TYPE(nrCoordSet3f)

  // Empty; with count elements (all zero); or over interleaved data in block.
  nrCoordSet3f() : nrCoordSet3f(getClassType()) {}
  explicit nrCoordSet3f(int count);
  nrCoordSet3f(nrData* block, short offset, short stride);
  explicit nrCoordSet3f(nrType* type);
  ~nrCoordSet3f() override;

  void getGLAttr(nrGLAttr& attr) override { fillGLAttr(attr, GL_FLOAT, 3, nrGLAttr::vertex3f); }
};
