// Runs a writer against an nrOutput over a memory stream and returns the text.
#pragma once

#include <cstdio>
#include <cstdlib>
#include <string>

#include <gtest/gtest.h>

#include "nerio3d/fields/nrOutput.h"

namespace nrtest {

template <typename Fn>
std::string writeToString(Fn&& fn, int level = 0) {
  char* buffer = nullptr;
  size_t size = 0;
  FILE* stream = open_memstream(&buffer, &size);
  {
    nrOutput out(stream);
    out.setLevel(level);
    fn(&out);
  }
  std::string text(buffer, size);
  free(buffer);
  return text;
}

}  // namespace nrtest
