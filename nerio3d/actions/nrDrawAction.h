// The rendering traversal: culls like its base and draws what is visible.
#pragma once

#include "nerio3d/actions/nrVFCullAction.h"

class nrDrawAction : public nrVFCullAction {
  NR_DECLARE_ACTION_TYPE(nrDrawAction)

  nrDrawAction() : nrDrawAction(getClassType()) {}
  explicit nrDrawAction(nrType* type) : nrVFCullAction(type) {}

  // reset(), begin(root), the root's drawVisit (nothing for a null root),
  // end(root); the visit's result, 0 for a null root.
  nrTravDirective apply(nrNode* root) override;
};
