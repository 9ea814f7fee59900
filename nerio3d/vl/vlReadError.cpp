#include "nerio3d/vl/vlReadError.h"

#include <cstdarg>
#include <cstdio>

#include "nerio3d/core/nrString.h"
#include "nerio3d/vl/vlInput.h"

void vlReadError::post(const vlInput* input, const char* format, ...) {
  char message[10000] = "";
  va_list args;
  va_start(args, format);
  if (format) vsnprintf(message, sizeof message, format, args);
  va_end(args);
  nrString location;
  if (input) input->getLocationString(location);
  fprintf(stderr, "vl read error: %s\n%s\n", message, location.isNull() ? "" : location.getString());
}
