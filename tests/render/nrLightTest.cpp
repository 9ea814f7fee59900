#include <functional>

#include "nerio3d/actions/nrDrawAction.h"
#include "nerio3d/fields/nrFieldInfo.h"
#include "nerio3d/fields/nrSFRef.h"
#include "nerio3d/render/nrDirectionalLight.h"
#include "nerio3d/render/nrEnvironment.h"
#include "nerio3d/render/nrFog.h"
#include "nerio3d/render/nrLight.h"
#include "nerio3d/render/nrPerspCamera.h"
#include "nerio3d/render/nrPointLight.h"
#include "nerio3d/render/nrSpotLight.h"
#include "nrCapture.h"
#include "nrRenderFixture.h"

namespace {

using nrtest::Calls;

// A leaf that runs a probe when it is drawn.
struct tstProbe : nrNode {
  explicit tstProbe(std::function<void()> probe) : probe(std::move(probe)) {}
  nrTravDirective drawVisit(nrDrawAction*) override {
    probe();
    return CONTINUE_TRAV;
  }
  std::function<void()> probe;
};

// A draw action on the test's context, and nodes the test holds.
class Light : public nrtest::ContextTest {
 protected:
  void SetUp() override {
    ContextTest::SetUp();
    action.setContext(context);
  }
  template <typename T>
  T* hold(T* node) {
    node->ref();
    held.push_back(node);
    return node;
  }
  void TearDown() override {
    for (nrNode* node : held) node->unref();
    ContextTest::TearDown();
  }

  nrDrawAction action;
  std::vector<nrNode*> held;
};

// The parameter names of the glLightfv calls, in order.
Calls lightParameters(const Calls& calls) {
  Calls names;
  for (const std::string& call : nrtest::callsStarting(calls, "glLightfv(")) {
    size_t start = call.find(", ") + 2;
    names.push_back(call.substr(start, call.find(',', start) - start));
  }
  return names;
}

TEST(nrLightFields, SitAtTheirIndicesUnderTheirNames) {
  const std::pair<nrType*, std::vector<const char*>> types[] = {
      {nrDirectionalLight::getClassType(), {"on", "intensity", "ambientIntensity", "color", "direction"}},
      {nrSpotLight::getClassType(),
       {"on", "intensity", "ambientIntensity", "color", "location", "radius", "attenuation", "direction", "exponent",
        "cutOffAngle"}},
      {nrFog::getClassType(), {"on", "mode", "density", "start", "end", "index", "color"}},
      {nrEnvironment::getClassType(), {"children", "light", "fog"}}};
  for (const auto& [type, names] : types)
    for (size_t i = 0; i < names.size(); ++i)
      EXPECT_STREQ(type->getFieldInfo(static_cast<int>(i) + 2)->getName().getString(), names[i]) << type->getName();
  EXPECT_EQ(nrSpotLight().getCutOffAngle(), 180);
  EXPECT_EQ(nrFog().getMode(), nrFog::EXP_FOG);

  nrEnvironment* env = nrtest::held<nrEnvironment>();
  EXPECT_EQ(nrtest::captureStderr([&] { static_cast<nrSFRef*>(env->getField("fog"))->set(new nrGroup); }),
            "nrEnvironment: Group is not a Fog; no fog is kept\n");
  EXPECT_EQ(env->getFog(), nullptr);
  env->unref();
}

TEST(nrLightFields, GettersReadWhatConnectionsBring) {
  nrSpotLight *from = nrtest::held<nrSpotLight>(), *to = nrtest::held<nrSpotLight>();
  nrFog *fogFrom = nrtest::held<nrFog>(), *fogTo = nrtest::held<nrFog>();
  for (short i = nrLight::ON_FIELD; i <= nrSpotLight::CUT_OFF_ANGLE_FIELD; ++i) from->connect(i, to, i);
  fogFrom->connect(nrFog::COLOR_FIELD, fogTo, nrFog::COLOR_FIELD);
  from->setOn(0);
  from->setColor(1, 0, 0);
  from->setLocation(1, 2, 3);
  from->setCutOffAngle(30);
  fogFrom->setColor(0.5f, 0.5f, 0.5f, 1);
  float r, g, b, a;
  to->getColor(&r, &g, &b);
  EXPECT_EQ(std::make_tuple(to->getOn(), r, g, b), std::make_tuple(0, 1.0f, 0.0f, 0.0f));
  EXPECT_EQ(to->getLocation(), nrVec3f(1, 2, 3));
  EXPECT_EQ(to->getCutOffAngle(), 30);
  fogTo->getColor(&r, &g, &b, &a);
  EXPECT_EQ(a, 1);
  // Read through const objects as well.
  const nrSpotLight* seen = to;
  const nrFog* seenFog = fogTo;
  EXPECT_EQ(std::make_tuple(seen->getOn(), seen->getCutOffAngle(), seenFog->getColor()[3]),
            std::make_tuple(0, 30.0f, 1.0f));
  nrtest::unref(from, to, fogFrom, fogTo);
}

TEST_F(Light, DefineLoadsTheParametersInOrderOnlyWhenTheSlotOrTheLightChanged) {
  nrDirectionalLight* sun = hold(new nrDirectionalLight);
  sun->setDirection(0, 0, -2);
  sun->setIntensity(0.5f);
  sun->setAmbientIntensity(0.25f);
  sun->setColor(1, 0.5f, 0);
  nrGLRecorder rec;
  sun->drawVisit(&action);
  EXPECT_EQ(
      rec.calls(),
      (Calls{"glGetFloatv(GL_MODELVIEW_MATRIX, ptr)", "glEnable(GL_LIGHT7)",
             "glLightfv(GL_LIGHT7, GL_POSITION, {0, 0, 1, 0})", "glLightfv(GL_LIGHT7, GL_AMBIENT, {0.25, 0.125, 0, 1})",
             "glLightfv(GL_LIGHT7, GL_DIFFUSE, {0.5, 0.25, 0, 1})",
             "glLightfv(GL_LIGHT7, GL_SPECULAR, {0.5, 0.5, 0.5, 1})", "glLightfv(GL_LIGHT7, GL_SPOT_CUTOFF, {180})",
             "glLightfv(GL_LIGHT7, GL_SPOT_EXPONENT, {0})", "glLightfv(GL_LIGHT7, GL_CONSTANT_ATTENUATION, {1})",
             "glLightfv(GL_LIGHT7, GL_LINEAR_ATTENUATION, {0})",
             "glLightfv(GL_LIGHT7, GL_QUADRATIC_ATTENUATION, {0})"}));
  rec.clear();
  sun->draw(&action);
  EXPECT_EQ(rec.calls(), Calls{"glGetFloatv(GL_MODELVIEW_MATRIX, ptr)"}) << "same slot, same matrix";
  const std::pair<std::function<void()>, const char*> reloads[] = {
      {[&] { sun->setIntensity(1); }, "a changed light"},
      {[&] { sun->copy(hold(new nrDirectionalLight)); }, "a light copied into"},
      {[] { nrgl::Translatef(1, 0, 0); }, "a light under another matrix"}};
  for (const auto& [change, what] : reloads) {
    rec.clear();
    change();
    sun->draw(&action);
    EXPECT_EQ(lightParameters(rec.calls()).size(), 9u) << what << " is loaded again";
  }

  nrSpotLight* spot = hold(new nrSpotLight);
  spot->setLocation(1, 2, 3);
  spot->setCutOffAngle(30);
  rec.clear();
  spot->draw(&action);
  EXPECT_EQ(lightParameters(rec.calls()),
            (Calls{"GL_POSITION", "GL_SPOT_DIRECTION", "GL_SPOT_CUTOFF", "GL_SPOT_EXPONENT", "GL_DIFFUSE", "GL_AMBIENT",
                   "GL_SPECULAR", "GL_CONSTANT_ATTENUATION", "GL_LINEAR_ATTENUATION", "GL_QUADRATIC_ATTENUATION"}));
  EXPECT_EQ(rec.calls()[2], "glLightfv(GL_LIGHT6, GL_POSITION, {1, 2, 3, 1})");
  nrPointLight* bulb = hold(new nrPointLight);
  bulb->setAttenuation(0.5f, 0.25f, 2);
  rec.clear();
  bulb->draw(&action);
  EXPECT_EQ(lightParameters(rec.calls()),
            (Calls{"GL_POSITION", "GL_DIFFUSE", "GL_AMBIENT", "GL_SPECULAR", "GL_SPOT_CUTOFF", "GL_SPOT_EXPONENT",
                   "GL_CONSTANT_ATTENUATION", "GL_LINEAR_ATTENUATION", "GL_QUADRATIC_ATTENUATION"}));
  EXPECT_EQ(rec.calls().back(), "glLightfv(GL_LIGHT5, GL_QUADRATIC_ATTENUATION, {2})");

  nrDrawAction fresh;  // no context set: lights and fog go to the thread's current one, as shapes do
  context->setFogEnable(1);
  rec.clear();
  hold(new nrDirectionalLight)->draw(&fresh);
  hold(new nrFog)->draw(&fresh);
  EXPECT_EQ(lightParameters(rec.calls()).size(), 9u);
  EXPECT_EQ(nrtest::callsStarting(rec.calls(), "glFog").size(), 6u);
  struct tstFog : nrFog {
    void define() override {
      nrgl::Hint(GL_FOG_HINT, GL_NICEST);
      nrFog::define();
    }
  };
  rec.clear();
  hold(new tstFog)->draw(&fresh);
  EXPECT_EQ(rec.calls().size(), 7u) << "a subclass's define loads the fog";
}

TEST_F(Light, AnEnvironmentScopesItsLightsAndFogToItsChildren) {
  auto lightsOn = [] { return std::make_pair(isOn(GL_LIGHT7), isOn(GL_LIGHT6)); };
  std::pair<bool, bool> inside, after;
  bool fogInside = false;
  nrEnvironment* env = hold(new nrEnvironment);
  nrDirectionalLight* a = new nrDirectionalLight;
  nrDirectionalLight* b = new nrDirectionalLight;
  env->addLight(a);
  env->addLight(b);
  nrFog* fog = new nrFog;
  fog->setMode(nrFog::LINEAR_FOG);
  env->setFog(fog);
  env->addChild(new tstProbe([&] {
    inside = lightsOn();
    fogInside = isOn(GL_FOG);
  }));
  tstProbe* next = hold(new tstProbe([&] { after = lightsOn(); }));
  context->setFogEnable(1);
  nrGLRecorder rec;
  env->drawVisit(&action);
  next->drawVisit(&action);
  EXPECT_EQ(inside, std::make_pair(true, true));
  EXPECT_EQ(after, std::make_pair(false, false));
  EXPECT_TRUE(fogInside);
  EXPECT_FALSE(isOn(GL_FOG)) << "the context's own fog is off";
  EXPECT_EQ(a->getRefCount(), 1) << "the context let go of the lights";
  EXPECT_EQ(nrtest::callsStarting(rec.calls(), "glFog"),
            (Calls{"glFogi(GL_FOG_MODE, GL_LINEAR)", "glFogf(GL_FOG_DENSITY, 1)", "glFogf(GL_FOG_START, 0)",
                   "glFogf(GL_FOG_END, 1)", "glFogf(GL_FOG_INDEX, 1)", "glFogfv(GL_FOG_COLOR, {0, 0, 0, 0})"}));

  context->setFogEnable(0);
  rec.clear();
  fog->drawVisit(&action);
  EXPECT_EQ(rec.calls(), Calls{}) << "no fog while the application has it off";

  // Outside an environment a light lasts until the traversal's state is popped.
  nrPerspCamera* camera = new nrPerspCamera;
  action.setCamera(camera);
  nrGroup* root = hold(new nrGroup);
  root->addChild(a);
  root->addChild(new tstProbe([&] { inside = lightsOn(); }));
  static_cast<nrNode*>(root->getChild(1))->setSphereBound(nrSphereBound(nrVec3f(0, 0, -5), 1));
  action.apply(root);
  EXPECT_EQ(inside, std::make_pair(true, false));
  EXPECT_FALSE(isOn(GL_LIGHT7));
}

TEST_F(Light, ALightPlacedAgainInsideIsReloadedWhereItWasOnTheWayOut) {
  nrPointLight* bulb = new nrPointLight;
  nrEnvironment* outer = hold(new nrEnvironment);
  nrEnvironment* inner = new nrEnvironment;
  outer->addLight(bulb);
  inner->addLight(bulb);
  GLfloat insidePosition[4] = {};
  inner->addChild(new tstProbe([&] { nrgl::GetLightfv(GL_LIGHT7, GL_POSITION, insidePosition); }));
  outer->addChild(new tstProbe([] { nrgl::Translatef(2, 0, 0); }));
  outer->addChild(inner);
  GLfloat afterPosition[4] = {};
  outer->addChild(new tstProbe([&] { nrgl::GetLightfv(GL_LIGHT7, GL_POSITION, afterPosition); }));
  outer->drawVisit(&action);
  EXPECT_EQ(insidePosition[0], 2);
  EXPECT_EQ(afterPosition[0], 0) << "placed again with the outer matrix";
  EXPECT_EQ(afterPosition[3], 1);
}

TEST_F(Light, AQuadFacingADirectionalLightIsBrighterThanOneTurnedAway) {
  nrEnvironment* env = hold(new nrEnvironment);
  env->addLight(new nrDirectionalLight);
  env->addChild(new tstProbe([] {
    // Left half facing the light (which shines along -z), right half turned away.
    const float normals[2] = {1, -1};
    for (int half = 0; half < 2; ++half) {
      nrgl::Begin(GL_QUADS);
      nrgl::Normal3f(0, 0, normals[half]);
      float x0 = half - 1.0f;
      nrgl::Vertex2f(x0, -1);
      nrgl::Vertex2f(x0 + 1, -1);
      nrgl::Vertex2f(x0 + 1, 1);
      nrgl::Vertex2f(x0, 1);
      nrgl::End();
    }
  }));
  context->clear(nrContext::COLOR_CLEAR);
  context->setLightEnable(1);
  env->drawVisit(&action);
  int facing = pixelAt(16, 32)[0];
  EXPECT_GT(facing, 150);
  EXPECT_LT(pixelAt(48, 32)[0], facing / 4);
}

}  // namespace
