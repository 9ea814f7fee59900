#include "nerio3d/render/nrGL.h"

#include <unistd.h>

#include <climits>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>
#include <vector>

#include "nrCapture.h"
#include "nrOffscreenGL.h"

namespace {

using Calls = std::vector<std::string>;

class nrGLLayer : public testing::Test {
 protected:
  void SetUp() override { ASSERT_TRUE(gl.ready()); }
  nrtest::OffscreenGL gl;
};

TEST_F(nrGLLayer, RecorderWritesEachArgumentKindReadably) {
  static const float spot[3] = {0, -1, 0.5f};
  static const GLint filter[1] = {GL_LINEAR};
  static const GLuint ids[2] = {7, 9};
  static const unsigned char pixels[16] = {};
  static const float m[16] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 2, 3, 4, 1};
  const std::pair<void (*)(), const char*> table[] = {
      {[] { nrgl::Enable(GL_LIGHTING); }, "glEnable(GL_LIGHTING)"},
      {[] { nrgl::ClearColor(0.5f, 0, 0, 1); }, "glClearColor(0.5, 0, 0, 1)"},
      {[] { nrgl::Clear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT); },
       "glClear(GL_COLOR_BUFFER_BIT|GL_DEPTH_BUFFER_BIT)"},
      {[] { nrgl::PushAttrib(GL_ALL_ATTRIB_BITS); }, "glPushAttrib(GL_ALL_ATTRIB_BITS)"},
      {[] { nrgl::PushAttrib(GL_LIGHTING_BIT | 0x40000000); }, "glPushAttrib(GL_LIGHTING_BIT|0x40000000)"},
      {[] { nrgl::BlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA); },
       "glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA)"},
      {[] { nrgl::ColorMask(GL_TRUE, GL_FALSE, GL_TRUE, GL_TRUE); },
       "glColorMask(GL_TRUE, GL_FALSE, GL_TRUE, GL_TRUE)"},
      {[] { nrgl::LineStipple(3, 0xF0F0); }, "glLineStipple(3, 0xf0f0)"},
      {[] { nrgl::TexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE); },
       "glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE)"},
      {[] { nrgl::TexParameteriv(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, filter); },
       "glTexParameteriv(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, {GL_LINEAR})"},
      {[] { nrgl::Fogf(GL_FOG_MODE, GL_EXP2); }, "glFogf(GL_FOG_MODE, GL_EXP2)"},
      {[] { nrgl::Fogf(GL_FOG_DENSITY, 0.25f); }, "glFogf(GL_FOG_DENSITY, 0.25)"},
      {[] { nrgl::Lightfv(GL_LIGHT3, GL_SPOT_DIRECTION, spot); },
       "glLightfv(GL_LIGHT3, GL_SPOT_DIRECTION, {0, -1, 0.5})"},
      {[] { nrgl::TexImage2D(GL_TEXTURE_2D, 0, 3, 2, 2, 0, GL_RGB, GL_UNSIGNED_BYTE, pixels); },
       "glTexImage2D(GL_TEXTURE_2D, 0, 3, 2, 2, 0, GL_RGB, GL_UNSIGNED_BYTE, ptr)"},
      {[] { nrgl::TexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, 1, 1, 0, GL_RGBA, GL_UNSIGNED_BYTE, pixels); },
       "glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, 1, 1, 0, GL_RGBA, GL_UNSIGNED_BYTE, ptr)"},
      {[] { nrgl::DeleteTextures(2, ids); }, "glDeleteTextures(2, {7, 9})"},
      {[] { nrgl::LoadMatrixf(m); }, "glLoadMatrixf({1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 2, 3, 4, 1})"},
      {[] { nrgl::Enable(0x1234567); }, "glEnable(0x1234567)"},
      {[] { nrgl::GetError(); }, "glGetError()"},
      {[] { nrglu::Perspective(45, 1.5, 0.1, 100); }, "gluPerspective(45, 1.5, 0.1, 100)"},
      {[] { nrgl::PopAttrib(); }, "glPopAttrib()"},
      {[] { nrgl::PopAttrib(); }, "glPopAttrib()"},
  };
  nrGLRecorder recorder;
  Calls expected;
  for (const auto& [call, text] : table) {
    call();
    expected.push_back(text);
  }
  EXPECT_EQ(recorder.calls(), expected);
  EXPECT_EQ(nrgl::enumName(GL_TEXTURE_GEN_S), "GL_TEXTURE_GEN_S");
  EXPECT_EQ(nrgl::enumName(0xBEEF), "0xbeef");
}

TEST_F(nrGLLayer, CallsReachOpenGLWhetherRecordedOrNot) {
  auto integer = [](GLenum name) {
    GLint value[4] = {};
    nrgl::GetIntegerv(name, value);
    return value[0];
  };
  nrgl::Enable(GL_CULL_FACE);
  nrgl::CullFace(GL_FRONT);
  nrgl::LineWidth(3);
  {
    nrGLRecorder recorder;
    nrgl::Enable(GL_LIGHTING);
    nrgl::DepthFunc(GL_GEQUAL);
    nrgl::LineWidth(4);
    nrgl::ColorMask(GL_TRUE, GL_FALSE, GL_TRUE, GL_FALSE);
    nrgl::LineStipple(2, 0x0F0F);
    EXPECT_EQ(recorder.calls().size(), 5u);
  }
  EXPECT_TRUE(nrgl::IsEnabled(GL_CULL_FACE) && nrgl::IsEnabled(GL_LIGHTING));
  GLfloat width = 0;
  nrgl::GetFloatv(GL_LINE_WIDTH, &width);
  EXPECT_EQ(width, 4.0f);
  EXPECT_EQ(integer(GL_CULL_FACE_MODE), GL_FRONT);
  EXPECT_EQ(integer(GL_DEPTH_FUNC), GL_GEQUAL);
  EXPECT_EQ(integer(GL_LINE_STIPPLE_PATTERN), 0x0F0F);
  GLboolean mask[4] = {};
  nrgl::GetBooleanv(GL_COLOR_WRITEMASK, mask);
  EXPECT_EQ(mask[0], GL_TRUE);
  EXPECT_EQ(mask[3], GL_FALSE);
  EXPECT_EQ(nrgl::GetError(), static_cast<GLenum>(GL_NO_ERROR));
  EXPECT_STREQ(reinterpret_cast<const char*>(nrglu::ErrorString(GL_INVALID_ENUM)), "invalid enumerant");
}

TEST_F(nrGLLayer, RecordersNestAndTheRealTableReturnsWhenTheLastEnds) {
  const auto realEnable = nrgl::detail::calls.glEnable;
  std::optional<nrGLRecorder> outer(std::in_place);
  EXPECT_NE(nrgl::detail::calls.glEnable, realEnable);
  nrgl::Enable(GL_FOG);
  {
    nrGLRecorder inner;
    nrgl::Disable(GL_FOG);
    EXPECT_EQ(inner.text(), "glDisable(GL_FOG)\n");
    inner.clear();
    EXPECT_TRUE(inner.calls().empty());
  }
  EXPECT_NE(nrgl::detail::calls.glEnable, realEnable);
  nrgl::Flush();
  EXPECT_EQ(outer->calls(), (Calls{"glEnable(GL_FOG)", "glFlush()"}));
  outer.reset();
  EXPECT_EQ(nrgl::detail::calls.glEnable, realEnable);
}

TEST_F(nrGLLayer, TracePrintsTheRecordedTextAndFollowsTheEnvironment) {
  nrGLRecorder recorder;
  nrgl::setTrace(true);
  EXPECT_EQ(nrtest::captureStderr([] {
              nrgl::Enable(GL_FOG);
              nrgl::Hint(GL_FOG_HINT, GL_NICEST);
            }),
            "glEnable(GL_FOG)\nglHint(GL_FOG_HINT, GL_NICEST)\n");
  EXPECT_EQ(recorder.text(), "glEnable(GL_FOG)\nglHint(GL_FOG_HINT, GL_NICEST)\n");

  setenv("NR_GL_TRACE", "0", 1);
  nrgl::setTraceFromEnvironment();
  EXPECT_FALSE(nrgl::isTracing());
  EXPECT_EQ(nrtest::captureStderr([] { nrgl::Disable(GL_FOG); }), "");
  setenv("NR_GL_TRACE", "1", 1);
  nrgl::setTraceFromEnvironment();
  EXPECT_TRUE(nrgl::isTracing());
  unsetenv("NR_GL_TRACE");
  nrgl::setTraceFromEnvironment();
  EXPECT_FALSE(nrgl::isTracing());
}

// The example program lives next to the tests folder of the build tree.
std::string exampleProgram() {
  char self[PATH_MAX] = {};
  if (readlink("/proc/self/exe", self, sizeof self - 1) <= 0) return "";
  std::string path(self);
  path.erase(path.rfind('/'));
  path.erase(path.rfind('/') + 1);
  return path + "example_gltrace";
}

std::string runShell(const std::string& command) {
  std::string output;
  FILE* pipe = popen(command.c_str(), "r");
  if (!pipe) return output;
  char buffer[256];
  while (fgets(buffer, sizeof buffer, pipe)) output += buffer;
  output += "exit " + std::to_string(pclose(pipe) >> 8);
  return output;
}

TEST(nrGLTraceProgram, TracesFromStartWhenTheVariableIsSetAndFailsCleanlyWithoutEGL) {
  const std::string program = exampleProgram();
  ASSERT_EQ(access(program.c_str(), X_OK), 0) << program;
  const std::string traced = runShell("NR_GL_TRACE=1 '" + program + "' 2>&1 >/dev/null");
  EXPECT_EQ(traced,
            "glClearColor(0, 0, 0, 1)\n"
            "glClear(GL_COLOR_BUFFER_BIT|GL_DEPTH_BUFFER_BIT)\n"
            "glMatrixMode(GL_PROJECTION)\n"
            "glLoadIdentity()\n"
            "glOrtho(-1, 1, -1, 1, -1, 1)\n"
            "glBegin(GL_TRIANGLES)\n"
            "glColor3f(1, 0.5, 0)\n"
            "glVertex2f(-1, -1)\n"
            "glVertex2f(1, -1)\n"
            "glVertex2f(0, 1)\n"
            "glEnd()\n"
            "glReadPixels(32, 16, 1, 1, GL_RGBA, GL_UNSIGNED_BYTE, ptr)\n"
            "exit 0");
  EXPECT_EQ(runShell("NR_GL_TRACE= '" + program + "' 2>&1"), "pixel at (32, 16): 255 128 0 255\nexit 0");
  EXPECT_EQ(runShell("__EGL_VENDOR_LIBRARY_FILENAMES=/nonexistent '" + program + "' 2>&1"),
            "(WARN, RESOURCE): cannot create an offscreen drawable: no EGL display renders desktop OpenGL "
            "into pbuffers\nexit 1");
}

}  // namespace
