#include "nerio3d/arrays/nrData.h"

#include <cstdlib>
#include <cstring>

NR_DEFINE_TYPE(nrData, nrObject, "Data") {}

void* nrData::operator new(size_t, unsigned payloadBytes) { return calloc(1, payloadOffset() + payloadBytes); }

void nrData::operator delete(void* p) { free(p); }

nrData::nrData(unsigned payloadBytes) : nrObject(getClassType()), size(payloadBytes) {}

nrData* nrData::clone() {
  nrData* copy = create(size);
  memcpy(copy->getPayload(), getPayload(), size);
  return copy;
}
