#include "nerio3d/geometry/nrIndexSet.h"

#include "nerio3d/fields/nrMField.h"

NR_DEFINE_TYPE(nrIndexSet, nrContainer, "IndexSet") {
  nrMFInt::addTypeField(type, "index", ARRAY_FIELD, &nrIndexSet::array);
}
