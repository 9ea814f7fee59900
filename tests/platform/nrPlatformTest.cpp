#include <GL/freeglut.h>
#include <unistd.h>
#include <zlib.h>

#include <cstdlib>
#include <fstream>
#include <string>

#include "nerio3d/platform/nrDrawable.h"
#include "nerio3d/platform/nrFileStream.h"
#include "nerio3d/render/nrGL.h"
#include "nrCapture.h"
#include "nrOffscreenGL.h"

namespace {

// Compares the pixel's colour as 0xRRGGBB, so a failure shows all three channels.
void expectPixel(int x, int y, int r, int g, int b) {
  unsigned char p[4] = {};
  nrgl::ReadPixels(x, y, 1, 1, GL_RGBA, GL_UNSIGNED_BYTE, p);
  EXPECT_EQ((p[0] << 16) | (p[1] << 8) | p[2], (r << 16) | (g << 8) | b) << "at " << x << "," << y;
}

const char* currentVersion() { return reinterpret_cast<const char*>(nrgl::GetString(GL_VERSION)); }

TEST(nrDrawableOffscreen, RendersFixedFunctionGeometryAndReadsItBack) {
  nrtest::OffscreenGL gl(32, 16);
  ASSERT_TRUE(gl.ready());
  EXPECT_EQ(gl.drawable->getKind(), nrDrawable::OFFSCREEN_DRAWABLE);

  GLint viewport[4] = {}, depthBits = 0;
  nrgl::GetIntegerv(GL_VIEWPORT, viewport);
  nrgl::GetIntegerv(GL_DEPTH_BITS, &depthBits);
  EXPECT_EQ(std::pair(viewport[2], viewport[3]), std::pair(32, 16));
  EXPECT_GE(depthBits, 16);

  // Red background, a green quad over the left half, then a blue quad behind it
  // over everything: the depth test must keep the green and fill only the right half.
  nrgl::ClearColor(1, 0, 0, 1);
  nrgl::Clear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
  expectPixel(31, 15, 255, 0, 0);
  nrgl::MatrixMode(GL_PROJECTION);
  nrgl::LoadIdentity();
  nrgl::Ortho(0, 32, 0, 16, -10, 10);
  nrgl::MatrixMode(GL_MODELVIEW);
  nrgl::LoadIdentity();
  nrgl::Enable(GL_DEPTH_TEST);
  nrgl::Color3f(0, 1, 0);
  nrgl::Rectf(0, 0, 16, 16);
  nrgl::Color3f(0, 0, 1);
  nrgl::Translatef(0, 0, -5);
  nrgl::Rectf(0, 0, 32, 16);
  nrgl::Finish();
  expectPixel(3, 8, 0, 255, 0);
  expectPixel(28, 8, 0, 0, 255);
  EXPECT_EQ(nrgl::GetError(), static_cast<GLenum>(GL_NO_ERROR));
}

TEST(nrDrawableOffscreen, TwoDrawablesKeepTheirOwnContextsAndContents) {
  nrtest::OffscreenGL first(8, 8), second(8, 8);
  ASSERT_TRUE(first.ready() && second.ready());

  ASSERT_TRUE(first.makeCurrent());
  nrgl::ClearColor(1, 0, 0, 1);
  nrgl::Clear(GL_COLOR_BUFFER_BIT);
  nrgl::Enable(GL_FOG);
  ASSERT_TRUE(second.makeCurrent());
  EXPECT_EQ(nrgl::IsEnabled(GL_FOG), GL_FALSE);

  ASSERT_TRUE(first.makeCurrent());
  EXPECT_EQ(nrgl::IsEnabled(GL_FOG), GL_TRUE);
  expectPixel(4, 4, 255, 0, 0);

  // A context may also draw into another offscreen drawable: they share one configuration.
  ASSERT_TRUE(first.drawable->makeCurrent(second.context));
  expectPixel(4, 4, 255, 0, 0);
  EXPECT_EQ(nrgl::IsEnabled(GL_FOG), GL_FALSE);
}

TEST(nrDrawableOffscreen, ReleasingAndDestroyingLeaveNoCurrentContext) {
  nrDrawable* drawable = nrDrawable::createOffscreen(4, 4);
  ASSERT_NE(drawable, nullptr);
  nrDrawable::GLContext* kept = drawable->createContext();
  nrDrawable::GLContext* dropped = drawable->createContext();
  ASSERT_TRUE(drawable->makeCurrent(kept));
  EXPECT_NE(currentVersion(), nullptr);
  nrDrawable::releaseCurrent();
  EXPECT_EQ(currentVersion(), nullptr);

  ASSERT_TRUE(drawable->makeCurrent(dropped));
  nrDrawable::destroyContext(dropped);
  EXPECT_EQ(currentVersion(), nullptr);

  ASSERT_TRUE(drawable->makeCurrent(kept));
  delete drawable;
  EXPECT_EQ(currentVersion(), nullptr);
  nrDrawable::destroyContext(kept);
}

TEST(nrDrawableOffscreen, RefusesBadRequestsWithAMessage) {
  nrDrawable* drawable = reinterpret_cast<nrDrawable*>(1);
  EXPECT_EQ(nrtest::captureStderr([&] { drawable = nrDrawable::createOffscreen(0, 10); }),
            "(WARN, RESOURCE): cannot create an offscreen drawable of 0x10 pixels\n");
  EXPECT_EQ(drawable, nullptr);

  nrtest::OffscreenGL gl(4, 4);
  ASSERT_TRUE(gl.ready());
  bool made = true;
  EXPECT_EQ(nrtest::captureStderr([&] { made = gl.drawable->makeCurrent(nullptr); }),
            "(WARN, RESOURCE): cannot make current: no context\n");
  EXPECT_FALSE(made);
  EXPECT_EQ(nrtest::captureStderr([&] { drawable = nrDrawable::wrapCurrentWindow(); }),
            "(WARN, RESOURCE): cannot wrap the current window: no GLX context is current\n");
  EXPECT_EQ(drawable, nullptr);
}

// Needs an X server; run the suite under xvfb-run to include it.
TEST(nrDrawableWindow, AdoptsTheToolkitContextOfAGLXWindow) {
  if (!getenv("DISPLAY")) GTEST_SKIP() << "no X display";
  int argc = 1;
  char name[] = "nrDrawableTest";
  char* argv[] = {name, nullptr};
  glutInit(&argc, argv);
  glutInitDisplayMode(GLUT_RGBA | GLUT_DOUBLE | GLUT_DEPTH);
  glutInitWindowSize(40, 30);
  const int window = glutCreateWindow("nrDrawableTest");
  glutSetWindow(window);

  nrDrawable* drawable = nrDrawable::wrapCurrentWindow();
  ASSERT_NE(drawable, nullptr);
  EXPECT_EQ(drawable->getKind(), nrDrawable::WINDOW_DRAWABLE);
  EXPECT_EQ(std::pair(drawable->getWidth(), drawable->getHeight()), std::pair(40, 30));
  nrDrawable::GLContext* context = drawable->createContext();
  ASSERT_NE(context, nullptr);

  nrtest::OffscreenGL offscreen(4, 4);
  ASSERT_TRUE(offscreen.ready());
  bool made = true;
  EXPECT_EQ(nrtest::captureStderr([&] { made = drawable->makeCurrent(offscreen.context); }),
            "(WARN, RESOURCE): cannot make current: the context was made for another kind of drawable\n");
  EXPECT_FALSE(made);

  ASSERT_TRUE(drawable->makeCurrent(context));
  nrgl::ClearColor(0, 1, 0, 1);
  nrgl::Clear(GL_COLOR_BUFFER_BIT);
  nrgl::Finish();
  nrgl::ReadBuffer(GL_BACK);
  expectPixel(5, 5, 0, 255, 0);
  drawable->swapBuffers();

  // The adopted context stays the toolkit's: forgetting the handle leaves it bound
  // and usable, and the window can be wrapped again.
  nrDrawable::destroyContext(context);
  EXPECT_NE(currentVersion(), nullptr);
  nrDrawable* again = nrDrawable::wrapCurrentWindow();
  ASSERT_NE(again, nullptr);
  context = again->createContext();
  EXPECT_TRUE(again->makeCurrent(context));
  nrDrawable::destroyContext(context);
  delete again;

  EXPECT_EQ(nrtest::captureStderr([&] {
              EXPECT_EQ(nrDrawable::wrapWindow(drawable->getNativeDisplay(), 0x7ffffff), nullptr);
            }),
            "(WARN, RESOURCE): cannot wrap window: no such X11 window\n");
  delete drawable;
  glutDestroyWindow(window);
}

std::string readAll(FILE* stream) {
  std::string text;
  for (int c; (c = getc(stream)) != EOF;) text += static_cast<char>(c);
  return text;
}

TEST(nrFileStream, GzipFilesReadAsTheirDecompressedText) {
  char dir[] = "/tmp/nrFileStreamXXXXXX";
  ASSERT_TRUE(mkdtemp(dir));
  std::string text = "#VRML V2.0 utf8\n";
  for (int i = 0; i < 20000; ++i) text += "Transform { translation " + std::to_string(i) + " 0 1 }\n";
  const std::string plain = dir + std::string("/plain.wrl"), packed = plain + ".gz", tiny = dir + std::string("/tiny");
  gzFile gz = gzopen(packed.c_str(), "wb");
  ASSERT_EQ(gzwrite(gz, text.data(), text.size()), int(text.size()));
  gzclose(gz);
  std::ofstream(plain) << text;
  std::ofstream(tiny) << '\x1f';

  // One byte of the magic alone is plain text.
  for (auto [path, content] : {std::pair{plain, text}, std::pair{packed, text}, std::pair{tiny, std::string("\x1f")}}) {
    SCOPED_TRACE(path);
    FILE* stream = nrFileStream::open(path.c_str());
    ASSERT_TRUE(stream);
    EXPECT_EQ(readAll(stream), content);
    EXPECT_TRUE(feof(stream));
    EXPECT_EQ(fclose(stream), 0);
    unlink(path.c_str());
  }
  EXPECT_EQ(nrFileStream::open((dir + std::string("/missing.wrl")).c_str()), nullptr);
  rmdir(dir);
}

}  // namespace
