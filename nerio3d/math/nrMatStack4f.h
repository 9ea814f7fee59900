// Bounded stack of matrices used by the traversals; callers multiply into the top.
#pragma once

#include "nerio3d/math/nrMatrix4f.h"

class nrMatStack4f {
 public:
  // The matrix in use; the traversals read and multiply into it directly.
  nrMatrix4f* top;

  explicit nrMatStack4f(int capacity = 64);
  ~nrMatStack4f();

  nrMatStack4f(const nrMatStack4f&) = delete;
  nrMatStack4f& operator=(const nrMatStack4f&) = delete;

  // Back to depth 1 with an identity top.
  void reset();
  // Pushes a copy of the top; returns 0 (and reports) when the stack is full.
  int push();
  // Pushes an identity matrix; returns 0 (and reports) when the stack is full.
  int pushIdent();
  // Returns 0 (and reports) when only one matrix is left; the stack is then reset.
  int pop();

  nrMatrix4f* getTop() { return top; }
  const nrMatrix4f* getTop() const { return top; }
  int getDepth() const { return depth; }
  int getCapacity() const { return capacity; }

 private:
  nrMatrix4f* stack;
  int depth;
  int capacity;
};
