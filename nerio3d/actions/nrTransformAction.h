// Traversal that accumulates the model matrix down the graph.
#pragma once

#include "nerio3d/actions/nrAction.h"
#include "nerio3d/arrays/nrTypedArray.h"
#include "nerio3d/math/nrMatStack4f.h"

class nrTransformAction : public nrAction {
  NR_DECLARE_ACTION_TYPE(nrTransformAction)

  nrTransformAction() : nrTransformAction(getClassType()) {}
  explicit nrTransformAction(nrType* type);

  // reset(), begin(root), the root's transformVisit, end(root).
  nrTravDirective apply(nrNode* root) override;
  // Identity at depth 1, and one scale flag of 0.
  void reset();

  nrMatStack4f* getMatStack() { return &matStack; }
  // One entry per stack level: non-zero when that level's matrix scales.
  nrIntArray& getScaleFlags() { return scaleFlags; }

 protected:
  nrMatStack4f matStack{256};
  nrIntArray scaleFlags{256};
};
