#include "WindowViewer.h"

#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <string>

#include "SceneView.h"
#include "nerio3d/events/nrPickSensor.h"
#include "nerio3d/events/nrTimeSensor.h"
#include "nerio3d/nodes/nrGroup.h"
#include "nerio3d/render/nrPerspCamera.h"
#include "nerio3d/window/nrWindow.h"

namespace {

using Clock = std::chrono::steady_clock;

struct Viewer {
  SceneView* view;
  std::string name;
  nrWindow* window = nullptr;
  int lastX = 0, lastY = 0;
  // The left button went down over a pointer sensor, which keeps the drag.
  bool sensorDrag = false;
  bool quit = false;
  int frames = 0;
  Clock::time_point since = Clock::now();
};

void setTitle(Viewer& v, double fps) {
  char title[512];
  snprintf(title, sizeof title, "nrview: %s (%.0f fps)", v.name.c_str(), fps);
  nrWindow::setWindowTitle(title);
}

void key(Viewer& v, int k) {
  SceneView& view = *v.view;
  switch (k) {
    case 'r':
      view.getExaminer().reset();
      break;
    case 'w':
      view.setWireframe(!view.getWireframe());
      break;
    case 'h':
      view.setHeadlight(!view.getHeadlight());
      break;
    case 'q':
    case 27:
      v.quit = true;
      break;
  }
}

void pointer(Viewer& v, const nrEvent* e) {
  Examiner& examiner = v.view->getExaminer();
  int dx = e->x - v.lastX, dy = e->y - v.lastY;
  v.lastX = e->x;
  v.lastY = e->y;
  if (e->kind == nrEvent::BUTTON_DOWN_EVENT) {
    if (e->buttons & nrEvent::WHEEL_UP_BUTTON) examiner.zoom(0.85f);
    if (e->buttons & nrEvent::WHEEL_DOWN_BUTTON) examiner.zoom(1 / 0.85f);
    if (e->buttons & nrEvent::LEFT_BUTTON) v.sensorDrag = nrPickSensor::getGrabbed().getCount() > 0;
    return;
  }
  if (e->kind != nrEvent::MOTION_EVENT) return;
  bool left = (e->buttons & nrEvent::LEFT_BUTTON) && !v.sensorDrag;
  if ((left && (e->modifiers & nrEvent::SHIFT_MODIFIER)) || (e->buttons & nrEvent::MIDDLE_BUTTON))
    examiner.pan(dx, dy);
  else if (left)
    examiner.rotate(dx, dy);
  else if (e->buttons & nrEvent::RIGHT_BUTTON)
    examiner.zoom(std::exp(-dy * 0.01f));
}

// The window's input: pointer sensors first, then the view and the keys.
void onEvents(void* arg) {
  Viewer& v = *static_cast<Viewer*>(arg);
  nrWindow::updateSensors(v.view->getRoot(), v.view->getCamera());
  const nrEventArray& events = v.window->getEvents();
  for (unsigned i = 0; i < events.getCount(); ++i) {
    const nrEvent* e = events[i];
    if (e->kind >= nrEvent::BUTTON_UP_EVENT && e->kind <= nrEvent::PASSIVE_MOTION_EVENT) pointer(v, e);
    if (e->kind == nrEvent::KEY_DOWN_EVENT) key(v, e->key);
    // The window deletes itself once this pass over its input ends.
    if (e->kind == nrEvent::CLOSE_EVENT) v.window = nullptr;
  }
  // A window may not delete itself while it handles its input: quitting
  // runs one more pass of the loop, whose render call closes the window.
  if (v.quit) nrWindow::setFreeRun(1);
}

void render(void* arg) {
  Viewer& v = *static_cast<Viewer*>(arg);
  if (!v.window) return;
  if (v.quit) {
    delete v.window;
    v.window = nullptr;
    return;
  }
  nrWindow::makeCurrent(v.window);
  v.view->draw(nrWindow::getContext(), nrWindow::get(nrWindow::WINDOW_WIDTH_QUERY),
               nrWindow::get(nrWindow::WINDOW_HEIGHT_QUERY));
  nrWindow::swapBuffers();

  ++v.frames;
  double elapsed = std::chrono::duration<double>(Clock::now() - v.since).count();
  if (elapsed >= 0.5) {
    setTitle(v, v.frames / elapsed);
    v.frames = 0;
    v.since = Clock::now();
  }
  // Running time sensors need frames; otherwise only input draws.
  nrWindow::setFreeRun(nrTimeSensor::_Current.getCount() > 0);
}

}  // namespace

int WindowViewer::run(SceneView& view, const char* fileName) {
  Viewer v;
  v.view = &view;
  const char* slash = strrchr(fileName, '/');
  v.name = slash ? slash + 1 : fileName;

  nrWindow::initSize(800, 600);
  v.window = new nrWindow(("nrview: " + v.name).c_str());
  if (!v.window->getThisWindowContext()) {
    // The window layer said why.
    delete v.window;
    fprintf(stderr, "nrview: no window could be opened; nrview --snapshot OUT.png renders without a display\n");
    return 1;
  }
  v.window->setEventFunc(onEvents, &v);
  nrWindow::setRenderFunc(render, &v);
  nrWindow::setFreeRun(1);
  nrWindow::mainLoop();
  nrWindow::setRenderFunc(nullptr, nullptr);
  return 0;
}
