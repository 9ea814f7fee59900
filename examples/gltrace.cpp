// Draws one triangle offscreen and prints the pixel under it. Run it with
// NR_GL_TRACE=1 to see every OpenGL call the program makes on standard error.
#include <cstdio>

#include "nerio3d/platform/nrDrawable.h"
#include "nerio3d/render/nrGL.h"

int main() {
  nrDrawable* drawable = nrDrawable::createOffscreen(64, 64);
  if (!drawable) return 1;
  nrDrawable::GLContext* context = drawable->createContext();
  if (!context || !drawable->makeCurrent(context)) {
    nrDrawable::destroyContext(context);
    delete drawable;
    return 1;
  }

  nrgl::ClearColor(0, 0, 0, 1);
  nrgl::Clear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
  nrgl::MatrixMode(GL_PROJECTION);
  nrgl::LoadIdentity();
  nrgl::Ortho(-1, 1, -1, 1, -1, 1);
  nrgl::Begin(GL_TRIANGLES);
  nrgl::Color3f(1, 0.5f, 0);
  nrgl::Vertex2f(-1, -1);
  nrgl::Vertex2f(1, -1);
  nrgl::Vertex2f(0, 1);
  nrgl::End();
  unsigned char pixel[4] = {};
  nrgl::ReadPixels(32, 16, 1, 1, GL_RGBA, GL_UNSIGNED_BYTE, pixel);
  printf("pixel at (32, 16): %d %d %d %d\n", pixel[0], pixel[1], pixel[2], pixel[3]);

  nrDrawable::destroyContext(context);
  delete drawable;
  return 0;
}
