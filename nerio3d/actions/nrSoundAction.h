// The audio traversal: reaches every node's sound operation.
#pragma once

#include "nerio3d/actions/nrAction.h"

class nrSoundAction : public nrAction {
  NR_DECLARE_ACTION_TYPE(nrSoundAction)

  nrSoundAction() : nrSoundAction(getClassType()) {}
  explicit nrSoundAction(nrType* typeOfClass) : nrAction(typeOfClass) {}

  // reset(), begin(root), the root's sound visit, end(root); returns 0.
  nrTravDirective apply(nrNode* root) override;
};
