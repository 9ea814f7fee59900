// A time in seconds: an absolute time of day since the epoch, or a duration.
#pragma once

#include "nerio3d/core/nrString.h"

class nrTime {
 public:
  nrTime(double seconds = 0.0) : value(seconds) {}

  // The current time of day, at millisecond resolution.
  static nrTime getTimeOfDay();
  void setToTimeOfDay() { *this = getTimeOfDay(); }

  double getValue() const { return value; }
  void setValue(double seconds) { value = seconds; }
  // Arithmetic and comparison go through the value in seconds.
  operator double() const { return value; }
  nrTime& operator+=(double seconds) {
    value += seconds;
    return *this;
  }
  nrTime& operator-=(double seconds) {
    value -= seconds;
    return *this;
  }

  // Formats the time with '%' directives: D H M S I U are the whole days,
  // hours, minutes, seconds, milliseconds and microseconds (signed); h m s i u
  // the remainders within the next larger unit, zero-padded; "%%" is a '%'.
  // An empty format gives a null string.
  nrString format(const char* fmt) const;

 private:
  double value;
};
