// Reads a scene file and shows it in a window, redrawing whenever the window
// needs it and running frames continuously while time sensors animate the
// scene. Escape or the window's close button ends the program. (nrview adds
// navigation, wireframe and a headlight to the same loop.)
//
//   example_viewfile SCENE.wrl
#include <cstdio>

#include "nerio3d/nerio3d.h"

namespace {

struct App {
  nrWindow* window = nullptr;
  nrNode* root = nullptr;
  nrPerspCamera* camera = nullptr;
  bool quit = false;
};

// Called with the window's queued input records.
void onEvents(void* arg) {
  App* app = static_cast<App*>(arg);
  const nrEventArray& events = app->window->getEvents();
  for (unsigned i = 0; i < events.getCount(); ++i) {
    if (events[i]->kind == nrEvent::KEY_DOWN_EVENT && events[i]->key == 27) app->quit = true;
    // The window deletes itself when this call returns.
    if (events[i]->kind == nrEvent::CLOSE_EVENT) app->window = nullptr;
  }
  // The window goes in the render call of the next pass, outside its own input.
  if (app->quit) nrWindow::setFreeRun(1);
}

// Called after input (and once per pass of the loop in free run).
void render(void* arg) {
  App* app = static_cast<App*>(arg);
  if (!app->window) return;
  if (app->quit) {
    delete app->window;
    app->window = nullptr;
    return;
  }
  nrWindow::makeCurrent(app->window);
  nrContext* context = nrWindow::getContext();
  context->setDepthEnable(1);
  context->clear(nrContext::COLOR_CLEAR | nrContext::DEPTH_CLEAR, 0.1f, 0.1f, 0.15f, 1);
  nrDrawAction draw;
  draw.setCamera(app->camera);
  app->camera->draw(&draw);
  draw.apply(app->root);
  nrWindow::swapBuffers();
  // Time sensors that are still running need further frames.
  nrWindow::setFreeRun(nrTimeSensor::_Current.getCount() > 0);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    fprintf(stderr, "usage: example_viewfile SCENE.wrl\n");
    return 2;
  }
  nrContainer* scene = nullptr;
  nrPtrArray inlined;
  vlDB::readFile(argv[1], scene, inlined);
  if (!scene) {
    fprintf(stderr, "%s: cannot read\n", argv[1]);  // a missing file gives no message of its own
    return 1;
  }
  scene->ref();

  App app;
  app.root = static_cast<nrNode*>(scene);
  nrSphereBound bound;
  app.root->getSphereBound(bound);
  app.camera = new nrPerspCamera;
  app.camera->ref();
  app.camera->setPosition(bound.center[0], bound.center[1], bound.center[2] + 3 * bound.radius);
  app.camera->setFarClip(10 * bound.radius);

  app.window = new nrWindow(argv[1]);
  if (app.window->getThisWindowContext()) {
    app.window->setEventFunc(onEvents, &app);
    nrWindow::setRenderFunc(render, &app);
    nrWindow::setFreeRun(1);
    nrWindow::mainLoop();  // returns when the window is gone
  } else {
    delete app.window;  // no display: the library said why
  }
  app.camera->unref();
  scene->unref();
  return 0;
}
