// The family of typed arrays over nrArray. The members differ only in element
// type, equality and output format; nrIntArray, nrFloatArray, nrVec3fArray ...
// are thin named classes over one template so they can be forward-declared.
#pragma once

#include <cstdint>
#include <type_traits>

#include "nerio3d/arrays/nrArray.h"
#include "nerio3d/core/nrString.h"
#include "nerio3d/math/nrMatrix4f.h"
#include "nerio3d/math/nrRotation.h"
#include "nerio3d/math/nrVec2f.h"
#include "nerio3d/math/nrVec3f.h"
#include "nerio3d/math/nrVec3s.h"
#include "nerio3d/math/nrVec4f.h"

class nrOutput;

// Element equality used by find, replace and remove; composite values compare
// component by component, strings by text.
template <typename T>
inline bool nrArrayElementEqual(const T& a, const T& b) {
  return a == b;
}
template <typename V, int N>
inline bool nrArrayComponentsEqual(const V& a, const V& b) {
  const float* pa = reinterpret_cast<const float*>(&a);
  const float* pb = reinterpret_cast<const float*>(&b);
  for (int i = 0; i < N; ++i)
    if (pa[i] != pb[i]) return false;
  return true;
}
template <>
inline bool nrArrayElementEqual(const nrVec2f& a, const nrVec2f& b) {
  return nrArrayComponentsEqual<nrVec2f, 2>(a, b);
}
template <>
inline bool nrArrayElementEqual(const nrVec3f& a, const nrVec3f& b) {
  return nrArrayComponentsEqual<nrVec3f, 3>(a, b);
}
template <>
inline bool nrArrayElementEqual(const nrVec4f& a, const nrVec4f& b) {
  return nrArrayComponentsEqual<nrVec4f, 4>(a, b);
}
template <>
inline bool nrArrayElementEqual(const nrRotation& a, const nrRotation& b) {
  return nrArrayComponentsEqual<nrRotation, 4>(a, b);
}
template <>
inline bool nrArrayElementEqual(const nrMatrix4f& a, const nrMatrix4f& b) {
  return nrArrayComponentsEqual<nrMatrix4f, 16>(a, b);
}
template <>
inline bool nrArrayElementEqual(const nrVec3s& a, const nrVec3s& b) {
  return a[0] == b[0] && a[1] == b[1] && a[2] == b[2];
}
template <>
inline bool nrArrayElementEqual(const nrString& a, const nrString& b) {
  if (a.isNull() || b.isNull()) return a.isNull() == b.isNull();
  return a == b.getString();
}

// Writes one element's text and the ",\n" that follows it; defined per element
// type in nrTypedArray.cpp.
template <typename T>
void nrArrayElementWrite(nrOutput* out, const T& value);

template <typename T>
class nrTypedArray : public nrArray {
 public:
  typedef T ElementType;

  nrTypedArray() : nrArray(sizeof(T), 16) {}
  explicit nrTypedArray(unsigned n) : nrArray(sizeof(T), n ? n : 1) {}
  nrTypedArray(nrData* block, short blockOffset, short blockStride)
      : nrArray(sizeof(T), block, blockOffset, blockStride) {}
  // Copies are owned arrays holding copies of the elements.
  nrTypedArray(const nrTypedArray& other) : nrArray(sizeof(T), other.count ? other.count : 1) { set(other); }
  nrTypedArray& operator=(const nrTypedArray& other) {
    if (this != &other) set(other);
    return *this;
  }
  ~nrTypedArray() {
    if (!std::is_trivially_destructible<T>::value) {
      if (!data)
        for (unsigned i = 0; i < capacity; ++i) (*this)[i].~T();
    }
  }

  T& operator[](unsigned i) { return *reinterpret_cast<T*>(at(i)); }
  const T& operator[](unsigned i) const { return *reinterpret_cast<const T*>(at(i)); }
  const T& get(unsigned i) const { return (*this)[i]; }
  T* getArray() const { return reinterpret_cast<T*>(elements); }

  // Range-for over the first getCount() elements, a view's at its stride; a
  // count past the storage (shrunk by setSize, a view) stops at its end.
  template <typename Element>
  class Cursor {
   public:
    Cursor(unsigned char* at, unsigned step) : p(at), stride(step) {}
    Element& operator*() const { return *reinterpret_cast<Element*>(p); }
    Cursor& operator++() {
      p += stride;
      return *this;
    }
    bool operator!=(const Cursor& c) const { return p != c.p; }

   private:
    unsigned char* p;
    unsigned stride;
  };
  Cursor<T> begin() { return Cursor<T>(at(0), stride); }
  Cursor<T> end() { return Cursor<T>(at(inUse()), stride); }
  Cursor<const T> begin() const { return Cursor<const T>(at(0), stride); }
  Cursor<const T> end() const { return Cursor<const T>(at(inUse()), stride); }

  // v may be an element of this array: growing moves the storage, so a value
  // that must survive growth or shifting is copied first. A store that finds
  // no storage (a view that cannot grow, memory exhausted) is dropped.
  void set(unsigned i, const T& v) {
    if (i >= room()) {
      T kept = v;
      if (!makeRoom(i + 1) || i >= room()) return;
      (*this)[i] = kept;
    } else {
      (*this)[i] = v;
    }
    if (i >= count) count = i + 1;
  }
  void set(const nrTypedArray& other) {
    unsigned n = other.inUse();
    setCount(other.count);
    if (n > room()) n = room();
    for (unsigned i = 0; i < n; ++i) (*this)[i] = other[i];
  }
  void append(const T& v) { set(count, v); }
  void setRange(unsigned start, unsigned n, const T* values) {
    if ((n && !values) || start + n < start) return;
    // Values of this array move when it grows, and those below the range
    // would be overwritten before they are read: both are copied first.
    if (holds(values) && (capacity < start + n || values < &(*this)[start])) {
      nrTypedArray kept(n);
      kept.setRange(0, n, values);
      setRange(start, n, kept.getArray());
      return;
    }
    if (!makeRoom(start + n)) return;
    if (start + n > count) count = start + n;
    for (unsigned i = 0; i < n; ++i) (*this)[start + i] = values[i];
  }
  // A start at or past the count copies nothing.
  void getRange(unsigned start, unsigned n, T* out) const {
    unsigned used = inUse();
    if (start >= used || !out) return;
    if (n > used - start) n = used - start;
    for (unsigned i = 0; i < n; ++i) out[i] = (*this)[start + i];
  }
  void fillRange(unsigned start, unsigned n, const T& v) {
    if (start + n < start) return;
    T kept = v;
    if (!makeRoom(start + n)) return;
    if (start + n > count) count = start + n;
    for (unsigned i = 0; i < n; ++i) (*this)[start + i] = kept;
  }
  long find(const T& v) const {
    unsigned used = inUse();
    for (unsigned i = 0; i < used; ++i)
      if (nrArrayElementEqual((*this)[i], v)) return i;
    return -1;
  }
  long replace(const T& old, const T& v) {
    long i = find(old);
    if (i >= 0) (*this)[i] = v;
    return i;
  }
  // Inserting beyond the count leaves a gap and still raises the count by one.
  void insert(unsigned i, const T& v) {
    T kept = v;
    if (!makeRoom(i + 1 > count + 1 ? i + 1 : count + 1) || i >= room() || count >= room()) return;
    for (unsigned k = count; k > i; --k) (*this)[k] = (*this)[k - 1];
    (*this)[i] = kept;
    ++count;
  }
  bool remove(const T& v) {
    long i = find(v);
    if (i < 0) return false;
    removeIndex(static_cast<unsigned>(i));
    return true;
  }
  // Removes the first element equal to v by moving the last element into its place.
  bool fastRemove(const T& v) {
    long i = find(v);
    if (i < 0) return false;
    fastRemoveIndex(static_cast<unsigned>(i));
    return true;
  }
  void removeIndex(unsigned i) {
    if (i >= count) return;
    unsigned used = inUse();
    for (unsigned k = i + 1; k < used; ++k) (*this)[k - 1] = (*this)[k];
    --count;
  }
  void fastRemoveIndex(unsigned i) {
    if (i >= count) return;
    if (count <= room()) (*this)[i] = (*this)[count - 1];
    --count;
  }
  // Owned elements past a smaller capacity are emptied first, so that texts
  // they hold are freed.
  void setSize(unsigned n) {
    if (!std::is_trivially_destructible<T>::value) {
      if (!data)
        for (unsigned i = n; i < capacity; ++i) (*this)[i] = T();
    }
    nrArray::setSize(n);
  }

  // Writes "[", one indented line per element, then the indentation and "]".
  void write(nrOutput* out) const;

  // Whether p points into this array's own storage.
  bool holds(const T* p) const {
    uintptr_t a = reinterpret_cast<uintptr_t>(p), b = reinterpret_cast<uintptr_t>(elements);
    return a >= b && a < b + size_t(capacity) * stride;
  }
};

class nrByteArray : public nrTypedArray<char> {
 public:
  using nrTypedArray::nrTypedArray;
};
class nrShortArray : public nrTypedArray<short> {
 public:
  using nrTypedArray::nrTypedArray;
};
class nrIntArray : public nrTypedArray<int> {
 public:
  using nrTypedArray::nrTypedArray;
};
class nrFloatArray : public nrTypedArray<float> {
 public:
  using nrTypedArray::nrTypedArray;
};
// Pointer lists. Pointers are 8 bytes on this platform, so every list of
// pointers is an nrPtrArray (never an nrIntArray). The array never frees what
// its pointers point to: their owner does.
class nrPtrArray : public nrTypedArray<void*> {
 public:
  using nrTypedArray::nrTypedArray;
};
class nrVec2fArray : public nrTypedArray<nrVec2f> {
 public:
  using nrTypedArray::nrTypedArray;
};
class nrVec3fArray : public nrTypedArray<nrVec3f> {
 public:
  using nrTypedArray::nrTypedArray;
};
class nrVec3sArray : public nrTypedArray<nrVec3s> {
 public:
  using nrTypedArray::nrTypedArray;
};
class nrVec4fArray : public nrTypedArray<nrVec4f> {
 public:
  using nrTypedArray::nrTypedArray;
};
class nrRotationArray : public nrTypedArray<nrRotation> {
 public:
  using nrTypedArray::nrTypedArray;
};
class nrMatrix4fArray : public nrTypedArray<nrMatrix4f> {
 public:
  using nrTypedArray::nrTypedArray;
};
// Each slot holds its own copy of a text; the array frees them when destroyed.
class nrStringArray : public nrTypedArray<nrString> {
 public:
  using nrTypedArray::nrTypedArray;
};
