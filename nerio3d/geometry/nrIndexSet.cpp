#include "nerio3d/geometry/nrIndexSet.h"

#include "nerio3d/fields/nrMField.h"

NR_DEFINE_TYPE(nrIndexSet, nrContainer, "IndexSet") {
  nrMFInt::addTypeField(type, "index", ARRAY_FIELD, &nrIndexSet::array);
}

nrIndexSet::nrIndexSet(nrType* type) : nrArraySet(type) { initFieldDefaults(classType); }

nrIndexSet::nrIndexSet(int count) : nrIndexSet(getClassType()) { startCount(count); }

nrIndexSet::~nrIndexSet() { destroyFieldContents(classType); }
