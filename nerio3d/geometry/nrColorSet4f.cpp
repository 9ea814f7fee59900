#include "nerio3d/geometry/nrColorSet4f.h"

#include "nerio3d/fields/nrMField.h"

NR_DEFINE_TYPE(nrColorSet4f, nrColorSet, "ColorSet4f") {
  nrMFVec4f::addTypeField(type, "color", ARRAY_FIELD, &nrColorSet4f::array);
}
