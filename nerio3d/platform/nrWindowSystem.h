// The window toolkit behind nrWindow (freeglut over X11): the calls the window
// layer needs, with no toolkit or X11 header in sight. Windows are named by
// their toolkit ids; calls on the current window do nothing without one, and
// calls with an id that is not a live window of this layer are ignored.
#pragma once

namespace nrWindowSystem {

// The state argument of the mouse callback for a released button.
enum { BUTTON_RELEASED = 1 };

// Input and window callbacks of one window, called with that window current.
// Positions are window pixels from the top-left corner, as the toolkit gives them.
struct Callbacks {
  void (*reshape)(int width, int height);
  void (*display)();
  // The window system asks to close the window. It stays until destroyWindow:
  // the callback decides.
  void (*close)();
  void (*mouse)(int button, int state, int x, int y);
  void (*motion)(int x, int y);
  void (*passiveMotion)(int x, int y);
  void (*keyboard)(unsigned char key, int x, int y);
  void (*keyboardUp)(unsigned char key, int x, int y);
  void (*special)(int key, int x, int y);
  void (*specialUp)(int key, int x, int y);
};

// The largest window side: X sizes are 16-bit, and software renderers
// allocate a back buffer for the whole window.
constexpr int MAX_WINDOW_SIDE = 16384;

// Connects to the X display on first use; false, after a message on standard
// error, when there is none (every later call then does nothing).
bool open();

// Creates and shows a window with the toolkit's display-mode bits, position
// (-1 lets the system choose), size and title, and makes it current with its
// OpenGL context. Returns its id, or 0 when no window can be made.
int createWindow(unsigned long mode, int x, int y, int width, int height, const char* title);
// Destroys the window at the toolkit's next pass (processPending); no callback
// of it runs any more.
void destroyWindow(int id);
void setWindow(int id);
// The current window's id, 0 without one.
int getWindow();
// The pointer attached to the current window; null without one of this layer's windows.
void setWindowData(void* data);
void* getWindowData();
void setCallbacks(const Callbacks& callbacks);

// On the current window.
void setTitle(const char* title);
void setIconTitle(const char* title);
// Asks the window manager for a frame and title bar, or for none.
void setDecorations(bool on);
void position(int x, int y);
// Sides below 1 are refused (the X server ends the program on them); larger
// ones than MAX_WINDOW_SIDE are cut to it.
void reshape(int width, int height);
void push();
void pop();
void iconify();
void show();
void hide();
void fullScreen();

// The toolkit's state and device queries with its codes; 0 without a display.
int get(int query);
int deviceGet(int query);
// Shift, control and alt held during the input callback running now.
int getModifiers();
bool isDisplayModePossible(unsigned long mode);
// The display is always the one the environment names.
void setDisplay(const char* name);

// Installed, the function runs once per pass of a loop that would otherwise
// wait; null removes it.
void setIdleFunc(void (*idle)());
void (*getIdleFunc())();

// Calls callback(value, arg) once, after milliseconds.
void addTimer(unsigned milliseconds, void (*callback)(int value, void* arg), int value, void* arg);
// Timers added and not yet expired.
int getPendingTimers();

// One pass of the toolkit's pending work, without waiting: input and window
// events, expired timers, redisplays, close requests, and the destruction of
// windows marked for it.
void processPending();
// Sleeps until input arrives or the next timer is due. Work that the toolkit
// queues for itself (a redisplay posted from a display callback, a timer set
// with the toolkit directly) does not wake it.
void waitForEvents();

}  // namespace nrWindowSystem
