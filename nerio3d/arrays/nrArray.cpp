#include "nerio3d/arrays/nrArray.h"

#include <cstdlib>
#include <cstring>

#include "nerio3d/arrays/nrData.h"
#include "nerio3d/core/nrGlobal.h"
#include "nerio3d/platform/nrOS.h"

static const unsigned defaultExtension = 32;

nrArray::nrArray(unsigned size, unsigned n)
    : offset(0),
      stride(size),
      elementSize(size),
      count(0),
      capacity(n),
      extension(defaultExtension),
      data(nullptr),
      elements(static_cast<unsigned char*>(calloc(n, size))) {
  nrOS::adviseLargeBlock(elements, static_cast<unsigned long>(n) * size);
}

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
    free(elements);
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
  size_t bytes = static_cast<size_t>(n) * elementSize, kept = static_cast<size_t>(capacity) * elementSize;
  // A block that at least doubles is taken afresh from zeroed memory and the
  // old contents copied in: the new tail then costs no writes (and, for large
  // blocks, no pages) until it is used. Smaller steps grow in place.
  if (n / 2 >= capacity && n > 0) {
    void* fresh = calloc(n, elementSize);
    if (!fresh) return;
    nrOS::adviseLargeBlock(fresh, bytes);
    if (kept) memcpy(fresh, elements, kept);
    free(elements);
    elements = static_cast<unsigned char*>(fresh);
    capacity = n;
    return;
  }
  void* grown = realloc(elements, bytes);
  if (!grown && n) return;
  elements = static_cast<unsigned char*>(grown);
  if (n > capacity) memset(elements + kept, 0, bytes - kept);
  capacity = n;
}
