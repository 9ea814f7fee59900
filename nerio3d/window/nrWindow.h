// An OpenGL window with its own graphics context. It turns the window system's
// input into queued nrEvent records and drives the frame loop: time sensors,
// the application's frame or event function and its render function. Pointer
// sensors see the input only when the frame or event function hands it to
// them with updateSensors(root, camera).
//
// Frames. With free run off (the default) every input event is handled at
// once: processEvents advances the time sensors and calls the window's frame
// function, or else its event function and then the render function. With
// free run on, events only queue; once per pass of mainLoop the time sensors
// advance, every window is processed and the render function runs once. A
// frame function that returns 0 turns free run on, any other value turns it
// off.
//
// Input. Pointer positions are window pixels with y = 0 on the bottom row. The
// scroll wheel arrives as button press and release records (kinds 4 and 3)
// with buttons nrEvent::WHEEL_UP_BUTTON or WHEEL_DOWN_BUTTON. Keys arrive as
// kinds 7 to 10, special keys with the toolkit's codes (GLUT_KEY_LEFT ...).
//
// Closing. When the window system asks to close a window (its close button),
// a kind 2 record is queued and, with deleteOnClose on (the default), the
// window object is deleted at the end of its next processEvents. mainLoop
// returns once no window is left.
#pragma once

#include "nerio3d/arrays/nrDList.h"
#include "nerio3d/core/nrObject.h"
#include "nerio3d/window/nrEvent.h"
#include "nerio3d/window/nrEventArray.h"
#include "nerio3d/window/nrWindowItem.h"

class nrCamera;
class nrContext;
class nrDrawable;
class nrNode;

class nrWindow : public nrObject {
  NR_DECLARE_TYPE(nrWindow)

  // The toolkit's display-mode bits of initDisplayMode.
  enum DisplayModeEnum {
    RGB_MODE = 0,
    INDEX_MODE = 1,
    SINGLE_MODE = 0,
    DOUBLE_MODE = 2,
    ACCUM_MODE = 4,
    ALPHA_MODE = 8,
    DEPTH_MODE = 16,
    STENCIL_MODE = 32,
    MULTISAMPLE_MODE = 128,
    STEREO_MODE = 256
  };

  // Codes of get(), those of the toolkit's state query.
  enum QueryEnum {
    WINDOW_X_QUERY = 100,
    WINDOW_Y_QUERY = 101,
    WINDOW_WIDTH_QUERY = 102,
    WINDOW_HEIGHT_QUERY = 103,
    WINDOW_BUFFER_SIZE_QUERY = 104,
    WINDOW_STENCIL_SIZE_QUERY = 105,
    WINDOW_DEPTH_SIZE_QUERY = 106,
    WINDOW_RED_SIZE_QUERY = 107,
    WINDOW_GREEN_SIZE_QUERY = 108,
    WINDOW_BLUE_SIZE_QUERY = 109,
    WINDOW_ALPHA_SIZE_QUERY = 110,
    WINDOW_ACCUM_RED_SIZE_QUERY = 111,
    WINDOW_ACCUM_GREEN_SIZE_QUERY = 112,
    WINDOW_ACCUM_BLUE_SIZE_QUERY = 113,
    WINDOW_ACCUM_ALPHA_SIZE_QUERY = 114,
    WINDOW_DOUBLEBUFFER_QUERY = 115,
    WINDOW_RGBA_QUERY = 116,
    WINDOW_PARENT_QUERY = 117,
    WINDOW_NUM_CHILDREN_QUERY = 118,
    WINDOW_COLORMAP_SIZE_QUERY = 119,
    WINDOW_NUM_SAMPLES_QUERY = 120,
    WINDOW_STEREO_QUERY = 121,
    WINDOW_CURSOR_QUERY = 122,
    SCREEN_WIDTH_QUERY = 200,
    SCREEN_HEIGHT_QUERY = 201,
    SCREEN_WIDTH_MM_QUERY = 202,
    SCREEN_HEIGHT_MM_QUERY = 203,
    MENU_NUM_ITEMS_QUERY = 300,
    DISPLAY_MODE_POSSIBLE_QUERY = 400,
    INIT_WINDOW_X_QUERY = 500,
    INIT_WINDOW_Y_QUERY = 501,
    INIT_WINDOW_WIDTH_QUERY = 502,
    INIT_WINDOW_HEIGHT_QUERY = 503,
    INIT_DISPLAY_MODE_QUERY = 504,
    ELAPSED_TIME_QUERY = 700
  };

  // Codes of getDevice(), those of the toolkit's device query.
  enum QueryDeviceEnum {
    HAS_KEYBOARD_DQUERY = 600,
    HAS_MOUSE_DQUERY = 601,
    HAS_SPACEBALL_DQUERY = 602,
    HAS_DIAL_AND_BUTTON_BOX_DQUERY = 603,
    HAS_TABLET_DQUERY = 604,
    NUM_MOUSE_BUTTONS_DQUERY = 605,
    NUM_SPACEBALL_BUTTONS_DQUERY = 606,
    NUM_BUTTON_BOX_BUTTONS_DQUERY = 607,
    NUM_DIALS_DQUERY = 608,
    NUM_TABLET_BUTTONS_DQUERY = 609,
    DEVICE_IGNORE_KEY_REPEAT_DQUERY = 610,
    DEVICE_KEY_REPEAT_DQUERY = 611,
    HAS_JOYSTICK_DQUERY = 612,
    OWNS_JOYSTICK_DQUERY = 613,
    JOYSTICK_BUTTONS_DQUERY = 614,
    JOYSTICK_AXES_DQUERY = 615,
    JOYSTICK_POLL_RATE_DQUERY = 616
  };

  // Creates and shows the window with the initial mode, position and size,
  // makes it current and its context current. A null title makes a window
  // without decorations. Without an X display (a message says so) the object
  // has no window, no context, and is not listed.
  explicit nrWindow(const char* windowTitle) : nrWindow(windowTitle, getClassType()) {}
  nrWindow(const char* windowTitle, nrType* type);
  ~nrWindow() override;

  // Decorations on and the title set; null turns decorations off. On the
  // current window, which keeps a copy ("" for null).
  static void setWindowTitle(const char* title);
  static void setIconTitle(const char* title);
  // The titles last set; the icon title is null until one is set.
  const char* getTitle() const { return title; }
  const char* getIconTitle() const { return iconTitle; }
  // Whether a close request deletes this object (default 1).
  void deleteOnClose(int on) { closeDeletes = on != 0; }

  // For windows created afterwards. The mode is made of DisplayModeEnum bits
  // (default DOUBLE_MODE | DEPTH_MODE | MULTISAMPLE_MODE); position (-1, -1)
  // lets the window system choose (the default); size 500 x 500. Position
  // (0, 0) with the screen's size opens a full-screen window.
  static void initDisplayMode(unsigned long mode) { initialMode = mode; }
  static void initPosition(int x, int y);
  static void initSize(int width, int height);
  // 1 if the display offers a pixel format for mode, else 0.
  static unsigned char checkDisplayMode(unsigned long mode);
  // Windows always open on the display named by DISPLAY; this only warns.
  static void setDisplay(const char* name);

  // On the current window.
  static void positionWindow(int x, int y);
  static void reshapeWindow(int width, int height);
  static void pushWindow();
  static void popWindow();
  static void iconifyWindow();
  static void showWindow();
  static void hideWindow();

  static int get(QueryEnum query);
  static int getDevice(QueryDeviceEnum query);
  // The same queries by the toolkit's own code (GLUT_WINDOW_WIDTH, ...).
  static int get(int query) { return get(static_cast<QueryEnum>(query)); }
  static int getDevice(int query) { return getDevice(static_cast<QueryDeviceEnum>(query)); }

  // The window the toolkit holds current, or null.
  static nrWindow* getCurrent();
  // The toolkit's current window only; null is ignored.
  static void setCurrent(nrWindow* window);
  // The window and its context current; null is ignored.
  static void makeCurrent(nrWindow* window);
  nrContext* getThisWindowContext() const { return context; }
  // The current window's context, null without a window.
  static nrContext* getContext();
  // The X11 window.
  unsigned long getHWND() const { return hwnd; }
  // The drawable the context draws into.
  nrDrawable* getHDC() const { return hdc; }
  static void swapBuffers();
  void swapThisWindowBuffers();
  // The current window's RGBA flag; 1 without a window.
  static int isRGB();

  // Frame function of the current window (nothing without one).
  static void setFrameFunc(int (*func)(void*), void* arg);
  void setEventFunc(void (*func)(void*), void* arg);
  // One render function for all windows.
  static void setRenderFunc(void (*func)(void*), void* arg);
  static void setFreeRun(int on);
  static int getFreeRun() { return freeRun; }
  // Runs frames until no window is left, then returns.
  static void mainLoop();
  // One pass over the input, timers and close requests waiting now, without
  // sleeping: for programs that run a loop of their own.
  static void pollEvents();
  // The queued records, oldest first, and emptying the queue.
  const nrEventArray& getEvents() const { return events; }
  void resetEvents();
  // Time sensors, then the frame or event function (and the render function),
  // then deletion when a close was asked for.
  void processEvents();

  // The pointer as last seen by any window (y from the bottom) and the
  // buttons held.
  static int getMouseX() { return mouseX; }
  static int getMouseY() { return mouseY; }
  static unsigned int getMouseButtons() { return mouseButtons; }

  // Queues a kind 11 record every milliseconds. A timer that is already
  // armed is not armed twice: it takes the new interval when it re-arms.
  void enableTimer(unsigned int milliseconds);
  // The armed timer still expires once, and then queues nothing and stops.
  void disableTimer() { timerEnabled = 0; }
  int getTimerEnabled() const { return timerEnabled; }
  unsigned int getTimerInterval() const { return timerInterval; }

  // Hands the pointer records of the current window's queue, in order, to the
  // pick sensors of root as seen through camera. Wheel records are not
  // pointer presses and are skipped.
  static void updateSensors(nrNode* root, nrCamera* camera);

  // The list of all windows, oldest first.
  static const nrDList& getWindows() { return windows; }

 protected:
  // A record for the queue: a spent one when there is one.
  nrEvent* addEvent();

 private:
  static void reshapeCallback(int width, int height);
  static void displayCallback();
  static void closeCallback();
  static void mouseCallback(int button, int state, int x, int y);
  static void motionCallback(int x, int y);
  static void passiveMotionCallback(int x, int y);
  static void keyboardCallback(unsigned char key, int x, int y);
  static void keyboardUpCallback(unsigned char key, int x, int y);
  static void specialCallback(int key, int x, int y);
  static void specialUpCallback(int key, int x, int y);
  static void timerCallback(int id, void* window);
  static void idleCallback();

  // The current window with a record of kind queued for it; null without one.
  static nrEvent* queueOnCurrent(int kind);
  static nrEvent* queuePointer(int kind, int x, int y, unsigned int buttons);
  static void queueKey(int kind, int key, int x, int y);
  // Processes the record's window at once unless free run is on.
  static void dispatch(nrEvent* e);
  int flipY(int y) const { return height - y - 1; }
  void armTimer();

  nrContext* context;
  unsigned long hwnd;
  nrDrawable* hdc;
  int glutId;
  char* title;
  char* iconTitle;
  int height;
  int rgb;
  int (*frameFunc)(void*);
  void* frameArg;
  void (*eventFunc)(void*);
  void* eventArg;
  nrEventArray freeEvents;
  nrEventArray events;
  int timerEnabled;
  unsigned int timerInterval;
  bool timerArmed;
  nrWindowItem* item;
  unsigned char closePending;
  unsigned char closeDeletes;

  static nrDList windows;
  static unsigned long initialMode;
  static int initialX, initialY, initialWidth, initialHeight;
  static int screenWidth, screenHeight;
  static int mouseX, mouseY;
  static unsigned int mouseButtons;
  static void (*renderFunc)(void*);
  static void* renderArg;
  static int freeRun;
  static int sensorButtonDown;
};
