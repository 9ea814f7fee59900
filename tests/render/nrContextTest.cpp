#include "nerio3d/render/nrContext.h"

#include <climits>
#include <tuple>

#include "nerio3d/fields/nrSField.h"
#include "nerio3d/render/_nrGfx.h"
#include "nerio3d/render/nrAppearance.h"
#include "nerio3d/render/nrFog.h"
#include "nerio3d/render/nrFrustumCamera.h"
#include "nerio3d/render/nrImage.h"
#include "nerio3d/render/nrLight.h"
#include "nerio3d/render/nrMaterial.h"
#include "nerio3d/geometry/nrOverrideGeoProp.h"
#include "nerio3d/render/nrPointLight.h"
#include "nerio3d/render/nrTexGen.h"
#include "nerio3d/render/nrTexture.h"
#include "nrCapture.h"
#include "nrRenderFixture.h"

namespace {

using nrtest::Calls;
using Context = nrtest::ContextTest;

const nrMatrix4f identity(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1);

TEST_F(Context, ShadowStartsAsOpenGLAndSettersReachItOnceButAlwaysRecord) {
  // Each OpenGL value as a fresh context holds it and after setAll below.
  const GLint states[][3] = {
      {GL_TEXTURE_2D, 0, 1}, {GL_LIGHTING, 0, 1}, {GL_BLEND, 0, 0}, {GL_FOG, 0, 1}, {GL_DEPTH_TEST, 0, 1},
      {GL_LINE_STIPPLE, 0, 0}, {GL_CULL_FACE, 0, 1}, {GL_COLOR_MATERIAL, 0, 1}, {GL_SHADE_MODEL, GL_SMOOTH, GL_FLAT},
      {GL_ALPHA_TEST, 1, 1}, {GL_ALPHA_TEST_FUNC, GL_ALWAYS, GL_ALWAYS}, {GL_BLEND_SRC, GL_ONE, GL_ONE}, {GL_BLEND_DST, GL_ZERO, GL_ZERO},
      {GL_DEPTH_FUNC, GL_LESS, GL_LEQUAL}, {GL_DEPTH_WRITEMASK, GL_TRUE, GL_FALSE}, {GL_POLYGON_MODE, GL_FILL, GL_LINE},
      {GL_LINE_STIPPLE_PATTERN, 0xFFFF, 0xFFFF}, {GL_LINE_STIPPLE_REPEAT, 1, 1}, {GL_CULL_FACE_MODE, GL_BACK, GL_FRONT},
      {GL_LINE_WIDTH, 1, 3}, {GL_POINT_SIZE, 1, 4}, {GL_MATRIX_MODE, GL_MODELVIEW, GL_MODELVIEW},
      {GL_COLOR_MATERIAL_PARAMETER, GL_AMBIENT_AND_DIFFUSE, GL_AMBIENT_AND_DIFFUSE}};
  auto texEnv = [] {
    GLint env = 0;
    nrgl::GetTexEnviv(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, &env);
    return env;
  };
  for (const GLint* st : states) EXPECT_EQ(getInt(st[0]), st[1]) << std::hex << st[0];
  EXPECT_EQ(texEnv(), GL_MODULATE);
  EXPECT_TRUE(context->getGlobalState().mask.isZero());
  EXPECT_EQ(context->getColorMode(), nrContext::RGBA_CMODE);
  {
    // Every element at its default, applied explicitly: the shadow already holds it all.
    nrAppearance* defaults = nrtest::held<nrAppearance>();
    defaults->setInherit(nrBitMask());
    nrGLRecorder rec;
    defaults->draw(nullptr);
    EXPECT_EQ(rec.calls(), Calls{});
    defaults->unref();
  }

  nrMatrix4f scale;
  scale.makeScale(2, 3, 4);
  auto setAll = [&] {
    context->setTexEnable(1);
    context->setTexMode(nrContext::NICE_TEX);
    context->setTexBlendColor(nrVec4f(0.25f, 0.5f, 0.75f, 1));
    context->setTexEnv(nrContext::ADD_TENV);
    context->setLightEnable(1);
    context->setShadeModel(nrContext::FLAT_SHADE);
    context->setBlendColor(nrVec4f(1, 0, 0, 1));
    context->setColorMask(nrVec4ub(255, 0, 255, 0));
    context->setDepthEnable(1);
    context->setDepthFunc(nrContext::LEQUAL_DFUNC);
    context->setDepthMask(0);
    context->setFogEnable(1);
    context->setPolyMode(nrContext::LINE_PMODE);
    context->setCullFace(nrContext::FRONT_CULL);
    context->setLineWidth(3);
    context->setPointSize(4);
    context->setTexTransform(scale);
    context->setMaterialModeEnable(nrContext::COLOR_MATERIAL);
  };
  setAll();
  for (const GLint* st : states) EXPECT_EQ(getInt(st[0]), st[2]) << std::hex << st[0];
  EXPECT_EQ(texEnv(), GL_ADD);
  GLfloat color[4];
  nrgl::GetTexEnvfv(GL_TEXTURE_ENV, GL_TEXTURE_ENV_COLOR, color);
  EXPECT_EQ(color[1], 0.5f);
  GLboolean mask[4];
  nrgl::GetBooleanv(GL_COLOR_WRITEMASK, mask);
  EXPECT_EQ(mask[0] + 2 * mask[1] + 4 * mask[2] + 8 * mask[3], 5);
  GLfloat m[16];
  nrgl::GetFloatv(GL_TEXTURE_MATRIX, m);
  EXPECT_EQ(m[5], 3);

  const nrBitMask recorded = context->getGlobalState().mask;
  nrGLRecorder rec;
  setAll();
  context->setTexMode(nrContext::PERSP_TEX);
  context->setBlendColor(nrVec4f(0, 1, 0, 1));
  EXPECT_EQ(rec.calls(), Calls{}) << "equal values and cached-only elements issue nothing";
  EXPECT_EQ(recorded.getBits(), 0xEC9F219Eull);

  context->setCullFace(nrContext::NO_CULL);
  context->setMaterialModeEnable(nrContext::NO_COLOR_MATERIAL);
  context->setNormalizeEnable(1);
  context->setNormalizeEnable(1);
  context->setLocalViewer(1);
  context->setLocalViewer(1);
  EXPECT_EQ(rec.calls(), (Calls{"glDisable(GL_CULL_FACE)", "glDisable(GL_COLOR_MATERIAL)", "glEnable(GL_NORMALIZE)",
                                "glLightModeli(GL_LIGHT_MODEL_LOCAL_VIEWER, 1)"}));
}

TEST_F(Context, BlendFollowsTheFactorsAndTheTransparencyMode) {
  nrGLRecorder rec;
  context->setSrcBlendFunc(nrContext::SRC_ALPHA_SBLEND);
  context->setDstBlendFunc(nrContext::ONE_MINUS_SRC_ALPHA_DBLEND);
  context->setSrcBlendFunc(nrContext::ONE_SBLEND);
  context->setDstBlendFunc(nrContext::ZERO_DBLEND);
  EXPECT_EQ(rec.calls(), (Calls{"glEnable(GL_BLEND)", "glBlendFunc(GL_SRC_ALPHA, GL_ZERO)",
                                "glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA)",
                                "glBlendFunc(GL_ONE, GL_ONE_MINUS_SRC_ALPHA)", "glDisable(GL_BLEND)",
                                "glBlendFunc(GL_ONE, GL_ZERO)"}));

  auto blendAndStipple = [] { return std::make_pair(isOn(GL_BLEND), isOn(GL_POLYGON_STIPPLE)); };
  context->setTranspEnable(1);
  EXPECT_TRUE(isOn(GL_BLEND));
  EXPECT_EQ(std::make_pair(getInt(GL_BLEND_SRC), getInt(GL_BLEND_DST)),
            std::make_pair(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA));
  EXPECT_EQ(context->getGlobalState().srcBlendFunc, nrContext::SRC_ALPHA_SBLEND);
  context->setTranspMode(nrContext::SCREEN_DOOR_TRANSP);
  EXPECT_EQ(blendAndStipple(), std::make_pair(false, true));
  context->setTranspMode(nrContext::NICE_TRANSP);
  EXPECT_EQ(blendAndStipple(), std::make_pair(true, false));
  context->setTranspEnable(0);
  EXPECT_EQ(std::make_pair(isOn(GL_BLEND), getInt(GL_BLEND_SRC)), std::make_pair(false, GL_ONE));

  context->setTranspMode(nrContext::FAST_TRANSP);
  EXPECT_FALSE(isOn(GL_POLYGON_STIPPLE)) << "a mode change while off changes nothing";
  context->setTranspEnable(1);
  EXPECT_TRUE(isOn(GL_POLYGON_STIPPLE));
  context->setTranspEnable(0);
  EXPECT_FALSE(isOn(GL_POLYGON_STIPPLE));
}

TEST_F(Context, AlwaysAlphaFunctionKeepsTheTestOnAndAllOnesStippleSilencesTheFactor) {
  context->setAlphaFunc(nrContext::GREATER_AFUNC);
  EXPECT_TRUE(isOn(GL_ALPHA_TEST));
  nrGLRecorder rec;
  context->setAlphaRef(0.5f);
  context->setAlphaFunc(nrContext::ALWAYS_AFUNC);
  context->setLineStipplePattern(0xF0F0);
  context->setLineStippleFactor(3);
  context->setLineStipplePattern(0xFFFF);
  context->setLineStippleFactor(5);
  EXPECT_EQ(rec.calls(), (Calls{"glAlphaFunc(GL_GREATER, 0.5)", "glEnable(GL_ALPHA_TEST)",
                                "glAlphaFunc(GL_ALWAYS, 0.5)", "glEnable(GL_LINE_STIPPLE)",
                                "glLineStipple(1, 0xf0f0)", "glLineStipple(3, 0xf0f0)",
                                "glDisable(GL_LINE_STIPPLE)"}));
  context->setLineStipplePattern(0x10FF0F);
  EXPECT_TRUE(isOn(GL_LINE_STIPPLE));
  EXPECT_EQ(std::make_pair(getInt(GL_LINE_STIPPLE_PATTERN), getInt(GL_LINE_STIPPLE_REPEAT)), std::make_pair(0xFF0F, 5))
      << "only the low 16 bits reach OpenGL";
}

TEST_F(Context, OverridesForceTheirElementsPopsResendAndStacksHoldSixteen) {
  nrOverrideGeoProp* prop = nrtest::held<nrOverrideGeoProp>();
  prop->setCullFace(nrContext::FRONT_CULL);
  prop->setPointSize(9);
  prop->setLineWidth(5);
  nrBitMask lineOnly;
  lineOnly.setBit(30);
  prop->setOverride(lineOnly);
  context->setLineWidth(2);
  context->setCullFace(nrContext::BACK_CULL);
  context->pushOverrideGeoProp(prop);

  nrGLRecorder rec;
  context->setLineWidth(2);
  context->setPointSize(3);
  context->setCullFace(nrContext::BACK_CULL);
  EXPECT_EQ(rec.calls(), (Calls{"glLineWidth(5)", "glPointSize(3)"}));
  EXPECT_EQ(context->getGlobalState().lineWidth, 2) << "the requested value is still recorded";

  rec.clear();
  context->popOverrideGeoProp();
  context->setLineWidth(2);
  context->setPointSize(3);
  context->setCullFace(nrContext::BACK_CULL);
  context->setLineWidth(2);
  EXPECT_EQ(rec.calls(),
            (Calls{"glLineWidth(2)", "glPointSize(3)", "glEnable(GL_CULL_FACE)", "glCullFace(GL_BACK)"}));

  nrAppearance* app = nrtest::held<nrAppearance>();
  for (int i = 0; i < 16; ++i) {
    context->pushOverrideAppearance(app);
    context->pushOverrideGeoProp(prop);
  }
  EXPECT_EQ(nrtest::captureStderr([&] { context->pushOverrideAppearance(nullptr); }),
            "overflow in nrContext override appearance stack\n");
  EXPECT_EQ(nrtest::captureStderr([&] { context->pushOverrideGeoProp(nullptr); }),
            "overflow in nrContext override geometry property stack\n");
  for (int i = 0; i < 16; ++i) {
    EXPECT_EQ(context->popOverrideAppearance(), app);
    EXPECT_EQ(context->popOverrideGeoProp(), prop);
  }
  EXPECT_EQ(nrtest::captureStderr([&] { EXPECT_EQ(context->popOverrideAppearance(), nullptr); }),
            "underflow in nrContext override appearance stack\n");
  EXPECT_EQ(nrtest::captureStderr([&] { EXPECT_EQ(context->popOverrideGeoProp(), nullptr); }),
            "underflow in nrContext override geometry property stack\n");
  // The values a pop leaves unknown are not restored by the next state pop.
  EXPECT_EQ(nrtest::captureStderr([&] {
              context->pushState();
              context->setCullFace(nrContext::FRONT_CULL);
              context->setLineWidth(4);
              context->popState();
            }),
            "");
  EXPECT_EQ(nrgl::GetError(), GLenum(GL_NO_ERROR));
  nrtest::unref(app, prop);
}

TEST_F(Context, ValuesOutsideAnEnumerationAreRefusedAndNullsIgnored) {
  std::string err = nrtest::captureStderr([&] {
    context->setPolyMode(nrContext::PolyModeEnum(3));
    context->setTexEnv(nrContext::TexEnvEnum(7));
    context->setSrcBlendFunc(nrContext::SrcBlendFuncEnum(15));
    context->setCullFace(nrContext::CullFaceEnum(-7));
    context->setLineWidth(0);
    context->setPointSize(-2.5f);
  });
  EXPECT_EQ(err,
            "nrContext::setPolyMode() - value 3 out of range\n"
            "nrContext::setTexEnv() - value 7 out of range\n"
            "nrContext::setSrcBlendFunc() - value 15 out of range\n"
            "nrContext::setCullFace() - value -7 out of range\n"
            "nrContext::setLineWidth() - value 0 out of range\n"
            "nrContext::setPointSize() - value -2.5 out of range\n");
  EXPECT_EQ(nrgl::GetError(), GLenum(GL_NO_ERROR));
  EXPECT_EQ(std::make_tuple(getInt(GL_POLYGON_MODE), isOn(GL_BLEND), isOn(GL_CULL_FACE)),
            std::make_tuple(GL_FILL, false, false));

  nrFog* fog = nrtest::held<nrFog>();
  nrPointLight* light = nrtest::held<nrPointLight>();
  fog->draw(nullptr);
  fog->pop(nullptr, nullptr);
  light->draw(nullptr);
  nrFrustumCamera* camera = nrtest::held<nrFrustumCamera>();
  camera->setFrustum(nullptr);
  camera->copy(nullptr);
  nrImage* image = nrtest::held<nrImage>();
  image->copy(nullptr);
  int same = 0;
  EXPECT_EQ(context->getLightTarget(nullptr, nrMatrix4f(), same), -1);
  // Any mode other than 0 turns colour material on.
  context->setMaterialModeEnable(2);
  EXPECT_TRUE(isOn(GL_COLOR_MATERIAL));
  nrtest::unref(image, camera, light, fog);

  // The same from an appearance's fields, as a file gives them.
  nrAppearance* app = nrtest::held<nrAppearance>();
  for (int f : {nrAppearance::TEX_MODE, nrAppearance::SHADE_MODEL, nrAppearance::TRANSP_MODE})
    static_cast<nrSFEnum*>(app->getField(f))->set(99);
  err = nrtest::captureStderr([&] { context->drawApp(app, 1); });
  EXPECT_EQ(err,
            "nrContext::setTexMode() - value 99 out of range\n"
            "nrContext::setShadeModel() - value 99 out of range\n"
            "nrContext::setTranspMode() - value 99 out of range\n");
  EXPECT_EQ(std::make_tuple(context->getShadowState().texMode, getInt(GL_SHADE_MODEL)),
            std::make_tuple(nrContext::FAST_TEX, GL_SMOOTH));
  context->drawApp(nullptr, 1);
  app->unref();
}

TEST_F(Context, SharedIdsAreReusedAndTrackedPerContextUntilItIsDestroyed) {
  int base = nrContext::newId(3);
  EXPECT_EQ(nrContext::newId(3), base + 3);
  nrContext::freeId(5, 1);
  EXPECT_EQ(nrContext::newId(3), base + 6) << "a block ignores the free list";
  EXPECT_EQ(nrContext::newId(1), 5);
  EXPECT_EQ(nrContext::newId(1), base + 9);

  const int dirty[][3] = {{40, 1, 1},   {40, 1, 0},   {40, 0, 0}, {40, 2, 1},
                          {5000, 1, 1}, {5000, 1, 0}, {-1, 1, 1}, {-1, 1, 1}};
  for (const int* d : dirty) EXPECT_EQ(context->isDirty(d[0], d[1]), d[2]) << "id " << d[0] << " version " << d[1];

  nrContext* other = new nrContext(drawable);
  other->ref();
  EXPECT_EQ(other->isDirty(40, 2), 1);
  nrContext::freeId(40, 1);
  EXPECT_EQ(context->isDirty(40, 2), 1) << "freeing forgets the id in every context";
  EXPECT_EQ(other->isDirty(40, 2), 1);
  EXPECT_EQ(nrContext::newId(1), 40);
  // Asking for no ids takes none, and a range running past the largest id
  // frees nothing: neither turns the counter back to ids in use.
  int next = nrContext::newId(0);
  EXPECT_EQ(nrContext::newId(-5), next);
  nrContext::freeId(INT_MAX, 2);
  EXPECT_EQ(nrContext::newId(1), next);
  other->makeCurrent(drawable);
  other->unref();
  EXPECT_EQ(nrContext::getCurrent(), nullptr) << "a destroyed context leaves the thread";
  nrContext::freeId(nrContext::newId(1), 1);
}

TEST_F(Context, MakeCurrentBindsOnceReleaseLeavesNoContextAndClearTakesTheColour) {
  EXPECT_EQ(nrContext::getCurrent(), context);
  int x, y, w, h;
  context->getViewport(x, y, w, h);
  EXPECT_EQ(std::make_pair(w, h), std::make_pair(64, 64));

  nrGLRecorder rec;
  context->makeCurrent(drawable);
  context->setViewport(0, 0, 64, 64);
  context->setViewport(0, 0, 32, 16);
  EXPECT_EQ(rec.calls(), Calls{"glViewport(0, 0, 32, 16)"});

  nrContext* other = new nrContext(drawable);
  other->ref();
  rec.clear();
  other->makeCurrent(drawable);
  EXPECT_EQ(nrContext::getCurrent(), other);
  EXPECT_EQ(rec.calls(), (Calls{"glGetIntegerv(GL_VIEWPORT, ptr)", "glColor4f(1, 1, 1, 1)", "glEnable(GL_ALPHA_TEST)",
                                "glAlphaFunc(GL_ALWAYS, 0)", "glLightModelfv(GL_LIGHT_MODEL_AMBIENT, {0, 0, 0, 1})"}));
  rec.clear();
  context->makeCurrent(drawable);
  EXPECT_EQ(rec.calls(), Calls{"glLightModelfv(GL_LIGHT_MODEL_AMBIENT, {0, 0, 0, 1})"});
  other->unref();
  EXPECT_EQ(nrContext::getCurrent(), context);

  nrContext::releaseCurrent();
  EXPECT_EQ(nrContext::getCurrent(), nullptr);
  rec.clear();
  context->makeCurrent(drawable);
  EXPECT_EQ(nrContext::getCurrent(), context);
  context->clear(nrContext::COLOR_CLEAR | nrContext::DEPTH_CLEAR, 1, 0, 0, 1);
  context->clear(nrContext::COLOR_CLEAR);
  EXPECT_EQ(rec.calls(), (Calls{"glLightModelfv(GL_LIGHT_MODEL_AMBIENT, {0, 0, 0, 1})", "glClearColor(1, 0, 0, 1)",
                                "glClearDepth(1)", "glClear(GL_COLOR_BUFFER_BIT|GL_DEPTH_BUFFER_BIT)",
                                "glClearColor(0, 0, 0, 1)", "glClear(GL_COLOR_BUFFER_BIT)"}));
}

// Records which hooks the context called.
struct tstTexture : nrTexture {
  void draw(nrContext*) override { ++draws; }
  int draws = 0;
};
struct tstMaterial : nrMaterial {
  void draw(FaceEnum face, nrContext*) override { faces += face == BACK_FACE ? 'B' : 'F'; }
  std::string faces;
};

TEST_F(Context, TextureGeneratorAndMaterialHooksRunOnChangeOnly) {
  tstTexture* texture = nrtest::held<tstTexture>();
  context->setTexture(texture);
  context->setTexture(texture);
  EXPECT_EQ(texture->draws, 1);

  nrTexGen* texGen = nrtest::held<nrTexGen>();
  texGen->setModeS(nrTexGen::SPHERE_MAP);
  texGen->setModeQ(nrTexGen::OBJECT_LINEAR);
  context->setTexGen(texGen);
  auto generated = [] {
    return isOn(GL_TEXTURE_GEN_S) | isOn(GL_TEXTURE_GEN_T) << 1 | isOn(GL_TEXTURE_GEN_R) << 2 |
           isOn(GL_TEXTURE_GEN_Q) << 3;
  };
  context->setTexGenEnable(1);
  EXPECT_EQ(generated(), 0b1001) << "S and Q";
  context->setTexGenEnable(0);
  EXPECT_EQ(generated(), 0);

  tstMaterial* front = nrtest::held<tstMaterial>();
  tstMaterial* back = nrtest::held<tstMaterial>();
  nrGLRecorder rec;
  context->setMaterial(front);
  context->setBackMaterial(back);
  context->setMaterialModeEnable(nrContext::COLOR_MATERIAL);
  context->setMaterialModeEnable(nrContext::NO_COLOR_MATERIAL);
  context->setBackMaterial(nullptr);
  EXPECT_EQ(std::make_pair(front->faces, back->faces), std::make_pair(std::string("FF"), std::string("BB")))
      << "switching colour tracking off re-sends the materials";
  EXPECT_EQ(rec.calls(),
            (Calls{"glLightModeli(GL_LIGHT_MODEL_TWO_SIDE, 1)", "glEnable(GL_COLOR_MATERIAL)",
                   "glColorMaterial(GL_FRONT_AND_BACK, GL_AMBIENT_AND_DIFFUSE)", "glDisable(GL_COLOR_MATERIAL)",
                   "glLightModeli(GL_LIGHT_MODEL_TWO_SIDE, 0)"}));
  nrtest::unref(texture, texGen, front, back);
}

// Objects released while the context still points at them: records forget
// them, override stacks keep them until popped, a null drawable is ignored.
TEST_F(Context, ObjectsReleasedWhileHeldAreForgottenOrKeptAlive) {
  nrMaterial* material = nrtest::held<nrMaterial>();
  nrTexture* texture = nrtest::held<nrTexture>();
  nrTexGen* texGen = nrtest::held<nrTexGen>();
  context->setMaterial(material);
  context->setBackMaterial(material);
  context->setTexture(texture);
  context->setTexGen(texGen);
  context->pushState();
  context->setMaterial(nullptr);
  context->setTexture(nullptr);
  nrtest::unref(material, texture, texGen);
  context->setTexGenEnable(1);
  context->setMaterialModeEnable(nrContext::COLOR_MATERIAL);
  context->setMaterialModeEnable(nrContext::NO_COLOR_MATERIAL);
  context->popState();
  EXPECT_EQ(context->getGlobalState().material, nullptr);
  EXPECT_EQ(context->getShadowState().texGen, nullptr);

  nrOverrideGeoProp* prop = nrtest::held<nrOverrideGeoProp>();
  prop->setLineWidth(5);
  nrAppearance* over = nrtest::held<nrAppearance>();
  context->pushOverrideGeoProp(prop);
  context->pushOverrideAppearance(over);
  nrtest::unref(prop, over);
  nrGLRecorder rec;
  context->setLineWidth(2);
  context->drawApp(nullptr, 1);
  EXPECT_EQ(rec.calls(), Calls{"glLineWidth(5)"});
  delete context->popOverrideAppearance();
  delete context->popOverrideGeoProp();

  nrContext* other = new nrContext(drawable);
  other->ref();
  other->pushOverrideAppearance(new nrAppearance);
  other->pushOverrideGeoProp(new nrOverrideGeoProp);
  other->makeCurrent(static_cast<nrDrawable*>(nullptr));
  EXPECT_EQ(nrContext::getCurrent(), context);
  other->unref();
}

// A light whose restores are visible.
struct tstLight : nrLight {
  tstLight() : nrLight(getClassType()) {}
  void define(int) override {}
  void pop(int slot, const nrMatrix4f& matrix) override {
    pops.push_back(slot);
    lastMatrix = matrix;
  }
  std::vector<int> pops;
  nrMatrix4f lastMatrix;
};

// Ten lights the test holds.
class Lights : public Context {
 protected:
  void SetUp() override {
    Context::SetUp();
    for (tstLight*& light : l) light = nrtest::held<tstLight>();
  }
  void TearDown() override {
    for (tstLight* light : l) light->unref();
    Context::TearDown();
  }
  tstLight* l[10];
};

TEST_F(Lights, TakeTheHighestFreeSlotAndReportUnchangedPlacement) {
  nrMatrix4f moved;
  moved.makeTrans(1, 0, 0);
  int same = 0;
  // The slot and what sameIndex said.
  auto target = [&](nrLight* light, const nrMatrix4f& matrix) {
    int slot = context->getLightTarget(light, matrix, same);
    return std::make_pair(slot, same);
  };
  nrGLRecorder rec;
  EXPECT_EQ(target(l[0], identity), std::make_pair(7, -1));
  EXPECT_EQ(target(l[0], identity), std::make_pair(7, 7));
  EXPECT_EQ(target(l[0], moved), std::make_pair(7, -1));
  l[0]->setOn(0);
  EXPECT_EQ(target(l[0], moved), std::make_pair(7, -1)) << "a change of on is a change";
  EXPECT_EQ(rec.calls(), (Calls{"glEnable(GL_LIGHT7)", "glDisable(GL_LIGHT7)"}));
  EXPECT_EQ(l[0]->getRefCount(), 2);

  for (int i = 1; i < 8; ++i) EXPECT_EQ(target(l[i], identity).first, 7 - i);
  EXPECT_EQ(context->getLight(0), l[7]);
  EXPECT_EQ(context->getLight(8), nullptr);
  EXPECT_EQ(target(l[8], identity).first, 7) << "the disabled slot is reused";
  EXPECT_EQ(l[0]->getRefCount(), 1);
  EXPECT_EQ(target(l[9], identity), std::make_pair(-1, -1)) << "no slot is free";

  nrContext::disableLight(l[3]);
  EXPECT_EQ(std::make_pair(isOn(GL_LIGHT4), isOn(GL_LIGHT5)), std::make_pair(false, true));
  context->disableLightTargets();
  for (int i = 0; i < 8; ++i) EXPECT_FALSE(isOn(GL_LIGHT0 + i));
}

TEST_F(Lights, PoppingDisablesNewcomersAndRestoresTheLevelBelow) {
  nrMatrix4f placed;
  placed.makeTrans(0, 2, 0);
  int same;
  context->getLightTarget(l[0], placed, same);
  context->pushLights();
  EXPECT_EQ(l[0]->getRefCount(), 3);
  EXPECT_EQ(context->getLightTarget(l[1], identity, same), 6);
  l[2]->setOn(0);
  EXPECT_EQ(context->getLightTarget(l[2], identity, same), 5);
  context->getLightTarget(l[0], identity, same);
  nrGLRecorder rec;
  context->popLights();
  EXPECT_EQ(rec.calls(), (Calls{"glDisable(GL_LIGHT5)", "glDisable(GL_LIGHT6)"})) << "switched off or not";
  EXPECT_EQ(l[0]->pops, std::vector<int>{7});
  EXPECT_TRUE(l[0]->lastMatrix == placed);
  EXPECT_TRUE(l[1]->pops.empty());
  EXPECT_EQ(l[0]->getRefCount(), 2);
  EXPECT_EQ(context->getLight(6), nullptr);
  same = 0;
  EXPECT_EQ(context->getLightTarget(l[0], placed, &same), 7);
  EXPECT_EQ(same, 7);
  EXPECT_EQ(context->getLightTarget(l[0], placed, nullptr), 7);

  l[0]->setOn(0);
  context->pushLights();
  context->getLightTarget(l[0], placed, same);
  l[0]->setOn(1);
  context->popLights();
  EXPECT_EQ(l[0]->pops, (std::vector<int>{7, 7}));
  EXPECT_TRUE(isOn(GL_LIGHT7)) << "switched on again, as the level below has it";
  context->pushLights();
  context->disableLightTargets();
  context->popLights();
  EXPECT_TRUE(isOn(GL_LIGHT7));

  // A light that took the slot of one switched off above leaves it restored below.
  context->pushLights();
  context->disableLightTargets();
  for (int i = 1; i < 9; ++i) context->getLightTarget(l[i], identity, same);
  EXPECT_EQ(context->getLight(7), l[8]);
  context->popLights();
  EXPECT_EQ(context->getLight(7), l[0]);
  EXPECT_EQ(std::make_pair(isOn(GL_LIGHT7), isOn(GL_LIGHT0)), std::make_pair(true, false));
  EXPECT_EQ(l[0]->pops, (std::vector<int>{7, 7, 7, 7}));
  EXPECT_TRUE(l[0]->lastMatrix == placed);
}

// A fog whose stack hooks are visible.
struct tstFog : nrFog {
  explicit tstFog(unsigned char on) { this->on = on; }
  void push(nrContext*) override { events += "push "; }
  void pop(nrFog* dropped, nrContext*) override { events += dropped == this ? "pop-self " : "pop "; }
  std::string events;
};

TEST_F(Context, FogEnableFollowsTheTopFogOnceTwoArePushed) {
  tstFog *off = new tstFog(0), *on = new tstFog(1);
  off->ref();
  on->ref();
  EXPECT_EQ(context->syncFogState(on), 0) << "fog is off for the application";
  EXPECT_FALSE(isOn(GL_FOG));
  context->setFogEnable(1);
  context->pushFog(off);
  context->setFogEnable(0);
  context->setFogEnable(1);
  EXPECT_TRUE(isOn(GL_FOG)) << "a single pushed fog does not decide";
  context->pushFog(on);
  context->pushFog(nullptr);
  context->setFogEnable(0);
  context->setFogEnable(1);
  EXPECT_TRUE(isOn(GL_FOG));
  context->pushFog(off);
  context->setFogEnable(1);
  EXPECT_FALSE(isOn(GL_FOG)) << "forced off by the fog on top";
  EXPECT_EQ(context->getGlobalState().fogEnable, 1);
  EXPECT_EQ(std::make_pair(off->getRefCount(), on->getRefCount()), std::make_pair(3, 3));
  context->popFog();
  EXPECT_EQ(context->syncFogState(on), 1);
  EXPECT_TRUE(isOn(GL_FOG));
  for (int i = 0; i < 4; ++i) context->popFog();
  EXPECT_EQ(on->events, "push push pop pop-self ");
  EXPECT_EQ(off->events, "push push pop ");
  EXPECT_EQ(std::make_pair(off->getRefCount(), on->getRefCount()), std::make_pair(1, 1));
  nrtest::unref(off, on);
}

TEST_F(Context, PopStateRestoresTheLevelBelowAndKeepsTheShadowTrue) {
  nrAppearance* app = nrtest::held<nrAppearance>();
  app->setLightEnable(1);
  app->setPolyMode(nrContext::LINE_PMODE);
  context->setPolyMode(nrContext::POINT_PMODE);
  context->pushState();
  context->drawApp(app, 0);
  EXPECT_TRUE(isOn(GL_LIGHTING));
  nrGLRecorder rec;
  context->popState();
  EXPECT_EQ(rec.calls(), (Calls{"glDisable(GL_LIGHTING)", "glPolygonMode(GL_FRONT_AND_BACK, GL_POINT)"}));
  rec.clear();
  context->drawApp(app, 0);
  EXPECT_EQ(rec.calls(), (Calls{"glEnable(GL_LIGHTING)", "glPolygonMode(GL_FRONT_AND_BACK, GL_LINE)"}))
      << "a pop makes the next appearance apply again";

  context->pushState();
  context->setLineWidth(6);
  context->popState();
  rec.clear();
  context->setLineWidth(6);
  EXPECT_EQ(rec.calls(), Calls{});
  EXPECT_EQ(getFloat(GL_LINE_WIDTH), 6) << "state the application set inside the level stays";

  // Two levels deep the base fog (off) is on top of the fog stack; leaving the
  // inner level restores fog by the level below, where nothing forces it off.
  context->setFogEnable(1);
  context->pushState();
  context->pushState();
  context->popState();
  EXPECT_TRUE(isOn(GL_FOG));
  context->popState();
  context->setFogEnable(0);

  // An appearance applied inside a level undoes the one applied below it; after
  // the pop the one below is in effect again, and the next level undoes it again.
  nrAppearance* plain = nrtest::held<nrAppearance>();
  plain->setShadeModel(nrContext::SMOOTH_SHADE);
  context->drawApp(app, 0);
  for (int frame = 0; frame < 2; ++frame) {
    context->pushState();
    context->drawApp(plain, 0);
    EXPECT_FALSE(isOn(GL_LIGHTING)) << "frame " << frame;
    context->popState();
    EXPECT_TRUE(isOn(GL_LIGHTING));
  }
  context->drawApp(nullptr, 1);
  EXPECT_EQ(std::make_pair(isOn(GL_LIGHTING), getInt(GL_POLYGON_MODE)), std::make_pair(false, GL_POINT));
  plain->unref();

  for (int i = 0; i < 20; ++i) context->pushState();
  context->setShadeModel(nrContext::FLAT_SHADE);
  for (int i = 0; i < 20; ++i) context->popState();
  context->drawApp(nullptr, 1);
  EXPECT_FALSE(isOn(GL_LIGHTING));
  EXPECT_EQ(std::make_pair(getInt(GL_POLYGON_MODE), getInt(GL_SHADE_MODEL)), std::make_pair(GL_POINT, GL_FLAT));
  app->unref();
}

TEST_F(Context, OverrideAppearanceWinsWhereItSetsAndAppearancesFillTheRest) {
  nrAppearance* app = nrtest::held<nrAppearance>();
  app->setLightEnable(1);
  app->setShadeModel(nrContext::FLAT_SHADE);
  nrAppearance* over = nrtest::held<nrAppearance>();
  over->setLightEnable(0);
  over->setPolyMode(nrContext::LINE_PMODE);

  nrGLRecorder rec;
  context->pushOverrideAppearance(over);
  context->drawApp(app, 0);
  EXPECT_EQ(rec.calls(), (Calls{"glShadeModel(GL_FLAT)", "glPolygonMode(GL_FRONT_AND_BACK, GL_LINE)"}));
  rec.clear();
  context->drawApp(app, 0);
  context->drawApp(over, 0);
  EXPECT_EQ(rec.calls(), (Calls{"glShadeModel(GL_SMOOTH)"}));

  rec.clear();
  context->popOverrideAppearance();
  context->drawApp(app, 0);
  EXPECT_EQ(rec.calls(), (Calls{"glPolygonMode(GL_FRONT_AND_BACK, GL_FILL)", "glEnable(GL_LIGHTING)",
                                "glShadeModel(GL_FLAT)"}));
  rec.clear();
  context->drawApp(app, 0);
  EXPECT_EQ(rec.calls(), Calls{});
  context->drawApp(nullptr, 1);
  EXPECT_EQ(rec.calls(), (Calls{"glDisable(GL_LIGHTING)", "glShadeModel(GL_SMOOTH)"}));
  nrtest::unref(app, over);
}

TEST(nrContextSound, EveryAttemptReportsTheMissingAudioPort) {
  std::string text = nrtest::captureStderr([] {
    nrContext::initSound();
    nrContext::initSound();
  });
  EXPECT_EQ(text, "Warning - Failed to open AudioPort for Audio Resource\n"
                  "Warning - Failed to open AudioPort for Audio Resource\n");
  EXPECT_TRUE(nrContext::isSoundInitialized());
}

}  // namespace
