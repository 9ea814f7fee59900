// Writer of scene data as text: the stream, the indentation level, and the
// tables that let shared containers be written once (DEF) and referred to
// later (USE).
#pragma once

#include <cstdio>

#include "nerio3d/core/nrDict.h"

class nrContainer;

class nrOutput {
 public:
  // Opens path for writing; a path that cannot be opened leaves the stream null,
  // and nothing is written through the writer then.
  explicit nrOutput(const char* path);
  // Writes to a stream the caller opened; the writer closes it when destroyed.
  explicit nrOutput(FILE* stream);
  ~nrOutput();

  nrOutput(const nrOutput&) = delete;
  nrOutput& operator=(const nrOutput&) = delete;

  // Writes a whole graph; DEF/USE numbering starts afresh for every root.
  // Only the containers are written: a file for vlDB to read needs the line
  // "#VRML V2.0 utf8" before them, and routes, which are not written, follow
  // as ROUTE statements between named containers (as nrdump writes them).
  void write(nrContainer* root);

  FILE* getStream() const { return stream; }
  int getLevel() const { return level; }
  void setLevel(int l) { level = l; }
  void incLevel() { ++level; }
  void decLevel() { --level; }

  // Writes the current indentation: two spaces per level.
  void indent();

 private:
  friend class nrContainer;

  // True when the container was written before: number is its Obj number, or
  // -1 when it was written under its own name.
  int alreadyWritten(nrContainer* container, int& number);
  // Enters a container being written for the first time: an unnamed one gets
  // the next Obj number (returned), a named one -1.
  int addInstance(nrContainer* container);

  int level = 0;
  int nextNumber = 0;
  FILE* stream = nullptr;
  nrDict named{1021};
  nrDict numbered{1021};
};
