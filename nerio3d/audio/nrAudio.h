// An audio resource of the system: the output device on which sound players
// open their ports. This platform opens none.
#pragma once

#include "nerio3d/core/nrString.h"
#include "nerio3d/fields/nrContainer.h"

class nrAudio : public nrContainer {
  NR_DECLARE_CONTAINER_TYPE(nrAudio)

  enum { DEVICE, SAMPLE_RATE, CHANNELS };

  nrAudio() : nrAudio(getClassType()) {}
  explicit nrAudio(nrType* type);

  void setDevice(const char* deviceName) { setFieldValue(device, nrString(deviceName), DEVICE); }
  const char* getDevice() const { return getFieldValue(device, DEVICE).getString(); }
  void setSampleRate(int hertz) { setFieldValue(sampleRate, hertz, SAMPLE_RATE); }
  int getSampleRate() const { return getFieldValue(sampleRate, SAMPLE_RATE); }
  void setChannels(int count) { setFieldValue(channels, count, CHANNELS); }
  int getChannels() const { return getFieldValue(channels, CHANNELS); }

 private:
  nrString device;
  int sampleRate;
  int channels;
};
