// Normals as three floats.
#pragma once

#include "nerio3d/geometry/nrArraySet.h"
#include "nerio3d/geometry/nrNormalSet.h"

class nrNormalSet3f : public nrArraySet<nrNormalSet, nrVec3fArray> {
  NR_DECLARE_CONTAINER_TYPE(nrNormalSet3f)

  // Empty; with count elements (all zero); or over interleaved data in block.
  nrNormalSet3f() : nrNormalSet3f(getClassType()) {}
  explicit nrNormalSet3f(int count);
  nrNormalSet3f(nrData* block, short offset, short stride);
  explicit nrNormalSet3f(nrType* type);
  ~nrNormalSet3f() override;

  void getGLAttr(nrGLAttr& attr) override { fillGLAttr(attr, GL_FLOAT, 3, nrGLAttr::normal3f); }
};
