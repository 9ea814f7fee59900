#include "nerio3d/math/nrSeg.h"

#include <cmath>

void nrSeg::makePts(const nrVec3f& a, const nrVec3f& b) {
  pos = a;
  dir.sub(b, a);
  length = dir.normalize();
}

void nrSeg::makePolar(const nrVec3f& p, float azimuth, float elevation, float len) {
  pos = p;
  float ce = std::cos(elevation);
  dir.set(ce * std::cos(azimuth), ce * std::sin(azimuth), std::sin(elevation));
  length = len;
}

void nrSeg::clip(const nrSeg* seg, float tNear, float tFar) {
  nrVec3f start;
  seg->getPoint(tNear, start);
  dir = seg->dir;
  pos = start;
  length = tFar - tNear;
}
