#include "nerio3d/core/nrThread.h"

#include <atomic>
#include <chrono>
#include <thread>

#include "nerio3d/core/nrPrivate.h"
#include "nrCapture.h"

namespace {
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
  Seen seen;
  nrThread thread;
  EXPECT_FALSE(thread.isRunning());
  thread.start(recordAndSetUserData, &seen);
  thread.wait();
  EXPECT_EQ(seen.userDataAtStart, nullptr);  // a fresh record, not the main thread's
  EXPECT_NE(seen.id, nrThread::getID());
  EXPECT_EQ(nrPrivate::getUserData(), &mine);
  // The running mark stays once the thread is gone.
  EXPECT_TRUE(thread.isRunning());
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
  nrThread early(
      [](void*) {
        ++steps;
        nrThread::exit();
        ++steps;
      },
      nullptr);
  early.wait();
  EXPECT_EQ(steps.load(), 1);
}

TEST(nrThread, StackSizeAppliesToThreadsStartedLater) {
  static size_t stack = 0;
  nrThread thread;
  thread.setStackSize(16u << 20);
  thread.start(
      [](void*) {
        pthread_attr_t attr;
        pthread_getattr_np(pthread_self(), &attr);
        pthread_attr_getstacksize(&attr, &stack);
        pthread_attr_destroy(&attr);
      },
      nullptr);
  thread.wait();
  EXPECT_GE(stack, size_t{16u << 20});
}

TEST(nrThread, SleepCountsWholeMilliseconds) {
  // Below a millisecond nothing sleeps: a hundred calls take far less than
  // the 100 ms that sleeping each time would cost.
  EXPECT_LT(millisecondsOf([] {
              for (int i = 0; i < 100; ++i) nrThread::sleep(999);
            }),
            50.0);
  EXPECT_GE(millisecondsOf([] { nrThread::sleep(2500); }), 2.0);
}
