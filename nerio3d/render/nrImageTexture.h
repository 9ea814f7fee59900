// The texture of scene files: its image comes from the first entry of `url`.
#pragma once

#include "nerio3d/arrays/nrTypedArray.h"
#include "nerio3d/render/nrTexture.h"

class nrImageTexture : public nrTexture {
  NR_DECLARE_CONTAINER_TYPE(nrImageTexture)

  enum { URL_FIELD = 7 };

  nrImageTexture() : nrImageTexture(getClassType()) {}
  explicit nrImageTexture(nrType* type);

  // Makes url the single entry of the field.
  void setUrl(const char* url);
  // The first entry, or null when there is none.
  const char* getUrl() const;

  // Without the file name and the image levels, which the url gives again
  // when the text is read.
  void write(nrOutput* out) override;
  void fieldChanged(short index) override;

 protected:
  nrStringArray url;
};
