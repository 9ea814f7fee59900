// Base of everything that can sit in a scene graph: a cached bounding sphere
// and the visits through which the traversal actions walk the graph.
#pragma once

#include "nerio3d/actions/nrTravDirective.h"
#include "nerio3d/fields/nrContainer.h"
#include "nerio3d/math/nrSphereBound.h"

class nrAction;
class nrDrawAction;
class nrGroup;
class nrIsectAction;
class nrSoundAction;
class nrTransformAction;
class nrVFCullAction;

class nrNode : public nrContainer {
  NR_DECLARE_TYPE(nrNode)

  enum BoundModeEnum { STATIC = 0, DYNAMIC = 1 };
  enum FieldEnum { SPHERE_BOUND_FIELD = 0, BOUND_MODE_FIELD = 1 };

  nrNode() : nrNode(getClassType()) {}
  explicit nrNode(nrType* type);
  ~nrNode() override;

  virtual void sound(nrSoundAction*) {}
  virtual void isect(nrIsectAction*) {}
  virtual nrTravDirective visit(nrAction*) { return CONTINUE_TRAV; }
  virtual nrTravDirective transformVisit(nrTransformAction*) { return CONTINUE_TRAV; }
  virtual nrTravDirective vfCullVisit(nrVFCullAction*) { return CONTINUE_TRAV; }
  virtual nrTravDirective drawVisit(nrDrawAction*) { return CONTINUE_TRAV; }

  void setSphereBound(const nrSphereBound& sphere);
  // The sphere in the node's own coordinates, brought up to date first.
  void getSphereBound(nrSphereBound& sphere) const;
  const nrSphereBound& getSphereBound() const { return getFieldValue(sphereBound, SPHERE_BOUND_FIELD); }
  void setBoundMode(BoundModeEnum mode);
  BoundModeEnum getBoundMode() const;

  // Puts g between this node and each parent that is a group: this node is
  // appended to g, and g takes its place in that parent. Other parents keep it.
  void insertParent(nrGroup* g);
  void fieldChanged(short index) override;
  // A value routed towards one of this node's fields may move or resize what
  // the node bounds (a transform's translation, a switch's choice): in DYNAMIC
  // mode the sphere is marked stale at once, so that the parents' spheres,
  // culling and picking do not go on standing on the value it replaces.
  void dirtyFieldOutputs(nrField* field) override;
  // A sphere copied from a node of another kind does not fit this node's
  // contents: in DYNAMIC mode it is recomputed when next read.
  void copy(nrContainer* from, nrCloneTable* table) override;
  using nrContainer::copy;

 protected:
  // The vector member v of field index, brought up to date, as three floats.
  void getVec(const nrVec3f& v, short index, float* x, float* y, float* z) const;
  // node's sphere, brought up to date; null for a null node.
  static const nrSphereBound* validSphereBound(nrNode* node);
  // Pulls the values routed into this node that are still on their way; the
  // sphere's recomputation starts with it, so that it stands on them.
  void takeRoutedInputs();

  nrSphereBound sphereBound;
  int boundMode;
};
