#include "nerio3d/actions/nrAction.h"

#include "nerio3d/nodes/nrNode.h"

NR_DEFINE_TYPE(nrAction, nrObject, "nrAction") {}

nrTravDirective nrAction::apply(nrNode* root) {
  reset();
  begin(root);
  nrTravDirective d = root->visit(this);
  end(root);
  return d;
}
