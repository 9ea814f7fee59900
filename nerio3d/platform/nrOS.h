// The operating-system services the core runtime needs: threads, per-thread
// slots, sleeping and the clock. Everything above this folder calls these.
#pragma once

#include <cstddef>
#include <cstdint>

namespace nrOS {

// Opaque handle of a thread.
typedef uintptr_t ThreadHandle;
// Opaque key of a per-thread slot.
typedef unsigned SlotKey;

// Starts entry(arg) in a new thread with the given stack size (0: the
// system's default; sizes below the system's minimum are raised to it).
bool startThread(ThreadHandle& handle, unsigned stackSize, void (*entry)(void*), void* arg);
void joinThread(ThreadHandle handle);
void detachThread(ThreadHandle handle);
ThreadHandle currentThread();
[[noreturn]] void exitThread();
// The kernel's id of the calling thread, as shown by ps, top and debuggers.
unsigned long threadId();
int processorCount();

// Asks that a large block of memory, not yet touched, be backed by huge pages
// where the system offers them: far fewer page faults when it is filled.
void adviseLargeBlock(void* block, unsigned long bytes);

// Zero-filled pages of a mapping of their own, at least `bytes` long; null
// when the system has none. With `hugeAligned` the mapping starts on a huge
// page boundary and is advised to use huge pages, and its pages fault in as
// they are used; without, they are made resident at once (one system call
// instead of a fault per page), for blocks that are made to be filled.
void* mapPages(size_t bytes, bool hugeAligned = false);
// Grows or shrinks a mapping made by mapPages, moving it where it must
// without copying; pages added read as zero and are made resident at once.
// Null (the mapping unchanged) when it cannot.
void* remapPages(void* block, size_t oldBytes, size_t newBytes);
void unmapPages(void* block, size_t bytes);
// Makes the pages of a mapping resident and writable in one system call,
// instead of a fault per page as they are first written. `pages` starts a page.
void populatePages(void* pages, size_t bytes);

void sleepMilliseconds(unsigned milliseconds);
// Seconds since the epoch, cut to whole milliseconds.
double timeOfDay();

// A slot whose destructor, when given, runs with the slot's value as each
// thread that set it to non-null ends.
SlotKey createSlot(void (*destructor)(void*) = nullptr);
void deleteSlot(SlotKey key);
void* getSlot(SlotKey key);
void setSlot(SlotKey key, void* value);

}  // namespace nrOS
