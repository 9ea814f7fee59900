#include <gtest/gtest.h>

#include "nerio3d/nerio3d.h"
#include "nrHeld.h"

// Receives the sensor's outputs through routes and counts the events that arrive.
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
  void TearDown() override {
    nrtest::unref(sensor, probe);
  }
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

  // While it runs, a new start time or interval is refused and sends nothing.
  sensor->setStartTime(50);
  sensor->setCycleInterval(5);
  sensor->setStopTime(99);
  EXPECT_EQ(sensor->getStartTime(), 100);
  EXPECT_EQ(sensor->getCycleInterval(), 2);
  EXPECT_EQ(sensor->getStopTime(), 0);
  EXPECT_EQ(probe->events[tstProbe::START_TIME], 0);

  nrTimeSensor::updateSensors(102.5);
  EXPECT_EQ(out(tstProbe::FRACTION), 1.0);
  EXPECT_EQ(out(tstProbe::TIME), 102);
  EXPECT_EQ(out(tstProbe::IS_ACTIVE), 0);
  EXPECT_FALSE(listed(sensor));
  EXPECT_EQ(probe->events[tstProbe::CYCLE_TIME], 1);

  // Stopped, the sensor takes a new start time (and comes back to the list),
  // but never a non-positive interval.
  sensor->setCycleInterval(0);
  sensor->setCycleInterval(-1);
  EXPECT_EQ(sensor->getCycleInterval(), 2);
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

  // The plain form goes back to the time of day.
  nrTimeSensor::updateSensors();
  EXPECT_NEAR(nrTimeSensor::getCurrentTime(), nrTime::getTimeOfDay(), 5);
}

TEST_F(TimeSensorTest, DrivesAnInterpolatorIntoAMaterial) {
  nrPositionInterpolator* move = nrtest::held<nrPositionInterpolator>();
  nrMaterial* material = nrtest::held<nrMaterial>();
  nrFloatArray keys;
  keys.append(0);
  keys.append(1);
  nrVec3fArray colors;
  colors.append(nrVec3f(0, 0, 0));
  colors.append(nrVec3f(1, 0.5f, 0));
  move->setKey(keys);
  move->setKeyValue(colors);
  sensor->getField("fraction_changed")->connect(move->getField("set_fraction"));
  move->getField("value_changed")->connect(material->getField("diffuseColor"));
  sensor->setCycleInterval(4);

  nrSFVec3f* diffuse = static_cast<nrSFVec3f*>(material->getField(nrMaterial::DIFFUSE_COLOR));
  nrVec3f c;
  for (double t : {100.0, 101.0, 103.0}) {
    nrTimeSensor::updateSensors(t);
    float f = static_cast<float>((t - 100) / 4);
    EXPECT_EQ(material->getDiffuseColor(), nrVec3f(f, 0.5f * f, 0)) << "the getter pulls the routed value, at " << t;
    diffuse->get(c);
    EXPECT_EQ(c, nrVec3f(f, 0.5f * f, 0)) << t;
  }
  nrtest::unref(material, move);
}
