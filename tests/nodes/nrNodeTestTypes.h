// Nodes used by the node tests: they count instances and what they are told.
#pragma once

#include "nerio3d/fields/nrSFRef.h"
#include "nerio3d/nodes/nrGroup.h"

// A leaf that counts its instances, so tests can see deletions.
class tstLeaf : public nrNode {
  NR_DECLARE_CONTAINER_TYPE(tstLeaf)
  tstLeaf() : nrNode(getClassType()) { ++live; }
  explicit tstLeaf(const nrSphereBound& s) : tstLeaf() { setSphereBound(s); }
  ~tstLeaf() override { --live; }
  static int live;
};

// A group that counts the notices it gets and the bounds it computes.
class tstGroup : public nrGroup {
  NR_DECLARE_CONTAINER_TYPE(tstGroup)
  tstGroup() : nrGroup(getClassType()) {}

  bool isSphereStale() const { return getSideEffectMask().getBits() & 1; }

  int childNotices = 0;
  int boundsComputed = 0;
  int childrenSignals = 0;

 protected:
  void childChanged(nrContainer* child, short index) override {
    ++childNotices;
    nrGroup::childChanged(child, index);
  }
  void cleanSideEffect(short index) override {
    if (index == SPHERE_BOUND_FIELD) ++boundsComputed;
    nrGroup::cleanSideEffect(index);
  }
  void fieldChanged(short index) override {
    if (index == CHILDREN_FIELD) ++childrenSignals;
    nrGroup::fieldChanged(index);
  }
};

// A container that refers to a node without being a group.
class tstHolder : public nrContainer {
  NR_DECLARE_CONTAINER_TYPE(tstHolder)
  tstHolder() : nrContainer(getClassType()) { initFieldDefaults(classType); }
  ~tstHolder() override { destroyFieldContents(classType); }
  nrContainer* node;
};
