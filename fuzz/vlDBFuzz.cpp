// libFuzzer target: the scene reader over arbitrary bytes, read from memory.
// Whatever the input, reading must end, and the scene must come apart
// without errors of memory or behaviour.
#include "vlFuzzRead.h"

extern "C" int LLVMFuzzerInitialize(int*, char***) { return vlFuzzInit() ? 0 : 1; }

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (nrContainer* root = vlFuzzRead(data, size)) root->unref();
  return 0;
}
