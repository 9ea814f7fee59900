// Reads a scene file and renders it offscreen to a PNG: the README's first
// program. No window and no display are needed.
//
//   example_readfile SCENE.wrl [OUT.png]
#include <cstdio>
#include <vector>

#include "nerio3d/nerio3d.h"

int main(int argc, char** argv) {
  if (argc < 2) {
    fprintf(stderr, "usage: example_readfile SCENE.wrl [OUT.png]\n");
    return 2;
  }
  // The reader returns a root group holding the file's nodes (and prints
  // what it could not read to standard error).
  nrContainer* scene = nullptr;
  nrPtrArray inlined;
  vlDB::readFile(argv[1], scene, inlined);
  if (!scene) {
    fprintf(stderr, "%s: cannot read\n", argv[1]);  // a missing file gives no message of its own
    return 1;
  }
  scene->ref();
  nrNode* root = static_cast<nrNode*>(scene);

  // An offscreen drawable and a graphics context current on it.
  const int width = 400, height = 300;
  nrDrawable* drawable = nrDrawable::createOffscreen(width, height);
  if (!drawable) return 1;
  nrContext* context = new nrContext(drawable);
  context->ref();
  context->makeCurrent(drawable);
  context->setViewport(0, 0, width, height);
  context->setDepthEnable(1);
  context->clear(nrContext::COLOR_CLEAR | nrContext::DEPTH_CLEAR, 0.1f, 0.1f, 0.15f, 1);

  // A camera that looks down -z at the scene's bounding sphere.
  nrSphereBound bound;
  root->getSphereBound(bound);
  nrPerspCamera* camera = new nrPerspCamera;
  camera->ref();
  camera->setPosition(bound.center[0], bound.center[1], bound.center[2] + 3 * bound.radius);
  camera->setFarClip(10 * bound.radius);
  camera->setHorizFOV(0.9f);
  camera->setVertFOV(0.7f);

  nrDrawAction draw;
  draw.setCamera(camera);
  camera->draw(&draw);
  draw.apply(root);

  std::vector<unsigned char> rgba(width * height * 4);
  nrgl::ReadPixels(0, 0, width, height, GL_RGBA, GL_UNSIGNED_BYTE, rgba.data());
  const char* out = argc > 2 ? argv[2] : "scene.png";
  bool written = nrImageFile::writePNG(out, width, height, 4, rgba.data(), true);
  if (written) printf("wrote %s\n", out);

  camera->unref();
  context->unref();
  delete drawable;
  scene->unref();
  return written ? 0 : 1;
}
