// Base of the traversals: applied to a root node, it walks the graph through
// the nodes' own visits and is told about each interior node on the way.
#pragma once

#include "nerio3d/actions/nrTravDirective.h"
#include "nerio3d/core/nrObject.h"

class nrNode;

// Concrete actions answer instantiate() with a new default instance.
#define NR_DECLARE_ACTION_TYPE(Class) \
  NR_DECLARE_TYPE(Class)              \
  nrAction* instantiate() override { return new Class; }

class nrAction : public nrObject {
  NR_DECLARE_TYPE(nrAction)

  nrAction() : nrAction(getClassType()) {}
  explicit nrAction(nrType* typeOfClass) : nrObject(typeOfClass) {}

  // reset(), begin(root), the root's generic visit, end(root); the visit's result.
  virtual nrTravDirective apply(nrNode* root);
  // Called once before and once after a whole traversal.
  virtual void begin(nrNode*) {}
  // Called by interior nodes around their children: a non-zero preVisit keeps
  // the children from being visited; the node returns the larger of the two.
  virtual nrTravDirective preVisit(nrNode*) { return CONTINUE_TRAV; }
  virtual nrTravDirective postVisit(nrNode*) { return CONTINUE_TRAV; }
  virtual void end(nrNode*) {}
  // A new action of the same class.
  virtual nrAction* instantiate() { return new nrAction; }

  // Clears the traversal state; derived actions shadow it with their own.
  void reset() {}
};
