#include "nerio3d/window/nrWindow.h"

#include <algorithm>
#include <cstring>
#include <initializer_list>

#include "nerio3d/core/nrKeepAlive.h"
#include "nerio3d/events/nrPickSensor.h"
#include "nerio3d/events/nrTimeSensor.h"
#include "nerio3d/platform/nrDrawable.h"
#include "nerio3d/platform/nrWindowSystem.h"
#include "nerio3d/render/nrCamera.h"
#include "nerio3d/render/nrContext.h"

NR_DEFINE_TYPE(nrWindow, nrObject, "Window") {}

nrDList nrWindow::windows;
unsigned long nrWindow::initialMode = DOUBLE_MODE | DEPTH_MODE | MULTISAMPLE_MODE;
int nrWindow::initialX = -1;
int nrWindow::initialY = -1;
int nrWindow::initialWidth = 500;
int nrWindow::initialHeight = 500;
int nrWindow::screenWidth = -1;
int nrWindow::screenHeight = -1;
int nrWindow::mouseX = 0;
int nrWindow::mouseY = 0;
unsigned int nrWindow::mouseButtons = 0;
void (*nrWindow::renderFunc)(void*) = nullptr;
void* nrWindow::renderArg = nullptr;
int nrWindow::freeRun = 0;
int nrWindow::sensorButtonDown = 0;

namespace {

char* copyString(const char* s) {
  if (!s) return nullptr;
  const size_t n = strlen(s) + 1;
  char* copy = new char[n];
  memcpy(copy, s, n);
  return copy;
}

// Masks of the buttons that press and release pointer sensors.
const unsigned int pointerButtons = nrEvent::LEFT_BUTTON | nrEvent::MIDDLE_BUTTON | nrEvent::RIGHT_BUTTON;

// Windows that a pass of the library is working on, innermost last. The
// application's functions may delete the window (or any other) under a pass:
// the destructor clears the window's entries, and the pass stops touching it.
// Never destroyed: windows deleted after the library's statics still look here.
nrPtrArray& inUse = *new nrPtrArray(4);

class InUse {
 public:
  explicit InUse(nrWindow* w) : depth(inUse.getCount()) { inUse.append(w); }
  ~InUse() { inUse.setCount(depth); }
  InUse(const InUse&) = delete;
  InUse& operator=(const InUse&) = delete;
  bool alive() const { return inUse[depth] != nullptr; }

 private:
  const unsigned depth;
};

}  // namespace

nrWindow::nrWindow(const char* name, nrType* type)
    : nrObject(type),
      context(nullptr),
      hwnd(0),
      hdc(nullptr),
      glutId(0),
      title(copyString(name ? name : "")),
      iconTitle(nullptr),
      frameFunc(nullptr),
      frameArg(nullptr),
      eventFunc(nullptr),
      eventArg(nullptr),
      timerArmed(false) {
  rgb = !(initialMode & INDEX_MODE);
  item = new nrWindowItem(this);
  windows.append(item);
  closePending = 0;
  closeDeletes = 1;
  timerEnabled = 0;
  timerInterval = 0;

  if (screenWidth < 0) {
    screenWidth = nrWindowSystem::get(SCREEN_WIDTH_QUERY);
    screenHeight = nrWindowSystem::get(SCREEN_HEIGHT_QUERY);
  }
  height = initialHeight;
  glutId = nrWindowSystem::createWindow(initialMode, initialX, initialY, initialWidth, initialHeight, name);
  if (!glutId) {
    windows.remove(item);
    return;
  }
  nrWindowSystem::setWindowData(this);
  if (!name) nrWindowSystem::setDecorations(false);
  // Position and size are already those of the screen.
  if (initialX == 0 && initialY == 0 && initialWidth == screenWidth && initialHeight == screenHeight) {
    nrWindowSystem::setDecorations(false);
    nrWindowSystem::fullScreen();
  }

  nrWindowSystem::Callbacks callbacks;
  callbacks.reshape = reshapeCallback;
  callbacks.close = closeCallback;
  callbacks.mouse = mouseCallback;
  callbacks.motion = motionCallback;
  callbacks.passiveMotion = passiveMotionCallback;
  callbacks.display = displayCallback;
  callbacks.special = specialCallback;
  callbacks.specialUp = specialUpCallback;
  callbacks.keyboard = keyboardCallback;
  callbacks.keyboardUp = keyboardUpCallback;
  nrWindowSystem::setCallbacks(callbacks);

  hdc = nrDrawable::wrapCurrentWindow();
  if (!hdc) return;
  hwnd = hdc->getNativeWindow();
  context = new nrContext(hdc);
  context->ref();
  makeCurrent(this);
}

nrWindow::~nrWindow() {
  for (unsigned i = 0; i < inUse.getCount(); ++i)
    if (inUse[i] == this) inUse[i] = nullptr;
  if (glutId) windows.remove(item);
  delete item;
  delete[] title;
  delete[] iconTitle;
  // Destroying the window selects it in the toolkit, which binds its OpenGL
  // context: the window and the context current before stay current. This
  // window's context, held elsewhere, is no longer current on a window gone.
  nrWindow* previous = getCurrent();
  nrContext* bound = nrContext::getCurrent();
  if (context && bound == context) {
    nrContext::releaseCurrent();
    bound = nullptr;
  }
  if (context) context->unref();
  // A context held elsewhere no longer names the drawable as its own.
  nrContext::forget(hdc);
  delete hdc;
  nrWindowSystem::destroyWindow(glutId);
  if (previous && previous != this) setCurrent(previous);
  if (bound) {
    nrContext::releaseCurrent();
    bound->makeCurrent(bound->getDrawable());
  }
  for (nrEventArray* list : {&events, &freeEvents})
    for (unsigned i = 0; i < list->getCount(); ++i) (*list)[i]->unref();
}

void nrWindow::setWindowTitle(const char* name) {
  nrWindow* w = getCurrent();
  if (!w) return;
  nrWindowSystem::setDecorations(name != nullptr);
  if (name) nrWindowSystem::setTitle(name);
  delete[] w->title;
  w->title = copyString(name ? name : "");
}

void nrWindow::setIconTitle(const char* name) {
  nrWindow* w = getCurrent();
  if (!w) return;
  nrWindowSystem::setIconTitle(name);
  delete[] w->iconTitle;
  w->iconTitle = copyString(name);
}

void nrWindow::initPosition(int x, int y) {
  initialX = x;
  initialY = y;
}

void nrWindow::initSize(int width, int height) {
  initialWidth = std::min(width, nrWindowSystem::MAX_WINDOW_SIDE);
  initialHeight = std::min(height, nrWindowSystem::MAX_WINDOW_SIDE);
}

unsigned char nrWindow::checkDisplayMode(unsigned long mode) { return nrWindowSystem::isDisplayModePossible(mode); }

void nrWindow::setDisplay(const char* name) { nrWindowSystem::setDisplay(name); }

void nrWindow::positionWindow(int x, int y) { nrWindowSystem::position(x, y); }
void nrWindow::reshapeWindow(int width, int height) { nrWindowSystem::reshape(width, height); }
void nrWindow::pushWindow() { nrWindowSystem::push(); }
void nrWindow::popWindow() { nrWindowSystem::pop(); }
void nrWindow::iconifyWindow() { nrWindowSystem::iconify(); }
void nrWindow::showWindow() { nrWindowSystem::show(); }
void nrWindow::hideWindow() { nrWindowSystem::hide(); }

int nrWindow::get(QueryEnum query) { return nrWindowSystem::get(query); }
int nrWindow::getDevice(QueryDeviceEnum query) { return nrWindowSystem::deviceGet(query); }

nrWindow* nrWindow::getCurrent() { return static_cast<nrWindow*>(nrWindowSystem::getWindowData()); }

void nrWindow::setCurrent(nrWindow* w) {
  if (w) nrWindowSystem::setWindow(w->glutId);
}

void nrWindow::makeCurrent(nrWindow* w) {
  if (!w) return;
  nrWindowSystem::setWindow(w->glutId);
  if (w->context) w->context->makeCurrent(w->hdc);
}

nrContext* nrWindow::getContext() {
  nrWindow* w = getCurrent();
  return w ? w->context : nullptr;
}

void nrWindow::swapBuffers() {
  if (nrWindow* w = getCurrent()) w->swapThisWindowBuffers();
}

void nrWindow::swapThisWindowBuffers() {
  if (hdc) hdc->swapBuffers();
}

int nrWindow::isRGB() {
  nrWindow* w = getCurrent();
  return w ? w->rgb : 1;
}

void nrWindow::setFrameFunc(int (*func)(void*), void* arg) {
  nrWindow* w = getCurrent();
  if (!w) return;
  w->frameFunc = func;
  w->frameArg = arg;
}

void nrWindow::setEventFunc(void (*func)(void*), void* arg) {
  eventFunc = func;
  eventArg = arg;
}

void nrWindow::setRenderFunc(void (*func)(void*), void* arg) {
  renderFunc = func;
  renderArg = arg;
}

void nrWindow::setFreeRun(int on) {
  freeRun = on;
  nrWindowSystem::setIdleFunc(on ? idleCallback : nullptr);
}

void nrWindow::mainLoop() {
  for (;;) {
    nrWindowSystem::processPending();
    if (windows.isEmpty()) return;
    if (void (*idle)() = nrWindowSystem::getIdleFunc())
      idle();
    else
      nrWindowSystem::waitForEvents();
  }
}

void nrWindow::pollEvents() { nrWindowSystem::processPending(); }

nrEvent* nrWindow::addEvent() {
  nrEvent* e;
  if (freeEvents.getCount()) {
    e = freeEvents[freeEvents.getCount() - 1];
    freeEvents.setCount(freeEvents.getCount() - 1);
  } else {
    e = new nrEvent;
    e->ref();
  }
  e->window = this;
  events.append(e);
  return e;
}

void nrWindow::resetEvents() {
  for (unsigned i = 0; i < events.getCount(); ++i) freeEvents.append(events[i]);
  events.setCount(0);
}

// A window deleted by the functions called here has nothing left to reset,
// draw or close.
void nrWindow::processEvents() {
  const InUse pass(this);
  if (!freeRun) nrTimeSensor::updateSensors();
  if (!pass.alive()) return;
  if (frameFunc) {
    // A frame function that wants more frames answers 0.
    setFreeRun(frameFunc(frameArg) == 0);
    if (!pass.alive()) return;
    resetEvents();
  } else if (eventFunc && events.getCount()) {
    eventFunc(eventArg);
    if (!pass.alive()) return;
    resetEvents();
    if (renderFunc && !freeRun) renderFunc(renderArg);
  }
  if (closePending && pass.alive()) delete this;
}

void nrWindow::enableTimer(unsigned int milliseconds) {
  timerInterval = milliseconds;
  timerEnabled = 1;
  if (!timerArmed) armTimer();
}

void nrWindow::armTimer() {
  if (!glutId) return;
  timerArmed = true;
  nrWindowSystem::addTimer(timerInterval, timerCallback, glutId, this);
}

void nrWindow::updateSensors(nrNode* root, nrCamera* camera) {
  nrWindow* w = getCurrent();
  if (!w || !root || !camera || !w->events.getCount()) return;
  // The sensors may delete the window, and release the scene or the camera,
  // which the records left still go to.
  const InUse pass(w);
  const nrKeepAlive holdRoot(root), holdCamera(camera);
  for (unsigned i = 0; pass.alive() && i < w->events.getCount(); ++i) {
    const nrEvent* e = w->events[i];
    if (e->kind < nrEvent::BUTTON_UP_EVENT || e->kind > nrEvent::PASSIVE_MOTION_EVENT) continue;
    if (e->kind <= nrEvent::BUTTON_DOWN_EVENT) {
      if (!(e->buttons & pointerButtons)) continue;
      sensorButtonDown = e->kind == nrEvent::BUTTON_DOWN_EVENT;
    }
    nrPickSensor::updateSensors(root, camera, e->x, e->y, sensorButtonDown);
  }
}

nrEvent* nrWindow::queueOnCurrent(int kind) {
  nrWindow* w = getCurrent();
  if (!w) return nullptr;
  nrEvent* e = w->addEvent();
  e->kind = kind;
  return e;
}

nrEvent* nrWindow::queuePointer(int kind, int x, int y, unsigned int buttons) {
  nrWindow* w = getCurrent();
  if (!w) return nullptr;
  mouseX = x;
  mouseY = w->flipY(y);
  nrEvent* e = w->addEvent();
  e->kind = kind;
  e->x = mouseX;
  e->y = mouseY;
  e->buttons = buttons;
  e->modifiers = nrWindowSystem::getModifiers();
  return e;
}

void nrWindow::queueKey(int kind, int key, int x, int y) {
  nrWindow* w = getCurrent();
  if (!w) return;
  nrEvent* e = w->addEvent();
  e->kind = kind;
  e->key = key;
  e->x = x;
  e->y = w->flipY(y);
  e->buttons = mouseButtons;
  e->modifiers = nrWindowSystem::getModifiers();
  dispatch(e);
}

void nrWindow::dispatch(nrEvent* e) {
  if (e && !freeRun) e->window->processEvents();
}

void nrWindow::reshapeCallback(int width, int h) {
  nrWindow* w = getCurrent();
  if (!w) return;
  w->height = get(WINDOW_HEIGHT_QUERY);
  if (w->context && w->context == nrContext::getCurrent()) w->context->setViewport(0, 0, width, h);
  nrEvent* e = w->addEvent();
  e->kind = nrEvent::RESHAPE_EVENT;
  e->x = width;
  e->y = h;
  dispatch(e);
}

void nrWindow::displayCallback() {
  if (nrWindow* w = getCurrent()) w->height = get(WINDOW_HEIGHT_QUERY);
  dispatch(queueOnCurrent(nrEvent::DISPLAY_EVENT));
}

// The request is answered by deleting the object (and with it the window) at
// the end of processEvents when deleteOnClose is on, and by nothing otherwise.
void nrWindow::closeCallback() {
  if (nrWindow* w = getCurrent()) w->closePending = w->closeDeletes;
  dispatch(queueOnCurrent(nrEvent::CLOSE_EVENT));
}

void nrWindow::mouseCallback(int button, int state, int x, int y) {
  const unsigned int mask = button >= 0 && button < 32 ? 1u << button : 0;
  const bool released = state == nrWindowSystem::BUTTON_RELEASED;
  if (released)
    mouseButtons &= ~mask;
  else
    mouseButtons |= mask;
  dispatch(queuePointer(released ? nrEvent::BUTTON_UP_EVENT : nrEvent::BUTTON_DOWN_EVENT, x, y, mask));
}

void nrWindow::motionCallback(int x, int y) { dispatch(queuePointer(nrEvent::MOTION_EVENT, x, y, mouseButtons)); }

void nrWindow::passiveMotionCallback(int x, int y) {
  dispatch(queuePointer(nrEvent::PASSIVE_MOTION_EVENT, x, y, 0));
}

void nrWindow::keyboardCallback(unsigned char key, int x, int y) { queueKey(nrEvent::KEY_DOWN_EVENT, key, x, y); }
void nrWindow::keyboardUpCallback(unsigned char key, int x, int y) { queueKey(nrEvent::KEY_UP_EVENT, key, x, y); }
void nrWindow::specialCallback(int key, int x, int y) { queueKey(nrEvent::SPECIAL_DOWN_EVENT, key, x, y); }
void nrWindow::specialUpCallback(int key, int x, int y) { queueKey(nrEvent::SPECIAL_UP_EVENT, key, x, y); }

// The timer names its window by pointer and toolkit id; toolkit ids are never
// reused, so a timer that outlives its window finds nothing.
void nrWindow::timerCallback(int id, void* window) {
  nrWindow* w = nullptr;
  for (nrDListItem* i = windows.getFirst(); i && !w; i = i->getNext()) {
    nrWindow* candidate = static_cast<nrWindowItem*>(i)->window;
    if (candidate == window && candidate->glutId == id) w = candidate;
  }
  if (!w) return;
  w->timerArmed = false;
  if (!w->timerEnabled) return;
  w->armTimer();
  nrEvent* e = w->addEvent();
  e->kind = nrEvent::TIMER_EVENT;
  setCurrent(w);
  dispatch(e);
}

// The windows of the pass are those listed when it starts: processing one may
// delete others, and windows made meanwhile wait for the next pass.
void nrWindow::idleCallback() {
  nrTimeSensor::updateSensors();
  const unsigned first = inUse.getCount();
  for (nrDListItem* i = windows.getFirst(); i; i = i->getNext()) inUse.append(static_cast<nrWindowItem*>(i)->window);
  const unsigned end = inUse.getCount();
  for (unsigned k = first; k < end; ++k) {
    nrWindow* w = static_cast<nrWindow*>(inUse[k]);
    if (!w) continue;
    setCurrent(w);
    w->processEvents();
  }
  inUse.setCount(first);
  if (renderFunc) renderFunc(renderArg);
}
