// Holds an object through a call that may release it: a referenced object
// lives until the guard goes out of scope. An object that nothing references
// yet is left as it is, since releasing it afterwards would delete it.
#pragma once

#include "nerio3d/core/nrObject.h"

class nrKeepAlive {
 public:
  explicit nrKeepAlive(nrObject* object) : held(object && object->getRefCount() > 0 ? object : nullptr) {
    if (held) held->ref();
  }
  ~nrKeepAlive() {
    if (held) held->unref();
  }
  nrKeepAlive(const nrKeepAlive&) = delete;
  nrKeepAlive& operator=(const nrKeepAlive&) = delete;

 private:
  nrObject* held;
};
