#include "nerio3d/vl/vlDebugError.h"

#include <cstdarg>
#include <cstdio>

void vlDebugError::post(const char* function, const char* format, ...) {
  char message[10000] = "";
  va_list args;
  va_start(args, format);
  if (format) vsnprintf(message, sizeof message, format, args);
  va_end(args);
  fprintf(stderr, "vl error in %s(): %s\n", function ? function : "", message);
}
