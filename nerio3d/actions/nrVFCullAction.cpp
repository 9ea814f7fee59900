#include "nerio3d/actions/nrVFCullAction.h"

#include <cstdio>

#include "nerio3d/math/nrSphereBound.h"
#include "nerio3d/nodes/nrNode.h"

NR_DEFINE_TYPE(nrVFCullAction, nrTransformAction, "nrVFCullAction") {}

namespace {
// Cull entries besides the sphere test's own (0, 3, 7): 2 marks the level above
// the root, 4 a level whose whole subtree is known to be inside. The sphere
// test never yields 4, so the shortcut serves only levels that set it.
enum { ALL_VISIBLE_CULL = 2, ALL_INSIDE_CULL = 4 };
}  // namespace

nrVFCullAction::nrVFCullAction(nrType* type) : nrTransformAction(type), cullResults{ALL_VISIBLE_CULL}, cullDepth(0) {}

nrTravDirective nrVFCullAction::apply(nrNode* root) {
  reset();
  begin(root);
  nrTravDirective d = root->vfCullVisit(this);
  end(root);
  return d;
}

void nrVFCullAction::reset() {
  cullDepth = 0;
  cullResults[0] = ALL_VISIBLE_CULL;
  nrTransformAction::reset();
}

int nrVFCullAction::pushCull(const nrSphereBound& sphere) {
  if (cullDepth >= MAX_CULL_DEPTH - 1) {
    fprintf(stderr, "nrVFCullAction::pushCull() Scene graph is too deep (%d)\n", MAX_CULL_DEPTH);
    return cullResults[cullDepth];
  }
  if (cullResults[cullDepth] == ALL_INSIDE_CULL) {
    cullResults[++cullDepth] = ALL_INSIDE_CULL;
    return ALL_INSIDE_CULL;
  }
  nrSphereBound eye;
  if (scaleFlags[scaleFlags.getCount() - 1] == 0)
    eye.orthoXform(&sphere, *matStack.getTop());
  else
    eye.xform(&sphere, *matStack.getTop());
  cullResults[++cullDepth] = frustum.contains(&eye);
  return cullResults[cullDepth];
}
