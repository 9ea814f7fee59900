#include "nerio3d/platform/nrWindowSystem.h"

#include <sys/select.h>

#include <climits>
#include <string>

#include <GL/freeglut.h>
#include <GL/freeglut_ucall.h>
#include <GL/glx.h>
#include <X11/Xlib.h>
#include <X11/Xlibint.h>

#include "nerio3d/arrays/nrTypedArray.h"
#include "nerio3d/core/nrGlobal.h"

namespace {

struct WindowRecord {
  int id;
  Window xwindow;
  void (*close)();
  // The toolkit is destroying the window on its own.
  bool dying;
};

struct TimerRecord {
  void (*callback)(int, void*);
  void* arg;
  int deadline;  // in the toolkit's elapsed milliseconds
};

bool opened = false;
bool openFailed = false;
Display* display = nullptr;
Atom protocolsAtom = None;
Atom deleteAtom = None;
Atom motifHintsAtom = None;
Bool (*convertClientMessage)(Display*, XEvent*, xEvent*) = nullptr;
void (*idleFunc)() = nullptr;
bool destroyMarked = false;

// Never destroyed: records may still be listed when the program ends.
nrPtrArray& windows = *new nrPtrArray(4);
nrPtrArray& timers = *new nrPtrArray(4);
// Ids of windows whose close the window system asked for, in arrival order.
nrIntArray& closeRequests = *new nrIntArray(4);

WindowRecord* findWindow(int id) {
  for (unsigned i = 0; i < windows.getCount(); ++i) {
    WindowRecord* r = static_cast<WindowRecord*>(windows[i]);
    if (r->id == id) return r;
  }
  return nullptr;
}

WindowRecord* findWindow(Window xwindow) {
  for (unsigned i = 0; i < windows.getCount(); ++i) {
    WindowRecord* r = static_cast<WindowRecord*>(windows[i]);
    if (r->xwindow == xwindow) return r;
  }
  return nullptr;
}

void forget(WindowRecord* r) {
  windows.fastRemove(r);
  delete r;
}

bool haveWindow() { return opened && glutGetWindow() != 0; }

void onCurrent(void (*call)()) {
  if (haveWindow()) call();
}

// freeglut destroys a window the moment WM_DELETE_WINDOW reaches it, whatever
// its close callback would answer. The request is therefore taken off the wire
// before the event queue sees it, and handed to the window's own close callback
// by processPending; Xlib calls this with the display locked, so it only looks.
Bool captureCloseRequest(Display* d, XEvent* event, xEvent* wire) {
  if (!convertClientMessage(d, event, wire)) return False;
  const XClientMessageEvent& message = event->xclient;
  if (message.message_type != protocolsAtom || message.format != 32 ||
      static_cast<Atom>(message.data.l[0]) != deleteAtom)
    return True;
  WindowRecord* r = findWindow(message.window);
  if (!r) return True;
  closeRequests.append(r->id);
  return False;
}

// The first window brings the toolkit's X connection within reach.
void adoptDisplay() {
  display = glXGetCurrentDisplay();
  if (!display) return;
  protocolsAtom = XInternAtom(display, "WM_PROTOCOLS", False);
  deleteAtom = XInternAtom(display, "WM_DELETE_WINDOW", False);
  motifHintsAtom = XInternAtom(display, "_MOTIF_WM_HINTS", False);
  convertClientMessage = XESetWireToEvent(display, ClientMessage, captureCloseRequest);
}

// The toolkit destroys a window on its own (glutDestroyWindow called by the
// application): its close callback learns of it, and the id is dead afterwards.
void toolkitClosed() {
  const int id = glutGetWindow();
  WindowRecord* r = findWindow(id);
  if (!r) return;
  r->dying = true;
  if (r->close) r->close();
  if ((r = findWindow(id))) forget(r);
}

void timerExpired(int value, void* data) {
  TimerRecord* t = static_cast<TimerRecord*>(data);
  timers.fastRemove(t);
  void (*callback)(int, void*) = t->callback;
  void* arg = t->arg;
  delete t;
  callback(value, arg);
}

void deliverCloseRequests() {
  while (closeRequests.getCount()) {
    const int id = closeRequests[0];
    closeRequests.removeIndex(0);
    WindowRecord* r = findWindow(id);
    if (!r || !r->close) continue;
    glutSetWindow(id);
    r->close();
  }
}

}  // namespace

namespace nrWindowSystem {

bool open() {
  if (opened) return true;
  if (openFailed) return false;
  // glutInit ends the process when it cannot connect; ask first.
  if (!glutGet(GLUT_INIT_STATE)) {
    Display* probe = XOpenDisplay(nullptr);
    if (!probe) {
      openFailed = true;
      const char* name = XDisplayName(nullptr);
      const std::string message = std::string("cannot open the X display \"") + (name ? name : "") +
                                  "\": no window can be made";
      nrGlobal::notify(nrGlobal::WARN, nrGlobal::RESOURCE, message.c_str());
      return false;
    }
    XCloseDisplay(probe);
    int argc = 1;
    char name[] = "nerio3d";
    char* argv[] = {name, nullptr};
    glutInit(&argc, argv);
  }
  glutSetOption(GLUT_ACTION_ON_WINDOW_CLOSE, GLUT_ACTION_CONTINUE_EXECUTION);
  opened = true;
  if (idleFunc) glutIdleFunc(idleFunc);
  return true;
}

int createWindow(unsigned long mode, int x, int y, int width, int height, const char* title) {
  if (!open()) return 0;
  // The toolkit ends the process when no pixel format has the mode, after
  // trying it with double buffering added and without multisampling; ask first.
  const bool possible = isDisplayModePossible(mode) ||
                        (!(mode & GLUT_DOUBLE) && isDisplayModePossible(mode | GLUT_DOUBLE)) ||
                        ((mode & GLUT_MULTISAMPLE) && isDisplayModePossible(mode & ~GLUT_MULTISAMPLE));
  if (!possible) {
    const std::string message =
        "no pixel format has the display mode " + std::to_string(mode) + ": no window can be made";
    nrGlobal::notify(nrGlobal::WARN, nrGlobal::RESOURCE, message.c_str());
    return 0;
  }
  glutInitDisplayMode(static_cast<unsigned>(mode));
  glutInitWindowPosition(x, y);
  glutInitWindowSize(width, height);
  const int id = glutCreateWindow(title ? title : "");
  if (!display) adoptDisplay();
  windows.append(new WindowRecord{id, glXGetCurrentDrawable(), nullptr, false});
  // The window exists on the server before anyone uses its handles.
  if (display) XSync(display, False);
  return id;
}

void destroyWindow(int id) {
  WindowRecord* r = findWindow(id);
  if (!r || r->dying) {
    if (r) forget(r);
    return;
  }
  glutSetWindow(id);
  glutCloseFunc(nullptr);
  glutSetWindowData(nullptr);
  forget(r);
  glutDestroyWindow(id);
  destroyMarked = true;
}

void setWindow(int id) {
  if (findWindow(id)) glutSetWindow(id);
}

int getWindow() { return opened ? glutGetWindow() : 0; }

void setWindowData(void* data) {
  if (haveWindow()) glutSetWindowData(data);
}

// Windows that the application made with the toolkit directly carry data of its own.
void* getWindowData() { return haveWindow() && findWindow(glutGetWindow()) ? glutGetWindowData() : nullptr; }

void setCallbacks(const Callbacks& c) {
  WindowRecord* r = opened ? findWindow(glutGetWindow()) : nullptr;
  if (!r) return;
  r->close = c.close;
  glutReshapeFunc(c.reshape);
  glutCloseFunc(toolkitClosed);
  glutMouseFunc(c.mouse);
  glutMotionFunc(c.motion);
  glutPassiveMotionFunc(c.passiveMotion);
  glutDisplayFunc(c.display);
  glutSpecialFunc(c.special);
  glutSpecialUpFunc(c.specialUp);
  glutKeyboardFunc(c.keyboard);
  glutKeyboardUpFunc(c.keyboardUp);
}

void setTitle(const char* title) {
  if (haveWindow()) glutSetWindowTitle(title ? title : "");
}

void setIconTitle(const char* title) {
  if (haveWindow()) glutSetIconTitle(title ? title : "");
}

void setDecorations(bool on) {
  WindowRecord* r = opened ? findWindow(glutGetWindow()) : nullptr;
  if (!r || !display) return;
  // The Motif hints every window manager reads: flags (decorations given),
  // functions, decorations (all or none), input mode, status.
  const unsigned long hints[5] = {2, 0, on ? 1ul : 0ul, 0, 0};
  XChangeProperty(display, r->xwindow, motifHintsAtom, motifHintsAtom, 32, PropModeReplace,
                  reinterpret_cast<const unsigned char*>(hints), 5);
  XSync(display, False);
}

void position(int x, int y) {
  if (haveWindow()) glutPositionWindow(x, y);
}

void reshape(int width, int height) {
  if (haveWindow() && width > 0 && height > 0)
    glutReshapeWindow(width < MAX_WINDOW_SIDE ? width : MAX_WINDOW_SIDE,
                      height < MAX_WINDOW_SIDE ? height : MAX_WINDOW_SIDE);
}

void push() { onCurrent(glutPushWindow); }

void pop() { onCurrent(glutPopWindow); }

void iconify() { onCurrent(glutIconifyWindow); }

void show() { onCurrent(glutShowWindow); }

void hide() { onCurrent(glutHideWindow); }

void fullScreen() { onCurrent(glutFullScreen); }

int get(int query) { return open() ? glutGet(static_cast<GLenum>(query)) : 0; }

int deviceGet(int query) { return open() ? glutDeviceGet(static_cast<GLenum>(query)) : 0; }

int getModifiers() { return glutGetModifiers(); }

bool isDisplayModePossible(unsigned long mode) {
  if (!open()) return false;
  const int saved = glutGet(GLUT_INIT_DISPLAY_MODE);
  glutInitDisplayMode(static_cast<unsigned>(mode));
  const bool possible = glutGet(GLUT_DISPLAY_MODE_POSSIBLE) != 0;
  glutInitDisplayMode(static_cast<unsigned>(saved));
  return possible;
}

void setDisplay(const char* name) {
  const std::string message = std::string("the display \"") + (name ? name : "") +
                              "\" is not used: windows open on the display named by DISPLAY";
  nrGlobal::notify(nrGlobal::WARN, nrGlobal::USAGE, message.c_str());
}

void setIdleFunc(void (*idle)()) {
  idleFunc = idle;
  if (opened) glutIdleFunc(idle);
}

void (*getIdleFunc())() { return idleFunc; }

void addTimer(unsigned milliseconds, void (*callback)(int, void*), int value, void* arg) {
  if (!open()) return;
  // A deadline past the range of the toolkit's clock waits as long as it can.
  const int now = glutGet(GLUT_ELAPSED_TIME);
  const int deadline = milliseconds < unsigned(INT_MAX - now) ? now + int(milliseconds) : INT_MAX;
  TimerRecord* t = new TimerRecord{callback, arg, deadline};
  timers.append(t);
  glutTimerFuncUcall(milliseconds, timerExpired, value, t);
}

int getPendingTimers() { return static_cast<int>(timers.getCount()); }

void processPending() {
  if (!opened) return;
  glutMainLoopEvent();
  destroyMarked = false;
  deliverCloseRequests();
  // Windows that the close callbacks destroyed go now, not a pass later.
  if (destroyMarked) glutMainLoopEvent();
}

void waitForEvents() {
  if (!display || XPending(display) || closeRequests.getCount()) return;
  int timeout = -1;
  const int now = glutGet(GLUT_ELAPSED_TIME);
  for (unsigned i = 0; i < timers.getCount(); ++i) {
    const int left = static_cast<TimerRecord*>(timers[i])->deadline - now;
    if (timeout < 0 || left < timeout) timeout = left > 0 ? left : 0;
  }
  if (timeout == 0) return;
  const int fd = ConnectionNumber(display);
  fd_set readable;
  FD_ZERO(&readable);
  FD_SET(fd, &readable);
  timeval wait = {timeout / 1000, (timeout % 1000) * 1000};
  select(fd + 1, &readable, nullptr, nullptr, timeout < 0 ? nullptr : &wait);
}

}  // namespace nrWindowSystem
