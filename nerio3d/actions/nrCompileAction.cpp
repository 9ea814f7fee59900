#include "nerio3d/actions/nrCompileAction.h"

#include "nerio3d/actions/nrDrawAction.h"
#include "nerio3d/render/nrContext.h"

NR_DEFINE_TYPE(nrCompileAction, nrAction, "CompileAction") {}

nrCompileAction::nrCompileAction(nrType* type)
    : nrAction(type), context(nullptr), drawAction(new nrDrawAction) {
  drawAction->ref();
}

nrCompileAction::~nrCompileAction() { drawAction->unref(); }

nrTravDirective nrCompileAction::apply(nrNode*) {
  context = nrContext::getCurrent();
  drawAction->setContext(context);
  return CONTINUE_TRAV;
}

nrContext* nrCompileAction::getContext() {
  // The draw action lets go of a destroyed context; the stored one follows it.
  context = drawAction->getContext();
  if (!context) context = nrContext::getCurrent();
  drawAction->setContext(context);
  return context;
}
