#include "nerio3d/fields/nrOutput.h"

#include <cstdint>

#include "nerio3d/fields/nrContainer.h"

namespace {
unsigned long keyOf(nrContainer* container) { return reinterpret_cast<uintptr_t>(container); }
}  // namespace

nrOutput::nrOutput(const char* path) : stream(path ? fopen(path, "w") : nullptr) {}

nrOutput::nrOutput(FILE* s) : stream(s) {}

nrOutput::~nrOutput() {
  if (stream) {
    fflush(stream);
    fclose(stream);
  }
}

void nrOutput::write(nrContainer* root) {
  if (!root || !stream) return;
  named.clear();
  numbered.clear();
  nextNumber = 0;
  root->write(this);
}

void nrOutput::indent() {
  if (!stream) return;
  for (int i = 0; i < level; ++i) fputs("  ", stream);
}

int nrOutput::alreadyWritten(nrContainer* container, int& number) {
  void* value;
  if (named.find(keyOf(container), value)) {
    number = -1;
    return 1;
  }
  if (numbered.find(keyOf(container), value)) {
    number = static_cast<int>(reinterpret_cast<intptr_t>(value));
    return 1;
  }
  return 0;
}

int nrOutput::addInstance(nrContainer* container) {
  if (container->getName()) {
    named.enter(keyOf(container), const_cast<char*>(container->getName()));
    return -1;
  }
  int number = nextNumber++;
  numbered.enter(keyOf(container), reinterpret_cast<void*>(static_cast<intptr_t>(number)));
  return number;
}
