// Reports an internal problem of the scene-file reader on standard error,
// naming the function it happened in.
#pragma once

class vlDebugError {
 public:
  // Prints "vl error in <function>(): <message>".
  static void post(const char* function, const char* format, ...) __attribute__((format(printf, 2, 3)));
};
