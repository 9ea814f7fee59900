// Owned, possibly null, heap copy of a zero-terminated text; null is the empty state.
#pragma once

#include <string>

class nrOutput;

class nrString {
 public:
  nrString() = default;
  nrString(const char* s) { *this = s; }
  nrString(const std::string& s) { *this = s.c_str(); }
  nrString(const nrString& other) { *this = other.str; }
  ~nrString();

  nrString& operator=(const nrString& other) { return *this = other.str; }
  // Copies s (exact length plus terminator) and only then frees the old text,
  // so assigning a string its own text is safe; null makes the string null.
  nrString& operator=(const char* s);
  // Appends s; a null s changes nothing, a null string becomes a copy of s.
  nrString& operator+=(const char* s);

  void makeEmpty();
  bool isNull() const { return str == nullptr; }
  const char* getString() const { return str; }

  // The library's string hash: bytes (sign-extended) XORed in at shifts that
  // step by 5 and wrap past 24. Null and "" hash to 0.
  static unsigned hash(const char* s);

  // Prints "(null)": in quotes when the string is null, without quotes when it
  // is not. The inversion is long-standing output behaviour and is kept.
  void write(nrOutput* out) const;

 private:
  char* str = nullptr;
};

// A null string equals exactly a null pointer; otherwise texts compare byte-wise.
bool operator==(const nrString& s, const char* t);
// Byte-wise inequality for a non-null string; for a null string the same answer
// as operator== (true exactly when t is null). The asymmetry is kept on purpose.
bool operator!=(const nrString& s, const char* t);
