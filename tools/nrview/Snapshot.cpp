#include "Snapshot.h"

#include <chrono>
#include <cstdio>
#include <vector>

#include "SceneView.h"
#include "nerio3d/events/nrTimeSensor.h"
#include "nerio3d/platform/nrDrawable.h"
#include "nerio3d/platform/nrImageFile.h"
#include "nerio3d/render/nrContext.h"
#include "nerio3d/render/nrGL.h"

bool Snapshot::render(SceneView& view, const char* path, int width, int height, double time, double& frameSeconds) {
  // The drawable says why when it cannot be made.
  nrDrawable* drawable = nrDrawable::createOffscreen(width, height);
  if (!drawable) return false;
  nrContext* context = new nrContext(drawable);
  context->ref();
  context->makeCurrent(drawable);

  nrTimeSensor::updateSensors(time);
  auto start = std::chrono::steady_clock::now();
  view.draw(context, width, height);
  nrgl::Finish();
  frameSeconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();

  std::vector<unsigned char> pixels(size_t(width) * height * 3);
  nrgl::PixelStorei(GL_PACK_ALIGNMENT, 1);
  nrgl::ReadPixels(0, 0, width, height, GL_RGB, GL_UNSIGNED_BYTE, pixels.data());
  context->unref();
  delete drawable;

  if (!nrImageFile::writePNG(path, width, height, 3, pixels.data(), true)) {
    fprintf(stderr, "nrview: %s: cannot write the image\n", path);
    return false;
  }
  return true;
}
