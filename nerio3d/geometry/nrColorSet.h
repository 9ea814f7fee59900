// Abstract base of the sets of colours that geometry draws.
#pragma once

#include "nerio3d/fields/nrContainer.h"
#include "nerio3d/geometry/nrGLAttr.h"

class nrColorSet : public nrContainer {
  NR_DECLARE_TYPE(nrColorSet)

  explicit nrColorSet(nrType* typeOfClass) : nrContainer(typeOfClass) {}

  // The set's stream for drawing, its fields brought up to date first.
  virtual void getGLAttr(nrGLAttr& attr) = 0;
  // Number of elements, brought up to date first.
  virtual unsigned getCount() = 0;
};
