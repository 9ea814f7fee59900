#include "nerio3d/geometry/nrColorSet3f.h"

#include "nerio3d/fields/nrMField.h"

NR_DEFINE_TYPE(nrColorSet3f, nrColorSet, "ColorSet3f") {
  nrMFVec3f::addTypeField(type, "color", ARRAY_FIELD, &nrColorSet3f::array);
}
