#include "nerio3d/audio/nrAudioClip.h"

#include "nerio3d/audio/nrAudioSamples.h"
#include "nerio3d/fields/nrMField.h"
#include "nerio3d/fields/nrSField.h"

NR_DEFINE_TYPE(nrAudioClip, nrContainer, "AudioClip") {
  nrSFString::addTypeField(type, "description", DESCRIPTION, nrString(""), &nrAudioClip::description);
  nrSFUByte::addTypeField(type, "loop", LOOP, 0, &nrAudioClip::loop);
  nrSFFloat::addTypeField(type, "pitch", PITCH, 1.0f, &nrAudioClip::pitch);
  nrSFTime::addTypeField(type, "startTime", START_TIME, nrTime(0), &nrAudioClip::startTime);
  nrSFTime::addTypeField(type, "stopTime", STOP_TIME, nrTime(0), &nrAudioClip::stopTime);
  nrMFString::addTypeField(type, "url", URL, &nrAudioClip::url);
}

nrAudioClip::nrAudioClip(nrType* type) : nrContainer(type), samples(nullptr) { initFieldDefaults(classType); }

nrAudioClip::~nrAudioClip() { unrefer(samples); }

void nrAudioClip::write(nrOutput* out) { writeFields(out, {DESCRIPTION, LOOP, PITCH, START_TIME, STOP_TIME, URL}); }

void nrAudioClip::setUrl(unsigned index, const char* text) {
  url.set(index, text);
  fieldChanged(URL);
}

void nrAudioClip::copy(nrContainer* from, nrCloneTable* table) {
  nrContainer::copy(from, table);
  if (from && from != this && from->isOfType(getClassType())) setSamples(static_cast<nrAudioClip*>(from)->samples);
}

void nrAudioClip::setSamples(nrAudioSamples* value) {
  refer(samples, value);
  samples = value;
}
