// A surface OpenGL can draw into: an offscreen EGL pbuffer or a GLX window.
#pragma once

class nrDrawable {
 public:
  enum KindEnum { OFFSCREEN_DRAWABLE, WINDOW_DRAWABLE };

  // A native OpenGL rendering context (EGL or GLX) made for a drawable.
  struct GLContext;

  // An offscreen RGBA drawable with a depth buffer; 0 (after a message on
  // standard error) when no EGL display, configuration or surface is available.
  static nrDrawable* createOffscreen(int width, int height);

  // Wraps an existing GLX window; display is the X11 Display*, window its Window id.
  static nrDrawable* wrapWindow(void* display, unsigned long window);
  // Wraps the window whose GLX context is current on this thread (freeglut makes
  // it current in glutSetWindow); 0 when none is.
  static nrDrawable* wrapCurrentWindow();

  // Destroys an offscreen surface; a wrapped window is left alone.
  ~nrDrawable();
  nrDrawable(const nrDrawable&) = delete;
  nrDrawable& operator=(const nrDrawable&) = delete;

  KindEnum getKind() const { return kind; }
  // Size in pixels; a window is asked for its current size each time.
  int getWidth() const;
  int getHeight() const;
  // True for RGBA pixels, false for colour-index visuals.
  bool isRGBA() const { return rgba; }
  void* getNativeDisplay() const { return display; }
  unsigned long getNativeWindow() const { return window; }

  // A new EGL context for an offscreen drawable. For a window, the GLX context
  // current on this thread is adopted: the toolkit that created it keeps owning it.
  GLContext* createContext();
  // Makes context current on this drawable for the calling thread.
  bool makeCurrent(GLContext* context);
  // Leaves the calling thread without a current context.
  static void releaseCurrent();
  // Destroys an offscreen context, releasing it first if it is current on this
  // thread. An adopted window context is only forgotten: it stays the toolkit's,
  // and so does its binding (freeglut does not re-bind a window it thinks current).
  // Null is ignored.
  static void destroyContext(GLContext* context);
  // Shows the back buffer of a window; nothing to do for a pbuffer.
  void swapBuffers();

 private:
  nrDrawable(KindEnum kind, void* display, unsigned long window, void* surface, int width, int height,
             bool rgba);

  KindEnum kind;
  void* display;          // EGLDisplay or X11 Display*
  unsigned long window;   // X11 Window; 0 offscreen
  void* surface;          // EGLSurface; 0 for a window
  int width, height;      // offscreen only
  bool rgba;
};
