#include "nerio3d/platform/nrDrawable.h"

#include <cstring>
#include <string>

#include <EGL/egl.h>
#include <EGL/eglext.h>
#include <GL/glx.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>

#include "nerio3d/core/nrGlobal.h"

struct nrDrawable::GLContext {
  KindEnum kind;
  void* display;  // EGLDisplay or X11 Display*
  void* handle;   // EGLContext or GLXContext
};

namespace {

void warn(const std::string& message) { nrGlobal::notify(nrGlobal::WARN, nrGlobal::RESOURCE, message.c_str()); }

bool hasExtension(const char* list, const char* name) {
  if (!list) return false;
  const size_t length = strlen(name);
  for (const char* p = strstr(list, name); p; p = strstr(p + length, name))
    if ((p == list || p[-1] == ' ') && (p[length] == ' ' || p[length] == '\0')) return true;
  return false;
}

// The one EGL display and pbuffer configuration all offscreen drawables share:
// EGL displays are not reference counted, so the library opens one and keeps it.
struct OffscreenDisplay {
  EGLDisplay display = EGL_NO_DISPLAY;
  EGLConfig config = nullptr;
};

bool chooseConfig(EGLDisplay display, EGLConfig& config) {
  for (EGLint depth : {24, 16}) {
    const EGLint attributes[] = {EGL_SURFACE_TYPE, EGL_PBUFFER_BIT, EGL_RENDERABLE_TYPE, EGL_OPENGL_BIT,
                                 EGL_RED_SIZE,     8,               EGL_GREEN_SIZE,      8,
                                 EGL_BLUE_SIZE,    8,               EGL_ALPHA_SIZE,      8,
                                 EGL_DEPTH_SIZE,   depth,           EGL_NONE};
    EGLint count = 0;
    if (eglChooseConfig(display, attributes, &config, 1, &count) && count > 0) return true;
  }
  return false;
}

// Initialises display and keeps it when it can render desktop OpenGL into a pbuffer.
bool tryDisplay(EGLDisplay display, OffscreenDisplay& result) {
  if (display == EGL_NO_DISPLAY) return false;
  EGLint major = 0, minor = 0;
  if (!eglInitialize(display, &major, &minor)) return false;
  EGLConfig config = nullptr;
  if (!hasExtension(eglQueryString(display, EGL_CLIENT_APIS), "OpenGL") || !chooseConfig(display, config)) {
    eglTerminate(display);
    return false;
  }
  result.display = display;
  result.config = config;
  return true;
}

// Mesa's surfaceless platform first (any machine, no display server), then each
// EGL device (the NVIDIA driver), then the default display.
OffscreenDisplay openOffscreenDisplay() {
  OffscreenDisplay result;
  const char* clientExtensions = eglQueryString(EGL_NO_DISPLAY, EGL_EXTENSIONS);
  auto getPlatformDisplay =
      reinterpret_cast<PFNEGLGETPLATFORMDISPLAYEXTPROC>(eglGetProcAddress("eglGetPlatformDisplayEXT"));
  if (getPlatformDisplay && hasExtension(clientExtensions, "EGL_MESA_platform_surfaceless") &&
      tryDisplay(getPlatformDisplay(EGL_PLATFORM_SURFACELESS_MESA, EGL_DEFAULT_DISPLAY, nullptr), result))
    return result;
  auto queryDevices = reinterpret_cast<PFNEGLQUERYDEVICESEXTPROC>(eglGetProcAddress("eglQueryDevicesEXT"));
  if (getPlatformDisplay && queryDevices && hasExtension(clientExtensions, "EGL_EXT_platform_device")) {
    EGLDeviceEXT devices[16];
    EGLint count = 0;
    if (queryDevices(16, devices, &count)) {
      for (EGLint i = 0; i < count; ++i)
        if (tryDisplay(getPlatformDisplay(EGL_PLATFORM_DEVICE_EXT, devices[i], nullptr), result)) return result;
    }
  }
  tryDisplay(eglGetDisplay(EGL_DEFAULT_DISPLAY), result);
  return result;
}

const OffscreenDisplay& offscreenDisplay() {
  static const OffscreenDisplay shared = openOffscreenDisplay();
  return shared;
}

// A thread has one current context across EGL and GLX; each side is released
// before the other is made current.
void releaseGLX() {
  if (glXGetCurrentContext()) glXMakeCurrent(glXGetCurrentDisplay(), None, nullptr);
}

void releaseEGL() {
  if (eglGetCurrentContext() != EGL_NO_CONTEXT) {
    eglBindAPI(EGL_OPENGL_API);
    eglMakeCurrent(eglGetCurrentDisplay(), EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
  }
}

// Xlib's default handler exits the process; a bad window id must only fail the call.
int xErrorCode = 0;
int recordXError(Display*, XErrorEvent* event) {
  xErrorCode = event->error_code;
  return 0;
}

bool windowAttributes(Display* display, Window window, XWindowAttributes& attributes) {
  XSync(display, False);
  xErrorCode = 0;
  XErrorHandler previous = XSetErrorHandler(recordXError);
  const Status status = XGetWindowAttributes(display, window, &attributes);
  XSync(display, False);
  XSetErrorHandler(previous);
  return status != 0 && xErrorCode == 0;
}

}  // namespace

nrDrawable::nrDrawable(KindEnum kind, void* display, unsigned long window, void* surface, int width, int height,
                       bool rgba)
    : kind(kind), display(display), window(window), surface(surface), width(width), height(height), rgba(rgba) {}

nrDrawable* nrDrawable::createOffscreen(int width, int height) {
  if (width <= 0 || height <= 0) {
    warn("cannot create an offscreen drawable of " + std::to_string(width) + "x" + std::to_string(height) +
         " pixels");
    return nullptr;
  }
  const OffscreenDisplay& shared = offscreenDisplay();
  if (shared.display == EGL_NO_DISPLAY) {
    warn("cannot create an offscreen drawable: no EGL display renders desktop OpenGL into pbuffers");
    return nullptr;
  }
  const EGLint attributes[] = {EGL_WIDTH, width, EGL_HEIGHT, height, EGL_NONE};
  EGLSurface surface = eglCreatePbufferSurface(shared.display, shared.config, attributes);
  if (surface == EGL_NO_SURFACE) {
    warn("cannot create an offscreen drawable: EGL pbuffer creation failed");
    return nullptr;
  }
  return new nrDrawable(OFFSCREEN_DRAWABLE, shared.display, 0, surface, width, height, true);
}

nrDrawable* nrDrawable::wrapWindow(void* nativeDisplay, unsigned long nativeWindow) {
  Display* x = static_cast<Display*>(nativeDisplay);
  XWindowAttributes attributes;
  if (!x || !nativeWindow || !windowAttributes(x, nativeWindow, attributes)) {
    warn("cannot wrap window: no such X11 window");
    return nullptr;
  }
  XVisualInfo pattern;
  pattern.visualid = XVisualIDFromVisual(attributes.visual);
  int count = 0;
  XVisualInfo* visual = XGetVisualInfo(x, VisualIDMask, &pattern, &count);
  int usesGL = 0, rgbaMode = 0;
  const bool ok = visual && glXGetConfig(x, visual, GLX_USE_GL, &usesGL) == 0 && usesGL &&
                  glXGetConfig(x, visual, GLX_RGBA, &rgbaMode) == 0;
  if (visual) XFree(visual);
  if (!ok) {
    warn("cannot wrap window: its visual does not support OpenGL");
    return nullptr;
  }
  return new nrDrawable(WINDOW_DRAWABLE, x, nativeWindow, nullptr, 0, 0, rgbaMode != 0);
}

nrDrawable* nrDrawable::wrapCurrentWindow() {
  Display* x = glXGetCurrentDisplay();
  GLXDrawable current = glXGetCurrentDrawable();
  if (!x || !current) {
    warn("cannot wrap the current window: no GLX context is current");
    return nullptr;
  }
  return wrapWindow(x, current);
}

nrDrawable::~nrDrawable() {
  if (kind != OFFSCREEN_DRAWABLE) return;
  if (eglGetCurrentSurface(EGL_DRAW) == surface) releaseEGL();
  eglDestroySurface(display, surface);
}

int nrDrawable::getWidth() const {
  XWindowAttributes attributes;
  if (kind == WINDOW_DRAWABLE)
    return windowAttributes(static_cast<Display*>(display), window, attributes) ? attributes.width : 0;
  return width;
}

int nrDrawable::getHeight() const {
  XWindowAttributes attributes;
  if (kind == WINDOW_DRAWABLE)
    return windowAttributes(static_cast<Display*>(display), window, attributes) ? attributes.height : 0;
  return height;
}

nrDrawable::GLContext* nrDrawable::createContext() {
  if (kind == WINDOW_DRAWABLE) {
    GLXContext current = glXGetCurrentContext();
    if (!current) {
      warn("cannot create a context for the window: no GLX context is current to adopt");
      return nullptr;
    }
    return new GLContext{WINDOW_DRAWABLE, display, current};
  }
  eglBindAPI(EGL_OPENGL_API);
  EGLContext context = eglCreateContext(display, offscreenDisplay().config, EGL_NO_CONTEXT, nullptr);
  if (context == EGL_NO_CONTEXT) {
    warn("cannot create an OpenGL context: eglCreateContext failed");
    return nullptr;
  }
  return new GLContext{OFFSCREEN_DRAWABLE, display, context};
}

bool nrDrawable::makeCurrent(GLContext* context) {
  if (!context || context->kind != kind) {
    warn(context ? "cannot make current: the context was made for another kind of drawable"
                 : "cannot make current: no context");
    return false;
  }
  bool ok;
  if (kind == WINDOW_DRAWABLE) {
    releaseEGL();
    ok = glXMakeCurrent(static_cast<Display*>(display), window, static_cast<GLXContext>(context->handle));
  } else {
    releaseGLX();
    eglBindAPI(EGL_OPENGL_API);
    ok = eglMakeCurrent(display, surface, surface, context->handle);
  }
  if (!ok) warn("cannot make the OpenGL context current on the drawable");
  return ok;
}

void nrDrawable::releaseCurrent() {
  releaseEGL();
  releaseGLX();
}

void nrDrawable::destroyContext(GLContext* context) {
  if (!context) return;
  if (context->kind == OFFSCREEN_DRAWABLE) {
    if (eglGetCurrentContext() == context->handle) releaseEGL();
    eglDestroyContext(context->display, context->handle);
  }
  delete context;
}

void nrDrawable::swapBuffers() {
  if (kind == WINDOW_DRAWABLE) glXSwapBuffers(static_cast<Display*>(display), window);
}
