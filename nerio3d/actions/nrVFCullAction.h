// Traversal that tests each interior node's bounding sphere against the view
// frustum, so that what cannot be seen is skipped.
#pragma once

#include "nerio3d/actions/nrTransformAction.h"
#include "nerio3d/math/nrFrustum.h"

class nrSphereBound;

class nrVFCullAction : public nrTransformAction {
  NR_DECLARE_ACTION_TYPE(nrVFCullAction)

  // Nesting levels of interior nodes that are tested; deeper ones take the
  // result of the last tested level.
  enum { MAX_CULL_DEPTH = 256 };

  nrVFCullAction() : nrVFCullAction(getClassType()) {}
  explicit nrVFCullAction(nrType* type);

  // reset(), begin(root), the root's vfCullVisit, end(root).
  nrTravDirective apply(nrNode* root) override;
  // Cull depth 0 with "everything visible" at the top, then the transform reset.
  void reset();

  // The view volume in eye coordinates; the matrix stack takes spheres there.
  void setFrustum(const nrFrustum& f) { frustum = f; }
  const nrFrustum& getFrustum() const { return frustum; }

  // Enters one nesting level: 0 when the sphere is outside the frustum, else
  // non-zero (3 partly inside, 7 inside). Every call is matched by popCull().
  int pushCull(const nrSphereBound& sphere);
  // Leaves the level entered by pushCull; a depth of 0 stays 0.
  void popCull() {
    if (cullDepth >= 1) --cullDepth;
  }
  int getCullDepth() const { return cullDepth; }
  int getCullResult() const { return cullResults[cullDepth]; }

 protected:
  nrFrustum frustum;
  int cullResults[MAX_CULL_DEPTH];
  int cullDepth;
};
