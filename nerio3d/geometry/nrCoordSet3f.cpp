#include "nerio3d/geometry/nrCoordSet3f.h"

#include "nerio3d/fields/nrMField.h"

NR_DEFINE_TYPE(nrCoordSet3f, nrCoordSet, "CoordSet3f") {
  nrMFVec3f::addTypeField(type, "point", ARRAY_FIELD, &nrCoordSet3f::array);
}
