// A piece of sound named by URL, with the times it plays between; its
// samples, once loaded, are shared by the sounds that play it.
#pragma once

#include "nerio3d/arrays/nrTypedArray.h"
#include "nerio3d/core/nrString.h"
#include "nerio3d/core/nrTime.h"
#include "nerio3d/fields/nrContainer.h"

class nrAudioSamples;

class nrAudioClip : public nrContainer {
  NR_DECLARE_CONTAINER_TYPE(nrAudioClip)

  enum { DESCRIPTION, LOOP, PITCH, START_TIME, STOP_TIME, URL };

  nrAudioClip() : nrAudioClip(getClassType()) {}
  explicit nrAudioClip(nrType* type);
  ~nrAudioClip() override;

  void setDescription(const char* text) { setFieldValue(description, nrString(text), DESCRIPTION); }
  const char* getDescription() const { return getFieldValue(description, DESCRIPTION).getString(); }
  void setLoop(unsigned char on) { setFieldValue(loop, on, LOOP); }
  unsigned char getLoop() const { return getFieldValue(loop, LOOP); }
  void setPitch(float v) { setFieldValue(pitch, v, PITCH); }
  float getPitch() const { return getFieldValue(pitch, PITCH); }
  void setStartTime(double seconds) { setFieldValue(startTime, nrTime(seconds), START_TIME); }
  double getStartTime() const { return getFieldValue(startTime, START_TIME); }
  void setStopTime(double seconds) { setFieldValue(stopTime, nrTime(seconds), STOP_TIME); }
  double getStopTime() const { return getFieldValue(stopTime, STOP_TIME); }
  // Sets element index of the URL list, growing it as needed.
  void setUrl(unsigned index, const char* text);
  const nrStringArray& getUrl() const { return getFieldValue(url, URL); }

  // Every field, the strings in quotes as the scene reader takes them.
  void write(nrOutput* out) override;

  // The clip references its samples.
  void setSamples(nrAudioSamples* samples);
  nrAudioSamples* getSamples() const { return samples; }
  // Copies and clones share the samples of the clip they were made from.
  void copy(nrContainer* from, nrCloneTable* table) override;
  using nrContainer::copy;

 private:
  nrString description;
  unsigned char loop;
  float pitch;
  nrTime startTime;
  nrTime stopTime;
  nrStringArray url;
  nrAudioSamples* samples;
};
