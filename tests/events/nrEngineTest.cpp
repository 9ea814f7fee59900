#include <gtest/gtest.h>

#include <cmath>

#include "nerio3d/nerio3d.h"
#include "nrCapture.h"
#include "nrHeld.h"

namespace {

// A scalar interpolator that counts its evaluations.
class CountingScalar : public nrScalarInterpolator {
 public:
  CountingScalar() : nrScalarInterpolator(nrScalarInterpolator::getClassType()) {}
  void eval() override {
    ++evals;
    nrScalarInterpolator::eval();
  }
  int evals = 0;
};

template <typename Array, typename T>
Array list(std::initializer_list<T> values) {
  Array a;
  for (const T& v : values) a.append(v);
  return a;
}

nrFloatArray floats(std::initializer_list<float> v) { return list<nrFloatArray>(v); }
nrVec3fArray vecs(std::initializer_list<nrVec3f> v) { return list<nrVec3fArray>(v); }

float shininessOf(nrMaterial* m) { return static_cast<nrSFFloat*>(m->getField(nrMaterial::SHININESS))->get(); }

}  // namespace

TEST(nrEngine, EvaluatesOnlyWhenReadAndOncePerChange) {
  CountingScalar* s = nrtest::held<CountingScalar>();
  s->setKey(floats({0, 0.5f, 1}));
  s->setKeyValue(floats({0, 10, 20}));
  s->setFraction(0.25f);
  EXPECT_EQ(s->evals, 0) << "nothing reads the value";
  EXPECT_EQ(s->getValue(), 5.0f);
  EXPECT_EQ(s->getValue(), 5.0f);
  EXPECT_EQ(s->evals, 1);

  // Routed into a material: the pull evaluates the engine once, although the
  // value it sets is pushed to the destination being pulled.
  nrMaterial* m = nrtest::held<nrMaterial>();
  s->connect(nrInterpolator::VALUE_FIELD, m, nrMaterial::SHININESS);
  s->setFraction(0.5f);
  s->setKey(floats({0, 0.5f, 1}));
  EXPECT_EQ(shininessOf(m), 10.0f);
  EXPECT_EQ(shininessOf(m), 10.0f);
  EXPECT_EQ(s->evals, 2);

  // Fractions at and outside the keys clamp; equal keys step at the first.
  struct Case {
    float fraction, value;
  } cases[] = {{-1, 0}, {2, 20}, {0.75f, 15}, {0, 0}, {1, 20}};
  for (const Case& c : cases) {
    s->setFraction(c.fraction);
    EXPECT_EQ(shininessOf(m), c.value) << c.fraction;
  }
  s->setKey(floats({0, 0.5f, 0.5f, 1}));
  s->setKeyValue(floats({0, 10, 20, 30}));
  s->setFraction(0.5f);
  EXPECT_EQ(s->getValue(), 10.0f);

  // Without keys, or with too few values, nothing is set and nothing printed.
  s->setKeyValue(floats({7}));
  s->setFraction(0.3f);
  std::string said = nrtest::captureStderr([&] { EXPECT_EQ(s->getValue(), 10.0f); });
  s->setKey(nrFloatArray());
  said += nrtest::captureStderr([&] { EXPECT_EQ(s->getValue(), 10.0f); });
  EXPECT_EQ(said, "");
  nrtest::unref(m, s);
}

TEST(nrEngine, InterpolatorKinds) {
  nrFloatArray keys = floats({0, 1});
  nrColorInterpolator* color = nrtest::held<nrColorInterpolator>();
  color->setKey(keys);
  color->setKeyValue(vecs({{1, 0, 0}, {0, 0, 1}}));
  color->setFraction(0.5f);
  nrVec3f c;
  color->getValue(c);
  EXPECT_EQ(c, nrVec3f(0.5f, 0, 0.5f));

  nrOrientationInterpolator* orient = nrtest::held<nrOrientationInterpolator>();
  orient->setKey(keys);
  orient->setKeyValue(list<nrRotationArray>({nrRotation(0, 0, 1, 0), nrRotation(0, 0, 1, float(M_PI) / 2)}));
  orient->setFraction(0.5f);
  nrRotation r;
  orient->getValue(r);
  EXPECT_NEAR(r.angle, M_PI / 4, 1e-5);
  EXPECT_NEAR(r.axis[2], 1, 1e-5);

  // List kinds: two vectors per key; at a key the values are copied as they are.
  nrNormalInterpolator* normals = nrtest::held<nrNormalInterpolator>();
  normals->setKey(keys);
  normals->setKeyValue(vecs({{1, 0, 0}, {0, 2, 0}, {0, 1, 0}, {0, 0, 2}}));
  normals->setFraction(0.3f);
  ASSERT_EQ(normals->getValue().getCount(), 2u);
  for (unsigned i = 0; i < 2; ++i) EXPECT_NEAR(normals->getValue()[i].length(), 1, 1e-6);
  normals->setFraction(1);
  EXPECT_EQ(normals->getValue()[1], nrVec3f(0, 0, 2));

  nrCoordinateInterpolator* coords = nrtest::held<nrCoordinateInterpolator>();
  coords->setKey(keys);
  coords->setKeyValue(vecs({{0, 0, 0}, {2, 2, 2}, {4, 0, 0}, {6, 2, 2}, {9, 9, 9}}));
  coords->setFraction(0.25f);
  ASSERT_EQ(coords->getValue().getCount(), 2u) << "5 values over 2 keys: 2 per key";
  EXPECT_EQ(coords->getValue()[0], nrVec3f(1, 0, 0));
  EXPECT_EQ(coords->getValue()[1], nrVec3f(3, 2, 2));
  nrtest::unref(color, orient, normals, coords);
}

TEST(nrEngine, SplineMorphTransformAndSelectorChain) {
  nrSpline* spline = nrtest::held<nrSpline>();
  nrMorphEng3f* morph = nrtest::held<nrMorphEng3f>();
  nrTransformEng3f* xform = nrtest::held<nrTransformEng3f>();
  nrSelectorEng3f* select = nrtest::held<nrSelectorEng3f>();
  spline->setKey(floats({0, 1, 2}));
  spline->setWeightCount(3);
  spline->connect(nrSpline::WEIGHT_FIELD, morph, nrMorphEng::WEIGHT_FIELD);
  morph->setInput(vecs({{0, 0, 0}, {0, 0, 0}, {2, 0, 0}, {0, 4, 0}, {8, 8, 8}, {8, 8, 8}}));
  morph->connect(nrMorphEng::VALUE_FIELD, xform, nrTransformEng::INPUT_FIELD);
  nrMatrix4f m;
  m.makeTrans(1, 2, 3);
  xform->setMatrix(m);
  xform->connect(nrTransformEng::VALUE_FIELD, select, nrSelectorEng::INPUT_FIELD);
  select->setSelector(1);

  // Weights (0.5, 0.5, 0): half of shape 1, then moved by (1, 2, 3).
  spline->setFraction(0.5f);
  nrVec3f v;
  select->getValue(v);
  EXPECT_EQ(v, nrVec3f(1, 4, 3));
  EXPECT_EQ(spline->getWeight()[0], 0.5f);

  // Outside the keys, and at the last one, every weight is 0.
  for (float f : {-1.0f, 2.0f}) {
    spline->setFraction(f);
    const nrFloatArray& w = spline->getWeight();
    EXPECT_EQ(w[0] + w[1] + w[2], 0.0f) << f;
  }
  select->getValue(v);
  EXPECT_EQ(v, nrVec3f(1, 2, 3));

  // A selector past the list sets nothing and says nothing.
  select->setSelector(2);
  std::string said = nrtest::captureStderr([&] { select->getValue(v); });
  EXPECT_EQ(v, nrVec3f(1, 2, 3));
  EXPECT_EQ(said, "");
  nrtest::unref(spline, morph, xform, select);
}

TEST(nrEngine, CopiesAreWiredToTheirOwnTrigger) {
  CountingScalar* s = nrtest::held<CountingScalar>();
  s->setKey(floats({0, 1}));
  s->setKeyValue(floats({0, 10}));
  nrScalarInterpolator* copy = static_cast<nrScalarInterpolator*>(s->clone(nrContainer::COPY_CLONE));
  copy->ref();
  nrField* trigger = copy->getField(nrEngine::TRIGGER_FIELD);
  ASSERT_EQ(copy->getNumInputs(), 3);
  for (int i = 0; i < copy->getNumInputs(); ++i) {
    ASSERT_EQ(copy->getInput(i)->getNumOutputs(), 1);
    EXPECT_EQ(copy->getInput(i)->getOutput(0), trigger);
  }
  EXPECT_EQ(copy->getOutput(0)->getEventClass(), nrField::ENGINE_OUTPUT_EVENT);
  copy->setFraction(0.5f);
  EXPECT_EQ(copy->getValue(), 5.0f);
  EXPECT_EQ(s->evals, 1) << "brought up to date by the copy, untouched by the copy's changes";

  // A route from the value back into the fraction: bringing the engine up to
  // date (as a copy does) still comes to an end.
  copy->connect(nrInterpolator::VALUE_FIELD, copy, nrInterpolator::FRACTION_FIELD);
  copy->setFraction(0.25f);
  copy->getValue();
  copy->clone(nrContainer::COPY_CLONE)->unref();

  EXPECT_TRUE(nrEngine::isEngineOutput(copy, nrInterpolator::VALUE_FIELD));
  EXPECT_FALSE(nrEngine::isEngineOutput(copy, nrInterpolator::FRACTION_FIELD));
  nrMaterial* m = nrtest::held<nrMaterial>();
  EXPECT_FALSE(nrEngine::isEngineOutput(m, nrInterpolator::VALUE_FIELD));

  // Scene files name the fields as events.
  EXPECT_EQ(copy->getField("set_fraction"), copy->getField(nrInterpolator::FRACTION_FIELD));
  EXPECT_EQ(copy->getField("value_changed"), copy->getField(nrInterpolator::VALUE_FIELD));
  EXPECT_EQ(copy->getField("keyValue"), copy->getField(nrInterpolator::KEY_VALUE_FIELD));
  nrtest::unref(m, copy, s);
}

namespace {
int nodeCalls = 0;
void countNode(nrDispatch*, nrObject*) { ++nodeCalls; }
}  // namespace

TEST(nrEngine, DispatchCallsTheFunctionBoundForTheTypes) {
  nrDispatch* d = new nrDispatch;
  d->ref();
  EXPECT_GE(d->getType()->getActionIndex(), 0);
  nrDispatch::bindFunction(nrDispatch::getClassType(), nrNode::getClassType(), countNode);
  nrTimeSensor* sensor = nrtest::held<nrTimeSensor>();
  nrData* data = new (4) nrData;
  d->apply(sensor);
  d->apply(data);
  d->apply(nullptr);
  EXPECT_EQ(nodeCalls, 1);
  nrtest::unref(data, sensor, d);
}
