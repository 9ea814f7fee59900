// Writer of scene data as text: the stream, the indentation level, and the
// tables that let shared containers be written once and referred to later.
#pragma once

#include <cstdio>

class nrOutput {
 public:
  // Opens path for writing; a path that cannot be opened leaves the stream null.
  explicit nrOutput(const char* path);
  // Writes to a stream the caller opened; the writer closes it when destroyed.
  explicit nrOutput(FILE* stream);
  ~nrOutput();

  nrOutput(const nrOutput&) = delete;
  nrOutput& operator=(const nrOutput&) = delete;

  FILE* getStream() const { return stream; }
  int getLevel() const { return level; }
  void setLevel(int l) { level = l; }
  void incLevel() { ++level; }
  void decLevel() { --level; }

  // Writes the current indentation: two spaces per level.
  void indent();

 private:
  int level = 0;
  int nextNumber = 0;
  FILE* stream = nullptr;
};
