// Colours as red, green, blue and alpha floats.
#pragma once

#include "nerio3d/geometry/nrArraySet.h"
#include "nerio3d/geometry/nrColorSet.h"

class nrColorSet4f : public nrArraySet<nrColorSet4f, nrColorSet, nrVec4fArray> {
  NR_DECLARE_CONTAINER_TYPE(nrColorSet4f)

  nrColorSet4f() : nrArraySet(getClassType()) {}
  explicit nrColorSet4f(int count) : nrArraySet(getClassType(), count) {}
  nrColorSet4f(nrData* block, short offset, short stride) : nrArraySet(getClassType(), block, offset, stride) {}
  explicit nrColorSet4f(nrType* typeOfClass) : nrArraySet(typeOfClass) {}

  void getGLAttr(nrGLAttr& attr) override { fillGLAttr(attr, GL_FLOAT, 4, nrGLAttr::color4f); }
};
