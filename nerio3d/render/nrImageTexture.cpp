#include "nerio3d/render/nrImageTexture.h"

#include <cstring>

#include "nerio3d/fields/nrMField.h"
#include "nerio3d/render/nrImage.h"

NR_DEFINE_TYPE(nrImageTexture, nrTexture, "ImageTexture") {
  nrMFString::addTypeField(type, "url", URL_FIELD, &nrImageTexture::url);
}

nrImageTexture::nrImageTexture(nrType* type) : nrTexture(type) { initFieldDefaults(classType); }

void nrImageTexture::setUrl(const char* value) {
  nrStringArray one(1);
  one.append(nrString(value));
  static_cast<nrMFString*>(getField(URL_FIELD))->set(one);
}

void nrImageTexture::write(nrOutput* out) {
  writeFields(out, {FORMAT_FIELD, REPEAT_S_FIELD, REPEAT_T_FIELD, MIN_FILTER_FIELD, MAG_FILTER_FIELD, URL_FIELD});
}

const char* nrImageTexture::getUrl() const { return url.getCount() ? url[0].getString() : nullptr; }

void nrImageTexture::fieldChanged(short index) {
  if (index != URL_FIELD) {
    nrTexture::fieldChanged(index);
    return;
  }
  nrContainer::fieldChanged(index);
  const char* first = getUrl();
  if (!first) return;
  nrImage* level0 = getImageLevel(0);
  if (!level0) {
    setFileName(first);
    return;
  }
  nrString name;
  level0->getFileName(name);
  if (name.getString() && !strcmp(name.getString(), first)) return;
  level0->setFileName(first);
  level0->load();
  // Levels built from the previous image no longer match it.
  dropLevels(1);
}
