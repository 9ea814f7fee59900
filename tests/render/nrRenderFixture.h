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

  nrDrawable* drawable = nullptr;
  nrContext* context = nullptr;
};

}  // namespace nrtest
