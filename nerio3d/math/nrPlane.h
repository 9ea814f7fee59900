// Oriented plane normal . p = offset; the inside is where normal . p < offset.
#pragma once

#include "nerio3d/math/nrVec3f.h"

class nrBoxBound;
class nrMatrix4f;
class nrSeg;
class nrSphereBound;

class nrPlane {
 public:
  nrVec3f normal{0.0f, 0.0f, 1.0f};
  // The offset answers to both names: d, as in normal . p = d, and offset.
  union {
    float offset = 0.0f;
    float d;
  };

  nrPlane() = default;
  nrPlane(const nrVec3f& n, float dist) : normal(n), offset(dist) {}

  // Through three points; the normal points to where a, b, c turn counter-clockwise.
  void makePts(const nrVec3f& a, const nrVec3f& b, const nrVec3f& c);
  // Normal n (normalised here) through the point p.
  void makeNormPt(const nrVec3f& n, const nrVec3f& p);
  // The point of the plane nearest to p.
  void closestPtOn(const nrVec3f& p, nrVec3f& out) const;
  void closestPtOn(const nrVec3f& p, nrVec3f* out) const { closestPtOn(p, *out); }
  // Returns 1 and the distance t along seg where seg crosses the plane, else 0.
  int isect(const nrSeg* seg, float* t) const;
  int isect(const nrSeg& seg, float* t) const { return isect(&seg, t); }
  // Returns 1 and the range [tNear, tFar] of seg that lies inside, else 0.
  int isect(const nrSeg* seg, float* tNear, float* tFar) const;
  int isect(const nrSeg& seg, float* tNear, float* tFar) const { return isect(&seg, tNear, tFar); }
  // 0 outside, 3 partly inside, 7 inside (a box counts as inside with six of
  // its eight corners inside).
  int contains(const nrBoxBound* box) const;
  int contains(const nrSphereBound* sph) const;
  // plane transformed by a rotation-translation matrix (a uniform scale is allowed).
  void orthoXform(const nrPlane& plane, const nrMatrix4f& m);
  // The same with the source passed as the bounds' transforms take theirs.
  void orthoXform(const nrPlane* plane, const nrMatrix4f& m) { orthoXform(*plane, m); }
};
