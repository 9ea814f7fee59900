// Group that draws and picks only the children its whichChild selects: one,
// all, or none.
#pragma once

#include "nerio3d/nodes/nrGroup.h"

class nrSwitch : public nrGroup {
  NR_DECLARE_CONTAINER_TYPE(nrSwitch)

  enum { WHICH_CHILD_FIELD = 3 };
  // whichChild values besides a child's index; any other value selects nothing.
  enum { NO_CHILD = -1, ALL_CHILDREN = -2 };

  nrSwitch() : nrSwitch(getClassType()) {}
  explicit nrSwitch(nrType* type);
  ~nrSwitch() override;

  void setWhichChild(int i) { setFieldValue(whichChildIndex, i, WHICH_CHILD_FIELD); }
  int getWhichChild() const;

  // whichChild -1 returns 1 at once, without cull test or hooks; otherwise
  // the group's cull test and hooks around the selected children.
  nrTravDirective vfCullVisit(nrVFCullAction* action) override;
  nrTravDirective drawVisit(nrDrawAction* action) override;
  // Only the selected children can be hit.
  void isect(nrIsectAction* action) override;

 protected:
  // Gives type a children descriptor of its own, found under alias as well,
  // so that the name stays with this branch of the hierarchy.
  static void aliasChildren(nrType* type, const char* alias);
  // The selected children as the range [first, end).
  void selected(unsigned& first, unsigned& end) const;
  template <typename Action>
  nrTravDirective switchTraverse(Action* action, nrTravDirective (nrNode::*childVisit)(Action*));

  int whichChildIndex;
};

template <typename Action>
nrTravDirective nrSwitch::switchTraverse(Action* action, nrTravDirective (nrNode::*childVisit)(Action*)) {
  cleanPendingFields();
  if (whichChildIndex == NO_CHILD) return PRUNE_TRAV;
  unsigned first, end;
  selected(first, end);
  return cullTraverse(action, childVisit, first, end);
}
