// Texture coordinates as two floats.
#pragma once

#include "nerio3d/geometry/nrArraySet.h"
#include "nerio3d/geometry/nrTexCoordSet.h"

class nrTexCoordSet2f : public nrArraySet<nrTexCoordSet2f, nrTexCoordSet, nrVec2fArray> {
  NR_DECLARE_CONTAINER_TYPE(nrTexCoordSet2f)

  nrTexCoordSet2f() : nrArraySet(getClassType()) {}
  explicit nrTexCoordSet2f(int count) : nrArraySet(getClassType(), count) {}
  nrTexCoordSet2f(nrData* block, short offset, short stride) : nrArraySet(getClassType(), block, offset, stride) {}
  explicit nrTexCoordSet2f(nrType* typeOfClass) : nrArraySet(typeOfClass) {}

  void getGLAttr(nrGLAttr& attr) override { fillGLAttr(attr, GL_FLOAT, 2, nrGLAttr::texCoord2f); }
};
