#include "nerio3d/core/nrPrivate.h"

#include <pthread.h>

namespace {
pthread_key_t slot;
bool slotAllocated = false;

// Library load and unload: the slot and the loading thread's record.
struct LibraryLifetime {
  LibraryLifetime() { nrPrivate::setup(); }
  ~LibraryLifetime() { nrPrivate::cleanup(); }
} libraryLifetime;
}  // namespace

nrPrivate* nrPrivate::current() {
  if (!slotAllocated) setup();
  nrPrivate* record = static_cast<nrPrivate*>(pthread_getspecific(slot));
  if (!record) {
    init();
    record = static_cast<nrPrivate*>(pthread_getspecific(slot));
  }
  return record;
}

nrContext* nrPrivate::getContext() { return current()->context; }
void nrPrivate::setContext(nrContext* context) { current()->context = context; }
void* nrPrivate::getUserData() { return current()->userData; }
void nrPrivate::setUserData(void* data) { current()->userData = data; }

void nrPrivate::init() {
  if (!slotAllocated) setup();
  delete static_cast<nrPrivate*>(pthread_getspecific(slot));
  pthread_setspecific(slot, new nrPrivate);
}

void nrPrivate::fini() {
  if (!slotAllocated) return;
  delete static_cast<nrPrivate*>(pthread_getspecific(slot));
  pthread_setspecific(slot, nullptr);
}

void nrPrivate::setup() {
  if (!slotAllocated) {
    pthread_key_create(&slot, nullptr);
    slotAllocated = true;
  }
  if (!pthread_getspecific(slot)) pthread_setspecific(slot, new nrPrivate);
}

void nrPrivate::cleanup() {
  if (!slotAllocated) return;
  fini();
  pthread_key_delete(slot);
  slotAllocated = false;
}
