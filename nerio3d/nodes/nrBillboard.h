// Group that turns its children toward the viewer: about an axis, or freely
// with their up direction kept on the screen's or on their own.
#pragma once

#include "nerio3d/arrays/nrTypedArray.h"
#include "nerio3d/math/nrMatrix4f.h"
#include "nerio3d/math/nrVec3f.h"
#include "nerio3d/nodes/nrGroup.h"

class nrBillboard : public nrGroup {
  NR_DECLARE_CONTAINER_TYPE(nrBillboard)

  enum ModeEnum { AXIAL = 0, POINT_SCREEN = 1, POINT_OBJECT = 2 };
  enum VectorEnum { POS_X_AXIS = 0, POS_Y_AXIS = 1, POS_Z_AXIS = 2, NEG_X_AXIS = 3, NEG_Y_AXIS = 4, NEG_Z_AXIS = 5 };
  enum { POSITION_FIELD = 3, MODE_FIELD, AXIS_OF_ROTATION_FIELD, FORWARD_FIELD, UP_FIELD };

  nrBillboard() : nrBillboard(getClassType()) {}
  explicit nrBillboard(nrType* type);
  ~nrBillboard() override;

  // Child i is turned about its placement, position i; children past the
  // last position sit at the origin, and setting a position past the last
  // fills the gap with the origin.
  void setPosition(int i, float x, float y, float z);
  void getPosition(int i, float* x, float* y, float* z) const;
  int getNumPositions() const;
  void setMode(ModeEnum m) { setFieldValue(mode, static_cast<int>(m), MODE_FIELD); }
  ModeEnum getMode() const { return static_cast<ModeEnum>(getFieldValue(mode, MODE_FIELD)); }
  void setAxisOfRotation(float x, float y, float z) {
    setFieldValue(axisOfRotation, nrVec3f(x, y, z), AXIS_OF_ROTATION_FIELD);
  }
  void getAxisOfRotation(float* x, float* y, float* z) const { getVec(axisOfRotation, AXIS_OF_ROTATION_FIELD, x, y, z); }
  // The same, as a vector.
  void setAxisOfRotation(const nrVec3f& v) { setFieldValue(axisOfRotation, v, AXIS_OF_ROTATION_FIELD); }
  const nrVec3f& getAxisOfRotation() const { return getFieldValue(axisOfRotation, AXIS_OF_ROTATION_FIELD); }
  void getAxisOfRotation(nrVec3f& v) const { v = getAxisOfRotation(); }
  // The children's own axis that is turned toward the viewer.
  void setForward(VectorEnum v) { setFieldValue(forward, static_cast<int>(v), FORWARD_FIELD); }
  VectorEnum getForward() const { return static_cast<VectorEnum>(getFieldValue(forward, FORWARD_FIELD)); }
  // The children's own up axis (POINT_SCREEN and POINT_OBJECT).
  void setUp(VectorEnum v) { setFieldValue(up, static_cast<int>(v), UP_FIELD); }
  VectorEnum getUp() const { return static_cast<VectorEnum>(getFieldValue(up, UP_FIELD)); }

  // The rotation R (children's coordinates to the billboard's, p' = p * R)
  // that turns forward toward the viewer seen through the action's view
  // vector: AXIAL about axisOfRotation, as nearly as the axis allows;
  // POINT_SCREEN and POINT_OBJECT exactly, with up as near as possible to the
  // screen's up or to the billboard's own up. False, with R the identity,
  // when the mode has no answer: the viewer on the axis, forward along the
  // axis or along up, or the viewer along the up to keep.
  bool calculateTransform(nrDrawAction* action, nrMatrix4f& R);

  // A sphere around every orientation the children can be turned to.
  void calcChildrenBound(nrSphereBound& sphere) override;

  nrTravDirective vfCullVisit(nrVFCullAction* action) override;
  nrTravDirective drawVisit(nrDrawAction* action) override;
  void isect(nrIsectAction* action) override;
  void fieldChanged(short index) override;
  // The copy turns its children as its source was last drawn.
  void copy(nrContainer* from, nrCloneTable* table) override;
  using nrGroup::copy;

 protected:
  // Child i's placement: turned by the rotation of the last draw, then moved
  // to its position.
  void placement(unsigned i, nrMatrix4f& toParent);
  // Enters child i's coordinates on the action's matrix stack; false, entering
  // nothing, when the stack is full.
  bool pushPlacement(nrTransformAction* action, unsigned i);
  // The cull test, preVisit, each child inside its placement through
  // visitChild(child, i, placed), postVisit; the larger result.
  template <typename Action, typename VisitChild>
  nrTravDirective turnedTraverse(Action* action, VisitChild visitChild);

  nrVec3fArray position;
  int mode;
  nrVec3f axisOfRotation;
  int forward;
  int up;
  // The rotation drawing last found. Culling and picking have no view vector
  // of their own: they turn the children as they were last drawn.
  nrMatrix4f rotation;

 private:
  nrVec3f positionOf(unsigned i) const;
};
