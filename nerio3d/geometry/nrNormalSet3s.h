// Normals as three 16-bit integers (full scale is unit length).
#pragma once

#include "nerio3d/geometry/nrArraySet.h"
#include "nerio3d/geometry/nrNormalSet.h"

class nrNormalSet3s : public nrArraySet<nrNormalSet3s, nrNormalSet, nrVec3sArray> {
  NR_DECLARE_CONTAINER_TYPE(nrNormalSet3s)

  nrNormalSet3s() : nrArraySet(getClassType()) {}
  explicit nrNormalSet3s(int count) : nrArraySet(getClassType(), count) {}
  nrNormalSet3s(nrData* block, short offset, short stride) : nrArraySet(getClassType(), block, offset, stride) {}
  explicit nrNormalSet3s(nrType* typeOfClass) : nrArraySet(typeOfClass) {}

  void getGLAttr(nrGLAttr& attr) override { fillGLAttr(attr, GL_SHORT, 3, nrGLAttr::normal3s); }
};
