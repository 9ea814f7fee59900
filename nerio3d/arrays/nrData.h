// Reference-counted raw block: the payload lies right behind the header, in
// one allocation. Arrays view it to interleave attributes.
#pragma once

#include <cstddef>

#include "nerio3d/core/nrObject.h"

class nrData : public nrObject {
  NR_DECLARE_TYPE(nrData)

  // Allocates header and payload together; the payload is zeroed.
  static nrData* create(unsigned payloadBytes) { return new (payloadBytes) nrData(payloadBytes); }

  void* operator new(size_t headerSize, unsigned payloadBytes);
  void operator delete(void* p);

  // A new block of the same size holding a byte copy of the payload.
  virtual nrData* clone();

  unsigned getSize() const { return size; }
  void* getPayload() { return reinterpret_cast<unsigned char*>(this) + payloadOffset(); }

 protected:
  explicit nrData(unsigned payloadBytes);

 private:
  static size_t payloadOffset() { return (sizeof(nrData) + 15) & ~size_t(15); }
  unsigned size;
};
