#include "nerio3d/actions/nrSoundAction.h"

#include "nerio3d/core/nrKeepAlive.h"
#include "nerio3d/nodes/nrNode.h"

NR_DEFINE_TYPE(nrSoundAction, nrAction, "SoundAction") {}

nrTravDirective nrSoundAction::apply(nrNode* root) {
  nrKeepAlive keepRoot(root);
  reset();
  begin(root);
  if (root) root->sound(this);
  end(root);
  return CONTINUE_TRAV;
}
