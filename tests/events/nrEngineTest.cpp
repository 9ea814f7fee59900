#include <gtest/gtest.h>

#include <cmath>

#include "nerio3d/nerio3d.h"
#include "nrCapture.h"
#include "nrHeld.h"

// Receives a time sensor's outputs through routes and counts the events that arrive.
class tstProbe : public nrContainer {
  NR_DECLARE_CONTAINER_TYPE(tstProbe)
  enum { CYCLE_TIME, FRACTION, IS_ACTIVE, TIME, START_TIME, NUM_FIELDS };

  tstProbe() : nrContainer(getClassType()) { initFieldDefaults(classType); }
  ~tstProbe() override { destroyFieldContents(classType); }

  nrTime cycleTime, time, startTime;
  float fraction;
  unsigned char isActive;
  int events[NUM_FIELDS] = {};

 protected:
  void dirtyFieldOutputs(nrField* f) override {
    ++events[f->getIndex()];
    nrContainer::dirtyFieldOutputs(f);
  }
};

NR_DEFINE_TYPE(tstProbe, nrContainer, "tstProbe") {
  nrSFTime::addTypeField(type, "cycleTime", CYCLE_TIME, nrTime(), &tstProbe::cycleTime);
  nrSFFloat::addTypeField(type, "fraction", FRACTION, 0.0f, &tstProbe::fraction);
  nrSFUByte::addTypeField(type, "isActive", IS_ACTIVE, 0, &tstProbe::isActive);
  nrSFTime::addTypeField(type, "time", TIME, nrTime(), &tstProbe::time);
  nrSFTime::addTypeField(type, "startTime", START_TIME, nrTime(), &tstProbe::startTime);
}

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

// An interpolator of type E over keys and values at a fraction, held by the test.
template <typename E, typename Values>
E* keyed(std::initializer_list<float> keys, const Values& values, float fraction) {
  E* e = nrtest::held<E>();
  e->setKey(floats(keys));
  e->setKeyValue(values);
  e->setFraction(fraction);
  return e;
}

}  // namespace

TEST(nrEngine, EvaluatesOnlyWhenReadAndOncePerChange) {
  CountingScalar* s = keyed<CountingScalar>({0, 0.5f, 1}, floats({0, 10, 20}), 0.25f);
  EXPECT_EQ(s->evals, 0) << "nothing reads the value";
  EXPECT_EQ(s->getValue(), 5.0f);
  EXPECT_EQ(s->getValue(), 5.0f);
  EXPECT_EQ(s->evals, 1);

  // Routed into a material, whose getter pulls: the pull evaluates the engine
  // once, although the value it sets is pushed to the destination being pulled.
  nrMaterial* m = nrtest::held<nrMaterial>();
  s->connect(nrInterpolator::VALUE_FIELD, m, nrMaterial::SHININESS);
  s->setFraction(0.5f);
  s->setKey(floats({0, 0.5f, 1}));
  EXPECT_EQ(m->getShininess(), 10.0f);
  EXPECT_EQ(m->getShininess(), 10.0f);
  EXPECT_EQ(s->evals, 2);

  // Fractions at and outside the keys clamp; equal keys step at the first.
  const float cases[][2] = {{-1, 0}, {2, 20}, {0.75f, 15}, {0, 0}, {1, 20}};
  for (const auto& c : cases) {
    s->setFraction(c[0]);
    EXPECT_EQ(m->getShininess(), c[1]) << c[0];
  }
  s->setKey(floats({0, 0.5f, 0.5f, 1}));
  s->setKeyValue(floats({0, 10, 20, 30}));
  s->setFraction(0.5f);
  EXPECT_EQ(s->getValue(), 10.0f);

  // Without keys, or with too few values, nothing is set and nothing printed.
  EXPECT_EQ(nrtest::captureStderr([&] {
              s->setKeyValue(floats({7}));
              s->setFraction(0.3f);
              EXPECT_EQ(s->getValue(), 10.0f);
              s->setKey(nrFloatArray());
              EXPECT_EQ(s->getValue(), 10.0f);
            }),
            "");

  // Two routes into the fraction, one removed: the stale mark the other
  // leaves behind is cleared by the next read instead of being read forever.
  tstProbe *a = nrtest::held<tstProbe>(), *b = nrtest::held<tstProbe>();
  s->setKey(floats({0, 1}));
  s->setKeyValue(floats({0, 10}));
  a->connect(tstProbe::FRACTION, s, nrInterpolator::FRACTION_FIELD);
  b->connect(tstProbe::FRACTION, s, nrInterpolator::FRACTION_FIELD);
  b->getField(tstProbe::FRACTION)->disconnect(s->getField(nrInterpolator::FRACTION_FIELD));
  nrScalarInterpolator* copy = static_cast<nrScalarInterpolator*>(s->clone(nrContainer::COPY_CLONE));
  copy->ref();
  EXPECT_EQ(copy->getValue(), s->getValue());
  copy->unref();
  nrtest::unref(a, b, m, s);
}

TEST(nrEngine, ReleasedByItsOwnEvaluationWhileAReaderPulls) {
  // Dropped by its own evaluation (as a destination's fieldChanged may drop
  // it), the engine lives until the material has copied its value.
  struct Releasing : nrScalarInterpolator {
    void eval() override {
      nrScalarInterpolator::eval();
      unref();
    }
  };
  Releasing* s = keyed<Releasing>({0, 1}, floats({0, 10}), 0.5f);
  nrMaterial* m = nrtest::held<nrMaterial>();
  s->connect(nrInterpolator::VALUE_FIELD, m, nrMaterial::SHININESS);
  EXPECT_EQ(m->getShininess(), 5.0f);
  EXPECT_EQ(m->getField(nrMaterial::SHININESS)->getNumInputs(), 0);
  m->unref();
}

TEST(nrEngine, InterpolatorKinds) {
  auto* color = keyed<nrColorInterpolator>({0, 1}, vecs({{1, 0, 0}, {0, 0, 1}}), 0.5f);
  nrVec3f c;
  color->getValue(c);
  EXPECT_EQ(c, nrVec3f(0.5f, 0, 0.5f));

  auto* orient = keyed<nrOrientationInterpolator>(
      {0, 1}, list<nrRotationArray>({nrRotation(0, 0, 1, 0), nrRotation(0, 0, 1, float(M_PI) / 2)}), 0.5f);
  nrRotation r;
  orient->getValue(r);
  EXPECT_NEAR(r.angle, M_PI / 4, 1e-5);
  EXPECT_NEAR(r.axis[2], 1, 1e-5);

  // List kinds: two vectors per key; at a key the values are copied as they are.
  auto* normals = keyed<nrNormalInterpolator>({0, 1}, vecs({{1, 0, 0}, {0, 2, 0}, {0, 1, 0}, {0, 0, 2}}), 0.3f);
  ASSERT_EQ(normals->getValue().getCount(), 2u);
  for (unsigned i = 0; i < 2; ++i) EXPECT_NEAR(normals->getValue()[i].length(), 1, 1e-6);
  normals->setFraction(1);
  EXPECT_EQ(normals->getValue()[1], nrVec3f(0, 0, 2));

  auto* coords =
      keyed<nrCoordinateInterpolator>({0, 1}, vecs({{0, 0, 0}, {2, 2, 2}, {4, 0, 0}, {6, 2, 2}, {9, 9, 9}}), 0.25f);
  ASSERT_EQ(coords->getValue().getCount(), 2u) << "5 values over 2 keys: 2 per key";
  EXPECT_EQ(coords->getValue()[0], nrVec3f(1, 0, 0));
  EXPECT_EQ(coords->getValue()[1], nrVec3f(3, 2, 2));
  // A fraction that is not a number takes the first key's values, also with a single key.
  coords->setKey(floats({0.5f}));
  coords->setFraction(NAN);
  ASSERT_EQ(coords->getValue().getCount(), 5u);
  EXPECT_EQ(coords->getValue()[4], nrVec3f(9, 9, 9));
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

  // Weights (0.5, 0.5, 0): half of shape 1, then moved by (1, 2, 3); read
  // through const objects, which pull the whole chain all the same.
  spline->setFraction(0.5f);
  nrVec3f v;
  static_cast<const nrSelectorEng3f*>(select)->getValue(v);
  EXPECT_EQ(v, nrVec3f(1, 4, 3));
  const nrSpline* seen = spline;
  EXPECT_EQ(seen->getWeight()[0], 0.5f);
  EXPECT_EQ(seen->getFraction(), 0.5f);

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
  EXPECT_EQ(nrtest::captureStderr([&] { select->getValue(v); }), "");
  EXPECT_EQ(v, nrVec3f(1, 2, 3));
  nrtest::unref(spline, morph, xform, select);
}

TEST(nrEngine, CopiesAreWiredToTheirOwnTrigger) {
  CountingScalar* s = keyed<CountingScalar>({0, 1}, floats({0, 10}), 0);
  auto* copy = static_cast<nrScalarInterpolator*>(s->clone(nrContainer::COPY_CLONE));
  copy->ref();
  nrField* trigger = copy->getField(nrEngine::TRIGGER_FIELD);
  ASSERT_EQ(copy->getNumInputs(), 3);
  for (int i = 0; i < copy->getNumInputs(); ++i) {
    ASSERT_EQ(copy->getInput(i)->getNumOutputs(), 1);
    EXPECT_EQ(copy->getInput(i)->getOutput(0), trigger);
  }
  EXPECT_EQ(copy->getOutput(0)->getEventClass(), nrField::ENGINE_OUTPUT_EVENT);
  EXPECT_EQ(copy->getInput(-1), nullptr);
  EXPECT_EQ(copy->getOutput(1), nullptr);
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
  nrtest::unref(m, copy, s);
}

namespace {
int nodeCalls = 0;
void countNode(nrDispatch*, nrObject*) { ++nodeCalls; }
}  // namespace

TEST(nrEngine, DispatchCallsTheFunctionBoundForTheTypes) {
  nrDispatch* d = nrtest::held<nrDispatch>();
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

namespace {

// In a fresh process the dispatch-table columns show the registration order.
int sensorRegistrationFault() {
  nrObject::initClasses();
  const char* order[] = {"TimeSensor", "PickSensor", "TouchSensor", "SphereSensor", "PlaneSensor", "Interpolator"};
  int last = -1;
  for (int i = 0; i < 6; ++i) {
    nrType* t = nrType::getType(order[i]);
    if (!t || t->getObjectIndex() <= last) return i + 1;
    last = t->getObjectIndex();
  }
  if (nrType::getType("PickSensor")->getParent() != nrType::getType("Node")) return 10;
  for (const char* derived : {"TouchSensor", "SphereSensor", "PlaneSensor"})
    if (nrType::getType(derived)->getParent() != nrType::getType("PickSensor")) return 11;
  // Outside the table: registered on first use, the record below the container type.
  if (nrType::getType("Event") || nrType::getType("Window")) return 12;
  if (nrEvent::getClassType()->getParent() != nrContainer::getClassType()) return 13;
  if (nrWindow::getClassType()->getParent() != nrObject::getClassType()) return 14;
  return 0;
}

}  // namespace

TEST(nrPickSensorTypes, RegisterAfterTheTimeSensorInTableOrder) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(exit(sensorRegistrationFault()), testing::ExitedWithCode(0), "");
}

namespace {

bool listed(nrTimeSensor* s) { return nrTimeSensor::_Current.find(s) >= 0; }

// A sensor starting at 100 with its outputs (and its start time) routed into a probe.
class TimeSensorTest : public testing::Test {
 protected:
  void SetUp() override {
    sensor->setStartTime(100);
    for (int i = 0; i < 4; ++i) sensor->connect(nrTimeSensor::CYCLE_TIME_FIELD + i, probe, tstProbe::CYCLE_TIME + i);
    sensor->connect(nrTimeSensor::START_TIME_FIELD, probe, tstProbe::START_TIME);
    std::fill(probe->events, probe->events + tstProbe::NUM_FIELDS, 0);
  }
  void TearDown() override { nrtest::unref(sensor, probe); }
  // The probe's copy of field i of the sensor's outputs, read through the route.
  double out(int i) {
    nrField* f = probe->getField(i);
    if (i == tstProbe::FRACTION) return static_cast<nrSFFloat*>(f)->get();
    if (i == tstProbe::IS_ACTIVE) return static_cast<nrSFUByte*>(f)->get();
    return static_cast<nrSFTime*>(f)->get();
  }

  nrTimeSensor* sensor = nrtest::held<nrTimeSensor>();
  tstProbe* probe = nrtest::held<tstProbe>();
};

}  // namespace

TEST_F(TimeSensorTest, SingleCycleEndsAtExactlyOne) {
  sensor->setCycleInterval(2);
  nrTimeSensor::updateSensors(100);
  EXPECT_EQ(out(tstProbe::IS_ACTIVE), 1);
  EXPECT_EQ(out(tstProbe::CYCLE_TIME), 100);
  EXPECT_EQ(probe->events[tstProbe::FRACTION], 0) << "fraction 0 is no change";
  nrTimeSensor::updateSensors(101);
  EXPECT_EQ(out(tstProbe::FRACTION), 0.5);

  // A copy of the running sensor runs on in the same cycle and keeps the
  // start time it was copied with when a change is refused.
  nrTimeSensor* copy = static_cast<nrTimeSensor*>(sensor->clone(nrContainer::SHALLOW_CLONE));
  copy->ref();
  copy->setStartTime(50);
  nrTimeSensor::updateSensors(101.5);
  EXPECT_EQ(copy->getFractionChanged(), 0.75f);
  EXPECT_EQ(copy->getIsActive(), 1);
  EXPECT_EQ(copy->getStartTime(), 100);
  copy->unref();

  // While it runs, a new start time or interval is refused and sends nothing.
  sensor->setStartTime(50);
  sensor->setCycleInterval(5);
  sensor->setStopTime(99);
  EXPECT_EQ(sensor->getStartTime(), 100);
  EXPECT_EQ(sensor->getCycleInterval(), 2);
  EXPECT_EQ(static_cast<const nrTimeSensor*>(sensor)->getStopTime(), 0);
  EXPECT_EQ(probe->events[tstProbe::START_TIME], 0);

  nrTimeSensor::updateSensors(105.5);  // found more than a cycle late
  EXPECT_EQ(out(tstProbe::FRACTION), 1.0);
  EXPECT_EQ(out(tstProbe::TIME), 102);
  EXPECT_EQ(out(tstProbe::IS_ACTIVE), 0);
  EXPECT_FALSE(listed(sensor));
  EXPECT_EQ(probe->events[tstProbe::CYCLE_TIME], 1);

  // Stopped, the sensor takes a new start time (and comes back to the list),
  // but never a non-positive or infinite interval, nor times that are not numbers.
  for (double bad : {0.0, -1.0, double(NAN), double(INFINITY)}) sensor->setCycleInterval(bad);
  sensor->setStartTime(NAN);
  sensor->setStopTime(NAN);
  EXPECT_EQ(sensor->getCycleInterval(), 2);
  EXPECT_EQ(sensor->getStartTime(), 100);
  EXPECT_EQ(sensor->getStopTime(), 0);
  sensor->setStartTime(200);
  EXPECT_EQ(out(tstProbe::START_TIME), 200);
  EXPECT_TRUE(listed(sensor));
}

TEST_F(TimeSensorTest, LoopRunsUntilItsStopTime) {
  sensor->setLoop(1);
  for (double t : {100.0, 100.5, 101.2, 102.1, 102.4}) nrTimeSensor::updateSensors(t);
  EXPECT_EQ(probe->events[tstProbe::CYCLE_TIME], 3) << "one cycleTime per cycle";
  EXPECT_NEAR(out(tstProbe::FRACTION), 0.4, 1e-4);

  // Found a cycle late, the stop time still reports from its own cycle.
  sensor->setStopTime(102.5);
  nrTimeSensor::updateSensors(103.2);
  EXPECT_EQ(out(tstProbe::TIME), 102.5);
  EXPECT_EQ(out(tstProbe::FRACTION), 0.5);
  EXPECT_EQ(out(tstProbe::IS_ACTIVE), 0);
  EXPECT_FALSE(listed(sensor));
}

TEST_F(TimeSensorTest, FutureStartWaitsAndDisablingStops) {
  sensor->setStartTime(200);
  probe->events[tstProbe::START_TIME] = 0;
  nrTimeSensor::updateSensors(150);
  // A clock that is not a finite number is refused, and sends nothing either.
  for (double bad : {double(NAN), double(INFINITY)})
    EXPECT_EQ(nrtest::captureStderr([&] { nrTimeSensor::updateSensors(bad); }),
              "(WARN, USAGE): nrTimeSensor::updateSensors() - the time is not a finite number: sensors not updated\n");
  EXPECT_EQ(nrTimeSensor::getCurrentTime(), 150);
  EXPECT_EQ(*std::max_element(probe->events, probe->events + tstProbe::NUM_FIELDS), 0);
  EXPECT_TRUE(listed(sensor));
  nrTimeSensor::updateSensors(200);
  EXPECT_EQ(out(tstProbe::IS_ACTIVE), 1);

  sensor->setEnabled(0);
  nrTimeSensor::updateSensors(200.5);
  EXPECT_EQ(out(tstProbe::IS_ACTIVE), 0);
  EXPECT_EQ(out(tstProbe::TIME), 200) << "a disabled sensor sends only isActive";
  EXPECT_FALSE(listed(sensor));
  sensor->setEnabled(1);
  EXPECT_TRUE(listed(sensor));
  EXPECT_EQ(nrTimeSensor::getCurrentTime(), 200.5);
}

TEST_F(TimeSensorTest, FrameLoopKeepsItsCountAndSensorsLeaveWhenDestroyed) {
  // A fresh sensor that never got a start time finishes silently at once.
  nrTimeSensor* idle = nrtest::held<nrTimeSensor>();
  nrTimeSensor* late = nrtest::held<nrTimeSensor>();
  late->setStartTime(100);
  late->setLoop(1);
  int count = nrTimeSensor::getSensorCount();
  ASSERT_EQ(nrTimeSensor::_Current.getCount(), 3u);

  // The sensor that leaves first lets the last one move into its place, which
  // then waits for the next frame.
  nrTimeSensor::updateSensors(100.5);
  EXPECT_FALSE(listed(idle));
  EXPECT_EQ(idle->getIsActive(), 0);
  EXPECT_EQ(sensor->getIsActive(), 1);
  EXPECT_EQ(late->getIsActive(), 0);
  nrTimeSensor::updateSensors(100.6);
  EXPECT_EQ(late->getIsActive(), 1);

  late->unref();
  EXPECT_FALSE(listed(late));
  idle->unref();
  EXPECT_EQ(nrTimeSensor::getSensorCount(), count - 2);

  // One released by its own change of time lives until its evaluation ends.
  struct Releasing : nrTimeSensor {
    void fieldChanged(short index) override {
      nrTimeSensor::fieldChanged(index);
      if (index == TIME_FIELD) unref();
    }
  };
  Releasing* releasing = new Releasing;
  releasing->ref();
  releasing->setStartTime(100);
  releasing->setLoop(1);
  nrTimeSensor::updateSensors(100.7);
  EXPECT_EQ(nrTimeSensor::getSensorCount(), count - 2);

  // The plain form goes back to the time of day.
  nrTimeSensor::updateSensors();
  EXPECT_NEAR(nrTimeSensor::getCurrentTime(), nrTime::getTimeOfDay(), 5);
}
