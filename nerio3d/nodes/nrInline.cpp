#include "nerio3d/nodes/nrInline.h"

#include "nerio3d/fields/nrMField.h"
#include "nerio3d/fields/nrSField.h"

NR_DEFINE_TYPE(nrInline, nrSwitch, "Inline") {
  nrMFString::addTypeField(type, "url", URL_FIELD, &nrInline::url);
  nrSFVec3f::addTypeField(type, "bboxCenter", BBOX_CENTER_FIELD, nrVec3f(0, 0, 0), &nrInline::bboxCenter);
  nrSFVec3f::addTypeField(type, "bboxSize", BBOX_SIZE_FIELD, nrVec3f(-1, -1, -1), &nrInline::bboxSize);
}

nrInline::nrInline(nrType* type) : nrSwitch(type) { initFieldDefaults(getClassType()); }

nrInline::~nrInline() { destroyFieldContents(getClassType()); }

void nrInline::setUrl(unsigned index, const char* text) {
  url.set(index, text);
  fieldChanged(URL_FIELD);
}

void nrInline::write(nrOutput* out) { writeFields(out, {URL_FIELD, BBOX_CENTER_FIELD, BBOX_SIZE_FIELD}); }

const nrStringArray& nrInline::getUrl() const {
  return getFieldValue(url, URL_FIELD);
}
