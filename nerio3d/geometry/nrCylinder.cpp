#include "nerio3d/geometry/nrCylinder.h"

#include <cmath>

#include "nerio3d/actions/nrIsectAction.h"
#include "nerio3d/fields/nrSField.h"
#include "nerio3d/geometry/nrTriStripSet.h"

nrTriStripSet* nrCylinder::unitSide = nullptr;
nrTriStripSet* nrCylinder::unitTop = nullptr;
nrTriStripSet* nrCylinder::unitBottom = nullptr;

namespace {

enum { SEGMENTS = 32 };

// Direction k of segments around the y axis: the back (-z) first, where the
// VRML texture seam lies, then counter-clockwise seen from above.
nrVec3f rimDirection(int k, int segments) {
  double a = 2 * M_PI * (k % segments) / segments;
  return nrVec3f(static_cast<float>(-std::sin(a)), 0, static_cast<float>(-std::cos(a)));
}

nrTriStripSet* shared(nrTriStripSet* set) {
  set->ref();
  return set;
}

}  // namespace

NR_DEFINE_TYPE(nrCylinder, nrGeometry, "Cylinder") {
  nrSFFloat::addTypeField(type, "radius", RADIUS_FIELD, 1.0f, &nrCylinder::radius);
  nrSFFloat::addTypeField(type, "height", HEIGHT_FIELD, 2.0f, &nrCylinder::height);
  nrSFUByte::addTypeField(type, "side", SIDE_FIELD, 1, &nrCylinder::side);
  nrSFUByte::addTypeField(type, "top", TOP_FIELD, 1, &nrCylinder::top);
  nrSFUByte::addTypeField(type, "bottom", BOTTOM_FIELD, 1, &nrCylinder::bottom);
  nrSFVec3f::addTypeField(type, "center", CENTER_FIELD, nrVec3f(0, 0, 0), &nrCylinder::center);
  unitBottom = shared(makeCircle(SEGMENTS, 1, -1, -1));
  unitTop = shared(makeCircle(SEGMENTS, 1, 1, 1));
  unitSide = shared(makePipe(SEGMENTS, 1, 1, -1, 1));
}

nrCylinder::nrCylinder(nrType* type) : nrGeometry(type) {
  initFieldDefaults(classType);
  boundChanged();
}

nrCylinder::~nrCylinder() { destroyFieldContents(classType); }

nrTriStripSet* nrCylinder::getUnitSide() {
  getClassType();
  return unitSide;
}

nrTriStripSet* nrCylinder::getUnitTop() {
  getClassType();
  return unitTop;
}

nrTriStripSet* nrCylinder::getUnitBottom() {
  getClassType();
  return unitBottom;
}

// The rim taken alternately from both sides of vertex 0, so that one strip
// covers the disc; which side comes first decides the facing. Texture
// coordinates as VRML maps the caps: upright seen from outside, the top's
// texture bottom toward +z and the bottom's texture top toward +z.
nrTriStripSet* nrCylinder::makeCircle(int segments, float radius, int facing, float y) {
  nrVec3fArray coords, normals;
  nrVec2fArray texCoords;
  nrIntArray lengths;
  if (segments < 1) return nrTriStripSet::create(coords, normals, texCoords, lengths);
  for (int i = 0; i < segments; ++i) {
    int j = (i + 1) / 2;
    int k = i == 0 ? 0 : ((i & 1) == (facing > 0)) ? j : segments - j;
    nrVec3f d = rimDirection(k, segments);
    coords.append(nrVec3f(d[0] * radius, y, d[2] * radius));
    normals.append(nrVec3f(0, facing > 0 ? 1.0f : -1.0f, 0));
    texCoords.append(nrVec2f(0.5f + d[0] / 2, facing > 0 ? 0.5f - d[2] / 2 : 0.5f + d[2] / 2));
  }
  lengths.append(segments);
  return nrTriStripSet::create(coords, normals, texCoords, lengths);
}

// Top then bottom vertex for each step around, which winds the side outward;
// s runs once around from the seam, t from 0 at the bottom to 1 at the top.
// Three strips: the back-left and back-right quarters, then the front half, so
// that without depth testing (the context's default) a side seen from +z shows
// its front over its back. Fewer than four segments make one strip.
nrTriStripSet* nrCylinder::makePipe(int segments, float bottomRadius, float topRadius, float bottomY, float topY) {
  nrVec3fArray coords, normals;
  nrVec2fArray texCoords;
  nrIntArray lengths;
  if (segments < 1) return nrTriStripSet::create(coords, normals, texCoords, lengths);
  float h = topY - bottomY;
  auto strip = [&](int from, int to) {
    if (to <= from) return;
    for (int k = from; k <= to; ++k) {
      nrVec3f d = rimDirection(k, segments);
      nrVec3f normal(d[0] * h, bottomRadius - topRadius, d[2] * h);
      normal.normalize();
      float s = static_cast<float>(k) / segments;
      coords.append(nrVec3f(d[0] * topRadius, topY, d[2] * topRadius));
      normals.append(normal);
      texCoords.append(nrVec2f(s, 1));
      coords.append(nrVec3f(d[0] * bottomRadius, bottomY, d[2] * bottomRadius));
      normals.append(normal);
      texCoords.append(nrVec2f(s, 0));
    }
    lengths.append(2 * (to - from + 1));
  };
  int left = segments / 4, right = segments - left;
  strip(0, left);
  strip(right, segments);
  strip(left, right);
  return nrTriStripSet::create(coords, normals, texCoords, lengths);
}

void nrCylinder::fieldChanged(short index) {
  if (index >= RADIUS_FIELD) boundChanged();
  nrGeometry::fieldChanged(index);
}

void nrCylinder::calcBound(nrBoxBound& box) {
  boxAround(box, center, nrVec3f(radius, height / 2, radius));
}

void nrCylinder::draw(nrDrawAction* action) {
  cleanPendingFields();
  // Caps first: seen level from the side they face away, and the side drawn
  // after them covers their rims without depth testing.
  nrGeoSet* parts[3] = {unitBottom, unitTop, unitSide};
  const unsigned char on[3] = {bottom, top, side};
  drawUnitParts(action, center, nrVec3f(radius, height / 2, radius), parts, on, 3);
}

int nrCylinder::isect(nrIsectAction* action) {
  cleanPendingFields();
  const nrSeg& seg = action->getSeg();
  const nrVec3f& d = seg.dir;
  nrVec3f o;
  o.sub(seg.pos, center);
  // A negative height draws the cylinder upside down: the caps trade places.
  float half = height / 2, reach = std::fabs(half), up = half < 0 ? -1.0f : 1.0f, t0, t1;
  SolidHit hit;
  if (side && solveQuadratic(d[0] * d[0] + d[2] * d[2], 2 * (o[0] * d[0] + o[2] * d[2]),
                             o[0] * o[0] + o[2] * o[2] - radius * radius, t0, t1)) {
    const float roots[2] = {t0, t1};
    for (float t : roots) {
      nrVec3f p;
      p.addScaled(o, t, d);
      if (p[1] >= -reach && p[1] <= reach) hit.offer(t, 0, nrVec3f(p[0], 0, p[2]));
    }
  }
  if (top) hit.offerCap(o, d, half, radius, 1, up);
  if (bottom) hit.offerCap(o, d, -half, radius, 2, -up);
  return reportHit(action, hit);
}
