#include "nerio3d/math/nrMatStack4f.h"

#include <new>

#include "nerio3d/core/nrGlobal.h"

nrMatStack4f::nrMatStack4f(int cap) : depth(1), capacity(cap < 1 ? 1 : cap) {
  // A capacity beyond the memory there is falls back to a single matrix.
  stack = new (std::nothrow) nrMatrix4f[capacity];
  if (!stack) {
    capacity = 1;
    stack = new nrMatrix4f[1];
  }
  top = stack;
  for (int i = 0; i < capacity; ++i) stack[i].makeIdent();
}

nrMatStack4f::~nrMatStack4f() { delete[] stack; }

void nrMatStack4f::reset() {
  depth = 1;
  top = stack;
  top->makeIdent();
}

int nrMatStack4f::push() {
  if (++depth >= capacity) {
    --depth;
    nrGlobal::notify(nrGlobal::WARN, nrGlobal::USAGE, "nrMatStack4f::push() - Matrix stack full");
    return 0;
  }
  top[1] = top[0];
  ++top;
  return 1;
}

int nrMatStack4f::pushIdent() {
  if (++depth >= capacity) {
    --depth;
    nrGlobal::notify(nrGlobal::WARN, nrGlobal::USAGE, "nrMatStack4f::pushIdent() - Matrix stack full");
    return 0;
  }
  ++top;
  top->makeIdent();
  return 1;
}

int nrMatStack4f::pop() {
  if (--depth < 1) {
    reset();
    nrGlobal::notify(nrGlobal::WARN, nrGlobal::USAGE, "nrMatStack4f::pop() - Matrix stack empty");
    return 0;
  }
  --top;
  return 1;
}
