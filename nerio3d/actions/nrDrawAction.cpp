#include "nerio3d/actions/nrDrawAction.h"

#include "nerio3d/nodes/nrNode.h"
#include "nerio3d/render/nrContext.h"

NR_DEFINE_TYPE(nrDrawAction, nrVFCullAction, "nrDrawAction") {}

nrDrawAction::nrDrawAction(nrType* type)
    : nrVFCullAction(type), context(nullptr), viewVector(0, 0, 1), orthographic(1), reserved(0), bpCullEnable(0) {}

nrTravDirective nrDrawAction::apply(nrNode* root) {
  context = nrContext::getCurrent();
  reset();
  begin(root);
  nrTravDirective d = root ? root->drawVisit(this) : CONTINUE_TRAV;
  end(root);
  return d;
}
