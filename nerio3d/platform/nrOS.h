// The operating-system services the core runtime needs: threads, per-thread
// slots, sleeping and the clock. Everything above this folder calls these.
#pragma once

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

void sleepMilliseconds(unsigned milliseconds);
// Seconds since the epoch, cut to whole milliseconds.
double timeOfDay();

SlotKey createSlot();
void deleteSlot(SlotKey key);
void* getSlot(SlotKey key);
void setSlot(SlotKey key, void* value);

}  // namespace nrOS
