#include "nerio3d/core/nrPrivate.h"

#include "nerio3d/platform/nrOS.h"

namespace {
nrOS::SlotKey slot;
bool slotAllocated = false;

// Library load and unload: the slot and the loading thread's record.
struct LibraryLifetime {
  LibraryLifetime() { nrPrivate::setup(); }
  ~LibraryLifetime() { nrPrivate::cleanup(); }
} libraryLifetime;
}  // namespace

nrPrivate* nrPrivate::current() {
  if (!slotAllocated) setup();
  nrPrivate* record = static_cast<nrPrivate*>(nrOS::getSlot(slot));
  if (!record) {
    init();
    record = static_cast<nrPrivate*>(nrOS::getSlot(slot));
  }
  return record;
}

nrContext* nrPrivate::getContext() { return current()->context; }
void nrPrivate::setContext(nrContext* context) { current()->context = context; }
void* nrPrivate::getUserData() { return current()->userData; }
void nrPrivate::setUserData(void* data) { current()->userData = data; }

void nrPrivate::init() {
  if (!slotAllocated) setup();
  delete static_cast<nrPrivate*>(nrOS::getSlot(slot));
  nrOS::setSlot(slot, new nrPrivate);
}

void nrPrivate::fini() {
  if (!slotAllocated) return;
  delete static_cast<nrPrivate*>(nrOS::getSlot(slot));
  nrOS::setSlot(slot, nullptr);
}

void nrPrivate::setup() {
  if (!slotAllocated) {
    // Records made on demand for the application's own threads go with them.
    slot = nrOS::createSlot([](void* record) { delete static_cast<nrPrivate*>(record); });
    slotAllocated = true;
  }
  if (!nrOS::getSlot(slot)) nrOS::setSlot(slot, new nrPrivate);
}

void nrPrivate::cleanup() {
  if (!slotAllocated) return;
  fini();
  nrOS::deleteSlot(slot);
  slotAllocated = false;
}
