#include "nerio3d/arrays/nrArray.h"

#include <cstdint>

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
      elements(static_cast<unsigned char*>(nrBlockAllocator::allocateZeroed(size_t(n) * size))) {
  if (!elements) capacity = 0;
}

// A view placed outside its block (negative offset or stride, offset past the
// end) gets no capacity, so nothing is ever stored outside the block; without
// a block the array owns empty storage.
nrArray::nrArray(unsigned size, nrData* block, short off, short str)
    : offset(block && off >= 0 ? off : 0),
      stride(block && str >= 0 ? str : size),
      elementSize(size),
      count(0),
      capacity(block && off >= 0 && str >= 0 && unsigned(off) <= block->getSize() ? (block->getSize() - off) / size : 0),
      extension(defaultExtension),
      data(block),
      elements(block ? static_cast<unsigned char*>(block->getPayload()) + offset : nullptr) {
  if (block) block->ref();
}

nrArray::~nrArray() {
  if (data)
    data->unref();
  else
    nrBlockAllocator::release(elements, size_t(capacity) * elementSize);
}

// A capacity the steps would carry past the largest count (an index that was
// negative, a huge extension) is refused: wrapped around, it would shrink the
// array below its count.
void nrArray::grow(unsigned n) {
  uint64_t step = extension ? extension : 1;
  uint64_t size = capacity + (uint64_t(n) - capacity + step - 1) / step * step;
  if (size > UINT32_MAX) {
    nrGlobal::notify(nrGlobal::FATAL, nrGlobal::RESOURCE, "Cannot allocate array storage");
    return;
  }
  setSize(static_cast<unsigned>(size));
}

unsigned nrArray::viewRoom() const {
  unsigned size = data->getSize();
  if (size < offset + elementSize) return 0;
  unsigned n = stride ? (size - offset - elementSize) / stride + 1 : capacity;
  return n < capacity ? n : capacity;
}

bool nrArray::makeRoom(unsigned n) {
  if (capacity < n) {
    grow(n);
    return capacity >= n && room() >= n;
  }
  if (room() >= n) return true;
  nrGlobal::notify(nrGlobal::FATAL, nrGlobal::RESOURCE, "Cannot resize interleaved array");
  return false;
}

void nrArray::setSize(unsigned n) {
  if (data) {
    nrGlobal::notify(nrGlobal::FATAL, nrGlobal::RESOURCE, "Cannot resize interleaved array");
    return;
  }
  // Large blocks grow in place or move without copying, their new pages
  // zero until used.
  void* resized = nrBlockAllocator::resizeZeroed(elements, size_t(capacity) * elementSize, size_t(n) * elementSize);
  if (!resized && n) {
    nrGlobal::notify(nrGlobal::FATAL, nrGlobal::RESOURCE, "Cannot allocate array storage");
    return;
  }
  elements = static_cast<unsigned char*>(resized);
  capacity = n;
}
