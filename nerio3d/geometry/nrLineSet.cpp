#include "nerio3d/geometry/nrLineSet.h"

#include "nerio3d/fields/nrSField.h"

NR_DEFINE_TYPE(nrLineSet, nrGeoSet, "LineSet") {
  nrSFFloat::addTypeField(type, "width", WIDTH_FIELD, 1.0f, &nrLineSet::width);
}

nrLineSet::nrLineSet(nrType* type) : nrGeoSet(type) { initFieldDefaults(classType); }

nrLineSet::~nrLineSet() { destroyFieldContents(classType); }

void nrLineSet::fieldChanged(short index) {
  if (index == WIDTH_FIELD) userSet.setBit(LINE_WIDTH_SET_BIT);
  nrGeoSet::fieldChanged(index);
}

bool nrLineSet::beginDraw(nrGLAttrSet& attrs, nrContext* context) {
  if (!nrGeoSet::beginDraw(attrs, context)) return false;
  applyLineWidth(context, width);
  return true;
}
