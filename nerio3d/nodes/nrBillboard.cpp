#include "nerio3d/nodes/nrBillboard.h"

#include <cmath>

#include "nerio3d/actions/nrDrawAction.h"
#include "nerio3d/actions/nrIsectAction.h"
#include "nerio3d/fields/nrMField.h"
#include "nerio3d/fields/nrSField.h"
#include "nerio3d/render/nrGL.h"

namespace {

bool axisVector(int v, nrVec3f& out) {
  if (v < nrBillboard::POS_X_AXIS || v > nrBillboard::NEG_Z_AXIS) return false;
  out.set(0, 0, 0);
  out[v % 3] = v < nrBillboard::NEG_X_AXIS ? 1.0f : -1.0f;
  return true;
}

// The direction of v with its component along the unit vector n removed;
// false when v has no direction or (nearly) lies along n.
bool across(const nrVec3f& v, const nrVec3f& n, nrVec3f& out) {
  nrVec3f w = v;
  if (w.normalize() == 0) return false;
  out.addScaled(w, -w.dot(n), n);
  return out.normalize() > nrEpsilon;
}

}  // namespace

NR_DEFINE_TYPE(nrBillboard, nrGroup, "Billboard") {
  nrMFVec3f::addTypeField(type, "position", POSITION_FIELD, &nrBillboard::position);
  nrSFEnum::addTypeField(type, "mode", MODE_FIELD, AXIAL, &nrBillboard::mode);
  nrSFVec3f::addTypeField(type, "axisOfRotation", AXIS_OF_ROTATION_FIELD, nrVec3f(0, 1, 0),
                          &nrBillboard::axisOfRotation);
  nrSFEnum::addTypeField(type, "forward", FORWARD_FIELD, POS_Z_AXIS, &nrBillboard::forward);
  nrSFEnum::addTypeField(type, "up", UP_FIELD, POS_Y_AXIS, &nrBillboard::up);
  const char* modes[] = {"AXIAL", "POINT_SCREEN", "POINT_OBJECT"};
  const int modeValues[] = {AXIAL, POINT_SCREEN, POINT_OBJECT};
  type->defineEnums(MODE_FIELD, 3, modes, modeValues);
  const char* vectors[] = {"POS_X_AXIS", "POS_Y_AXIS", "POS_Z_AXIS", "NEG_X_AXIS", "NEG_Y_AXIS", "NEG_Z_AXIS"};
  const int vectorValues[] = {POS_X_AXIS, POS_Y_AXIS, POS_Z_AXIS, NEG_X_AXIS, NEG_Y_AXIS, NEG_Z_AXIS};
  type->defineEnums(FORWARD_FIELD, 6, vectors, vectorValues);
  type->defineEnums(UP_FIELD, 6, vectors, vectorValues);
}

nrBillboard::nrBillboard(nrType* type) : nrGroup(type) {
  initFieldDefaults(getClassType());
  rotation.makeIdent();
}

nrBillboard::~nrBillboard() { destroyFieldContents(getClassType()); }

void nrBillboard::setPosition(int i, float x, float y, float z) {
  if (i < 0) return;
  unsigned at = static_cast<unsigned>(i);
  if (at > position.getCount()) position.fillRange(position.getCount(), at - position.getCount(), nrVec3f(0, 0, 0));
  position.set(at, nrVec3f(x, y, z));
  fieldChanged(POSITION_FIELD);
}

nrVec3f nrBillboard::positionOf(unsigned i) const { return i < position.getCount() ? position[i] : nrVec3f(0, 0, 0); }

void nrBillboard::getPosition(int i, float* x, float* y, float* z) const {
  getFieldValue(position, POSITION_FIELD);
  nrVec3f p = i < 0 ? nrVec3f(0, 0, 0) : positionOf(static_cast<unsigned>(i));
  *x = p[0];
  *y = p[1];
  *z = p[2];
}

int nrBillboard::getNumPositions() const {
  return static_cast<int>(getFieldValue(position, POSITION_FIELD).getCount());
}

void nrBillboard::fieldChanged(short index) {
  if (index != POSITION_FIELD) {
    nrGroup::fieldChanged(index);
    return;
  }
  if (boundMode == DYNAMIC) propagateSideEffect(SPHERE_BOUND_FIELD);
  touchField(index);
}

void nrBillboard::copy(nrContainer* from, nrCloneTable* table) {
  nrGroup::copy(from, table);
  if (from && from != this && from->isOfType(getClassType())) rotation = static_cast<nrBillboard*>(from)->rotation;
}

bool nrBillboard::calculateTransform(nrDrawAction* action, nrMatrix4f& R) {
  R.makeIdent();
  if (!action) return false;
  nrVec3f toViewer = action->getViewVector(), front;
  if (toViewer.normalize() == 0 || !axisVector(forward, front)) return false;
  if (mode == AXIAL) {
    // Turn front, seen along the axis, onto the viewer seen along the axis.
    nrVec3f axis = axisOfRotation, from, to, turn;
    if (axis.normalize() == 0 || !across(front, axis, from) || !across(toViewer, axis, to)) return false;
    turn.cross(from, to);
    R.makeRot(axis[0], axis[1], axis[2], std::atan2(turn.dot(axis), from.dot(to)));
    return true;
  }
  nrVec3f keepUp;
  if (mode == POINT_SCREEN) {
    // The eye's y axis in the billboard's coordinates.
    nrMatrix4f eyeToLocal;
    if (!eyeToLocal.invertFull(*action->getMatStack()->getTop())) return false;
    keepUp.set(eyeToLocal[1][0], eyeToLocal[1][1], eyeToLocal[1][2]);
  } else if (!axisVector(up, keepUp)) {
    return false;
  }
  // Map the frame (front, own up, side) onto (viewer, up to keep, side).
  nrVec3f ownUp, upFrom, upTo, sideFrom, sideTo;
  if (!axisVector(up, ownUp) || !across(ownUp, front, upFrom) || !across(keepUp, toViewer, upTo)) return false;
  sideFrom.cross(upFrom, front);
  sideTo.cross(upTo, toViewer);
  for (int j = 0; j < 3; ++j)
    for (int k = 0; k < 3; ++k) R[j][k] = front[j] * toViewer[k] + upFrom[j] * upTo[k] + sideFrom[j] * sideTo[k];
  return true;
}

void nrBillboard::calcChildrenBound(nrSphereBound& sphere) {
  // Child i turns about its own origin, then sits at position i: every
  // orientation lies within |centre| + radius of that position.
  unsigned n = children.getCount();
  nrSphereBound* turned = new nrSphereBound[n ? n : 1];
  const nrSphereBound** spheres = new const nrSphereBound*[n ? n : 1];
  for (unsigned i = 0; i < n; ++i) {
    const nrSphereBound* child = validSphereBound(static_cast<nrNode*>(children[i]));
    spheres[i] = nullptr;
    if (!child || child->isEmpty()) continue;
    turned[i] = nrSphereBound(positionOf(i), child->center.length() + child->radius);
    spheres[i] = &turned[i];
  }
  sphere.around(spheres, static_cast<int>(n));
  delete[] spheres;
  delete[] turned;
}

void nrBillboard::placement(unsigned i, nrMatrix4f& toParent) {
  nrVec3f p = positionOf(i);
  toParent.postTrans(rotation, p[0], p[1], p[2]);
}

bool nrBillboard::pushPlacement(nrTransformAction* action, unsigned i) {
  if (!action->pushMatrix()) return false;
  nrMatrix4f toParent;
  placement(i, toParent);
  action->getMatStack()->getTop()->preMult(toParent);
  return true;
}

template <typename Action, typename VisitChild>
nrTravDirective nrBillboard::turnedTraverse(Action* action, VisitChild visitChild) {
  nrTravDirective d = PRUNE_TRAV;
  if (action->pushCull(sphereBound)) {
    d = action->preVisit(this);
    for (unsigned i = 0; d == CONTINUE_TRAV && i < children.getCount(); ++i) {
      nrNode* child = static_cast<nrNode*>(children[i]);
      if (!child) continue;
      bool placed = pushPlacement(action, i);
      // Held through its visit, which may drop it from this billboard.
      child->ref();
      if (visitChild(child, i, placed) == STOP_TRAV) d = STOP_TRAV;
      child->unref();
      if (placed) action->popMatrix();
    }
    d = nrTravCombine(d, action->postVisit(this));
  }
  action->popCull();
  return d;
}

nrTravDirective nrBillboard::vfCullVisit(nrVFCullAction* action) {
  cleanPendingFields();
  return turnedTraverse(action, [action](nrNode* child, unsigned, bool) { return child->vfCullVisit(action); });
}

nrTravDirective nrBillboard::drawVisit(nrDrawAction* action) {
  cleanPendingFields();
  calculateTransform(action, rotation);
  return turnedTraverse(action, [this, action](nrNode* child, unsigned i, bool placed) {
    if (!placed) return child->drawVisit(action);
    nrVec3f p = positionOf(i), viewVector = action->getViewVector();
    nrgl::PushMatrix();
    nrgl::Translatef(p[0], p[1], p[2]);
    nrgl::MultMatrixf(&rotation[0][0]);
    action->updateViewVector();
    nrTravDirective d = child->drawVisit(action);
    nrgl::PopMatrix();
    action->setViewVector(viewVector);
    return d;
  });
}

void nrBillboard::isect(nrIsectAction* action) {
  cleanPendingFields();
  if (!sphereBound.isect(&action->getSeg(), nullptr, nullptr)) return;
  nrPtrArray& path = action->getPath();
  path.append(this);
  for (unsigned i = 0; i < children.getCount(); ++i) {
    nrNode* child = static_cast<nrNode*>(children[i]);
    if (!child) continue;
    nrMatrix4f toParent;
    placement(i, toParent);
    if (!action->pushXform(toParent)) continue;
    // Held through its visit, which may drop it from this billboard.
    child->ref();
    child->isect(action);
    child->unref();
    action->popXform();
  }
  path.setCount(path.getCount() - 1);
}
