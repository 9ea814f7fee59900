#include "nerio3d/events/nrTimeSensor.h"

#include <cmath>

#include "nerio3d/core/nrGlobal.h"
#include "nerio3d/core/nrKeepAlive.h"
#include "nerio3d/fields/nrSField.h"

NR_DEFINE_TYPE(nrTimeSensor, nrNode, "TimeSensor") {
  nrSFTime::addTypeField(type, "cycleInterval", CYCLE_INTERVAL_FIELD, nrTime(1.0), &nrTimeSensor::cycleInterval);
  nrSFUByte::addTypeField(type, "enabled", ENABLED_FIELD, 1, &nrTimeSensor::enabled);
  nrSFUByte::addTypeField(type, "loop", LOOP_FIELD, 0, &nrTimeSensor::loop);
  nrSFTime::addTypeField(type, "startTime", START_TIME_FIELD, nrTime(0.0), &nrTimeSensor::startTime);
  nrSFTime::addTypeField(type, "stopTime", STOP_TIME_FIELD, nrTime(0.0), &nrTimeSensor::stopTime);
  nrSFTime::addTypeField(type, "cycleTime", CYCLE_TIME_FIELD, nrTime(0.0), &nrTimeSensor::cycleTime);
  nrSFFloat::addTypeField(type, "fraction_changed", FRACTION_CHANGED_FIELD, 0.0f, &nrTimeSensor::fraction);
  nrSFUByte::addTypeField(type, "isActive", IS_ACTIVE_FIELD, 0, &nrTimeSensor::isActive);
  nrSFTime::addTypeField(type, "time", TIME_FIELD, nrTime(0.0), &nrTimeSensor::time);
}

// Never destroyed: sensors that outlive the library's statics may still leave it.
nrPtrArray& nrTimeSensor::_Current = *new nrPtrArray(8);

static int sensorCount = 0;
static bool applicationClock = false;
static nrTime clockTime;

// A sensor whose start time was never set has its cycle start at 0, so a
// non-looping one finishes silently at its first evaluation.
nrTimeSensor::nrTimeSensor(nrType* type) : nrNode(type), now(0.0), cycleStart(0.0) {
  initFieldDefaults(getClassType());
  savedStartTime = startTime;
  savedStopTime = stopTime;
  savedCycleInterval = cycleInterval;
  for (short i = CYCLE_TIME_FIELD; i <= TIME_FIELD; ++i) getField(i)->setEventClass(nrField::ENGINE_OUTPUT_EVENT);
  _Current.append(this);
  ++sensorCount;
}

nrTimeSensor::~nrTimeSensor() {
  leaveList();
  --sensorCount;
  destroyFieldContents(getClassType());
}

int nrTimeSensor::getSensorCount() { return sensorCount; }

nrTime nrTimeSensor::getCurrentTime() { return applicationClock ? clockTime : nrTime::getTimeOfDay(); }

void nrTimeSensor::updateSensors() {
  applicationClock = false;
  stamp(nrTime::getTimeOfDay());
}

void nrTimeSensor::updateSensors(nrTime t) {
  // Such a time would make every cycle, fraction and time that is sent NaN.
  if (!std::isfinite(double(t))) {
    nrGlobal::notify(nrGlobal::WARN, nrGlobal::USAGE,
                     "nrTimeSensor::updateSensors() - the time is not a finite number: sensors not updated");
    return;
  }
  applicationClock = true;
  clockTime = t;
  stamp(t);
}

void nrTimeSensor::stamp(nrTime t) {
  unsigned count = _Current.getCount();
  // The count is taken once: sensors that join during the loop wait for the
  // next frame, and so does one moved into the slot of a sensor that left.
  for (unsigned i = 0; i < count && i < _Current.getCount(); ++i) {
    nrTimeSensor* s = static_cast<nrTimeSensor*>(_Current[i]);
    s->now = t;
    // A sensor released by the changes it sends lives until its evaluation ends.
    const nrKeepAlive hold(s);
    s->evalWrapper();
  }
}

void nrTimeSensor::leaveList() { _Current.fastRemove(this); }

void nrTimeSensor::evalWrapper() {
  for (short i = CYCLE_INTERVAL_FIELD; i <= STOP_TIME_FIELD; ++i) validateField(i);
  eval();
}

void nrTimeSensor::eval() {
  double S = startTime, E = stopTime, I = cycleInterval, T = now;
  bool wasActive = isActive != 0;
  if (!enabled) {
    leaveList();
    if (wasActive) setFieldValue(isActive, static_cast<unsigned char>(0), IS_ACTIVE_FIELD);
    return;
  }
  if (S > T) return;
  double cs = S + I * std::floor((T - S) / I);
  bool cycleEnded = !loop && cs > cycleStart;
  bool done = (S < E && E <= T) || cycleEnded;
  if (done) leaveList();
  if (!wasActive && done) return;
  // A sensor that does not loop reports the end of the cycle it was in,
  // however late the evaluation that finds that cycle over.
  if (cycleEnded) T = cs = cycleStart + I;
  if (S < E && E < T) {
    // The cycle reported is the one that holds the stop time, so the last
    // fraction stays within [0, 1] however late the evaluation that finds
    // the stop time comes.
    T = E;
    cs = S + I * std::floor((E - S) / I);
  }
  // A cycle that has just ended reports 1, not 0.
  float f = static_cast<float>((T - cs) / I);
  if (T != S && f == 0) f = 1.0f;
  if (cs != cycleTime && !done) {
    cycleStart = cs;
    setFieldValue(cycleTime, nrTime(cs), CYCLE_TIME_FIELD);
  }
  if (T != time) setFieldValue(time, nrTime(T), TIME_FIELD);
  if (f != fraction) setFieldValue(fraction, f, FRACTION_CHANGED_FIELD);
  if (!wasActive)
    setFieldValue(isActive, static_cast<unsigned char>(1), IS_ACTIVE_FIELD);
  else if (done)
    setFieldValue(isActive, static_cast<unsigned char>(0), IS_ACTIVE_FIELD);
}

void nrTimeSensor::copy(nrContainer* from, nrCloneTable* table) {
  nrNode::copy(from, table);
  if (!from || from == this || !from->isOfType(getClassType())) return;
  cycleStart = static_cast<nrTimeSensor*>(from)->cycleStart;
  savedStartTime = startTime;
  savedStopTime = stopTime;
  savedCycleInterval = cycleInterval;
  if (_Current.find(this) < 0) _Current.append(this);
}

void nrTimeSensor::fieldChanged(short index) {
  if (index < CYCLE_INTERVAL_FIELD) {
    nrNode::fieldChanged(index);
    return;
  }
  bool running = enabled && isActive;
  switch (index) {
    // Times that are not numbers, and start times or intervals that are not
    // finite, would make every later cycle and fraction NaN: they are refused.
    case START_TIME_FIELD:
      if (running || !std::isfinite(double(startTime))) {
        startTime = savedStartTime;
        return;
      }
      cycleStart = savedStartTime = startTime;
      break;
    case STOP_TIME_FIELD:
      if ((running && stopTime <= startTime) || std::isnan(double(stopTime))) {
        stopTime = savedStopTime;
        return;
      }
      savedStopTime = stopTime;
      break;
    case CYCLE_INTERVAL_FIELD:
      if (running || cycleInterval <= 0 || !std::isfinite(double(cycleInterval))) {
        cycleInterval = savedCycleInterval;
        return;
      }
      savedCycleInterval = cycleInterval;
      break;
    default:
      break;
  }
  if (index <= STOP_TIME_FIELD && _Current.find(this) < 0) _Current.append(this);
  now = getCurrentTime();
  touchField(index);
}
