#include "nerio3d/geometry/nrNormalSet3f.h"

#include "nerio3d/fields/nrMField.h"

NR_DEFINE_TYPE(nrNormalSet3f, nrNormalSet, "NormalSet3f") {
  nrMFVec3f::addTypeField(type, "vector", ARRAY_FIELD, &nrNormalSet3f::array);
}
