#include "nerio3d/nodes/nrLOD.h"

#include <cstdio>

#include "nerio3d/actions/nrDrawAction.h"
#include "nerio3d/fields/nrFieldInfo.h"
#include "nerio3d/fields/nrMField.h"
#include "nerio3d/fields/nrSField.h"

int nrLOD::offset = 0;

NR_DEFINE_TYPE(nrLOD, nrSwitch, "LOD") {
  nrSFVec3f::addTypeField(type, "center", CENTER_FIELD, nrVec3f(0, 0, 0), &nrLOD::center);
  nrMFFloat::addTypeField(type, "ranges", RANGES_FIELD, &nrLOD::ranges);
  type->getFieldInfo(RANGES_FIELD)->addAlias("range");
  nrSFInt::addTypeField(type, "offsetOverride", OFFSET_OVERRIDE_FIELD, 0, &nrLOD::offsetOverride);
  aliasChildren(type, "level");
}

nrLOD::nrLOD(nrType* type) : nrSwitch(type), centerUnset(1), chosenNothing(0) {
  initFieldDefaults(getClassType());
  ranges.append(0);
  ranges.append(1000000);
  whichChildIndex = 0;
}

nrLOD::~nrLOD() { destroyFieldContents(getClassType()); }

void nrLOD::getCenter(nrVec3f& c) const {
  c = getFieldValue(center, CENTER_FIELD);
}

void nrLOD::setBoundary(int range, int k, float distance) {
  if (range < 0 || range >= MAX_RANGES) return;
  unsigned at = static_cast<unsigned>(range + k);
  // Boundaries skipped on the way take the new value, so the ranges before
  // this one are empty rather than undefined.
  if (at > ranges.getCount()) ranges.fillRange(ranges.getCount(), at - ranges.getCount(), distance);
  ranges.set(at, distance);
}

void nrLOD::setRange(int i, float nearDistance, float farDistance) {
  if (i < 0 || i >= MAX_RANGES) return;
  setBoundary(i, 0, nearDistance);
  setBoundary(i, 1, farDistance);
  fieldChanged(RANGES_FIELD);
}

void nrLOD::setRangeNear(int i, float distance) {
  if (i < 0 || i >= MAX_RANGES) return;
  setBoundary(i, 0, distance);
  fieldChanged(RANGES_FIELD);
}

void nrLOD::setRangeFar(int i, float distance) {
  if (i < 0 || i >= MAX_RANGES) return;
  setBoundary(i, 1, distance);
  fieldChanged(RANGES_FIELD);
}

int nrLOD::getNumRanges() const {
  getFieldValue(ranges, RANGES_FIELD);
  return ranges.getCount() > 1 ? static_cast<int>(ranges.getCount()) - 1 : 0;
}

float nrLOD::getBoundary(int range, int k, const char* who) const {
  if (range < 0 || range >= getNumRanges()) {
    fprintf(stderr, "nrLOD(0x%p)::%s: attempting to read uninitialized range %d\n", static_cast<const void*>(this), who,
            range);
    return -1;
  }
  return ranges[static_cast<unsigned>(range + k)];
}

float nrLOD::getRangeNear(int i) const { return getBoundary(i, 0, "getRangeNear"); }

float nrLOD::getRangeFar(int i) const { return getBoundary(i, 1, "getRangeFar"); }

int nrLOD::getOffsetOverride() const {
  return getFieldValue(offsetOverride, OFFSET_OVERRIDE_FIELD);
}

void nrLOD::fieldChanged(short index) {
  if (index == CENTER_FIELD) centerUnset = 0;
  nrSwitch::fieldChanged(index);
}

void nrLOD::copy(nrContainer* from, nrCloneTable* table) {
  nrSwitch::copy(from, table);
  if (!from || from == this || !from->isOfType(getClassType())) return;
  centerUnset = static_cast<nrLOD*>(from)->centerUnset;
  // Picks follow the last choice: none when the source chose none.
  chosenNothing = static_cast<nrLOD*>(from)->chosenNothing;
}

int nrLOD::rangeIndex(nrTransformAction* action) {
  if (centerUnset) {
    validateField(SPHERE_BOUND_FIELD);
    center = sphereBound.center;
    centerUnset = 0;
  }
  nrVec3f eye;
  eye.xformPt(center, *action->getMatStack()->getTop());
  float d = eye.length();
  unsigned n = ranges.getCount();
  if (n > 0 && d < ranges[0]) return -1;
  unsigned i = 1;
  while (i < n && !(ranges[i] > d)) ++i;
  return static_cast<int>(i) - 1;
}

int nrLOD::childFor(int range) {
  if (range < 0) return -1;
  long child = static_cast<long>(range) + (offsetOverride > 0 ? offsetOverride : offset);
  long last = static_cast<long>(children.getCount()) - 1;
  return static_cast<int>(child < last ? child : last);
}

int nrLOD::whichChild(nrTransformAction* action) {
  if (!action) return -1;
  cleanPendingFields();
  return childFor(rangeIndex(action));
}

bool nrLOD::choose(nrTransformAction* action) {
  cleanPendingFields();
  int range = rangeIndex(action);
  int child = childFor(range);
  chosenNothing = range < 0 || range >= getNumRanges() || child < 0;
  if (chosenNothing) return false;
  if (child != whichChildIndex) setWhichChild(child);
  return true;
}

nrTravDirective nrLOD::vfCullVisit(nrVFCullAction* action) {
  return choose(action) ? nrSwitch::vfCullVisit(action) : CONTINUE_TRAV;
}

nrTravDirective nrLOD::drawVisit(nrDrawAction* action) {
  return choose(action) ? nrSwitch::drawVisit(action) : CONTINUE_TRAV;
}

void nrLOD::isect(nrIsectAction* action) {
  if (!chosenNothing) nrSwitch::isect(action);
}
