// Vertex coordinates as three floats.
#pragma once

#include "nerio3d/geometry/nrArraySet.h"
#include "nerio3d/geometry/nrCoordSet.h"

class nrCoordSet3f : public nrArraySet<nrCoordSet3f, nrCoordSet, nrVec3fArray> {
  NR_DECLARE_CONTAINER_TYPE(nrCoordSet3f)

  nrCoordSet3f() : nrArraySet(getClassType()) {}
  explicit nrCoordSet3f(int count) : nrArraySet(getClassType(), count) {}
  nrCoordSet3f(nrData* block, short offset, short stride) : nrArraySet(getClassType(), block, offset, stride) {}
  explicit nrCoordSet3f(nrType* typeOfClass) : nrArraySet(typeOfClass) {}

  void getGLAttr(nrGLAttr& attr) override { fillGLAttr(attr, GL_FLOAT, 3, nrGLAttr::vertex3f); }
};
