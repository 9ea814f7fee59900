// Reports a problem in a scene file on standard error, with the line it is on.
#pragma once

class vlInput;

class vlReadError {
 public:
  // Prints "vl read error: <message>" and the input's location line.
  static void post(const vlInput* input, const char* format, ...) __attribute__((format(printf, 2, 3)));
};
