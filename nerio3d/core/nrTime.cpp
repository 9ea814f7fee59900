#include "nerio3d/core/nrTime.h"

#include <cstdio>

#include "nerio3d/platform/nrOS.h"

nrTime nrTime::getTimeOfDay() {
  return nrTime(nrOS::timeOfDay());
}

nrString nrTime::format(const char* fmt) const {
  if (!fmt || !*fmt) return nrString();

  const bool negative = value < 0.0;
  // Microseconds must fit a long: longer times print as the longest that
  // fits, and a time that is not a number as 0.
  const double longest = 9.2e12;
  double t = negative ? -value : value;
  if (!(t <= longest)) t = t > longest ? longest : 0.0;
  const long D = static_cast<long>(t / 86400.0);
  const long H = static_cast<long>(t / 3600.0);
  const long M = static_cast<long>(t / 60.0);
  const long S = static_cast<long>(t);
  const long I = static_cast<long>(t * 1000.0);
  const long U = static_cast<long>(t * 1000000.0);
  const char* sign = negative ? "-" : "";

  // The result is at most 199 characters; whatever would go beyond is cut off.
  char buffer[200];
  const size_t size = sizeof(buffer);
  size_t n = 0;
  buffer[0] = '\0';
  auto put = [&](const char* f, const char* prefix, long v) {
    if (n < size - 1) {
      int written = snprintf(buffer + n, size - n, f, prefix, v);
      n += written > 0 ? static_cast<size_t>(written) : 0;
      if (n > size - 1) n = size - 1;
    }
  };
  auto putChar = [&](char c) {
    if (n < size - 1) {
      buffer[n++] = c;
      buffer[n] = '\0';
    }
  };

  for (const char* p = fmt; *p; ++p) {
    if (*p != '%') {
      putChar(*p);
      continue;
    }
    if (!*++p) break;
    switch (*p) {
      case 'D': put("%s%ld", sign, D); break;
      case 'H': put("%s%ld", sign, H); break;
      case 'M': put("%s%ld", sign, M); break;
      case 'S': put("%s%ld", sign, S); break;
      case 'I': put("%s%ld", sign, I); break;
      case 'U': put("%s%ld", sign, U); break;
      case 'h': put("%s%.2ld", "", H - 24 * D); break;
      case 'm': put("%s%.2ld", "", M - 60 * H); break;
      case 's': put("%s%.2ld", "", S - 60 * M); break;
      case 'i': put("%s%.3ld", "", I - 1000 * S); break;
      case 'u': put("%s%.6ld", "", U - 1000000 * S); break;
      case '%': putChar('%'); break;
      // An unknown directive is copied as written, so a mistyped format shows
      // up in the output instead of silently vanishing.
      default:
        putChar('%');
        putChar(*p);
        break;
    }
  }
  return nrString(buffer);
}
