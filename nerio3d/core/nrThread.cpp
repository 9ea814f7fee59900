#include "nerio3d/core/nrThread.h"

#include <cstdio>

#include "nerio3d/core/nrPrivate.h"
#include "nerio3d/platform/nrOS.h"

namespace {
struct StartRecord {
  void (*fn)(void*);
  void* arg;
};

void launch(void* data) {
  nrPrivate::init();
  StartRecord* record = static_cast<StartRecord*>(data);
  void (*fn)(void*) = record->fn;
  void* arg = record->arg;
  delete record;
  fn(arg);
  nrPrivate::fini();
}
}  // namespace

nrThread::nrThread() : running(0), handle(nrOS::currentThread()), stackSize(0), joinable(false) {}

nrThread::nrThread(void (*fn)(void*), void* arg) : running(0), handle(), stackSize(0), joinable(false) {
  start(fn, arg);
}

nrThread::~nrThread() {
  if (joinable) nrOS::detachThread(handle);
}

void nrThread::start(void (*fn)(void*), void* arg) {
  if (running) fputs("attempted to start already executing thread\n", stderr);
  if (!fn) {
    fputs("failed to create thread\n", stderr);
    return;
  }

  StartRecord* record = new StartRecord{fn, arg};
  nrOS::ThreadHandle created;
  if (!nrOS::startThread(created, stackSize, launch, record)) {
    delete record;
    fputs("failed to create thread\n", stderr);
    return;
  }
  // The object now stands for the new thread; an earlier one runs on, detached.
  if (joinable) nrOS::detachThread(handle);
  handle = created;
  joinable = true;
  running = 1;
}

void nrThread::wait() {
  // An object that stands for a thread it did not start has nothing to join
  // (waiting for the calling thread itself could never end), so this returns.
  if (!joinable) return;
  nrOS::joinThread(handle);
  joinable = false;
}

void nrThread::exit() {
  nrPrivate::fini();
  nrOS::exitThread();
}

void nrThread::sleep(unsigned microseconds) {
  unsigned milliseconds = microseconds / 1000;
  if (!milliseconds) return;
  nrOS::sleepMilliseconds(milliseconds);
}

unsigned long nrThread::getID() { return nrOS::threadId(); }

int nrThread::numProcessors() { return nrOS::processorCount(); }
