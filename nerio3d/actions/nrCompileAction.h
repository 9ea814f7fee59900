// Companion of display-list building: holds a graphics context and a draw
// action bound to it, for geometry that compiles itself ahead of drawing.
#pragma once

#include "nerio3d/actions/nrAction.h"

class nrContext;
class nrDrawAction;

class nrCompileAction : public nrAction {
  NR_DECLARE_ACTION_TYPE(nrCompileAction)

  nrCompileAction() : nrCompileAction(getClassType()) {}
  explicit nrCompileAction(nrType* type);
  ~nrCompileAction() override;

  // Takes the current context and hands it to the draw action; visits nothing
  // and returns 0.
  nrTravDirective apply(nrNode* root) override;

  // The stored context, taken from the current one on first use, and handed
  // to the draw action each time.
  nrContext* getContext();
  nrDrawAction* getDrawAction() const { return drawAction; }

 protected:
  nrContext* context;
  nrDrawAction* drawAction;
};
