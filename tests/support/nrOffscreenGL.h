// An offscreen drawable with its own OpenGL context, current on the calling thread while it lives.
#pragma once

#include "nerio3d/platform/nrDrawable.h"

namespace nrtest {

struct OffscreenGL {
  nrDrawable* drawable = nullptr;
  nrDrawable::GLContext* context = nullptr;

  explicit OffscreenGL(int width = 64, int height = 64) {
    drawable = nrDrawable::createOffscreen(width, height);
    if (drawable) context = drawable->createContext();
    if (context && !drawable->makeCurrent(context)) {
      nrDrawable::destroyContext(context);
      context = nullptr;
    }
  }
  ~OffscreenGL() {
    nrDrawable::destroyContext(context);
    delete drawable;
  }
  OffscreenGL(const OffscreenGL&) = delete;
  OffscreenGL& operator=(const OffscreenGL&) = delete;

  // True when the context exists and was made current.
  bool ready() const { return context != nullptr; }
  bool makeCurrent() { return drawable->makeCurrent(context); }
};

}  // namespace nrtest
