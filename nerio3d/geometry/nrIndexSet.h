// A list of vertex indices through which geometry takes its attributes.
#pragma once

#include "nerio3d/fields/nrContainer.h"
#include "nerio3d/geometry/nrArraySet.h"

class nrIndexSet : public nrArraySet<nrContainer, nrIntArray> {
  NR_DECLARE_CONTAINER_TYPE(nrIndexSet)

  nrIndexSet() : nrIndexSet(getClassType()) {}
  explicit nrIndexSet(int count);
  explicit nrIndexSet(nrType* type);
  ~nrIndexSet() override;
};
