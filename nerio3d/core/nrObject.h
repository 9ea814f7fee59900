// Root of the library's objects: an atomic reference count, a flag word and a
// run-time type.
#pragma once

#include <atomic>
#include <cstdint>

#include "nerio3d/core/nrBlockAllocator.h"
#include "nerio3d/core/nrTypeMacros.h"

class nrOutput;

class nrObject {
  NR_DECLARE_TYPE(nrObject)

  nrObject() : nrObject(getClassType()) {}
  explicit nrObject(nrType* typeOfClass) : flags(0), type(typeOfClass) {}
  virtual ~nrObject() = default;
  nrObject(const nrObject&) = delete;
  nrObject& operator=(const nrObject&) = delete;

  NR_POOLED_OBJECTS

  virtual void write(nrOutput*) {}

  void ref() { ++refCount; }
  // Deletes the object when its count reaches 0, or at once when nobody ever
  // referenced it; returns true when it was deleted.
  bool unref();
  // Decrements without deleting; true when the count reached 0.
  bool unrefNoDelete() { return --refCount == 0; }
  int getRefCount() const { return refCount; }

  bool isOfType(const nrType* t) const { return type->isDerivedFrom(t); }
  nrType* getType() const { return type; }

  // Registers every built-in type, in a fixed order, once.
  static void initClasses();

 protected:
  std::atomic<int32_t> refCount{0};
  // Only bit 0 is used (nrContainer's parent-list bit); the rest are free.
  uint32_t flags;
  nrType* type;
};
