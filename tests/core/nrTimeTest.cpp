#include "nerio3d/core/nrTime.h"

#include <cmath>
#include <ctime>
#include <string>

#include <gtest/gtest.h>

namespace {
std::string formatted(double seconds, const char* fmt) {
  nrString s = nrTime(seconds).format(fmt);
  return s.isNull() ? std::string("<null>") : std::string(s.getString());
}
}  // namespace

TEST(nrTimeFormat, EveryDirective) {
  EXPECT_EQ(formatted(3725.5, "%H:%m:%s.%i"), "1:02:05.500");
  // Only the whole-unit directives carry the sign; remainders are of |t|.
  EXPECT_EQ(formatted(-90.25, "%M %s %i"), "-1 30 250");
  // 1 day, 2 h, 3 min, 4.515625 s: exact in binary, so no truncation surprises.
  const double t = 86400 + 2 * 3600 + 3 * 60 + 4.515625;
  const char* fmt = "%D %H %M %S %I %U|%h %m %s %i %u|%%";
  EXPECT_EQ(formatted(t, fmt), "1 26 1563 93784 93784515 93784515625|02 03 04 515 515625|%");
  EXPECT_EQ(formatted(-t, fmt), "-1 -26 -1563 -93784 -93784515 -93784515625|02 03 04 515 515625|%");
  // Remainders wrap at their unit: 25 h is one day and one hour.
  EXPECT_EQ(formatted(25 * 3600 + 59 * 60 + 59.999, "%D %h %m %s %i"), "1 01 59 59 999");
}

TEST(nrTimeFormat, EdgesOfTheFormat) {
  EXPECT_EQ(formatted(5.0, ""), "<null>");
  EXPECT_EQ(formatted(5.0, nullptr), "<null>");
  EXPECT_EQ(formatted(5.0, "t=%S%"), "t=5");
  EXPECT_EQ(formatted(5.0, "%q%S"), "%q5");
  EXPECT_EQ(formatted(5.0, "100%%"), "100%");
  // The result never exceeds 199 characters, also when a directive is cut.
  const std::string longText(198, 'x');
  EXPECT_EQ(formatted(5.0, (longText + "ab").c_str()), longText + "a");
  EXPECT_EQ(formatted(123.0, (longText + "%S").c_str()), longText + "1");
}

TEST(nrTime, TimeOfDayHasMillisecondResolution) {
  const double before = static_cast<double>(time(nullptr));
  nrTime now = nrTime::getTimeOfDay();
  const double after = static_cast<double>(time(nullptr));
  EXPECT_GE(now.getValue(), before);
  EXPECT_LT(now.getValue(), after + 1.0);
  EXPECT_NEAR(now.getValue() * 1000.0, std::round(now.getValue() * 1000.0), 0.01);
}
