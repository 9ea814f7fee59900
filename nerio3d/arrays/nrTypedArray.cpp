#include "nerio3d/arrays/nrTypedArray.h"

#include <cstdio>

#include "nerio3d/fields/nrOutput.h"

// Value elements (vectors, rotations, matrices, strings) write themselves.
template <typename T>
void nrArrayElementWrite(nrOutput* out, const T& v) {
  v.write(out);
  fputs(",\n", out->getStream());
}
template <>
void nrArrayElementWrite(nrOutput* out, const char& v) {
  fprintf(out->getStream(), "0x%x,\n", static_cast<unsigned>(static_cast<int>(static_cast<signed char>(v))));
}
template <>
void nrArrayElementWrite(nrOutput* out, const short& v) {
  fprintf(out->getStream(), "%d,\n", v);
}
template <>
void nrArrayElementWrite(nrOutput* out, const int& v) {
  fprintf(out->getStream(), "%d,\n", v);
}
template <>
void nrArrayElementWrite(nrOutput* out, const float& v) {
  fprintf(out->getStream(), "%f,\n", v);
}
// Untyped pointers have no text of their own.
template <>
void nrArrayElementWrite(nrOutput*, void* const&) {}

template <typename T>
void nrTypedArray<T>::write(nrOutput* out) const {
  FILE* f = out ? out->getStream() : nullptr;
  if (!f) return;
  fputs("[\n", f);
  unsigned used = inUse();
  for (unsigned i = 0; i < used; ++i) {
    out->indent();
    nrArrayElementWrite(out, (*this)[i]);
  }
  out->indent();
  fputs("]", f);
}

template class nrTypedArray<char>;
template class nrTypedArray<short>;
template class nrTypedArray<int>;
template class nrTypedArray<float>;
template class nrTypedArray<void*>;
template class nrTypedArray<nrVec2f>;
template class nrTypedArray<nrVec3f>;
template class nrTypedArray<nrVec3s>;
template class nrTypedArray<nrVec4f>;
template class nrTypedArray<nrRotation>;
template class nrTypedArray<nrMatrix4f>;
template class nrTypedArray<nrString>;
