// The picking traversal: carries a segment down the graph and keeps the path
// of nodes from the root to the one being visited.
#pragma once

#include "nerio3d/actions/nrTransformAction.h"
#include "nerio3d/math/nrSeg.h"

class nrIsectAction : public nrTransformAction {
  NR_DECLARE_ACTION_TYPE(nrIsectAction)

  enum { MAX_SEG_DEPTH = 256 };

  nrIsectAction() : nrIsectAction(getClassType()) {}
  explicit nrIsectAction(nrType* type) : nrTransformAction(type), path(8), segDepth(0), seg(&segs[0]) {}

  // The root enters the path for the length of its isect, so a group root,
  // which enters it again itself, is on it twice; returns 0.
  nrTravDirective apply(nrNode* root) override;

  // The segment a pick starts from, in the root's coordinates.
  void setSeg(const nrSeg& s) {
    segDepth = 0;
    segs[0] = s;
    seg = &segs[0];
  }
  // The segment in the coordinates of the node being visited.
  const nrSeg& getSeg() const { return *seg; }
  int getSegDepth() const { return segDepth; }

  // Nodes from the root to the one being visited; visits append and remove themselves.
  nrPtrArray& getPath() { return path; }

 protected:
  nrPtrArray path;
  nrSeg segs[MAX_SEG_DEPTH];
  int segDepth;
  nrSeg* seg;
};
