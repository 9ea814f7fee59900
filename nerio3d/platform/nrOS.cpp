#include "nerio3d/platform/nrOS.h"

#include <pthread.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <ctime>

namespace nrOS {

namespace {
struct Launch {
  void (*entry)(void*);
  void* arg;
};

extern "C" void* runLaunch(void* data) {
  Launch launch = *static_cast<Launch*>(data);
  delete static_cast<Launch*>(data);
  launch.entry(launch.arg);
  return nullptr;
}
}  // namespace

bool startThread(ThreadHandle& handle, unsigned stackSize, void (*entry)(void*), void* arg) {
  pthread_attr_t attr;
  pthread_attr_init(&attr);
  if (stackSize) {
    const size_t minimum = static_cast<size_t>(PTHREAD_STACK_MIN);
    pthread_attr_setstacksize(&attr, stackSize < minimum ? minimum : stackSize);
  }
  Launch* launch = new Launch{entry, arg};
  pthread_t created;
  int failed = pthread_create(&created, &attr, runLaunch, launch);
  pthread_attr_destroy(&attr);
  if (failed) {
    delete launch;
    return false;
  }
  handle = static_cast<ThreadHandle>(created);
  return true;
}

void joinThread(ThreadHandle handle) { pthread_join(static_cast<pthread_t>(handle), nullptr); }
void detachThread(ThreadHandle handle) { pthread_detach(static_cast<pthread_t>(handle)); }
ThreadHandle currentThread() { return static_cast<ThreadHandle>(pthread_self()); }
void exitThread() { pthread_exit(nullptr); }
unsigned long threadId() { return static_cast<unsigned long>(gettid()); }
int processorCount() { return static_cast<int>(sysconf(_SC_NPROCESSORS_ONLN)); }

void adviseLargeBlock(void* block, unsigned long bytes) {
  // Below a few huge pages the advice saves little and costs a system call.
  const unsigned long LARGE = 4ul << 20;
  if (!block || bytes < LARGE) return;
#ifdef MADV_HUGEPAGE
  // Rounded outwards to whole pages: a block the allocator mapped on its own
  // is then advised as one mapping, which it can still grow in place.
  const uintptr_t page = static_cast<uintptr_t>(sysconf(_SC_PAGESIZE));
  uintptr_t begin = reinterpret_cast<uintptr_t>(block) & ~(page - 1);
  uintptr_t end = (reinterpret_cast<uintptr_t>(block) + bytes + page - 1) & ~(page - 1);
  madvise(reinterpret_cast<void*>(begin), end - begin, MADV_HUGEPAGE);
#endif
}

void sleepMilliseconds(unsigned milliseconds) {
  timespec left = {static_cast<time_t>(milliseconds / 1000), static_cast<long>(milliseconds % 1000) * 1000000L};
  while (nanosleep(&left, &left) == -1 && errno == EINTR) {
  }
}

double timeOfDay() {
  timespec now;
  clock_gettime(CLOCK_REALTIME, &now);
  return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec / 1000000) * 0.001;
}

SlotKey createSlot() {
  pthread_key_t key;
  pthread_key_create(&key, nullptr);
  return static_cast<SlotKey>(key);
}
void deleteSlot(SlotKey key) { pthread_key_delete(static_cast<pthread_key_t>(key)); }
void* getSlot(SlotKey key) { return pthread_getspecific(static_cast<pthread_key_t>(key)); }
void setSlot(SlotKey key, void* value) { pthread_setspecific(static_cast<pthread_key_t>(key), value); }

}  // namespace nrOS
