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
  void* grown = realloc(elements, static_cast<size_t>(n) * elementSize);
  if (!grown && n) return;
  elements = static_cast<unsigned char*>(grown);
  if (n > capacity) {
    nrOS::adviseLargeBlock(elements, static_cast<unsigned long>(n) * elementSize);
    memset(elements + capacity * elementSize, 0, (n - capacity) * elementSize);
  }
  capacity = n;
}
