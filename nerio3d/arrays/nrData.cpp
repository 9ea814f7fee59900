#include "nerio3d/arrays/nrData.h"

#include <cstdlib>
#include <cstring>

NR_DEFINE_TYPE(nrData, nrObject, "Data") {}

void* nrData::operator new(size_t, unsigned payloadBytes) noexcept {
  unsigned char* block = static_cast<unsigned char*>(calloc(1, payloadOffset() + payloadBytes));
  if (block) memcpy(block + payloadOffset() - sizeof(unsigned), &payloadBytes, sizeof(unsigned));
  return block;
}

void nrData::operator delete(void* p) { free(p); }

nrData* nrData::clone() {
  unsigned size = getSize();
  nrData* copy = create(size);
  if (!copy) return nullptr;
  memcpy(copy->getPayload(), getPayload(), size);
  return copy;
}
