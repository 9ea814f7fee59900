// Traversal that accumulates the model matrix down the graph.
#pragma once

#include "nerio3d/actions/nrAction.h"
#include "nerio3d/arrays/nrTypedArray.h"
#include "nerio3d/math/nrMatStack4f.h"

class nrTransformAction : public nrAction {
  NR_DECLARE_ACTION_TYPE(nrTransformAction)

  nrTransformAction() : nrTransformAction(getClassType()) {}
  explicit nrTransformAction(nrType* typeOfClass) : nrTransformAction(typeOfClass, 256) {}

  // reset(), begin(root), the root's transformVisit, end(root).
  nrTravDirective apply(nrNode* root) override;
  // Identity at depth 1, and one scale flag of 0.
  void reset();

  nrMatStack4f* getMatStack() { return &matStack; }
  // One entry per stack level: non-zero when that level's matrix scales.
  nrIntArray& getScaleFlags() { return scaleFlags; }

  // Enters a new level holding a copy of the top matrix and its scale flag;
  // 0, entering nothing, when the stack is full (the stack reports that).
  int pushMatrix();
  // Leaves the level entered by pushMatrix; one flag is left per level of the
  // stack, also after a level pushed on the stack itself.
  void popMatrix();
  // The scale flag of the current level.
  int& topScaleFlag() { return scaleFlags[scaleFlags.getCount() - 1]; }

 protected:
  nrTransformAction(nrType* type, int stackCapacity);

  nrMatStack4f matStack;
  nrIntArray scaleFlags;
};
