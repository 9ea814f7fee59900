#include "nerio3d/audio/nrSoundPlayer.h"

#include "nerio3d/fields/nrSField.h"

NR_DEFINE_TYPE(nrSoundPlayer, nrContainer, "SoundPlayer") {
  nrSFFloat::addTypeField(type, "gain", GAIN, 1.0f, &nrSoundPlayer::gain);
}

nrSoundPlayer::nrSoundPlayer(nrType* type) : nrContainer(type) { initFieldDefaults(classType); }

unsigned char nrSoundPlayer::open(nrAudio*) { return 0; }

unsigned char nrSoundPlayer::play(nrAudioClip*) { return isOpen(); }
