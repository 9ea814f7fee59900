#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <utility>

#include "../render/nrRenderFixture.h"
#include "nerio3d/actions/nrDrawAction.h"
#include "nerio3d/nodes/nrTransform.h"
#include "nerio3d/render/nrOrthoCamera.h"
#include "nerio3d/render/nrPerspCamera.h"
#include "nrNodeTestTypes.h"

namespace {

const float halfPi = float(M_PI / 2);

// A leaf that, when drawn, compares the OpenGL model-view matrix with the
// action's stack top and notes whether normalisation is on.
class tstProbe : public nrNode {
  NR_DECLARE_CONTAINER_TYPE(tstProbe)
  tstProbe() : nrNode(getClassType()) { setSphereBound(nrSphereBound(nrVec3f(0, 0, 0), 1)); }

  nrTravDirective drawVisit(nrDrawAction* action) override {
    nrMatrix4f gl;
    nrgl::GetFloatv(GL_MODELVIEW_MATRIX, &gl[0][0]);
    matches = gl.almostEqual(*action->getMatStack()->getTop(), 1e-5f);
    normalized = nrgl::IsEnabled(GL_NORMALIZE);
    return CONTINUE_TRAV;
  }

  bool matches = false;
  bool normalized = false;
};

NR_DEFINE_TYPE(tstProbe, nrNode, "tstProbe") {}

// What each transform call did, the matrix text left out.
std::vector<std::string> placementCalls(const nrGLRecorder& rec) {
  std::vector<std::string> kept;
  for (std::string c : rec.calls()) {
    if (c.rfind("glIsEnabled", 0) == 0 || c.rfind("glGet", 0) == 0) continue;
    if (c.rfind("glMultMatrixf", 0) == 0) c = "glMultMatrixf";
    if (c.find("Matrix") != std::string::npos || c.find("GL_NORMALIZE") != std::string::npos ||
        c.rfind("glTranslatef", 0) == 0 || c.rfind("glRotatef", 0) == 0)
      kept.push_back(c);
  }
  return kept;
}

nrVec3f mapped(nrTransform* t, const nrVec3f& p) {
  nrVec3f out;
  out.xformPt(p, t->getMatrix());
  return out;
}

using Calls = nrtest::Calls;

// A draw action into the context, looking through camera at z = 5.
class Transform : public nrtest::ContextTest {
 protected:
  template <typename C>
  C* look() {
    C* camera = nrtest::held<C>();
    camera->setPosition(0, 0, 5);
    draw.setCamera(camera);
    draw.setContext(context);
    camera->unref();
    return camera;
  }
  nrDrawAction draw;
};

}  // namespace

TEST_F(Transform, DrawingTakesTheCheapestPathAndKeepsOpenGLAndTheStackTogether) {
  const nrMatrix4f shear(1, 0, 0, 0, 0.5f, 1, 0, 0, 0, 0, 1, 0, 0, 0, -3, 1);
  const Calls scaled = {"glPushMatrix()", "glEnable(GL_NORMALIZE)", "glMultMatrixf", "glDisable(GL_NORMALIZE)",
                        "glPopMatrix()"};
  struct { const char* name; std::function<void(nrTransform*)> set; Calls calls; } cases[] = {
      {"default", [](nrTransform*) {}, {}},
      {"translation back to zero", [](nrTransform* t) { t->setTranslation(1, 0, 0); t->setTranslation(0, 0, 0); },
       {"glPushMatrix()", "glTranslatef(0, 0, 0)", "glPopMatrix()"}},
      {"rotation", [](nrTransform* t) { t->setRotation(0, 1, 0, 0.5f); },
       {"glPushMatrix()", "glRotatef(28.6479, 0, 1, 0)", "glPopMatrix()"}},
      {"rotation with a centre", [](nrTransform* t) { t->setRotation(0, 1, 0, 0.5f); t->setCenter(1, 0, 0); },
       {"glPushMatrix()", "glMultMatrixf", "glPopMatrix()"}},
      {"uniform scale", [](nrTransform* t) { t->setScale(2, 2, 2); }, scaled},
      {"scale", [](nrTransform* t) { t->setScale(1, 3, 1); }, scaled},
      {"matrix", [&](nrTransform* t) { t->setMatrix(shear); }, scaled},
  };
  nrPerspCamera* camera = look<nrPerspCamera>();
  for (const auto& c : cases) {
    nrTransform* t = nrtest::held<nrTransform>();
    tstProbe* probe = new tstProbe;
    t->addChild(probe);
    c.set(t);
    camera->draw(&draw);
    nrGLRecorder rec;
    EXPECT_EQ(draw.apply(t), 0) << c.name;
    EXPECT_EQ(placementCalls(rec), c.calls) << c.name;
    EXPECT_TRUE(probe->matches) << c.name;
    EXPECT_EQ(probe->normalized, c.calls == scaled) << c.name;
    EXPECT_FALSE(isOn(GL_NORMALIZE)) << c.name;
    if (std::string(c.name) == "matrix") {
      EXPECT_NE(rec.text().find("glMultMatrixf({1, 0, 0, 0, 0.5, 1, 0, 0, 0, 0, 1, 0, 0, 0, -3, 1})"),
                std::string::npos);
    }
    t->unref();
  }
}

TEST_F(Transform, CullingUnderAnUnevenScaleKeepsWhatShows) {
  // The ortho view ends at y = 5; the leaf's sphere reaches past it only when
  // the outer scale stretches it, which the transforms below must keep.
  nrOrthoCamera* camera = look<nrOrthoCamera>();
  camera->setWidth(10);
  camera->setHeight(10);
  const std::function<void(nrTransform*)> inner[] = {
      [](nrTransform* t) { t->setRotation(0, 0, 1, 0.001f); },
      [](nrTransform* t) { t->setScale(1.1f, 1.1f, 1.1f); }};
  for (const auto& set : inner) {
    nrTransform* outer = nrtest::held<nrTransform>();
    outer->setScale(1, 10, 1);
    nrTransform* t = new nrTransform;
    t->setTranslation(0, 0.55f, 0);
    set(t);
    outer->addChild(t);
    nrGroup* group = new nrGroup;
    t->addChild(group);
    tstProbe* probe = new tstProbe;
    probe->setSphereBound(nrSphereBound(nrVec3f(0, 0, 0), 0.06f));
    group->addChild(probe);
    camera->draw(&draw);
    draw.apply(outer);
    EXPECT_TRUE(probe->matches);
    outer->unref();
  }
}

TEST(nrTransform, TheSphereFollowsTheParts) {
  struct { const char* name; std::function<void(nrTransform*)> set; nrVec3f center; float radius; } cases[] = {
      {"uniform scale", [](nrTransform* t) { t->setScale(2, 2, 2); }, {4, 0, 0}, 2},
      {"scale", [](nrTransform* t) { t->setScale(1, 3, 1); }, {2, 0, 0}, 3},
      {"scale along turned axes",
       [](nrTransform* t) { t->setScaleOrientation(0, 0, 1, halfPi / 2); t->setScale(3, 1, 1); }, {4, 2, 0}, 3},
      {"translation", [](nrTransform* t) { t->setTranslation(0, 0, -5); }, {2, 0, -5}, 1},
      {"rotation about a centre", [](nrTransform* t) { t->setCenter(1, 0, 0); t->setRotation(0, 0, 1, halfPi); },
       {1, 1, 0}, 1},
  };
  for (const auto& c : cases) {
    nrTransform* t = nrtest::held<nrTransform>();
    tstLeaf* leaf = new tstLeaf(nrSphereBound(nrVec3f(2, 0, 0), 1));
    t->addChild(leaf);
    c.set(t);
    nrSphereBound s;
    t->getSphereBound(s);
    EXPECT_TRUE(s.center.almostEqual(c.center, 1e-5f)) << c.name;
    EXPECT_FLOAT_EQ(s.radius, c.radius) << c.name;
    // A change below reaches the transform's sphere.
    leaf->setSphereBound(nrSphereBound(nrVec3f(2, 0, 0), 0.5f));
    t->getSphereBound(s);
    EXPECT_FLOAT_EQ(s.radius, c.radius / 2) << c.name;
    // Parts set while STATIC count once it is DYNAMIC again.
    t->setBoundMode(nrNode::STATIC);
    t->setTranslation(0, 0, 7);
    t->setBoundMode(nrNode::DYNAMIC);
    t->getSphereBound(s);
    EXPECT_FLOAT_EQ(s.center[2], 7) << c.name;
    t->setTranslation(0, 0, 0);
    if (c.center[2] != 0) t->setTranslation(0, 0, c.center[2]);
    // A copy places its children as the original does, and its sphere follows
    // a later change of its own.
    nrTransform* copy = static_cast<nrTransform*>(t->clone(nrContainer::COPY_CLONE));
    copy->ref();
    EXPECT_TRUE(mapped(copy, nrVec3f(2, 0, 0)).almostEqual(mapped(t, nrVec3f(2, 0, 0)), 1e-5f)) << c.name;
    const nrVec3f& moved = copy->getTranslation();
    copy->setTranslation(moved[0], moved[1], moved[2] + 1);
    copy->getSphereBound(s);
    EXPECT_TRUE(s.center.almostEqual(nrVec3f(c.center[0], c.center[1], c.center[2] + 1), 1e-5f)) << c.name;
    EXPECT_FLOAT_EQ(s.radius, c.radius / 2) << c.name;
    // Copied into a transform that a group holds, the group's sphere follows;
    // copied into a plain group, or from one, the sphere is the copy's own.
    nrGroup* holder = nrtest::held<nrGroup>();
    nrTransform* inner = new nrTransform;
    holder->addChild(inner);
    holder->getSphereBound(s);
    inner->copy(t);
    holder->getSphereBound(s);
    EXPECT_TRUE(s.center.almostEqual(c.center, 1e-5f)) << c.name;
    nrGroup* plain = nrtest::held<nrGroup>();
    plain->copy(t);
    plain->getSphereBound(s);
    EXPECT_EQ(s.center, nrVec3f(2, 0, 0)) << c.name;
    nrTransform* shifted = nrtest::held<nrTransform>();
    shifted->setTranslation(0, 0, 5);
    shifted->getSphereBound(s);
    shifted->copy(plain);
    shifted->getSphereBound(s);
    EXPECT_EQ(s.center, nrVec3f(2, 0, 5)) << c.name;
    nrtest::unref(copy, t, holder, plain, shifted);
  }
}

TEST(nrTransform, PartsComposeInOrderAndComeBackFromAMatrix) {
  nrTransform* t = nrtest::held<nrTransform>();
  // -centre, scale, rotation, +centre, translation.
  t->setCenter(1, 0, 0);
  t->setScale(2, 1, 1);
  t->setRotation(0, 0, 1, halfPi);
  t->setTranslation(0, 0, 5);
  EXPECT_TRUE(mapped(t, nrVec3f(2, 0, 0)).almostEqual(nrVec3f(1, 2, 5), 1e-5f));
  // The scale orientation turns the scaled axis from x to y: (0, 1, 0) from
  // the centre doubles, then turns to (-2, 0, 0).
  t->setScaleOrientation(0, 0, 1, halfPi);
  EXPECT_TRUE(mapped(t, nrVec3f(1, 1, 0)).almostEqual(nrVec3f(-1, 0, 5), 1e-5f));

  // A matrix that rotates, scales unevenly, reflects and translates.
  nrMatrix4f m;
  m.makeRot(1, 2, 3, 0.7f);
  m.preScale(2, 3, -0.5f, m);
  m.preRot(0, 1, 0, 0.3f, m);
  m.postTrans(m, 4, 5, 6);
  t->setMatrix(m);
  EXPECT_EQ(t->getKind(), nrTransform::SCALE_KIND | nrTransform::MATRIX_KIND);
  float x, y, z;
  nrVec3f translation;
  nrRotation orientation;
  t->getTranslation(&x, &y, &z);
  t->getTranslation(translation);
  t->getScaleOrientation(orientation);
  EXPECT_EQ(std::pair(nrVec3f(x, y, z), translation), std::pair(nrVec3f(4, 5, 6), nrVec3f(4, 5, 6)));
  EXPECT_EQ(t->getCenter(), nrVec3f(0, 0, 0));
  EXPECT_TRUE(t->getScale().almostEqual(nrVec3f(3, 2, -0.5f), 1e-5f)) << "the reflection is the last scale";
  EXPECT_EQ(orientation, t->getScaleOrientation());
  nrMatrix4f back;
  t->getMatrix(back);
  EXPECT_EQ(back, m);
  nrTransform* parts = new nrTransform;
  parts->setTranslation(translation);
  parts->setRotation(t->getRotation());
  parts->setScale(t->getScale());
  parts->setScaleOrientation(orientation);
  parts->setCenter(t->getCenter());
  const nrTransform* readOnly = parts;
  EXPECT_TRUE(readOnly->getMatrix().almostEqual(m, 1e-5f)) << "the parts set as values rebuild the matrix";
  parts->unref();
  nrTransform* copy = static_cast<nrTransform*>(t->clone(nrContainer::COPY_CLONE));
  EXPECT_EQ(copy->getMatrix(), m) << "a copy takes the matrix as it was set";
  copy->unref();
  // Setting a part rebuilds the matrix from the derived parts: the same one.
  t->setCenter(0, 0, 0);
  EXPECT_TRUE(t->getMatrix().almostEqual(m, 1e-5f));
  EXPECT_EQ(t->getKind(), nrTransform::TRANSLATE_KIND | nrTransform::ROTATE_KIND | nrTransform::SCALE_KIND);

  // A scale followed by a rotation comes back as those parts, mirrors included.
  const struct {
    nrVec3f scale;
    float angle;
  } split[] = {{{2, 3, 4}, 0}, {{-1, 1, 1}, 0}, {{1, 1, -2}, 0}, {{2, 3, 4}, 0.5f}, {{1, 1, 1}, halfPi}};
  for (const auto& row : split) {
    nrMatrix4f scaled, turned;
    scaled.makeScale(row.scale[0], row.scale[1], row.scale[2]);
    turned.makeRot(0, 1, 0, row.angle);
    m.mult(scaled, turned);
    t->setMatrix(m);
    EXPECT_TRUE(t->getScale().almostEqual(row.scale, 1e-5f)) << row.scale[0] << " " << row.angle;
    EXPECT_NEAR(t->getRotation().angle, row.angle, 1e-5f);
    EXPECT_EQ(t->getScaleOrientation().angle, 0);
  }
  t->unref();
}
