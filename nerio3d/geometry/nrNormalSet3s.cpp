#include "nerio3d/geometry/nrNormalSet3s.h"

#include "nerio3d/fields/nrMField.h"

NR_DEFINE_TYPE(nrNormalSet3s, nrNormalSet, "NormalSet3s") {
  nrMFVec3s::addTypeField(type, "vector3s", ARRAY_FIELD, &nrNormalSet3s::array);
}
