#include "nerio3d/math/nrSphereBound.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <vector>

#include "nerio3d/fields/nrOutput.h"
#include "nerio3d/math/nrBoxBound.h"
#include "nerio3d/math/nrMatrix4f.h"
#include "nerio3d/math/nrSeg.h"

namespace {

float rowLength(const nrMatrix4f& m, int r) {
  return std::sqrt(m[r][0] * m[r][0] + m[r][1] * m[r][1] + m[r][2] * m[r][2]);
}

// The most the 3x3 part of m lengthens a vector (its largest singular value),
// bounded from above through the rows' dot products: the longest row when the
// rows are orthogonal, and never short for a scale along turned axes or a shear.
float stretch(const nrMatrix4f& m) {
  float g[3][3];
  for (int i = 0; i < 3; ++i)
    for (int j = i; j < 3; ++j) g[i][j] = g[j][i] = m[i][0] * m[j][0] + m[i][1] * m[j][1] + m[i][2] * m[j][2];
  float most = 0.0f;
  for (int i = 0; i < 3; ++i) most = std::max(most, g[i][i] + std::fabs(g[i][(i + 1) % 3]) + std::fabs(g[i][(i + 2) % 3]));
  return std::sqrt(most);
}

// Radius needed around c to hold every point.
float reach(const nrVec3f& c, const nrVec3f pts[], int n) {
  float r2 = 0.0f;
  for (int i = 0; i < n; ++i) {
    nrVec3f d;
    d.sub(pts[i], c);
    r2 = std::max(r2, d.dot(d));
  }
  return std::sqrt(r2);
}

// Radius needed around c to hold every non-empty sphere.
float reach(const nrVec3f& c, const nrSphereBound* const sphs[], int n) {
  float r = 0.0f;
  for (int i = 0; i < n; ++i)
    if (sphs[i] && !sphs[i]->isEmpty()) r = std::max(r, c.distance(sphs[i]->center) + sphs[i]->radius);
  return r;
}

}  // namespace

void nrSphereBound::makeEmpty() {
  center.set(0.0f, 0.0f, 0.0f);
  radius = -1.0f;
}

int nrSphereBound::isEmpty() const { return radius < 0.0f; }

void nrSphereBound::around(const nrBoxBound* boxes[], int n) {
  std::vector<nrVec3f> corners;
  for (int i = 0; boxes && i < n; ++i) {
    const nrBoxBound* b = boxes[i];
    if (!b || b->isEmpty()) continue;
    for (int c = 0; c < 8; ++c)
      corners.emplace_back(c & 1 ? b->max[0] : b->min[0], c & 2 ? b->max[1] : b->min[1],
                           c & 4 ? b->max[2] : b->min[2]);
  }
  around(corners.data(), int(corners.size()));
}

// Two candidates, the smaller kept: the sphere centred on the bounding box,
// and Ritter's sphere (started on a far-apart pair, then grown over the
// points). Both are exact for two points and within a few percent of the
// minimal sphere in practice; each radius is re-measured from its centre, so
// every point is inside whatever the rounding.
void nrSphereBound::around(const nrVec3f pts[], int n) {
  if (!pts || n <= 0) {
    makeEmpty();
    return;
  }
  nrBoxBound box;
  box.around(pts, n);
  nrVec3f boxCenter;
  boxCenter.add(box.min, box.max);
  boxCenter.scale(0.5f, boxCenter);
  float boxRadius = reach(boxCenter, pts, n);

  auto farthest = [&](const nrVec3f& from) {
    int best = 0;
    float bestD = -1.0f;
    for (int i = 0; i < n; ++i) {
      nrVec3f d;
      d.sub(pts[i], from);
      if (d.dot(d) > bestD) {
        bestD = d.dot(d);
        best = i;
      }
    }
    return best;
  };
  const nrVec3f& a = pts[farthest(pts[0])];
  const nrVec3f& b = pts[farthest(a)];
  nrVec3f c;
  c.add(a, b);
  c.scale(0.5f, c);
  float r = 0.5f * a.distance(b);
  for (int i = 0; i < n; ++i) {
    float d = c.distance(pts[i]);
    if (d > r) {
      float grown = 0.5f * (r + d);
      nrVec3f toward;
      toward.sub(pts[i], c);
      c.addScaled(c, (grown - r) / d, toward);
      r = grown;
    }
  }
  r = reach(c, pts, n);
  if (boxRadius <= r) {
    center = boxCenter;
    radius = boxRadius;
  } else {
    center = c;
    radius = r;
  }
}

// As for points: the sphere centred on the bounding box of the spheres, or the
// largest sphere extended by the others, whichever is smaller.
void nrSphereBound::around(const nrSphereBound* sphs[], int n) {
  nrBoxBound box;
  box.around(sphs, n);
  if (box.isEmpty()) {
    makeEmpty();
    return;
  }
  nrVec3f boxCenter;
  boxCenter.add(box.min, box.max);
  boxCenter.scale(0.5f, boxCenter);
  float boxRadius = reach(boxCenter, sphs, n);

  const nrSphereBound* largest = nullptr;
  for (int i = 0; i < n; ++i)
    if (sphs[i] && !sphs[i]->isEmpty() && (!largest || sphs[i]->radius > largest->radius)) largest = sphs[i];
  nrSphereBound grown(largest->center, largest->radius);
  for (int i = 0; i < n; ++i)
    if (sphs[i]) grown.extendBy(sphs[i]);
  float r = reach(grown.center, sphs, n);
  if (boxRadius <= r) {
    center = boxCenter;
    radius = boxRadius;
  } else {
    center = grown.center;
    radius = r;
  }
}

void nrSphereBound::extendBy(const nrSphereBound* sph) {
  if (!sph || sph->isEmpty()) return;
  if (isEmpty()) {
    center = sph->center;
    radius = sph->radius;
    return;
  }
  float d = center.distance(sph->center);
  if (d + sph->radius <= radius) return;
  if (d + radius <= sph->radius) {
    center = sph->center;
    radius = sph->radius;
    return;
  }
  float r = 0.5f * (d + radius + sph->radius);
  nrVec3f toward;
  toward.sub(sph->center, center);
  center.addScaled(center, (r - radius) / d, toward);
  radius = r;
}

void nrSphereBound::extendBy(const nrVec3f& pt) {
  if (radius < -1.0f) {
    center = pt;
    radius = 0.0f;
    return;
  }
  nrVec3f away;
  away.sub(center, pt);
  float d2 = away.dot(away);
  if (d2 <= radius * radius) return;
  float d = std::sqrt(d2);
  nrVec3f farSide;
  farSide.addScaled(center, radius / d, away);
  center.add(farSide, pt);
  center.scale(0.5f, center);
  radius = 0.5f * (d + radius);
}

int nrSphereBound::contains(const nrSphereBound* sph) const {
  if (!sph || isEmpty() || sph->isEmpty()) return 0;
  return center.distance(sph->center) + sph->radius <= radius;
}

int nrSphereBound::contains(const nrVec3f& pt) const {
  if (isEmpty()) return 0;
  nrVec3f d;
  d.sub(pt, center);
  return d.dot(d) <= radius * radius;
}

// Roots of |pos + t dir - center|^2 = radius^2 for the unit direction.
int nrSphereBound::isect(const nrSeg* seg, float* tNear, float* tFar) const {
  if (isEmpty() || !seg) return 0;
  nrVec3f rel;
  rel.sub(seg->pos, center);
  float b = rel.dot(seg->dir);
  float c = rel.dot(rel) - radius * radius;
  float disc = b * b - c;
  if (!(disc >= 0.0f)) return 0;  // also a segment holding a NaN
  float root = std::sqrt(disc);
  float tn = std::max(-b - root, 0.0f), tf = -b + root;
  if (!(tf <= seg->length)) tf = seg->length;
  if (!(tn <= tf)) return 0;
  if (tNear) *tNear = tn;
  if (tFar) *tFar = tf;
  return 1;
}

// A null sphere transforms to an empty one.
void nrSphereBound::xform(const nrSphereBound* sph, const nrMatrix4f& m) {
  if (!sph) {
    makeEmpty();
    return;
  }
  float r = sph->radius;
  if (r >= 0.0f) r *= stretch(m);
  center.xformPt(sph->center, m);
  radius = r;
}

void nrSphereBound::orthoXform(const nrSphereBound* sph, const nrMatrix4f& m) {
  if (!sph) {
    makeEmpty();
    return;
  }
  float r = sph->radius;
  if (r >= 0.0f) r *= rowLength(m, 0);
  center.xformPt(sph->center, m);
  radius = r;
}

void nrSphereBound::write(nrOutput* out) const {
  if (!out || !out->getStream()) return;
  center.write(out);
  fprintf(out->getStream(), " %g", radius);
}
