#include "nerio3d/geometry/nrLineStripSet.h"

#include "nerio3d/fields/nrMField.h"
#include "nerio3d/fields/nrSField.h"

NR_DEFINE_TYPE(nrLineStripSet, nrGeoSet, "LineStripSet") {
  nrMFInt::addTypeField(type, "stripLength", STRIP_LENGTH_FIELD, &nrLineStripSet::lengths);
  nrSFFloat::addTypeField(type, "width", WIDTH_FIELD, 1.0f, &nrLineStripSet::width);
}

nrLineStripSet::nrLineStripSet(nrType* type) : nrLengthGeoSet(type) { initFieldDefaults(classType); }

nrLineStripSet::~nrLineStripSet() { destroyFieldContents(classType); }

void nrLineStripSet::fieldChanged(short index) {
  if (index == WIDTH_FIELD) userSet.setBit(LINE_WIDTH_SET_BIT);
  nrLengthGeoSet::fieldChanged(index);
}

bool nrLineStripSet::beginDraw(nrGLAttrSet& attrs, nrContext* context) {
  if (!nrLengthGeoSet::beginDraw(attrs, context)) return false;
  applyLineWidth(context, width);
  return true;
}
