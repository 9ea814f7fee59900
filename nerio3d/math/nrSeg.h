// Line segment: start point, unit direction and length; the ray of picking.
#pragma once

#include "nerio3d/math/nrVec3f.h"

class nrSeg {
 public:
  nrVec3f pos{0.0f, 0.0f, 0.0f};
  nrVec3f dir{0.0f, 0.0f, -1.0f};
  float length = 0.0f;

  nrSeg() = default;
  nrSeg(const nrVec3f& p, const nrVec3f& d, float len) : pos(p), dir(d), length(len) {}

  // From a to b; when they coincide the direction is left zero.
  void makePts(const nrVec3f& a, const nrVec3f& b);
  // From p along the direction given by azimuth (radians in the x-y plane,
  // from +x toward +y) and elevation (radians from that plane toward +z).
  void makePolar(const nrVec3f& p, float azimuth, float elevation, float len);
  // The part of seg between the parameters tNear and tFar; seg may be this.
  void clip(const nrSeg* seg, float tNear, float tFar);
  void clip(const nrSeg& seg, float tNear, float tFar) { clip(&seg, tNear, tFar); }
  // The point at distance t along the segment.
  void getPoint(float t, nrVec3f& out) const { out.addScaled(pos, t, dir); }
};
