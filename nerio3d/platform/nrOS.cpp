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

namespace {
const size_t HUGE_PAGE = size_t(2) << 20;
size_t pageSize() {
  static const size_t size = static_cast<size_t>(sysconf(_SC_PAGESIZE));
  return size;
}
size_t wholePages(size_t bytes) { return (bytes + pageSize() - 1) & ~(pageSize() - 1); }
}  // namespace

void populatePages(void* pages, size_t bytes) {
  // Linux 5.14 on; elsewhere the pages fault in as they are used.
#ifdef MADV_POPULATE_WRITE
  madvise(pages, wholePages(bytes), MADV_POPULATE_WRITE);
#else
  (void)pages;
  (void)bytes;
#endif
}

void* mapPages(size_t bytes, bool hugeAligned) {
  size_t length = wholePages(bytes), extra = hugeAligned ? HUGE_PAGE : 0;
  void* mapped = mmap(nullptr, length + extra, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (mapped == MAP_FAILED) return nullptr;
  if (!hugeAligned) {
    adviseLargeBlock(mapped, length);
    populatePages(mapped, length);
    return mapped;
  }
  // The slack before the first boundary and after the block goes back.
  uintptr_t start = reinterpret_cast<uintptr_t>(mapped);
  uintptr_t aligned = (start + HUGE_PAGE - 1) & ~(HUGE_PAGE - 1);
  if (aligned > start) munmap(mapped, aligned - start);
  if (start + extra > aligned) munmap(reinterpret_cast<void*>(aligned + length), start + extra - aligned);
#ifdef MADV_HUGEPAGE
  madvise(reinterpret_cast<void*>(aligned), length, MADV_HUGEPAGE);
#endif
  return reinterpret_cast<void*>(aligned);
}

void* remapPages(void* block, size_t oldBytes, size_t newBytes) {
  size_t oldLength = wholePages(oldBytes), newLength = wholePages(newBytes);
  if (oldLength == newLength) return block;
  void* moved = mremap(block, oldLength, newLength, MREMAP_MAYMOVE);
  if (moved == MAP_FAILED) return nullptr;
  // Advice given before stays with the pages; a block that has just become
  // large gets it now.
  if (newLength > oldLength) {
    adviseLargeBlock(moved, newLength);
    populatePages(static_cast<char*>(moved) + oldLength, newLength - oldLength);
  }
  return moved;
}

void unmapPages(void* block, size_t bytes) {
  if (block) munmap(block, wholePages(bytes));
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

SlotKey createSlot(void (*destructor)(void*)) {
  pthread_key_t key;
  pthread_key_create(&key, destructor);
  return static_cast<SlotKey>(key);
}
void deleteSlot(SlotKey key) { pthread_key_delete(static_cast<pthread_key_t>(key)); }
void* getSlot(SlotKey key) { return pthread_getspecific(static_cast<pthread_key_t>(key)); }
void setSlot(SlotKey key, void* value) { pthread_setspecific(static_cast<pthread_key_t>(key), value); }

}  // namespace nrOS
