// Normals as three 16-bit integers (full scale is unit length).
#pragma once

#include "nerio3d/geometry/nrArraySet.h"
#include "nerio3d/geometry/nrNormalSet.h"

class nrNormalSet3s : public nrArraySet<nrNormalSet, nrVec3sArray> {
  NR_DECLARE_CONTAINER_TYPE(nrNormalSet3s)

  // Empty; with count elements (all zero); or over interleaved data in block.
  nrNormalSet3s() : nrNormalSet3s(getClassType()) {}
  explicit nrNormalSet3s(int count);
  nrNormalSet3s(nrData* block, short offset, short stride);
  explicit nrNormalSet3s(nrType* type);
  ~nrNormalSet3s() override;

  void getGLAttr(nrGLAttr& attr) override { fillGLAttr(attr, GL_SHORT, 3, nrGLAttr::normal3s); }
};
