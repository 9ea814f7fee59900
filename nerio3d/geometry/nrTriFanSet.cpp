#include "nerio3d/geometry/nrTriFanSet.h"

#include "nerio3d/fields/nrMField.h"

NR_DEFINE_TYPE(nrTriFanSet, nrGeoSet, "TriFanSet") {
  nrMFInt::addTypeField(type, "fanLength", FAN_LENGTH_FIELD, &nrTriFanSet::lengths);
}

nrTriFanSet::nrTriFanSet(nrType* type) : nrLengthGeoSet(type) { initFieldDefaults(classType); }

nrTriFanSet::~nrTriFanSet() { destroyFieldContents(classType); }
