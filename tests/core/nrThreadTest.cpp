#include "nerio3d/core/nrThread.h"

#include <atomic>
#include <chrono>
#include <cmath>
#include <ctime>
#include <string>
#include <thread>

#include "nerio3d/core/nrPrivate.h"
#include "nerio3d/core/nrTime.h"
#include "nrCapture.h"

namespace {
std::string formatted(double seconds, const char* fmt) {
  nrString s = nrTime(seconds).format(fmt);
  return s.isNull() ? std::string("<null>") : std::string(s.getString());
}
struct Seen {
  void* userDataAtStart = reinterpret_cast<void*>(1);
  unsigned long id = 0;
};

void recordAndSetUserData(void* p) {
  Seen* seen = static_cast<Seen*>(p);
  seen->userDataAtStart = nrPrivate::getUserData();
  seen->id = nrThread::getID();
  nrPrivate::setUserData(p);
}

void count(void* p) { ++*static_cast<std::atomic<int>*>(p); }

double millisecondsOf(void (*fn)()) {
  auto start = std::chrono::steady_clock::now();
  fn();
  return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}
}  // namespace

TEST(nrThread, StartedThreadRunsWithItsOwnRecord) {
  int mine = 0;
  nrPrivate::setUserData(&mine);
  Seen seen, other;
  nrThread thread;
  EXPECT_FALSE(thread.isRunning());
  thread.start(recordAndSetUserData, &seen);
  thread.wait();
  EXPECT_NE(seen.id, nrThread::getID());
  // The running mark stays once the thread is gone.
  EXPECT_TRUE(thread.isRunning());
  // A thread of the application's own gets a fresh record on first use too.
  std::thread([&] { recordAndSetUserData(&other); }).join();
  // Fresh records, not the main thread's, which keeps its own.
  EXPECT_EQ(std::tuple(seen.userDataAtStart, other.userDataAtStart, nrPrivate::getUserData()),
            (std::tuple<void*, void*, void*>(nullptr, nullptr, &mine)));
  nrPrivate::setUserData(nullptr);
}

TEST(nrThread, RestartWarnsButStartsAnotherAndExitEndsEarly) {
  std::atomic<int> runs{0};
  std::string err = nrtest::captureStderr([&] {
    nrThread thread(count, &runs);
    thread.start(count, &runs);
    thread.wait();
  });
  EXPECT_EQ(err, "attempted to start already executing thread\n");
  for (int i = 0; i < 5000 && runs.load() < 2; ++i) std::this_thread::sleep_for(std::chrono::milliseconds(1));
  EXPECT_EQ(runs.load(), 2);

  static std::atomic<int> steps{0};
  nrThread early([](void*) { ++steps, nrThread::exit(), ++steps; }, nullptr);
  early.wait();
  EXPECT_EQ(steps.load(), 1);

  EXPECT_EQ(nrtest::captureStderr([] { nrThread(nullptr, nullptr).wait(); }), "failed to create thread\n");
}

TEST(nrThread, StackSizeAppliesToThreadsStartedLater) {
  static size_t stack = 0;
  nrThread thread;
  thread.setStackSize(16u << 20);
  thread.start([](void*) {
    pthread_attr_t attr;
    pthread_getattr_np(pthread_self(), &attr);
    pthread_attr_getstacksize(&attr, &stack);
    pthread_attr_destroy(&attr);
  }, nullptr);
  thread.wait();
  EXPECT_GE(stack, size_t{16u << 20});
}

TEST(nrThread, SleepCountsWholeMilliseconds) {
  // Below a millisecond nothing sleeps: a hundred calls take far less than
  // the 100 ms that sleeping each time would cost.
  EXPECT_LT(millisecondsOf([] { for (int i = 0; i < 100; ++i) nrThread::sleep(999); }), 50.0);
  EXPECT_GE(millisecondsOf([] { nrThread::sleep(2500); }), 2.0);
}

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
  // Times too long for microseconds in a long print as the longest that fits.
  EXPECT_EQ(formatted(1e300, "%S %u"), "9200000000000 000000");
  EXPECT_EQ(formatted(-HUGE_VAL, "%S"), "-9200000000000");
  EXPECT_EQ(formatted(NAN, "%S %u"), "0 000000");
}

TEST(nrTime, TimeOfDayHasMillisecondResolution) {
  // Read on the same clock as the library's (time() is coarser and may run ahead).
  auto seconds = [] {
    return std::chrono::duration<double>(std::chrono::system_clock::now().time_since_epoch()).count();
  };
  const double before = seconds();
  nrTime now = nrTime::getTimeOfDay();
  const double after = seconds();
  EXPECT_GE(now.getValue(), std::floor(before * 1000.0) / 1000.0 - 1e-6);
  EXPECT_LE(now.getValue(), after + 1e-6);
  EXPECT_NEAR(now.getValue() * 1000.0, std::round(now.getValue() * 1000.0), 0.01);
}
