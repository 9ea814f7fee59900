#include "nerio3d/actions/nrDrawAction.h"

#include "nerio3d/arrays/nrTypedArray.h"
#include "nerio3d/core/nrKeepAlive.h"
#include "nerio3d/nodes/nrNode.h"
#include "nerio3d/render/nrContext.h"
#include "nerio3d/render/nrOrthoCamera.h"

nrPtrArray* nrDrawAction::actions = nullptr;

NR_DEFINE_TYPE(nrDrawAction, nrVFCullAction, "nrDrawAction") { actions = new nrPtrArray(4); }

nrDrawAction::nrDrawAction(nrType* type)
    : nrVFCullAction(type), context(nullptr), viewVector(0, 0, 1), orthographic(1), bpCullEnable(0) {
  getClassType();
  actions->append(this);
}

nrDrawAction::~nrDrawAction() { actions->remove(this); }

void nrDrawAction::forgetContext(nrContext* gone) {
  if (!actions) return;
  for (unsigned i = 0; i < actions->getCount(); ++i) {
    nrDrawAction* action = static_cast<nrDrawAction*>((*actions)[i]);
    if (action->context == gone) action->context = nullptr;
  }
}

nrTravDirective nrDrawAction::apply(nrNode* root) {
  nrKeepAlive keepRoot(root);
  context = nrContext::getCurrent();
  if (root && !checkCamera("nrDrawAction")) return CONTINUE_TRAV;
  reset();
  orthographic = camera && camera->isOfType(nrOrthoCamera::getClassType());
  // Nodes drawn at the root level see the view vector of the camera, not the
  // one a previous traversal left.
  updateViewVector();
  if (context) {
    context->setNormalizeEnable(0);
    context->pushState();
  }
  begin(root);
  nrTravDirective d = root ? root->drawVisit(this) : CONTINUE_TRAV;
  end(root);
  if (context) context->popState();
  return d;
}

void nrDrawAction::updateViewVector() {
  nrMatrix4f inverse;
  inverse.invertFull(*matStack.getTop());
  const float* row = inverse[orthographic ? 2 : 3];
  viewVector.set(row[0], row[1], row[2]);
}
