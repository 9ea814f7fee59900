// What the fuzz targets share: starting the reader without a terminal to
// wait on, and reading a scene from the bytes of one input.
#pragma once

#include <cstdint>
#include <cstdio>

#include "nerio3d/nerio3d.h"

// Inlined files named "/dev/stdin" must not wait for input.
inline bool vlFuzzInit() {
  if (!freopen("/dev/null", "r", stdin)) return false;
  vlDB::init();
  return true;
}

// The scene the reader makes of the bytes (referenced by the caller's
// unref), or null.
inline nrContainer* vlFuzzRead(const uint8_t* data, size_t size) {
  // fmemopen refuses an empty buffer: the empty input reads from /dev/null.
  static char empty;
  FILE* stream = size ? fmemopen(const_cast<uint8_t*>(data), size, "r") : fmemopen(&empty, 1, "r");
  if (!stream) return nullptr;
  if (!size) getc(stream);
  nrContainer* root = nullptr;
  nrPtrArray list;
  vlDB::readStream(stream, root, list);
  fclose(stream);
  return root;
}
