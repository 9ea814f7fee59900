#include "nerio3d/audio/nrAudio.h"

#include "nerio3d/fields/nrSField.h"

NR_DEFINE_TYPE(nrAudio, nrContainer, "Audio") {
  nrSFString::addTypeField(type, "device", DEVICE, nrString("default"), &nrAudio::device);
  nrSFInt::addTypeField(type, "sampleRate", SAMPLE_RATE, 44100, &nrAudio::sampleRate);
  nrSFInt::addTypeField(type, "channels", CHANNELS, 2, &nrAudio::channels);
}

nrAudio::nrAudio(nrType* type) : nrContainer(type) { initFieldDefaults(classType); }
