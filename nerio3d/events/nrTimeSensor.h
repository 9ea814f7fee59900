// Turns time into events: while enabled and running it reports the time, the
// start of the current cycle and the fraction of the cycle elapsed. Sensors
// are evaluated eagerly, all of them once per frame, by updateSensors().
#pragma once

#include "nerio3d/arrays/nrTypedArray.h"
#include "nerio3d/core/nrTime.h"
#include "nerio3d/nodes/nrNode.h"

class nrTimeSensor : public nrNode {
  NR_DECLARE_CONTAINER_TYPE(nrTimeSensor)

  enum FieldEnum {
    CYCLE_INTERVAL_FIELD = 2,
    ENABLED_FIELD,
    LOOP_FIELD,
    START_TIME_FIELD,
    STOP_TIME_FIELD,
    CYCLE_TIME_FIELD,
    FRACTION_CHANGED_FIELD,
    IS_ACTIVE_FIELD,
    TIME_FIELD
  };

  nrTimeSensor() : nrTimeSensor(getClassType()) {}
  explicit nrTimeSensor(nrType* type);
  ~nrTimeSensor() override;

  void setCycleInterval(nrTime interval) { setFieldValue(cycleInterval, interval, CYCLE_INTERVAL_FIELD); }
  nrTime getCycleInterval() const { return getFieldValue(cycleInterval, CYCLE_INTERVAL_FIELD); }
  void setEnabled(unsigned char on) { setFieldValue(enabled, on, ENABLED_FIELD); }
  unsigned char getEnabled() const { return getFieldValue(enabled, ENABLED_FIELD); }
  void setLoop(unsigned char on) { setFieldValue(loop, on, LOOP_FIELD); }
  unsigned char getLoop() const { return getFieldValue(loop, LOOP_FIELD); }
  void setStartTime(nrTime t) { setFieldValue(startTime, t, START_TIME_FIELD); }
  nrTime getStartTime() const { return getFieldValue(startTime, START_TIME_FIELD); }
  void setStopTime(nrTime t) { setFieldValue(stopTime, t, STOP_TIME_FIELD); }
  nrTime getStopTime() const { return getFieldValue(stopTime, STOP_TIME_FIELD); }

  nrTime getCycleTime() const { return getFieldValue(cycleTime, CYCLE_TIME_FIELD); }
  float getFractionChanged() const { return getFieldValue(fraction, FRACTION_CHANGED_FIELD); }
  unsigned char getIsActive() const { return getFieldValue(isActive, IS_ACTIVE_FIELD); }
  nrTime getTime() const { return getFieldValue(time, TIME_FIELD); }

  // Evaluates every listed sensor at the time of day, and lets field changes
  // take the time of day as "now" again.
  static void updateSensors();
  // Evaluates every listed sensor at a time the application chooses (offline
  // rendering, deterministic tests); field changes take this time as "now"
  // until the next call of either form. A time that is not a finite number
  // is refused with a warning, and nothing changes.
  static void updateSensors(nrTime now);
  // "Now" for the sensors: the time last given to updateSensors(nrTime), or
  // the time of day when the plain form ran last or neither has run.
  static nrTime getCurrentTime();
  // Sensors in existence.
  static int getSensorCount();

  // Sensors that may still produce output, in the order they are evaluated.
  static nrPtrArray& _Current;

  virtual void eval();

  // Refuses changes that would disturb a running cycle (restoring the field
  // and sending nothing) and puts a changed sensor back into the list.
  void fieldChanged(short index) override;
  // The cycle in progress and the accepted times come with the values, so a
  // copy of a running sensor runs on as the original does.
  void copy(nrContainer* from, nrCloneTable* table) override;
  using nrNode::copy;

 private:
  static void stamp(nrTime t);
  void evalWrapper();
  void leaveList();

  nrTime cycleInterval;
  unsigned char enabled;
  unsigned char loop;
  nrTime startTime;
  nrTime stopTime;
  nrTime cycleTime;
  float fraction;
  unsigned char isActive;
  nrTime time;

  nrTime now;
  nrTime cycleStart;
  nrTime savedStartTime;
  nrTime savedStopTime;
  nrTime savedCycleInterval;
};
