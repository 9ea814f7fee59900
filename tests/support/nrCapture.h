// Captures what library code writes to standard error or standard output.
#pragma once

#include <cstdio>
#include <string>

#include <gtest/gtest.h>

namespace nrtest {

// Runs fn and returns everything it wrote to standard error.
template <typename Fn>
std::string captureStderr(Fn&& fn) {
  fflush(stderr);
  testing::internal::CaptureStderr();
  fn();
  fflush(stderr);
  return testing::internal::GetCapturedStderr();
}

// Runs fn and returns everything it wrote to standard output.
template <typename Fn>
std::string captureStdout(Fn&& fn) {
  fflush(stdout);
  testing::internal::CaptureStdout();
  fn();
  fflush(stdout);
  return testing::internal::GetCapturedStdout();
}

}  // namespace nrtest
