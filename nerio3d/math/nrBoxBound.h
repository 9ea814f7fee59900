// Axis-aligned bounding box; empty when max < min on any axis.
#pragma once

#include "nerio3d/math/nrBound.h"
#include "nerio3d/math/nrVec3f.h"

class nrMatrix4f;
class nrOutput;

class nrBoxBound : public nrBound {
 public:
  nrVec3f min;
  nrVec3f max;

  // An empty box.
  nrBoxBound() { nrBoxBound::makeEmpty(); }
  nrBoxBound(const nrVec3f& lo, const nrVec3f& hi) : min(lo), max(hi) {}

  using nrBound::around;
  using nrBound::contains;
  using nrBound::extendBy;

  // min = +1/10 of the largest float on every axis, max its negative.
  void makeEmpty() override;
  int isEmpty() const override;
  void around(const nrBoxBound* boxes[], int n) override;
  void around(const nrSphereBound* sphs[], int n) override;
  void around(const nrVec3f pts[], int n) override;
  void extendBy(const nrBoxBound* box) override;
  void extendBy(const nrVec3f& pt) override;
  int contains(const nrBoxBound* box) const override;
  int contains(const nrVec3f& pt) const override;
  int isect(const nrSeg* seg, float* tNear, float* tFar) const override;

  // The box around the eight corners of box transformed by m; box may be this.
  void xform(const nrBoxBound* box, const nrMatrix4f& m);
  void xform(const nrBoxBound& box, const nrMatrix4f& m) { xform(&box, m); }

  // The minimum then the maximum corner, space-separated.
  void write(nrOutput* out) const;
};
