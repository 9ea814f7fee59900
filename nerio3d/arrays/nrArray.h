// Untyped core of the growable typed arrays: owned storage, or a strided view of
// a shared data block so that several attribute arrays can interleave.
#pragma once

#include "nerio3d/core/nrBlockAllocator.h"

class nrData;

class nrArray {
 public:
  NR_POOLED_OBJECTS

  unsigned getCount() const { return count; }
  unsigned getSize() const { return capacity; }
  unsigned getExtension() const { return extension; }
  unsigned getStride() const { return stride; }
  unsigned getOffset() const { return offset; }
  unsigned getElementSize() const { return elementSize; }
  nrData* getData() const { return data; }
  // The elements in use that have storage: a view's count may run past its
  // block (or past its capacity).
  unsigned inUse() const {
    unsigned r = room();
    return count < r ? count : r;
  }
  // Address of element 0, for handing elements to OpenGL without copying.
  void* getElements() const { return elements; }

  // Makes room for n elements, then uses n. A view goes on even when it
  // cannot grow; owned storage that cannot be had keeps the old count.
  void setCount(unsigned n) {
    fit(n);
    if (capacity >= n || data) count = n;
  }
  // Sets the capacity to exactly n elements; refused for views of a shared block.
  void setSize(unsigned n);
  void setExtension(unsigned n) { extension = n; }

 protected:
  nrArray(unsigned elementSize, unsigned capacity);
  nrArray(unsigned elementSize, nrData* block, short offset, short stride);
  ~nrArray();
  nrArray(const nrArray&) = delete;
  nrArray& operator=(const nrArray&) = delete;

  // Grows the capacity linearly, in steps of the extension, to at least n.
  void fit(unsigned n) {
    if (capacity < n) grow(n);
  }
  unsigned char* at(unsigned i) const { return elements + i * stride; }
  // Whole elements that have storage: the capacity, or for a view the
  // elements its block holds at its stride (its capacity counts elements of
  // the element size from the offset, and so may run past the block).
  unsigned room() const { return data ? viewRoom() : capacity; }
  // fit(n), then whether element n - 1 has storage; a view asked for an
  // element past its block reports it as a resize it cannot make.
  bool makeRoom(unsigned n);
  unsigned offset;
  unsigned stride;
  unsigned elementSize;
  unsigned count;
  unsigned capacity;
  unsigned extension;
  nrData* data;
  unsigned char* elements;

 private:
  void grow(unsigned n);
  unsigned viewRoom() const;
};
