#include "nerio3d/audio/nrSound.h"

#include "nerio3d/audio/nrAudioClip.h"
#include "nerio3d/fields/nrSFRef.h"
#include "nerio3d/fields/nrSField.h"

NR_DEFINE_TYPE(nrSound, nrNode, "Sound") {
  nrSFVec3f::addTypeField(type, "direction", DIRECTION, nrVec3f(0, 0, 1), &nrSound::direction);
  nrSFFloat::addTypeField(type, "intensity", INTENSITY, 1.0f, &nrSound::intensity);
  nrSFVec3f::addTypeField(type, "location", LOCATION, nrVec3f(0, 0, 0), &nrSound::location);
  nrSFFloat::addTypeField(type, "maxBack", MAX_BACK, 10.0f, &nrSound::maxBack);
  nrSFFloat::addTypeField(type, "maxFront", MAX_FRONT, 10.0f, &nrSound::maxFront);
  nrSFFloat::addTypeField(type, "minBack", MIN_BACK, 1.0f, &nrSound::minBack);
  nrSFFloat::addTypeField(type, "minFront", MIN_FRONT, 1.0f, &nrSound::minFront);
  nrSFFloat::addTypeField(type, "priority", PRIORITY, 0.0f, &nrSound::priority);
  nrSFRef::addTypeField(type, "source", SOURCE, nrAudioClip::getClassType(), &nrSound::source);
  nrSFUByte::addTypeField(type, "spatialize", SPATIALIZE, 1, &nrSound::spatialize);
}

nrSound::nrSound(nrType* type) : nrNode(type) { initFieldDefaults(classType); }

nrSound::~nrSound() { destroyFieldContents(classType); }

void nrSound::setSource(nrAudioClip* clip) {
  refer(source, clip);
  source = clip;
  fieldChanged(SOURCE);
}

nrAudioClip* nrSound::getSource() const { return static_cast<nrAudioClip*>(source); }
