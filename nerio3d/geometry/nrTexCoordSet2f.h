// Texture coordinates as two floats.
#pragma once

#include "nerio3d/geometry/nrArraySet.h"
#include "nerio3d/geometry/nrTexCoordSet.h"

class nrTexCoordSet2f : public nrArraySet<nrTexCoordSet, nrVec2fArray> {
  NR_DECLARE_CONTAINER_TYPE(nrTexCoordSet2f)

  // Empty; with count elements (all zero); or over interleaved data in block.
  nrTexCoordSet2f() : nrTexCoordSet2f(getClassType()) {}
  explicit nrTexCoordSet2f(int count);
  nrTexCoordSet2f(nrData* block, short offset, short stride);
  explicit nrTexCoordSet2f(nrType* type);
  ~nrTexCoordSet2f() override;

  void getGLAttr(nrGLAttr& attr) override { fillGLAttr(attr, GL_FLOAT, 2, nrGLAttr::texCoord2f); }
};
