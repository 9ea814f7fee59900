// A window's input event records in arrival order.
#pragma once

#include "nerio3d/arrays/nrTypedArray.h"

class nrEvent;

class nrEventArray : public nrTypedArray<nrEvent*> {
 public:
  using nrTypedArray::nrTypedArray;
};
