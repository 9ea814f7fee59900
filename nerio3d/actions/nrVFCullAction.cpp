#include "nerio3d/actions/nrVFCullAction.h"

#include <cstdio>

#include "nerio3d/core/nrKeepAlive.h"
#include "nerio3d/math/nrSphereBound.h"
#include "nerio3d/nodes/nrNode.h"
#include "nerio3d/render/nrCamera.h"

NR_DEFINE_TYPE(nrVFCullAction, nrTransformAction, "nrVFCullAction") {}

namespace {
// Cull entries besides the sphere test's own (0, 3, 7): 2 marks the level above
// the root, 4 a level whose whole subtree is known to be inside. The sphere
// test never yields 4, so the shortcut serves only levels that set it.
enum { ALL_VISIBLE_CULL = 2, ALL_INSIDE_CULL = 4, INSIDE_CULL = 7 };
}  // namespace

nrVFCullAction::nrVFCullAction(nrType* type)
    : nrTransformAction(type), camera(nullptr), cullResults{ALL_VISIBLE_CULL}, cullDepth(0) {}

nrVFCullAction::~nrVFCullAction() {
  if (camera) camera->unref();
}

void nrVFCullAction::setCamera(nrCamera* c) {
  if (c) c->ref();
  if (camera) camera->unref();
  camera = c;
}

bool nrVFCullAction::checkCamera(const char* who) const {
  if (camera) return true;
  fprintf(stderr, "%s::apply() - no camera set, nothing traversed\n", who);
  return false;
}

nrTravDirective nrVFCullAction::apply(nrNode* root) {
  nrKeepAlive keepRoot(root);
  if (!checkCamera("nrVFCullAction")) return CONTINUE_TRAV;
  reset();
  begin(root);
  nrTravDirective d = root ? root->vfCullVisit(this) : CONTINUE_TRAV;
  end(root);
  return d;
}

void nrVFCullAction::reset() {
  cullDepth = 0;
  cullResults[0] = ALL_VISIBLE_CULL;
  nrTransformAction::reset();
  if (camera) matStack.getTop()->preMult(camera->getViewMatrix());
  topScaleFlag() = 0;
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
  ++cullDepth;
  if (!camera) return cullResults[cullDepth] = INSIDE_CULL;
  nrSphereBound eye;
  if (topScaleFlag() == 0)
    eye.orthoXform(&sphere, *matStack.getTop());
  else
    eye.xform(&sphere, *matStack.getTop());
  cullResults[cullDepth] = camera->getFrustum().contains(&eye);
  return cullResults[cullDepth];
}
