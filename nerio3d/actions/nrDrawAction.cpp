#include "nerio3d/actions/nrDrawAction.h"

#include "nerio3d/nodes/nrNode.h"

NR_DEFINE_TYPE(nrDrawAction, nrVFCullAction, "nrDrawAction") {}

nrTravDirective nrDrawAction::apply(nrNode* root) {
  reset();
  begin(root);
  nrTravDirective d = root ? root->drawVisit(this) : CONTINUE_TRAV;
  end(root);
  return d;
}
