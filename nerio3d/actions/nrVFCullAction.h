// Traversal that tests each interior node's bounding sphere against the view
// frustum of a camera, so that what cannot be seen is skipped.
#pragma once

#include "nerio3d/actions/nrTransformAction.h"

class nrCamera;
class nrSphereBound;

class nrVFCullAction : public nrTransformAction {
  NR_DECLARE_ACTION_TYPE(nrVFCullAction)

  // Nesting levels of interior nodes that are tested; deeper ones take the
  // result of the last tested level.
  enum { MAX_CULL_DEPTH = 256 };

  nrVFCullAction() : nrVFCullAction(getClassType()) {}
  explicit nrVFCullAction(nrType* type);
  ~nrVFCullAction() override;

  // reset(), begin(root), the root's vfCullVisit, end(root). Without a camera
  // nothing can be culled: one line on standard error, and 0.
  nrTravDirective apply(nrNode* root) override;
  // Cull depth 0 with "everything visible" at the top, then the transform
  // reset, then the camera's view matrix on the stack, so that the stack
  // holds model-view matrices.
  void reset();

  // Holds a reference to camera (null allowed) and drops the previous one.
  void setCamera(nrCamera* camera);
  nrCamera* getCamera() const { return camera; }

  // Enters one nesting level: 0 when the sphere (in the current coordinates)
  // is outside the camera's frustum, else non-zero (3 partly inside, 7
  // inside). Without a camera nothing is outside. Every call is matched by
  // popCull().
  int pushCull(const nrSphereBound& sphere);
  // Leaves the level entered by pushCull; a depth of 0 stays 0.
  void popCull() {
    if (cullDepth >= 1) --cullDepth;
  }
  int getCullDepth() const { return cullDepth; }
  int getCullResult() const { return cullResults[cullDepth]; }

 protected:
  // False, after one line on standard error naming who, when there is no camera.
  bool checkCamera(const char* who) const;

  nrCamera* camera;
  int cullResults[MAX_CULL_DEPTH];
  int cullDepth;
};
