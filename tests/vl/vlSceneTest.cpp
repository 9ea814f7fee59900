// A scene file with every kind of node the reader knows, read and drawn: each
// cell of its grid shows its colour, the routed clock included.
#include <cmath>
#include <string>

#include "../geometry/nrGeometryFixture.h"
#include "nerio3d/events/nrTimeSensor.h"
#include "nerio3d/render/nrPerspCamera.h"
#include "nerio3d/vl/vlDB.h"
#include "nrCapture.h"

namespace {

class vlScene : public nrtest::SceneTest {};

TEST_F(vlScene, EveryKindOfNodeReadsAndDrawsInItsCell) {
  const std::string path = std::string(NR_TEST_FILES) + "/scene.wrl";
  nrContainer* root = nullptr;
  nrPtrArray list;
  std::string messages = nrtest::captureStderr([&] { EXPECT_EQ(vlDB::readFile(path.c_str(), root, list), 1); });
  ASSERT_NE(root, nullptr);
  keep(root);
  // What the audio and texture code and the inline report; nothing from the reader.
  EXPECT_EQ(messages,
            "nrAudioSamples::load(): cannot load \"tick.wav\": no audio support on this platform\n"
            "Reading texture map, orange.png, 2 2, 3\n"
            "vl error in vlDB::readNodeInstance(): Reading Inline scene-part.wrl\n");

  // A quarter of the clock's cycle: the transform has moved from x = -5 to
  // -3 and the colour from red a quarter of the way to blue.
  nrTimeSensor::updateSensors(1.0);
  // Depth testing is the application's choice; the scene's appearances inherit it.
  context->setDepthEnable(1);
  nrPerspCamera* camera = make<nrPerspCamera>();
  camera->setPosition(0, 0, 10);
  action->setCamera(camera);
  context->clear(nrContext::COLOR_CLEAR | nrContext::DEPTH_CLEAR);
  camera->draw(action);
  action->apply(static_cast<nrNode*>(root));

  readFrame();

  // Lit cells show their colour scaled by the light; unlit ones exactly (the
  // texture as its 5-bit format keeps it).
  struct Cell {
    float x, y;
    nrVec3f color;
    bool lit;
  } cells[] = {
      {-3, 3, {1, 0, 0}, true},         {-1, 3, {0, 1, 0}, true},       {1, 3, {0, 0, 1}, true},
      {3, 3, {1, 1, 0}, true},          {-3, 1, {1, 0.517f, 0}, false},   {-1, 1, {1, 0, 1}, false},
      {1, 1, {0, 1, 1}, true},          {3, 1, {1, 1, 1}, true},        {-3, -1, {0.75f, 0, 0.25f}, true},
      {-1, -1, {0.5f, 0, 1}, false},    {1, -1, {0, 0.5f, 1}, false},   {3, -1, {1, 1, 1}, true},
      {-3, -3, {1, 0.5f, 0}, false},    {-1, -3, {0.5f, 1, 0.5f}, false}, {1, -3, {1, 1, 1}, false},
      {2.7f, -3.4f, {0, 1, 0}, false},  {3.3f, -2.6f, {1, 0, 0}, false},
  };
  for (const Cell& c : cells) {
    uint32_t p = at(c.x, c.y);
    float rgb[3] = {(p & 0xff) / 255.0f, ((p >> 8) & 0xff) / 255.0f, ((p >> 16) & 0xff) / 255.0f};
    float top = std::fmax(c.color[0], std::fmax(c.color[1], c.color[2]));
    float scale = c.lit ? std::fmax(rgb[0], std::fmax(rgb[1], rgb[2])) / top : 1;
    EXPECT_GT(scale, 0.5f) << c.x << "," << c.y;
    for (int i = 0; i < 3; ++i)
      EXPECT_NEAR(rgb[i], scale * c.color[i], c.lit ? 0.08f : 0.01f) << c.x << "," << c.y << " channel " << i;
  }
  // Nothing stands at the origin, where the transform was before the clock ran.
  EXPECT_EQ(at(0, 0), BLACK);
}

}  // namespace
