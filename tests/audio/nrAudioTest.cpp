#include <gtest/gtest.h>

#include <string>

#include "nerio3d/actions/nrSoundAction.h"
#include "nerio3d/audio/nrAudio.h"
#include "nerio3d/audio/nrAudioClip.h"
#include "nerio3d/audio/nrAudioSamples.h"
#include "nerio3d/audio/nrMicrophone.h"
#include "nerio3d/audio/nrSound.h"
#include "nerio3d/audio/nrSoundPlayer.h"
#include "nerio3d/fields/nrSFRef.h"
#include "nerio3d/nodes/nrGroup.h"
#include "nrCapture.h"
#include "nrHeld.h"
#include "nrOutputCapture.h"

namespace {

TEST(nrAudioTypes, RegisterUnderTheirParentsInTableOrder) {
  nrObject::initClasses();
  struct Case {
    const char* name;
    const char* parent;
  } cases[] = {{"SoundPlayer", "Container"}, {"AudioClip", "Container"}, {"Microphone", "Container"},
               {"Sound", "Node"},            {"Audio", "Container"},     {"AudioSamples", "Container"}};
  int previous = -1;
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    nrType* type = nrType::getType(c.name);
    ASSERT_NE(type, nullptr);
    EXPECT_STREQ(type->getParent()->getName(), c.parent);
    EXPECT_GT(type->getObjectIndex(), previous);
    previous = type->getObjectIndex();
  }
  EXPECT_LT(nrType::getType("SoundPlayer")->getObjectIndex(), nrType::getType("Context")->getObjectIndex());
  EXPECT_LT(nrType::getType("Sound")->getObjectIndex(), nrType::getType("Group")->getObjectIndex());
}

TEST(nrSound, HasTheFileFormatFieldsAndHoldsOnlyAClipAsSource) {
  nrSound* sound = nrtest::held<nrSound>();
  const char* names[] = {"direction", "intensity", "location", "maxBack", "maxFront",
                         "minBack",   "minFront",  "priority", "source",  "spatialize"};
  for (int i = 0; i < 10; ++i) EXPECT_EQ(sound->getField(names[i]), sound->getField(nrSound::DIRECTION + i)) << i;
  EXPECT_EQ(nrtest::writeToString([&](nrOutput* out) { sound->getField("direction")->write(out); }), "0 0 1");
  EXPECT_EQ(sound->getMaxFront(), 10);
  EXPECT_EQ(sound->getSpatialize(), 1);
  nrSound* source = nrtest::held<nrSound>();
  source->connect(nrSound::INTENSITY, sound, nrSound::INTENSITY);
  source->setIntensity(0.25f);
  EXPECT_EQ(sound->getIntensity(), 0.25f) << "a getter brings a routed value in";

  nrAudioClip* clip = new nrAudioClip;
  sound->setSource(clip);
  EXPECT_EQ(clip->getParent(0), sound);
  nrAudioSamples* samples = new nrAudioSamples;
  std::string message = nrtest::captureStderr(
      [&] { static_cast<nrSFRef*>(sound->getField(nrSound::SOURCE))->set(samples); });
  EXPECT_NE(message.find("Bad type - AudioSamples not derived from AudioClip"), std::string::npos) << message;
  EXPECT_EQ(sound->getSource(), clip);
  samples->unref();

  // The sound traversal reaches the sound and nothing is heard or printed.
  nrGroup* root = nrtest::held<nrGroup>();
  root->addChild(sound);
  nrSoundAction action;
  EXPECT_EQ(nrtest::captureStderr([&] { action.apply(root); }), "");
  nrtest::unref(root, sound, source);
}

TEST(nrAudioClip, SharesItsSamplesWhichCannotLoadHere) {
  nrAudioClip* clip = nrtest::held<nrAudioClip>();
  EXPECT_EQ(clip->getPitch(), 1);
  clip->setUrl(0, "bell.wav");
  nrAudioSamples* samples = new nrAudioSamples;
  samples->setFileName(clip->getUrl()[0].getString());
  EXPECT_EQ(nrtest::captureStderr([&] { EXPECT_EQ(samples->load(), 0); }),
            "nrAudioSamples::load(): cannot load \"bell.wav\": no audio support on this platform\n");
  clip->setSamples(samples);
  EXPECT_EQ(samples->getParent(0), clip);
  nrAudioClip* other = nrtest::held<nrAudioClip>();
  other->setSamples(samples);
  nrAudioClip* copy = static_cast<nrAudioClip*>(clip->clone(nrContainer::DEEP_CLONE));
  EXPECT_EQ(copy->getSamples(), samples) << "copies share the samples too";
  copy->unref();
  clip->unref();
  EXPECT_EQ(other->getSamples()->getParentCount(), 1);

  // No port opens, so nothing plays.
  nrSoundPlayer* player = nrtest::held<nrSoundPlayer>();
  nrAudio* audio = nrtest::held<nrAudio>();
  EXPECT_EQ(player->open(audio), 0);
  EXPECT_EQ(player->play(other), 0);
  // Getters bring routed values in, as the sound's do.
  other->connect(nrAudioClip::PITCH, clip = nrtest::held<nrAudioClip>(), nrAudioClip::PITCH);
  other->setPitch(2);
  EXPECT_EQ(clip->getPitch(), 2);
  nrSoundPlayer* louder = nrtest::held<nrSoundPlayer>();
  louder->connect(nrSoundPlayer::GAIN, player, nrSoundPlayer::GAIN);
  louder->setGain(0.5f);
  EXPECT_EQ(player->getGain(), 0.5f);
  nrtest::unref(player, audio, other, clip, louder);
}

}  // namespace
