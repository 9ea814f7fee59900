#include "nerio3d/core/nrObject.h"

NR_DEFINE_ROOT_TYPE(nrObject, "Object") {}

bool nrObject::unref() {
  if (refCount == 0 || --refCount == 0) {
    delete this;
    return true;
  }
  return false;
}

