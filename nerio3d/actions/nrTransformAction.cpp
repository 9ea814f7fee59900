#include "nerio3d/actions/nrTransformAction.h"

#include "nerio3d/core/nrKeepAlive.h"
#include "nerio3d/nodes/nrNode.h"

NR_DEFINE_TYPE(nrTransformAction, nrAction, "TransformAction") {}

nrTransformAction::nrTransformAction(nrType* type, int stackCapacity)
    : nrAction(type), matStack(stackCapacity), scaleFlags(256) {
  scaleFlags.append(0);
}

nrTravDirective nrTransformAction::apply(nrNode* root) {
  nrKeepAlive keepRoot(root);
  reset();
  begin(root);
  nrTravDirective d = root ? root->transformVisit(this) : CONTINUE_TRAV;
  end(root);
  return d;
}

void nrTransformAction::reset() {
  matStack.reset();
  scaleFlags.setCount(1);
  scaleFlags[0] = 0;
}

int nrTransformAction::pushMatrix() {
  if (!matStack.push()) return 0;
  scaleFlags.append(topScaleFlag());
  return 1;
}

// The flags follow the stack's depth, so that a level pushed on the stack
// itself cannot leave the action without a flag for its top.
void nrTransformAction::popMatrix() {
  if (!matStack.pop()) return;
  scaleFlags.setCount(static_cast<unsigned>(matStack.getDepth()));
}
