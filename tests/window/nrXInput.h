// Real input for window tests: the pointer and keys of the X server moved
// through the XTest extension on a connection of the test's own, close requests
// sent as a window manager sends them, and a pump that runs the library's
// event pass until a condition holds.
#pragma once

#include <unistd.h>

#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <X11/extensions/XTest.h>

#include <functional>

#include "nerio3d/window/nrWindow.h"

namespace nrtest {

class XInput {
 public:
  XInput() : display(XOpenDisplay(nullptr)) {}
  ~XInput() {
    if (display) XCloseDisplay(display);
  }
  XInput(const XInput&) = delete;
  XInput& operator=(const XInput&) = delete;

  bool ready() const { return display != nullptr; }

  // Moves the pointer onto pixel (x, y) of w, counted from its top-left corner.
  void moveTo(nrWindow* w, int x, int y) {
    int rootX = 0, rootY = 0;
    Window child;
    XTranslateCoordinates(display, w->getHWND(), DefaultRootWindow(display), x, y, &rootX, &rootY, &child);
    XTestFakeMotionEvent(display, -1, rootX, rootY, CurrentTime);
    XFlush(display);
  }
  // X buttons: 1 left, 2 middle, 3 right, 4 and 5 the wheel.
  void button(unsigned int b, bool down) {
    XTestFakeButtonEvent(display, b, down, CurrentTime);
    XFlush(display);
  }
  void key(const char* name, bool down) {
    XTestFakeKeyEvent(display, XKeysymToKeycode(display, XStringToKeysym(name)), down, CurrentTime);
    XFlush(display);
  }
  // What a window manager sends when the user closes the window.
  void requestClose(nrWindow* w) {
    XEvent e = {};
    e.xclient.type = ClientMessage;
    e.xclient.window = w->getHWND();
    e.xclient.message_type = XInternAtom(display, "WM_PROTOCOLS", False);
    e.xclient.format = 32;
    e.xclient.data.l[0] = static_cast<long>(XInternAtom(display, "WM_DELETE_WINDOW", False));
    e.xclient.data.l[1] = CurrentTime;
    XSendEvent(display, w->getHWND(), False, NoEventMask, &e);
    XFlush(display);
  }
  // The decorations asked of the window manager: 1 or 0, -1 when never asked.
  long decorations(nrWindow* w) {
    Atom hints = XInternAtom(display, "_MOTIF_WM_HINTS", False), type;
    int format;
    unsigned long count, after;
    unsigned char* data = nullptr;
    long result = -1;
    if (XGetWindowProperty(display, w->getHWND(), hints, 0, 5, False, hints, &type, &format, &count, &after,
                           &data) == Success &&
        data && count == 5)
      result = reinterpret_cast<long*>(data)[2];
    if (data) XFree(data);
    return result;
  }

 private:
  Display* display;
};

// Runs the library's event pass until done() holds or about three seconds pass.
inline bool pumpUntil(const std::function<bool()>& done) {
  for (int i = 0; i < 3000; ++i) {
    nrWindow::pollEvents();
    if (done()) return true;
    usleep(1000);
  }
  return false;
}

}  // namespace nrtest
