#include "nerio3d/geometry/nrCone.h"

#include <cmath>

#include "nerio3d/actions/nrIsectAction.h"
#include "nerio3d/fields/nrSField.h"
#include "nerio3d/geometry/nrCylinder.h"
#include "nerio3d/geometry/nrTriStripSet.h"

nrTriStripSet* nrCone::unitSide = nullptr;
nrTriStripSet* nrCone::unitBottom = nullptr;

NR_DEFINE_TYPE(nrCone, nrGeometry, "Cone") {
  nrSFFloat::addTypeField(type, "bottomRadius", BOTTOM_RADIUS_FIELD, 1.0f, &nrCone::bottomRadius);
  nrSFFloat::addTypeField(type, "height", HEIGHT_FIELD, 2.0f, &nrCone::height);
  nrSFUByte::addTypeField(type, "side", SIDE_FIELD, 1, &nrCone::side);
  nrSFUByte::addTypeField(type, "bottom", BOTTOM_FIELD, 1, &nrCone::bottom);
  nrSFVec3f::addTypeField(type, "center", CENTER_FIELD, nrVec3f(0, 0, 0), &nrCone::center);
  unitBottom = nrCylinder::makeCircle(32, 1, -1, -1);
  unitBottom->ref();
  unitSide = nrCylinder::makePipe(32, 1, 0, -1, 1);
  unitSide->ref();
}

nrCone::nrCone(nrType* type) : nrGeometry(type) {
  initFieldDefaults(classType);
  boundChanged();
}

nrCone::~nrCone() { destroyFieldContents(classType); }

nrTriStripSet* nrCone::getUnitSide() {
  getClassType();
  return unitSide;
}

nrTriStripSet* nrCone::getUnitBottom() {
  getClassType();
  return unitBottom;
}

void nrCone::fieldChanged(short index) {
  if (index >= BOTTOM_RADIUS_FIELD) boundChanged();
  nrGeometry::fieldChanged(index);
}

void nrCone::calcBound(nrBoxBound& box) {
  boxAround(box, center, nrVec3f(bottomRadius, height / 2, bottomRadius));
}

void nrCone::draw(nrDrawAction* action) {
  cleanPendingFields();
  // The base first: seen from level or above it faces away.
  nrGeoSet* parts[2] = {unitBottom, unitSide};
  const unsigned char on[2] = {bottom, side};
  drawUnitParts(action, center, nrVec3f(bottomRadius, height / 2, bottomRadius), parts, on, 2);
}

// The side is x^2 + z^2 = k^2 u^2 with u = height / 2 - y the depth below the
// apex and k = bottomRadius / height.
int nrCone::isect(nrIsectAction* action) {
  cleanPendingFields();
  const nrSeg& seg = action->getSeg();
  const nrVec3f& d = seg.dir;
  nrVec3f o;
  o.sub(seg.pos, center);
  // A negative height draws the cone upside down, its apex below its base.
  float half = height / 2, reach = std::fabs(half), t0, t1;
  SolidHit hit;
  if (side && height != 0) {
    float k2 = (bottomRadius / height) * (bottomRadius / height), u = half - o[1];
    if (solveQuadratic(d[0] * d[0] + d[2] * d[2] - k2 * d[1] * d[1], 2 * (o[0] * d[0] + o[2] * d[2] + k2 * u * d[1]),
                       o[0] * o[0] + o[2] * o[2] - k2 * u * u, t0, t1)) {
      const float roots[2] = {t0, t1};
      for (float t : roots) {
        nrVec3f p;
        p.addScaled(o, t, d);
        if (p[1] >= -reach && p[1] <= reach) hit.offer(t, 0, nrVec3f(p[0], k2 * (half - p[1]), p[2]));
      }
    }
  }
  if (bottom) hit.offerCap(o, d, -half, bottomRadius, 1, half < 0 ? 1.0f : -1.0f);
  return reportHit(action, hit);
}
