#include "nerio3d/core/nrThread.h"

#include <cerrno>
#include <climits>
#include <cstdio>
#include <ctime>
#include <unistd.h>

#include "nerio3d/core/nrPrivate.h"

namespace {
struct StartRecord {
  void (*fn)(void*);
  void* arg;
};

extern "C" void* launch(void* data) {
  nrPrivate::init();
  StartRecord* record = static_cast<StartRecord*>(data);
  void (*fn)(void*) = record->fn;
  void* arg = record->arg;
  delete record;
  fn(arg);
  nrPrivate::fini();
  return nullptr;
}
}  // namespace

nrThread::nrThread() : running(0), handle(pthread_self()), stackSize(0), joinable(false) {}

nrThread::nrThread(void (*fn)(void*), void* arg) : running(0), handle(), stackSize(0), joinable(false) {
  start(fn, arg);
}

nrThread::~nrThread() {
  if (joinable) pthread_detach(handle);
}

void nrThread::start(void (*fn)(void*), void* arg) {
  if (running) fputs("attempted to start already executing thread\n", stderr);

  pthread_attr_t attr;
  pthread_attr_init(&attr);
  if (stackSize) {
    // The system refuses stacks below its minimum; such sizes get the minimum.
    const size_t minimum = static_cast<size_t>(PTHREAD_STACK_MIN);
    size_t size = stackSize < minimum ? minimum : stackSize;
    pthread_attr_setstacksize(&attr, size);
  }
  StartRecord* record = new StartRecord{fn, arg};
  pthread_t created;
  int failed = pthread_create(&created, &attr, launch, record);
  pthread_attr_destroy(&attr);
  if (failed) {
    delete record;
    fputs("failed to create thread\n", stderr);
    return;
  }
  // The object now stands for the new thread; an earlier one runs on, detached.
  if (joinable) pthread_detach(handle);
  handle = created;
  joinable = true;
  running = 1;
}

void nrThread::wait() {
  // An object that stands for a thread it did not start has nothing to join
  // (waiting for the calling thread itself could never end), so this returns.
  if (!joinable) return;
  pthread_join(handle, nullptr);
  joinable = false;
}

void nrThread::exit() {
  nrPrivate::fini();
  pthread_exit(nullptr);
}

void nrThread::sleep(unsigned microseconds) {
  unsigned milliseconds = microseconds / 1000;
  if (!milliseconds) return;
  timespec left = {static_cast<time_t>(milliseconds / 1000), static_cast<long>(milliseconds % 1000) * 1000000L};
  while (nanosleep(&left, &left) == -1 && errno == EINTR) {
  }
}

// The kernel's id of the thread, as shown by ps, top and debuggers.
unsigned long nrThread::getID() { return static_cast<unsigned long>(gettid()); }

int nrThread::numProcessors() { return static_cast<int>(sysconf(_SC_NPROCESSORS_ONLN)); }
