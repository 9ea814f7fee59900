#include <gtest/gtest.h>

#include <array>
#include <cmath>

#include "nerio3d/actions/nrDrawAction.h"
#include "nerio3d/render/nrFrustumCamera.h"
#include "nerio3d/render/nrOrthoCamera.h"
#include "nerio3d/render/nrPerspCamera.h"
#include "nrRenderFixture.h"

namespace {

const float tol = 1e-5f;

// Left, right, bottom, top, near and far.
using Extents = std::array<float, 6>;

Extents extentsOf(nrCamera* camera) {
  Extents e;
  camera->getFrustum().getDiagCorners(&e[0], &e[1], &e[2], &e[3], &e[4], &e[5]);
  return e;
}

void expectExtents(nrCamera* camera, const Extents& want, const char* what) {
  Extents e = extentsOf(camera);
  for (int i = 0; i < 6; ++i) EXPECT_NEAR(e[i], want[i], tol) << what << ", extent " << "lrbtnf"[i];
}

using Camera = nrtest::ContextTest;
using Calls = nrtest::Calls;

}  // namespace

TEST(nrCamera, FieldsShapeTheFrustumAndThePlacementTheViewMatrix) {
  const float h = 0.41421356f, fov = 0.785f;
  nrPerspCamera* persp = nrtest::held<nrPerspCamera>();
  expectExtents(persp, {-h, h, -h, h, 1, 1000}, "default perspective");
  const nrPerspCamera* seen = persp;
  EXPECT_EQ(seen->getFrustum().getKind(), nrFrustum::PERSP_KIND);
  EXPECT_EQ(std::make_pair(seen->getNearClip(), seen->getFarClip()), std::make_pair(1.0f, 1000.0f));
  // A positive horizontal offset moves the window toward -x, a positive
  // vertical one toward +y.
  persp->setHorizFOV(fov);
  persp->setHorizFOVOff(0.1f);
  expectExtents(persp, {-std::tan(0.1f + fov / 2), -std::tan(0.1f - fov / 2), -h, h, 1, 1000}, "horizontal offset");
  EXPECT_EQ(persp->getFrustum().getKind(), nrFrustum::OFFCENTER_PERSP_KIND);
  persp->setHorizFOVOff(0);
  persp->setVertFOV(fov);
  persp->setVertFOVOff(0.1f);
  float w = std::tan(fov / 2);
  expectExtents(persp, {-w, w, std::tan(0.1f - fov / 2), std::tan(0.1f + fov / 2), 1, 1000}, "vertical offset");
  // The field of view stays when the near plane moves.
  persp->setNearClip(2);
  persp->setFarClip(50);
  expectExtents(persp, {-2 * w, 2 * w, 2 * std::tan(0.1f - fov / 2), 2 * std::tan(0.1f + fov / 2), 2, 50}, "clip");
  persp->setAspectMode(nrFrustum::FIXED_HEIGHT_ASPECT);
  persp->setAspectRatio(2);
  Extents e = extentsOf(persp);
  EXPECT_NEAR(e[1] - e[0], 2 * (e[3] - e[2]), tol);

  nrOrthoCamera* ortho = nrtest::held<nrOrthoCamera>();
  expectExtents(ortho, {-0.5f, 0.5f, -0.5f, 0.5f, 1, 1000}, "default orthographic");
  EXPECT_EQ(ortho->getFrustum().getKind(), nrFrustum::ORTHO_KIND);
  ortho->setCenter(nrVec2f(2, 0));
  ortho->setWidth(4);
  expectExtents(ortho, {0, 4, -0.5f, 0.5f, 1, 1000}, "centre and width");
  nrVec2f centre;
  ortho->getCenter(centre);
  EXPECT_EQ(centre, nrVec2f(2, 0));

  nrFrustumCamera* given = nrtest::held<nrFrustumCamera>();
  nrFrustum f;
  f.makeOrtho(-1, 3, -2, 2);
  given->setFrustum(&f);
  expectExtents(given, {-1, 3, -2, 2, 1, 1000}, "given frustum");

  // From (1, 2, 3) looking down -x: the position goes to the eye, a point one
  // unit ahead onto -z.
  persp->setPosition(1, 2, 3);
  persp->setOrientation(0, 1, 0, float(M_PI / 2));
  nrVec3f eye, ahead;
  nrMatrix4f view;
  persp->getViewMatrix(view);
  eye.xformPt(nrVec3f(1, 2, 3), view);
  ahead.xformPt(nrVec3f(0, 2, 3), persp->getViewMatrix());
  EXPECT_TRUE(eye.almostEqual(nrVec3f(0, 0, 0), tol));
  EXPECT_TRUE(ahead.almostEqual(nrVec3f(0, 0, -1), tol));
  nrVec3f position;
  nrRotation orientation;
  persp->getPosition(position);
  persp->getOrientation(orientation);
  EXPECT_EQ(position, nrVec3f(1, 2, 3));
  EXPECT_EQ(orientation, nrRotation(0, 1, 0, float(M_PI / 2)));
  // A copy sees as its original does.
  for (nrCamera* camera : {static_cast<nrCamera*>(persp), static_cast<nrCamera*>(ortho), static_cast<nrCamera*>(given)}) {
    nrCamera* copy = static_cast<nrCamera*>(camera->clone(nrContainer::COPY_CLONE));
    expectExtents(copy, extentsOf(camera), camera->getType()->getName());
    EXPECT_EQ(copy->getViewMatrix(), camera->getViewMatrix()) << camera->getType()->getName();
    copy->unref();
  }
  // Copied from a camera of another kind, a camera takes the placement and
  // keeps the frustum of its own fields.
  nrOrthoCamera* placed = nrtest::held<nrOrthoCamera>();
  placed->copy(persp);
  expectExtents(placed, {-0.5f, 0.5f, -0.5f, 0.5f, 1, 1000}, "orthographic copied from perspective");
  EXPECT_EQ(placed->getFrustum().getKind(), nrFrustum::ORTHO_KIND);
  EXPECT_EQ(placed->getViewMatrix(), persp->getViewMatrix());
  placed->unref();
  EXPECT_EQ(persp->getField("farClip"), persp->getField(7));
  EXPECT_EQ(ortho->getField("aspectRatio"), ortho->getField(8));

  nrtest::unref(given, ortho, persp);
}

TEST_F(Camera, DrawLoadsTheFrustumProjectionAndTheViewMatrix) {
  nrPerspCamera* persp = nrtest::held<nrPerspCamera>();
  persp->setPosition(nrVec3f(1, 2, 3));
  persp->setOrientation(nrRotation(0, 1, 0, float(M_PI / 2)));
  nrOrthoCamera* ortho = nrtest::held<nrOrthoCamera>();
  ortho->setCenter(2, 0);
  ortho->setWidth(4);
  nrDrawAction draw;
  draw.setContext(context);

  nrGLRecorder rec;
  persp->draw(&draw);
  EXPECT_EQ(rec.calls(),
            (Calls{"glMatrixMode(GL_PROJECTION)", "glLoadIdentity()",
                   "glFrustum(-0.414214, 0.414214, -0.414214, 0.414214, 1, 1000)", "glMatrixMode(GL_MODELVIEW)",
                   "glLoadIdentity()", "glRotatef(-90, 0, 1, 0)", "glTranslatef(-1, -2, -3)"}));
  for (nrCamera* camera : {static_cast<nrCamera*>(persp), static_cast<nrCamera*>(ortho)}) {
    camera->draw(&draw);
    nrMatrix4f projection, expected, modelView;
    nrgl::GetFloatv(GL_PROJECTION_MATRIX, &projection[0][0]);
    camera->getFrustum().getGLProjMat(expected);
    EXPECT_TRUE(projection.almostEqual(expected, tol)) << camera->getType()->getName();
    nrgl::GetFloatv(GL_MODELVIEW_MATRIX, &modelView[0][0]);
    EXPECT_TRUE(modelView.almostEqual(camera->getViewMatrix(), tol)) << camera->getType()->getName();
  }
  EXPECT_NE(rec.text().find("glOrtho(0, 4, -0.5, 0.5, 1, 1000)"), std::string::npos);
  nrtest::unref(ortho, persp);
}
