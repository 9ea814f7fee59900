// Builds a scene in code and renders it offscreen (no window, no display) to
// PNG files. The scene is a light and an LOD node: a smooth red ball near the
// eye that becomes a plain blue box farther away. Two pictures are taken, one
// from near and one from far.
//
//   example_offscreen [NEAR.png FAR.png]
#include <cstdio>
#include <vector>

#include "nerio3d/nerio3d.h"

// A shape: geometry drawn with a lit material of the given colour.
static nrShape* coloredShape(nrGeometry* geometry, float r, float g, float b) {
  nrMaterial* material = new nrMaterial;
  material->setDiffuseColor(r, g, b);
  nrAppearance* look = new nrAppearance;
  look->setLightEnable(1);
  look->setDepthEnable(1);
  look->setMaterial(material);
  nrShape* shape = new nrShape;
  shape->setAppearance(look);
  shape->addGeometry(geometry);
  return shape;
}

// Draws root through camera into the current context and writes the pixels.
static bool snapshot(nrNode* root, nrCamera* camera, int width, int height, const char* path) {
  nrContext* context = nrContext::getCurrent();
  context->clear(nrContext::COLOR_CLEAR | nrContext::DEPTH_CLEAR, 0.1f, 0.1f, 0.15f, 1);
  nrDrawAction draw;
  draw.setCamera(camera);
  camera->draw(&draw);  // loads the projection and the viewing matrix
  draw.apply(root);
  std::vector<unsigned char> pixels(size_t(width) * height * 4);
  nrgl::ReadPixels(0, 0, width, height, GL_RGBA, GL_UNSIGNED_BYTE, pixels.data());
  // OpenGL hands the bottom row first.
  return nrImageFile::writePNG(path, width, height, 4, pixels.data(), true);
}

int main(int argc, char** argv) {
  const char* nearPath = argc > 2 ? argv[1] : "near.png";
  const char* farPath = argc > 2 ? argv[2] : "far.png";
  const int width = 320, height = 240;

  // Containers are reference counted: the root is referenced by us, every
  // other node by the group that holds it.
  nrGroup* root = new nrGroup;
  root->ref();
  nrDirectionalLight* sun = new nrDirectionalLight;
  sun->setDirection(-0.5f, -0.7f, -1);
  root->addChild(sun);

  // Child 0 is drawn from 0 to 15 units of distance, child 1 from 15 to 100.
  nrLOD* lod = new nrLOD;
  lod->setRange(0, 0, 15);
  lod->setRangeFar(1, 100);
  lod->addChild(coloredShape(new nrSphere, 0.9f, 0.2f, 0.1f));
  lod->addChild(coloredShape(new nrBox, 0.2f, 0.4f, 0.9f));
  // Turned a little, so that the box shows three faces.
  nrTransform* turn = new nrTransform;
  turn->setRotation(1, 1, 0, 0.6f);
  turn->addChild(lod);
  root->addChild(turn);

  // The camera looks down -z from its position.
  nrPerspCamera* camera = new nrPerspCamera;
  camera->ref();

  // An offscreen drawable and a graphics context that draws into it.
  nrDrawable* drawable = nrDrawable::createOffscreen(width, height);
  if (!drawable) return 1;  // no EGL: the library said why
  nrContext* context = new nrContext(drawable);
  context->ref();
  context->makeCurrent(drawable);
  context->setViewport(0, 0, width, height);
  camera->setHorizFOV(1.0f);
  camera->setVertFOV(0.78f);

  int status = 0;
  camera->setPosition(0, 0, 5);
  status |= !snapshot(root, camera, width, height, nearPath);
  camera->setPosition(0, 0, 30);
  status |= !snapshot(root, camera, width, height, farPath);
  if (!status) printf("wrote %s and %s\n", nearPath, farPath);

  context->unref();
  delete drawable;
  camera->unref();
  root->unref();
  return status;
}
