// Level of detail: a switch that draws the child for the range of distances
// the eye lies in. The ranges are boundaries: range i runs from ranges[i] up
// to ranges[i + 1], so n boundaries make n - 1 ranges.
#pragma once

#include "nerio3d/arrays/nrTypedArray.h"
#include "nerio3d/math/nrVec3f.h"
#include "nerio3d/nodes/nrSwitch.h"

class nrLOD : public nrSwitch {
  NR_DECLARE_CONTAINER_TYPE(nrLOD)

  enum { CENTER_FIELD = 4, RANGES_FIELD, OFFSET_OVERRIDE_FIELD };
  // Ranges that setRange, setRangeNear and setRangeFar reach.
  enum { MAX_RANGES = 10 };

  nrLOD() : nrLOD(getClassType()) {}
  explicit nrLOD(nrType* type);
  ~nrLOD() override;

  // Until a centre is given, the first selection takes the centre of the
  // node's bounding sphere and keeps it.
  void setCenter(const nrVec3f& c) { setFieldValue(center, c, CENTER_FIELD); }
  void getCenter(nrVec3f& c) const;
  const nrVec3f& getCenter() const { return getFieldValue(center, CENTER_FIELD); }

  // Sets boundaries i and i + 1; ignored unless 0 <= i < MAX_RANGES.
  void setRange(int i, float nearDistance, float farDistance);
  // Boundary i, and boundary i + 1, under the same condition.
  void setRangeNear(int i, float distance);
  void setRangeFar(int i, float distance);
  // The number of ranges: one less than the number of boundaries.
  int getNumRanges() const;
  // Boundary i and i + 1 of range i; -1 after a message for a range that
  // does not exist.
  float getRangeNear(int i) const;
  float getRangeFar(int i) const;

  // Added to every LOD's range index to find its child, unless the node's
  // offsetOverride is greater than 0.
  static void setOffset(int o) { offset = o; }
  static int getOffset() { return offset; }
  void setOffsetOverride(int o) { setFieldValue(offsetOverride, o, OFFSET_OVERRIDE_FIELD); }
  int getOffsetOverride() const;

  // The child for the distance from the eye to the centre, carried into eye
  // coordinates by the action's top matrix: -1 below the first boundary, else
  // the range index plus the offset, clamped to the last child. -1 without an
  // action: there is no eye to measure from.
  int whichChild(nrTransformAction* action);

  // Below the first boundary, at or beyond the last, or without a child to
  // show, nothing is visited and the result is 0; otherwise whichChild is set
  // to the chosen child and the switch's visit runs.
  nrTravDirective vfCullVisit(nrVFCullAction* action) override;
  nrTravDirective drawVisit(nrDrawAction* action) override;
  // A pick cannot tell where the eye is, so it follows the choice of the last
  // draw or cull: nothing when that chose nothing, else the whichChild child
  // (also before the first draw).
  void isect(nrIsectAction* action) override;
  void fieldChanged(short index) override;
  // A centre given to the source stays given, and so does its last choice.
  void copy(nrContainer* from, nrCloneTable* table) override;
  using nrSwitch::copy;

 protected:
  // The index of the range the eye lies in: -1 below the first boundary, the
  // number of ranges at or beyond the last.
  int rangeIndex(nrTransformAction* action);
  // The child for a range index: shifted by the offset, clamped to the last child.
  int childFor(int range);
  // Whether a child is to be visited; if so it becomes whichChild.
  bool choose(nrTransformAction* action);

  nrVec3f center;
  nrFloatArray ranges;
  int offsetOverride;
  unsigned char centerUnset;
  unsigned char chosenNothing;

 private:
  void setBoundary(int range, int k, float distance);
  float getBoundary(int range, int k, const char* who) const;

  static int offset;
};
