// Plays audio clips through a port opened on an audio resource. No port
// opens on this platform, so nothing is ever heard.
#pragma once

#include "nerio3d/fields/nrContainer.h"

class nrAudio;
class nrAudioClip;

class nrSoundPlayer : public nrContainer {
  NR_DECLARE_CONTAINER_TYPE(nrSoundPlayer)

  enum { GAIN };

  nrSoundPlayer() : nrSoundPlayer(getClassType()) {}
  explicit nrSoundPlayer(nrType* type);

  void setGain(float v) { setFieldValue(gain, v, GAIN); }
  float getGain() const { return getFieldValue(gain, GAIN); }

  // Opens a port on resource; 1 on success. Always 0 here: the graphics
  // context reports the failure when it starts sound.
  unsigned char open(nrAudio* resource);
  unsigned char isOpen() const { return 0; }
  // Starts clip on the open port; 0 when no port is open.
  unsigned char play(nrAudioClip* clip);

 private:
  float gain;
};
