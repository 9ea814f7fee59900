// Nodes used by the node tests: they count instances and what they are told.
#pragma once

#include <string>

#include "nerio3d/actions/nrDrawAction.h"
#include "nerio3d/fields/nrSFRef.h"
#include "nerio3d/nodes/nrGroup.h"

class nrGeometry;

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

// What the quads drew and the hooks the tstHooks action saw, in order.
extern std::string tstDrawn;

// A square of side 2 in its z = 0 plane, seen only from +z: white left of
// x = 0 and `color` right of it, so a turned or mirrored view shows. Drawing
// appends its name to tstDrawn; picking hits it with a normal of +z. It stands
// in for a geometry, whose pointer the hit record only keeps.
class tstQuad : public nrNode {
  NR_DECLARE_CONTAINER_TYPE(tstQuad)
  tstQuad() : nrNode(getClassType()) { setSphereBound(nrSphereBound(nrVec3f(0, 0, 0), 1.5f)); }
  tstQuad(const char* name, const nrVec3f& c) : tstQuad() {
    setName(name);
    color = c;
  }

  nrGeometry* asGeometry() { return reinterpret_cast<nrGeometry*>(this); }
  nrTravDirective drawVisit(nrDrawAction* action) override;
  // Culling appends the name only.
  nrTravDirective vfCullVisit(nrVFCullAction*) override {
    tstDrawn += std::string(getName()) + " ";
    return CONTINUE_TRAV;
  }
  void isect(nrIsectAction* action) override;

  nrVec3f color{1, 0, 0};
};

// A draw action that appends "pre(name)" and "post(name)" to tstDrawn.
class tstHooks : public nrDrawAction {
 public:
  nrTravDirective preVisit(nrNode* n) override { return hook("pre", n); }
  nrTravDirective postVisit(nrNode* n) override { return hook("post", n); }

 private:
  nrTravDirective hook(const char* kind, nrNode* n) {
    tstDrawn += std::string(kind) + "(" + (n->getName() ? n->getName() : "") + ") ";
    return CONTINUE_TRAV;
  }
};
