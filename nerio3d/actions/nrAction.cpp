#include "nerio3d/actions/nrAction.h"

#include "nerio3d/core/nrKeepAlive.h"
#include "nerio3d/nodes/nrNode.h"
#include "nerio3d/render/nrContext.h"

NR_DEFINE_TYPE_AFTER(nrAction, nrObject, "nrAction", nrContext) {}

nrTravDirective nrAction::apply(nrNode* root) {
  nrKeepAlive keepRoot(root);
  reset();
  begin(root);
  nrTravDirective d = root ? root->visit(this) : CONTINUE_TRAV;
  end(root);
  return d;
}
