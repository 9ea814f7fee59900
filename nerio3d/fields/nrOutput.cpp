#include "nerio3d/fields/nrOutput.h"

nrOutput::nrOutput(const char* path) : stream(fopen(path, "w")) {}

nrOutput::nrOutput(FILE* s) : stream(s) {}

nrOutput::~nrOutput() {
  if (stream) {
    fflush(stream);
    fclose(stream);
  }
}

void nrOutput::indent() {
  for (int i = 0; i < level; ++i) fputs("  ", stream);
}
