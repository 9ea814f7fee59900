// Picking with the mouse: a row of named shapes in a window; a left click
// asks the camera what lies under the pointer, prints the shape's name and
// the point hit, and paints the shape yellow. Escape or the close button ends
// the program.
#include <cstdio>

#include "nerio3d/nerio3d.h"

namespace {

struct App {
  nrWindow* window = nullptr;
  nrGroup* root = nullptr;
  nrPerspCamera* camera = nullptr;
  bool quit = false;
};

// A named, lit shape at x whose material the click can change.
nrTransform* place(const char* name, nrGeometry* geometry, float x) {
  nrMaterial* material = new nrMaterial;
  material->setDiffuseColor(0.3f, 0.5f, 0.9f);
  nrAppearance* look = new nrAppearance;
  look->setLightEnable(1);
  look->setDepthEnable(1);
  look->setMaterial(material);
  nrShape* shape = new nrShape;
  shape->setName(name);
  shape->setAppearance(look);
  shape->addGeometry(geometry);
  nrTransform* t = new nrTransform;
  t->setTranslation(x, 0, 0);
  t->addChild(shape);
  return t;
}

void onEvents(void* arg) {
  App* app = static_cast<App*>(arg);
  const nrEventArray& events = app->window->getEvents();
  for (unsigned i = 0; i < events.getCount(); ++i) {
    const nrEvent* e = events[i];
    if (e->kind == nrEvent::KEY_DOWN_EVENT && e->key == 27) app->quit = true;
    if (e->kind == nrEvent::CLOSE_EVENT) app->window = nullptr;
    if (e->kind != nrEvent::BUTTON_DOWN_EVENT || e->buttons != nrEvent::LEFT_BUTTON) continue;
    // Window pixels count y from the bottom row, as the camera does; the
    // camera picks with the viewport of the current context.
    nrHit hit;
    if (!app->camera->pick(app->root, e->x, e->y, hit)) {
      printf("nothing at (%d, %d)\n", e->x, e->y);
      continue;
    }
    nrShape* shape = static_cast<nrShape*>(hit.getShape());
    const nrVec3f& p = hit.getWorldPoint();
    printf("%s at (%.2f, %.2f, %.2f)\n", shape->getName(), p[0], p[1], p[2]);
    shape->getAppearance()->getMaterial()->setDiffuseColor(1, 0.85f, 0.1f);
  }
  if (app->quit) nrWindow::setFreeRun(1);
}

void render(void* arg) {
  App* app = static_cast<App*>(arg);
  if (!app->window) return;
  if (app->quit) {
    delete app->window;
    app->window = nullptr;
    return;
  }
  nrWindow::makeCurrent(app->window);
  nrWindow::getContext()->clear(nrContext::COLOR_CLEAR | nrContext::DEPTH_CLEAR, 0.1f, 0.1f, 0.15f, 1);
  nrDrawAction draw;
  draw.setCamera(app->camera);
  app->camera->draw(&draw);
  draw.apply(app->root);
  nrWindow::swapBuffers();
  nrWindow::setFreeRun(0);
}

}  // namespace

int main() {
  App app;
  app.root = new nrGroup;
  app.root->ref();
  nrDirectionalLight* light = new nrDirectionalLight;
  light->setDirection(-0.3f, -0.5f, -1);
  app.root->addChild(light);
  app.root->addChild(place("box", new nrBox, -2.5f));
  app.root->addChild(place("ball", new nrSphere, 0));
  app.root->addChild(place("cone", new nrCone, 2.5f));
  app.camera = new nrPerspCamera;
  app.camera->ref();
  app.camera->setPosition(0, 0, 9);

  nrWindow::initSize(500, 500);
  app.window = new nrWindow("nerio3d: click a shape");
  if (app.window->getThisWindowContext()) {
    app.window->setEventFunc(onEvents, &app);
    nrWindow::setRenderFunc(render, &app);
    nrWindow::mainLoop();
  } else {
    delete app.window;
  }
  app.camera->unref();
  app.root->unref();
  return 0;
}
