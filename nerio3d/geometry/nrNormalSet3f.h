// Normals as three floats.
#pragma once

#include "nerio3d/geometry/nrArraySet.h"
#include "nerio3d/geometry/nrNormalSet.h"

class nrNormalSet3f : public nrArraySet<nrNormalSet3f, nrNormalSet, nrVec3fArray> {
  NR_DECLARE_CONTAINER_TYPE(nrNormalSet3f)

  nrNormalSet3f() : nrArraySet(getClassType()) {}
  explicit nrNormalSet3f(int count) : nrArraySet(getClassType(), count) {}
  nrNormalSet3f(nrData* block, short offset, short stride) : nrArraySet(getClassType(), block, offset, stride) {}
  explicit nrNormalSet3f(nrType* typeOfClass) : nrArraySet(typeOfClass) {}

  void getGLAttr(nrGLAttr& attr) override { fillGLAttr(attr, GL_FLOAT, 3, nrGLAttr::normal3f); }
};
