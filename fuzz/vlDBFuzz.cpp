// libFuzzer target: the scene reader over arbitrary bytes, read from memory.
// Whatever the input, reading must end, and the scene must come apart
// without errors of memory or behaviour.
#include <cstdint>
#include <cstdio>

#include "nerio3d/nerio3d.h"

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  // Inlined files named "/dev/stdin" must not wait for input.
  if (!freopen("/dev/null", "r", stdin)) return 1;
  vlDB::init();
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  // fmemopen refuses an empty buffer: the empty input reads from /dev/null.
  static char empty;
  FILE* stream = size ? fmemopen(const_cast<uint8_t*>(data), size, "r") : fmemopen(&empty, 1, "r");
  if (!stream) return 0;
  if (!size) getc(stream);
  nrContainer* root = nullptr;
  nrPtrArray list;
  vlDB::readStream(stream, root, list);
  fclose(stream);
  if (root) root->unref();
  return 0;
}
