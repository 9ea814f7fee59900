#include "nerio3d/math/nrPlane.h"

#include <algorithm>
#include <cmath>

#include "nerio3d/math/nrBoxBound.h"
#include "nerio3d/math/nrMatrix4f.h"
#include "nerio3d/math/nrSeg.h"
#include "nerio3d/math/nrSphereBound.h"

void nrPlane::makePts(const nrVec3f& a, const nrVec3f& b, const nrVec3f& c) {
  nrVec3f ab, ac;
  ab.sub(b, a);
  ac.sub(c, a);
  normal.cross(ab, ac);
  normal.normalize();
  offset = normal.dot(a);
}

void nrPlane::makeNormPt(const nrVec3f& n, const nrVec3f& p) {
  normal = n;
  normal.normalize();
  offset = normal.dot(p);
}

void nrPlane::closestPtOn(const nrVec3f& p, nrVec3f& out) const {
  out.addScaled(p, offset - normal.dot(p), normal);
}

int nrPlane::isect(const nrSeg* seg, float* t) const {
  if (!seg) return 0;
  float denom = normal.dot(seg->dir);
  if (denom == 0.0f) return 0;
  float s = (offset - normal.dot(seg->pos)) / denom;
  if (s < 0.0f || s > seg->length) return 0;
  if (t) *t = s;
  return 1;
}

int nrPlane::isect(const nrSeg* seg, float* tNear, float* tFar) const {
  if (!seg) return 0;
  float dist = normal.dot(seg->pos) - offset;
  float denom = normal.dot(seg->dir);
  float tn = 0.0f, tf = seg->length;
  if (denom == 0.0f) {
    if (dist >= 0.0f) return 0;
  } else {
    float cross = -dist / denom;
    if (denom > 0.0f)
      tf = std::min(tf, cross);
    else
      tn = std::max(tn, cross);
    if (tn > tf) return 0;
  }
  if (tNear) *tNear = tn;
  if (tFar) *tFar = tf;
  return 1;
}

int nrPlane::contains(const nrBoxBound* box) const {
  if (!box || box->isEmpty()) return 0;
  // Corners as (x, y, z) picks, 0 = min and 1 = max: the first two are fixed,
  // the rest go through the remaining opposite pairs.
  static const int order[8][3] = {{0, 0, 0}, {1, 1, 1}, {1, 0, 0}, {0, 1, 1},
                                  {0, 1, 0}, {1, 0, 1}, {0, 0, 1}, {1, 1, 0}};
  int inside = 0;
  for (const int* pick : order) {
    nrVec3f corner(pick[0] ? box->max[0] : box->min[0], pick[1] ? box->max[1] : box->min[1],
                   pick[2] ? box->max[2] : box->min[2]);
    if (normal.dot(corner) < offset) {
      ++inside;
      continue;
    }
    // This corner lies furthest into the inside for this normal: when it is
    // out, the whole box is.
    bool nearest = true;
    for (int i = 0; i < 3; ++i) nearest = nearest && (pick[i] ? normal[i] <= 0.0f : normal[i] >= 0.0f);
    if (nearest) return 0;
  }
  if (inside == 0) return 0;
  return inside >= 6 ? 7 : 3;
}

int nrPlane::contains(const nrSphereBound* sph) const {
  if (!sph) return 0;
  float dist = normal.dot(sph->center) - offset;
  if (sph->radius < 0.0f || dist >= sph->radius) return 0;
  return dist >= -sph->radius ? 3 : 7;
}

void nrPlane::orthoXform(const nrPlane& plane, const nrMatrix4f& m) {
  nrVec3f p, n;
  p.scale(plane.offset, plane.normal);
  p.xformPt(p, m);
  n.xformVec(plane.normal, m);
  n.normalize();
  normal = n;
  offset = n.dot(p);
}
