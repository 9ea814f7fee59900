#include "nerio3d/geometry/nrTexCoordSet2f.h"

#include "nerio3d/fields/nrMField.h"

NR_DEFINE_TYPE(nrTexCoordSet2f, nrTexCoordSet, "TexCoordSet2f") {
  nrMFVec2f::addTypeField(type, "point", ARRAY_FIELD, &nrTexCoordSet2f::array);
}
