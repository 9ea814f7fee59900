// Pointer arrays of the field system: fields, field descriptors and referenced
// containers. Their text skips null elements and lets each other element write itself.
#pragma once

#include "nerio3d/arrays/nrTypedArray.h"

class nrContainer;
class nrField;
class nrFieldInfo;

template <typename T>
class nrObjectPtrArray : public nrTypedArray<T*> {
 public:
  using nrTypedArray<T*>::nrTypedArray;

  // "[", then per non-null element the indentation, its own text and ",\n",
  // then the indentation and "]".
  void write(nrOutput* out) const;
};

class nrFieldArray : public nrObjectPtrArray<nrField> {
 public:
  using nrObjectPtrArray::nrObjectPtrArray;
};
class nrFieldInfoArray : public nrObjectPtrArray<nrFieldInfo> {
 public:
  using nrObjectPtrArray::nrObjectPtrArray;
};
// Containers held by reference fields and child lists.
class nrRefArray : public nrObjectPtrArray<nrContainer> {
 public:
  using nrObjectPtrArray::nrObjectPtrArray;
};
