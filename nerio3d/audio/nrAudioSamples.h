// The sound data of an audio file, decoded once and shared by the clips that
// play it.
#pragma once

#include "nerio3d/core/nrString.h"
#include "nerio3d/fields/nrContainer.h"

class nrAudioSamples : public nrContainer {
  NR_DECLARE_CONTAINER_TYPE(nrAudioSamples)

  enum { FILE_NAME };

  nrAudioSamples() : nrAudioSamples(getClassType()) {}
  explicit nrAudioSamples(nrType* type);

  void setFileName(const char* path) { setFieldValue(fileName, nrString(path), FILE_NAME); }
  const char* getFileName() const { return getFieldValue(fileName, FILE_NAME).getString(); }

  // Decodes the file; 1 on success. This platform has no audio decoding:
  // the call reports that on standard error and returns 0.
  unsigned char load();

 private:
  nrString fileName;
};
