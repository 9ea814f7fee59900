#include "nerio3d/arrays/nrFieldArrays.h"

#include <cstdio>

#include "nerio3d/fields/nrContainer.h"
#include "nerio3d/fields/nrField.h"
#include "nerio3d/fields/nrFieldInfo.h"
#include "nerio3d/fields/nrOutput.h"

template <typename T>
void nrObjectPtrArray<T>::write(nrOutput* out) const {
  FILE* f = out ? out->getStream() : nullptr;
  if (!f) return;
  fputs("[\n", f);
  unsigned used = this->inUse();
  for (unsigned i = 0; i < used; ++i) {
    T* element = (*this)[i];
    if (!element) continue;
    out->indent();
    element->write(out);
    fputs(",\n", f);
  }
  out->indent();
  fputs("]", f);
}

template class nrObjectPtrArray<nrField>;
template class nrObjectPtrArray<nrFieldInfo>;
template class nrObjectPtrArray<nrContainer>;
