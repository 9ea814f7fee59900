// What the attribute sets and the index set share: one typed array held as
// field 0, read and written through the field rules, with every change
// reported to the sets that refer to it.
#pragma once

#include "nerio3d/arrays/nrData.h"
#include "nerio3d/geometry/nrGLAttr.h"

template <typename Derived, typename Base, typename A>
class nrArraySet : public Base {
 public:
  typedef typename A::ElementType T;
  enum { ARRAY_FIELD = 0 };

  // Reads bring the array up to date first. getCount also answers the
  // attribute sets' virtual getCount, which the index set's base lacks, so
  // no member here is marked override (one marked would call for all).
  // A view's count may run past its block (a count set beyond it, which the
  // array reports): only the elements the block holds are counted, so that
  // drawing, bounds and picking never read past it.
  unsigned getCount() {
    this->validateField(ARRAY_FIELD);
    return array.inUse();
  }
  const T& get(unsigned i) {
    this->validateField(ARRAY_FIELD);
    return array[i];
  }
  const A& getArray() {
    this->validateField(ARRAY_FIELD);
    return array;
  }

  void set(unsigned i, const T& v) {
    array.set(i, v);
    this->fieldChanged(ARRAY_FIELD);
  }
  void set(const A& values) {
    array.set(values);
    this->fieldChanged(ARRAY_FIELD);
  }
  void setRange(unsigned start, unsigned n, const T* values) {
    array.setRange(start, n, values);
    this->fieldChanged(ARRAY_FIELD);
  }
  void append(const T& v) {
    array.append(v);
    this->fieldChanged(ARRAY_FIELD);
  }
  void setCount(unsigned n) {
    array.setCount(n);
    this->fieldChanged(ARRAY_FIELD);
  }
  // The elements for changing them in place; call changed() afterwards.
  T* edit() {
    this->validateField(ARRAY_FIELD);
    return array.getArray();
  }
  void changed() { this->fieldChanged(ARRAY_FIELD); }

  // Referring sets learn of every change (their bound and compiled drawing depend on it).
  void fieldChanged(short index) {
    this->notifyParents(index);
    this->touchField(index);
  }

 protected:
  // Empty, with count elements (all zero), or over the interleaved data of
  // block; a view uses every whole element the block holds at its stride, so
  // the set is ready to draw.
  explicit nrArraySet(nrType* typeOfClass) : Base(typeOfClass) { this->initFieldDefaults(Derived::getClassType()); }
  nrArraySet(nrType* typeOfClass, int count) : nrArraySet(typeOfClass) {
    array.setCount(count > 0 ? unsigned(count) : 0);
  }
  nrArraySet(nrType* typeOfClass, nrData* block, short offset, short stride)
      : Base(typeOfClass), array(block, offset, stride) {
    this->initFieldDefaults(Derived::getClassType());
    unsigned size = array.getElementSize();
    if (block && stride > 0 && offset >= 0 && block->getSize() >= unsigned(offset) + size)
      array.setCount((block->getSize() - unsigned(offset) - size) / unsigned(stride) + 1);
  }
  ~nrArraySet() { this->destroyFieldContents(Derived::getClassType()); }

  // The stream of the array for drawing, its fields brought up to date first.
  void fillGLAttr(nrGLAttr& attr, GLenum glType, short size, nrGLAttr::SendFunc send) {
    this->validateField(ARRAY_FIELD);
    attr.data = static_cast<const unsigned char*>(array.getElements());
    attr.index = nullptr;
    attr.type = glType;
    attr.stride = static_cast<short>(array.getStride());
    attr.size = size;
    attr.send = send;
  }

  A array;
};
