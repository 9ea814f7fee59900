// Colours as red, green and blue floats.
#pragma once

#include "nerio3d/geometry/nrArraySet.h"
#include "nerio3d/geometry/nrColorSet.h"

class nrColorSet3f : public nrArraySet<nrColorSet3f, nrColorSet, nrVec3fArray> {
  NR_DECLARE_CONTAINER_TYPE(nrColorSet3f)

  nrColorSet3f() : nrArraySet(getClassType()) {}
  explicit nrColorSet3f(int count) : nrArraySet(getClassType(), count) {}
  nrColorSet3f(nrData* block, short offset, short stride) : nrArraySet(getClassType(), block, offset, stride) {}
  explicit nrColorSet3f(nrType* typeOfClass) : nrArraySet(typeOfClass) {}

  void getGLAttr(nrGLAttr& attr) override { fillGLAttr(attr, GL_FLOAT, 3, nrGLAttr::color3f); }
};
