// Reference-counted raw block: the payload size and the payload lie right
// behind the header, in one allocation. Arrays view it to interleave attributes.
#pragma once

#include <cstddef>

#include "nerio3d/core/nrObject.h"

class nrData : public nrObject {
  NR_DECLARE_TYPE(nrData)

  // new (payloadBytes) nrData: allocates header, size and zeroed payload
  // together and records the payload size; null when memory is exhausted.
  nrData() : nrObject(getClassType()) {}
  static nrData* create(unsigned payloadBytes) { return new (payloadBytes) nrData; }

  void* operator new(size_t headerSize, unsigned payloadBytes) noexcept;
  // Plain new nrData: a block without payload.
  void* operator new(size_t headerSize) noexcept { return operator new(headerSize, 0u); }
  void operator delete(void* p);

  // A new block of the same size holding a byte copy of the payload; null
  // when memory is exhausted.
  virtual nrData* clone();

  // The size is kept in the allocation itself, just before the payload, where
  // the allocation operator wrote it before the object was constructed.
  unsigned getSize() const { return *reinterpret_cast<const unsigned*>(payload() - sizeof(unsigned)); }
  void* getPayload() { return payload(); }

 private:
  static size_t payloadOffset() { return (sizeof(nrData) + sizeof(unsigned) + 15) & ~size_t(15); }
  unsigned char* payload() const {
    return const_cast<unsigned char*>(reinterpret_cast<const unsigned char*>(this)) + payloadOffset();
  }
};
