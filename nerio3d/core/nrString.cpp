#include "nerio3d/core/nrString.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "nerio3d/fields/nrOutput.h"

namespace {
char* duplicate(const char* s) {
  size_t n = strlen(s) + 1;
  char* copy = static_cast<char*>(malloc(n));
  memcpy(copy, s, n);
  return copy;
}
}  // namespace

nrString::~nrString() { free(str); }

nrString& nrString::operator=(const char* s) {
  char* old = str;
  str = s ? duplicate(s) : nullptr;
  free(old);
  return *this;
}

nrString& nrString::operator+=(const char* s) {
  if (!s) return *this;
  if (!str) return *this = s;
  size_t a = strlen(str), b = strlen(s);
  char* joined = static_cast<char*>(malloc(a + b + 1));
  memcpy(joined, str, a);
  memcpy(joined + a, s, b + 1);
  free(str);
  str = joined;
  return *this;
}

void nrString::makeEmpty() {
  free(str);
  str = nullptr;
}

unsigned nrString::hash(const char* s) {
  if (!s) return 0;
  unsigned h = 0;
  int shift = 0;
  for (const char* p = s; *p; ++p) {
    h ^= static_cast<unsigned>(static_cast<int>(static_cast<signed char>(*p))) << shift;
    shift += 5;
    if (shift > 24) shift -= 24;
  }
  return h;
}

void nrString::write(nrOutput* out) const {
  if (!out || !out->getStream()) return;
  fputs(str ? "(null)" : "\"(null)\"", out->getStream());
}

bool operator==(const nrString& s, const char* t) {
  if (s.isNull()) return t == nullptr;
  return t && strcmp(s.getString(), t) == 0;
}

bool operator!=(const nrString& s, const char* t) {
  if (s.isNull()) return t == nullptr;
  return !t || strcmp(s.getString(), t) != 0;
}
