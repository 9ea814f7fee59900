// Per-thread record of the library: the thread's current graphics context and
// its user data, kept in one thread-local slot.
#pragma once

class nrContext;

class nrPrivate {
 public:
  // The calling thread's record is created on demand for threads the
  // application starts itself.
  static nrContext* getContext();
  static void setContext(nrContext* context);
  static void* getUserData();
  static void setUserData(void* data);

  // Gives the calling thread a fresh, zeroed record.
  static void init();
  // Deletes the calling thread's record, if it has one.
  static void fini();
  // Allocates the slot and the calling thread's record (at library load).
  static void setup();
  // Deletes the calling thread's record and frees the slot (at library unload).
  static void cleanup();

 private:
  static nrPrivate* current();

  nrContext* context = nullptr;
  void* userData = nullptr;
};
