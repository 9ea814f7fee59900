// Interior node: an ordered list of child nodes whose bounding sphere is, by
// default, derived from the children and recomputed lazily when one changes.
#pragma once

#include "nerio3d/arrays/nrFieldArrays.h"
#include "nerio3d/nodes/nrNode.h"

class nrGroup : public nrNode {
  NR_DECLARE_CONTAINER_TYPE(nrGroup)

  enum { CHILDREN_FIELD = 2 };

  nrGroup() : nrGroup(getClassType()) {}
  explicit nrGroup(nrType* type);
  ~nrGroup() override;

  // Every mutator signals a change of the children, even one that changes
  // nothing: a null node is not added, and an index out of range (insertion
  // goes up to the count, replacement and removal below it) is ignored. The
  // group references its children; one it drops is released, and deleted
  // when nothing else references it (ref a node first to move it elsewhere).
  void addChild(nrNode* node);
  void insertChild(int index, nrNode* node);
  void setChild(int index, nrNode* node);
  using nrContainer::copy;
  // Refused with a warning when a child of from would become this group's
  // own ancestor (from lies above this group).
  void copy(nrContainer* from, nrCloneTable* table) override;

  // A larger count fills with null children, which every walk over the
  // children passes over.
  void setChildCount(int n);
  void removeChild(int index);
  // Removes the first occurrence; false when node is not a child.
  bool removeChild(nrNode* node);
  // Replaces the first occurrence; false when oldNode is not a child.
  bool replaceChild(nrNode* oldNode, nrNode* newNode);
  // Index of the first occurrence, -1 when node is not a child.
  int findChild(nrNode* node);
  int getNumChildren() const;
  // The counterpart of setChildCount.
  int getChildCount() const { return getNumChildren(); }
  // Null for an index out of range.
  nrNode* getChild(int index) const;

  // The sphere around the children's spheres, each brought up to date first;
  // null children count as empty.
  virtual void calcChildrenBound(nrSphereBound& sphere);

  void sound(nrSoundAction* action) override;
  void isect(nrIsectAction* action) override;
  nrTravDirective visit(nrAction* action) override;
  nrTravDirective transformVisit(nrTransformAction* action) override;
  nrTravDirective vfCullVisit(nrVFCullAction* action) override;
  nrTravDirective drawVisit(nrDrawAction* action) override;
  void fieldChanged(short index) override;
  void childChanged(nrContainer* child, short index) override;
  void cleanSideEffect(short index) override;

 protected:
  bool closesCycle(nrNode* node, const char* who);

  // Every helper below takes the children from first up to (not including)
  // end, all of them by default; groups that choose among their children
  // narrow the range.
  enum : unsigned { ALL_END = ~0u };

  // Appends this group to the action's path around the children's isect.
  void isectChildren(nrIsectAction* action, unsigned first = 0, unsigned end = ALL_END);
  // Each child through childVisit, in order, until one stops the traversal: 2
  // then, else 0.
  template <typename Action>
  nrTravDirective visitChildren(Action* action, nrTravDirective (nrNode::*childVisit)(Action*), unsigned first = 0,
                                unsigned end = ALL_END);
  // preVisit, then the children when it let them, then postVisit; the larger result.
  template <typename Action>
  nrTravDirective traverse(Action* action, nrTravDirective (nrNode::*childVisit)(Action*), unsigned first = 0,
                           unsigned end = ALL_END);
  // traverse behind the cull test: 1 for a sphere outside the view, without
  // preVisit or postVisit; the cull level is left in every case.
  template <typename Action>
  nrTravDirective cullTraverse(Action* action, nrTravDirective (nrNode::*childVisit)(Action*), unsigned first = 0,
                               unsigned end = ALL_END);

  nrRefArray children;
};

template <typename Action>
nrTravDirective nrGroup::visitChildren(Action* action, nrTravDirective (nrNode::*childVisit)(Action*), unsigned first,
                                       unsigned end) {
  // An action may edit the list from inside a visit: the count is read again
  // for every child, and each child is held through its own visit so that
  // dropping it cannot free it while it runs.
  for (unsigned i = first; i < end && i < children.getCount(); ++i) {
    nrNode* child = static_cast<nrNode*>(children[i]);
    if (!child) continue;
    child->ref();
    nrTravDirective d = (child->*childVisit)(action);
    child->unref();
    if (d == STOP_TRAV) return STOP_TRAV;
  }
  return CONTINUE_TRAV;
}

template <typename Action>
nrTravDirective nrGroup::traverse(Action* action, nrTravDirective (nrNode::*childVisit)(Action*), unsigned first,
                                  unsigned end) {
  nrTravDirective d = action->preVisit(this);
  if (d == CONTINUE_TRAV) d = visitChildren(action, childVisit, first, end);
  return nrTravCombine(d, action->postVisit(this));
}

template <typename Action>
nrTravDirective nrGroup::cullTraverse(Action* action, nrTravDirective (nrNode::*childVisit)(Action*), unsigned first,
                                      unsigned end) {
  nrTravDirective d = action->pushCull(sphereBound) ? traverse(action, childVisit, first, end) : PRUNE_TRAV;
  action->popCull();
  return d;
}
