// A thread of the library: every thread it starts gets its own per-thread record.
#pragma once

#include "nerio3d/platform/nrOS.h"

class nrThread {
 public:
  // Stands for the calling thread; nothing is started.
  nrThread();
  // Starts fn(arg) in a new thread at once.
  nrThread(void (*fn)(void*), void* arg);
  // Closes the handle; the thread itself keeps running.
  ~nrThread();
  nrThread(const nrThread&) = delete;
  nrThread& operator=(const nrThread&) = delete;

  // Runs fn(arg) in a new thread. Starting an object that already runs a
  // thread warns and starts another one; the object then stands for the new one.
  void start(void (*fn)(void*), void* arg);
  // Waits without time limit for the thread this object started to end.
  void wait();

  bool isRunning() const { return running != 0; }
  // Stack size of threads started from now on; 0 is the system default.
  void setStackSize(unsigned size) { stackSize = size; }
  unsigned getStackSize() const { return stackSize; }

  // Deletes the calling thread's per-thread record and ends the thread.
  static void exit();
  // Sleeps whole milliseconds: values below 1000 microseconds return at once.
  static void sleep(unsigned microseconds);
  static unsigned long getID();
  static int numProcessors();

 private:
  unsigned char running;
  nrOS::ThreadHandle handle;
  unsigned stackSize;
  // Set while handle is a thread this object started and nobody joined yet.
  bool joinable;
};
