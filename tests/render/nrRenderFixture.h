// A graphics context on an offscreen drawable, current for the test, with
// helpers that read OpenGL state back.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "nerio3d/platform/nrDrawable.h"
#include "nerio3d/render/nrContext.h"
#include "nerio3d/render/nrGL.h"
#include "nrHeld.h"

namespace nrtest {

using Calls = std::vector<std::string>;

// The calls among these whose text starts with prefix.
inline Calls callsStarting(const Calls& calls, const char* prefix) {
  Calls found;
  for (const std::string& call : calls)
    if (call.rfind(prefix, 0) == 0) found.push_back(call);
  return found;
}

class ContextTest : public testing::Test {
 protected:
  void SetUp() override {
    drawable = nrDrawable::createOffscreen(64, 64);
    ASSERT_NE(drawable, nullptr);
    context = new nrContext(drawable);
    context->ref();
    context->makeCurrent(drawable);
  }
  void TearDown() override {
    if (context) context->unref();
    delete drawable;
  }

  static bool isOn(GLenum cap) { return nrgl::IsEnabled(cap) == GL_TRUE; }
  static GLint getInt(GLenum pname) {
    GLint v[4] = {};
    nrgl::GetIntegerv(pname, v);
    return v[0];
  }
  static GLfloat getFloat(GLenum pname) {
    GLfloat v[16] = {};
    nrgl::GetFloatv(pname, v);
    return v[0];
  }
  // The red, green and blue of the pixel at x, y of the drawable.
  static std::vector<int> pixelAt(int x, int y) {
    unsigned char p[4];
    nrgl::ReadPixels(x, y, 1, 1, GL_RGBA, GL_UNSIGNED_BYTE, p);
    return {p[0], p[1], p[2]};
  }

  nrDrawable* drawable = nullptr;
  nrContext* context = nullptr;
};

}  // namespace nrtest
