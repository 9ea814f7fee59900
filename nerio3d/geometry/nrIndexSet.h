// A list of vertex indices through which geometry takes its attributes.
#pragma once

#include "nerio3d/fields/nrContainer.h"
#include "nerio3d/geometry/nrArraySet.h"

class nrIndexSet : public nrArraySet<nrIndexSet, nrContainer, nrIntArray> {
  NR_DECLARE_CONTAINER_TYPE(nrIndexSet)

  nrIndexSet() : nrArraySet(getClassType()) {}
  explicit nrIndexSet(int count) : nrArraySet(getClassType(), count) {}
  explicit nrIndexSet(nrType* typeOfClass) : nrArraySet(typeOfClass) {}
};
