#include "nerio3d/actions/nrIsectAction.h"

#include "nerio3d/nodes/nrNode.h"

NR_DEFINE_TYPE(nrIsectAction, nrTransformAction, "IsectAction") {}

nrTravDirective nrIsectAction::apply(nrNode* root) {
  path.append(root);
  root->isect(this);
  path.setCount(path.getCount() - 1);
  return CONTINUE_TRAV;
}
