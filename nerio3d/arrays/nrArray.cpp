#include "nerio3d/arrays/nrArray.h"

#include "nerio3d/arrays/nrData.h"
#include "nerio3d/core/nrBlockAllocator.h"
#include "nerio3d/core/nrGlobal.h"

static const unsigned defaultExtension = 32;

nrArray::nrArray(unsigned size, unsigned n)
    : offset(0),
      stride(size),
      elementSize(size),
      count(0),
      capacity(n),
      extension(defaultExtension),
      data(nullptr),
      elements(static_cast<unsigned char*>(nrBlockAllocator::allocateZeroed(size_t(n) * size))) {}

nrArray::nrArray(unsigned size, nrData* block, short off, short str)
    : offset(off),
      stride(str),
      elementSize(size),
      count(0),
      capacity((block->getSize() - off) / size),
      extension(defaultExtension),
      data(block),
      elements(static_cast<unsigned char*>(block->getPayload()) + off) {
  block->ref();
}

nrArray::~nrArray() {
  if (data)
    data->unref();
  else
    nrBlockAllocator::release(elements, size_t(capacity) * elementSize);
}

void nrArray::grow(unsigned n) {
  unsigned step = extension ? extension : 1;
  unsigned k = (n - capacity + step - 1) / step;
  setSize(capacity + k * step);
}

void nrArray::setSize(unsigned n) {
  if (data) {
    nrGlobal::notify(nrGlobal::FATAL, nrGlobal::RESOURCE, "Cannot resize interleaved array");
    return;
  }
  // Large blocks grow in place or move without copying, their new pages
  // zero until used.
  void* resized = nrBlockAllocator::resizeZeroed(elements, size_t(capacity) * elementSize, size_t(n) * elementSize);
  if (!resized && n) return;
  elements = static_cast<unsigned char*>(resized);
  capacity = n;
}
