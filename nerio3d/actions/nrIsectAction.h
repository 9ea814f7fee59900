// The picking traversal: carries a segment down the graph, re-expressed in the
// coordinates of each node it enters, and keeps the nearest hit in an nrHit.
//
// How nodes and geometry take part:
//
// - Interior nodes test getSeg() against their bound and, on a miss, return.
//   A node that places its children by a matrix toParent (local to parent)
//   brackets them with pushXform(toParent) / popXform(); a 0 from pushXform
//   (singular matrix) means there is nothing to hit below. Nodes append
//   themselves to getPath() around their children.
//
// - Geometry intersects getSeg(), which is in its own coordinates: the
//   segment starts at the picked segment's start and ends at the nearest hit
//   found so far (or at the picked segment's end), so a local distance t along
//   it is a candidate exactly when 0 <= t <= getSeg().length. It reports one
//   with hitGeometry(this, t, primitive, localNormal[, &texCoord]), which keeps
//   it when it is nearer than every earlier hit (or the first), and returns
//   whether it did. Nearness is judged as a fraction of the picked segment,
//   which is the same at every level whatever the scaling on the way
//   (getNearest()), and a kept hit shortens the segment at every level.
//
// - The hit record gets the geometry, the primitive index, the local distance,
//   the local point (start + t * direction), the local-to-world matrix (the top
//   of the matrix stack), the world point, the local normal and the unit world
//   normal (through the inverse transpose), the texture coordinate when given,
//   and a copy of the path. A shape then names itself with getHit().setShape().
#pragma once

#include "nerio3d/actions/nrHit.h"
#include "nerio3d/actions/nrTransformAction.h"
#include "nerio3d/math/nrSeg.h"

class nrGeometry;

class nrIsectAction : public nrTransformAction {
  NR_DECLARE_ACTION_TYPE(nrIsectAction)

  enum { MAX_SEG_DEPTH = 256 };

  nrIsectAction() : nrIsectAction(getClassType()) {}
  explicit nrIsectAction(nrType* type);

  // Starts a pick with the segment of setSeg and an empty hit record: the root
  // enters the path for the length of its isect (so a group root, which enters
  // it again itself, is on it twice). Returns 0; getHit() tells the result.
  nrTravDirective apply(nrNode* root) override;
  // The transform reset, the segment set by setSeg, an empty hit record.
  void reset();

  // The segment a pick starts from, in the root's coordinates; until one is
  // set it has length 0 and nothing can be hit. A direction that is not of
  // unit length is made so, the length scaled to keep the far end.
  void setSeg(const nrSeg& s);
  // The segment in the coordinates of the node being visited, ending at the
  // nearest hit so far.
  const nrSeg& getSeg() const { return *seg; }
  int getSegDepth() const { return segDepth; }

  // Enters a level whose segment is the current one carried through toLocal
  // (its far end maps to the same point); 1, or 0 after a message when the
  // stack is full, in which case the level above's segment stays current and
  // the matching pop does nothing.
  int pushSeg(const nrMatrix4f& toLocal);
  // Back to the level above. A hit needs nothing carried back: it shortens
  // every level when it is kept, so the matrix is not used.
  void popSeg(const nrMatrix4f& toParent);
  void popSeg();

  // Enters the coordinates of children placed by toParent: the segment through
  // its inverse, the stack top pre-multiplied by it. 0, entering nothing, when
  // toParent is singular.
  int pushXform(const nrMatrix4f& toParent);
  // Leaves what pushXform entered.
  void popXform();

  // Keeps a hit at distance t along the current segment when it is the first
  // or nearer than the hit kept so far; returns 1 when kept, else 0.
  // texCoord may be null.
  int hitGeometry(nrGeometry* g, float t, int primitive, const nrVec3f& localNormal, const nrVec2f* texCoord = nullptr);
  // Records a hit of g at the end of the current segment, without primitive or
  // normal, whatever was kept before.
  void hitGeometry(nrGeometry* g);

  // The nearest hit so far as a fraction of the picked segment; 1 before any.
  float getNearest() const { return nearest; }
  nrHit& getHit() { return hit; }

  // Containers from the root to the one being visited; visits append and
  // remove themselves.
  nrPtrArray& getPath() { return path; }

 protected:
  void record(nrGeometry* g, int primitive, const nrVec3f& localNormal, const nrVec2f* texCoord);

  nrHit hit;
  nrPtrArray path;
  nrSeg pickSeg;
  nrSeg segs[MAX_SEG_DEPTH];
  int segDepth;
  // Pushes refused past the last level; each is undone by the next pop instead.
  int refusedSegs;
  nrSeg* seg;
  float nearest;
};
