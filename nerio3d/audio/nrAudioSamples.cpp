#include "nerio3d/audio/nrAudioSamples.h"

#include <cstdio>

#include "nerio3d/fields/nrSField.h"

NR_DEFINE_TYPE(nrAudioSamples, nrContainer, "AudioSamples") {
  nrSFString::addTypeField(type, "fileName", FILE_NAME, nrString(), &nrAudioSamples::fileName);
}

nrAudioSamples::nrAudioSamples(nrType* type) : nrContainer(type) { initFieldDefaults(classType); }

unsigned char nrAudioSamples::load() {
  fprintf(stderr, "nrAudioSamples::load(): cannot load \"%s\": no audio support on this platform\n",
          fileName.isNull() ? "" : fileName.getString());
  return 0;
}
