#include "nerio3d/actions/nrTransformAction.h"

#include "nerio3d/nodes/nrNode.h"

NR_DEFINE_TYPE(nrTransformAction, nrAction, "TransformAction") {}

nrTransformAction::nrTransformAction(nrType* type) : nrAction(type) { scaleFlags.append(0); }

nrTravDirective nrTransformAction::apply(nrNode* root) {
  reset();
  begin(root);
  nrTravDirective d = root->transformVisit(this);
  end(root);
  return d;
}

void nrTransformAction::reset() {
  matStack.reset();
  scaleFlags.setCount(1);
  scaleFlags[0] = 0;
}
