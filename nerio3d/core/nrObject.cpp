#include "nerio3d/core/nrObject.h"

#include <new>

#include "nerio3d/core/nrBlockAllocator.h"

NR_DEFINE_ROOT_TYPE(nrObject, "Object") {}

bool nrObject::unref() {
  if (refCount == 0 || --refCount == 0) {
    delete this;
    return true;
  }
  return false;
}

void* nrObject::operator new(std::size_t bytes) {
  if (void* block = nrBlockAllocator::allocate(bytes)) return block;
  throw std::bad_alloc();
}

void nrObject::operator delete(void* block, std::size_t bytes) { nrBlockAllocator::release(block, bytes); }
