#include "nerio3d/math/nrBoxBound.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "nerio3d/fields/nrOutput.h"
#include "nerio3d/math/nrMatrix4f.h"
#include "nerio3d/math/nrSeg.h"
#include "nerio3d/math/nrSphereBound.h"

namespace {

const float emptyExtent = 3.4028235e37f;

}  // namespace

void nrBoxBound::makeEmpty() {
  min.set(emptyExtent, emptyExtent, emptyExtent);
  max.set(-emptyExtent, -emptyExtent, -emptyExtent);
}

int nrBoxBound::isEmpty() const {
  return max[0] < min[0] || max[1] < min[1] || max[2] < min[2];
}

// A null list, like a null element, adds nothing.
void nrBoxBound::around(const nrBoxBound* boxes[], int n) {
  makeEmpty();
  for (int i = 0; boxes && i < n; ++i)
    if (boxes[i]) extendBy(boxes[i]);
}

void nrBoxBound::around(const nrSphereBound* sphs[], int n) {
  makeEmpty();
  for (int i = 0; sphs && i < n; ++i) {
    const nrSphereBound* s = sphs[i];
    if (!s || s->isEmpty()) continue;
    nrVec3f r(s->radius, s->radius, s->radius), p;
    p.sub(s->center, r);
    extendBy(p);
    p.add(s->center, r);
    extendBy(p);
  }
}

void nrBoxBound::around(const nrVec3f pts[], int n) {
  makeEmpty();
  for (int i = 0; pts && i < n; ++i) extendBy(pts[i]);
}

void nrBoxBound::extendBy(const nrBoxBound* box) {
  if (!box || box->isEmpty()) return;
  for (int i = 0; i < 3; ++i) {
    min[i] = std::min(min[i], box->min[i]);
    max[i] = std::max(max[i], box->max[i]);
  }
}

void nrBoxBound::extendBy(const nrVec3f& pt) {
  for (int i = 0; i < 3; ++i) {
    min[i] = std::min(min[i], pt[i]);
    max[i] = std::max(max[i], pt[i]);
  }
}

int nrBoxBound::contains(const nrBoxBound* box) const {
  if (!box || isEmpty() || box->isEmpty()) return 0;
  for (int i = 0; i < 3; ++i)
    if (box->min[i] < min[i] || box->max[i] > max[i]) return 0;
  return 1;
}

int nrBoxBound::contains(const nrVec3f& pt) const {
  for (int i = 0; i < 3; ++i)
    if (pt[i] < min[i] || pt[i] > max[i]) return 0;
  return 1;
}

// Slab method: the segment's parameter range is narrowed by each axis's pair
// of planes in turn. The comparisons are written so that a segment holding a
// NaN misses.
int nrBoxBound::isect(const nrSeg* seg, float* tNear, float* tFar) const {
  if (isEmpty() || !seg) return 0;
  float tn = 0.0f, tf = seg->length;
  for (int i = 0; i < 3; ++i) {
    float p = seg->pos[i], d = seg->dir[i];
    if (d == 0.0f) {
      if (!(p >= min[i] && p <= max[i])) return 0;
      continue;
    }
    float t1 = (min[i] - p) / d, t2 = (max[i] - p) / d;
    if (t1 > t2) std::swap(t1, t2);
    if (t1 > tn) tn = t1;
    if (t2 < tf) tf = t2;
    if (!(tn <= tf) || t1 != t1 || t2 != t2) return 0;
  }
  if (tNear) *tNear = tn;
  if (tFar) *tFar = tf;
  return 1;
}

void nrBoxBound::xform(const nrBoxBound* box, const nrMatrix4f& m) {
  if (!box || box->isEmpty()) {
    makeEmpty();
    return;
  }
  nrVec3f lo = box->min, hi = box->max;
  makeEmpty();
  for (int c = 0; c < 8; ++c) {
    nrVec3f p(c & 1 ? hi[0] : lo[0], c & 2 ? hi[1] : lo[1], c & 4 ? hi[2] : lo[2]);
    p.xformPt(p, m);
    extendBy(p);
  }
}

void nrBoxBound::write(nrOutput* out) const {
  if (!out || !out->getStream()) return;
  min.write(out);
  fputc(' ', out->getStream());
  max.write(out);
}
