#include "nerio3d/geometry/nrSphere.h"

#include <cmath>

#include "nerio3d/actions/nrIsectAction.h"
#include "nerio3d/fields/nrSField.h"
#include "nerio3d/geometry/nrTriStripSet.h"

nrTriStripSet* nrSphere::unitSphere = nullptr;

NR_DEFINE_TYPE(nrSphere, nrGeometry, "Sphere") {
  nrSFVec3f::addTypeField(type, "center", CENTER_FIELD, nrVec3f(0, 0, 0), &nrSphere::center);
  nrSFFloat::addTypeField(type, "radius", RADIUS_FIELD, 1.0f, &nrSphere::radius);
  unitSphere = makeSphere(200);
  unitSphere->ref();
}

nrSphere::nrSphere(nrType* type) : nrGeometry(type) {
  initFieldDefaults(classType);
  boundChanged();
}

nrSphere::~nrSphere() { destroyFieldContents(classType); }

nrTriStripSet* nrSphere::getUnitSphere() {
  getClassType();
  return unitSphere;
}

// Quadrants numbered in the order of the VRML texture's s, which starts at the
// back (-z) and turns counter-clockwise seen from above; octants 0-3 are the
// upper ones, 4-7 the lower. The four back octants (z < 0) come first, so that
// without depth testing (the context's default) a sphere seen from +z shows its
// front over its back. Row i of an octant holds i + 1 points between its pole A and
// its equator corners B and C; strip j joins rows j and j + 1. s follows the
// longitude, kept on the octant's side of the seam (poles take the octant's
// middle), t the latitude from 0 at the south pole.
nrTriStripSet* nrSphere::makeSphere(int n) {
  int k = n > 0 ? static_cast<int>(std::sqrt(n * 0.125)) : 1;
  if (k < 1) k = 1;
  const nrVec3f equator[5] = {nrVec3f(0, 0, -1), nrVec3f(-1, 0, 0), nrVec3f(0, 0, 1), nrVec3f(1, 0, 0),
                              nrVec3f(0, 0, -1)};
  nrVec3fArray coords, normals;
  nrVec2fArray texCoords;
  nrIntArray lengths;
  const int backFirst[8] = {0, 3, 4, 7, 1, 2, 5, 6};
  for (int octant : backFirst) {
    int quadrant = octant % 4;
    nrVec3f a(0, octant < 4 ? 1.0f : -1.0f, 0), b = equator[quadrant], c = equator[quadrant + 1];
    // The strips wind like the triangle (B, A, C); keep that facing outward.
    nrVec3f ab, cb, normal, centre;
    ab.sub(a, b);
    cb.sub(c, b);
    normal.cross(ab, cb);
    centre.add(a, b);
    centre.add(centre, c);
    if (normal.dot(centre) < 0) std::swap(b, c);
    bool east = quadrant >= 2;
    auto point = [&](int i, int m) {
      nrVec3f p;
      p.scale(1 - float(i) / k, a);
      p.addScaled(p, float(i - m) / k, b);
      p.addScaled(p, float(m) / k, c);
      p.normalize();
      double longitude = std::atan2(std::fabs(p[0]), -p[2]);
      if (east) longitude = 2 * M_PI - longitude;
      float s = i == 0 ? (quadrant + 0.5f) / 4 : static_cast<float>(longitude / (2 * M_PI));
      float t = 0.5f + static_cast<float>(std::asin(std::fmax(-1.0, std::fmin(1.0, p[1]))) / M_PI);
      coords.append(p);
      normals.append(p);
      texCoords.append(nrVec2f(s, t));
    };
    for (int j = 0; j < k; ++j) {
      for (int m = 0; m <= j; ++m) {
        point(j + 1, m);
        point(j, m);
      }
      point(j + 1, j + 1);
      lengths.append(2 * j + 3);
    }
  }
  return nrTriStripSet::create(coords, normals, texCoords, lengths);
}

void nrSphere::fieldChanged(short index) {
  if (index >= CENTER_FIELD) boundChanged();
  nrGeometry::fieldChanged(index);
}

void nrSphere::calcBound(nrBoxBound& box) {
  boxAround(box, center, nrVec3f(radius, radius, radius));
}

void nrSphere::draw(nrDrawAction* action) {
  cleanPendingFields();
  nrGeoSet* parts[1] = {unitSphere};
  const unsigned char on[1] = {1};
  drawUnitParts(action, center, nrVec3f(radius, radius, radius), parts, on, 1);
}

int nrSphere::isect(nrIsectAction* action) {
  cleanPendingFields();
  const nrSeg& seg = action->getSeg();
  nrVec3f o;
  o.sub(seg.pos, center);
  float t0, t1;
  if (!solveQuadratic(seg.dir.dot(seg.dir), 2 * o.dot(seg.dir), o.dot(o) - radius * radius, t0, t1)) return 0;
  SolidHit hit;
  const float roots[2] = {t0, t1};
  for (float t : roots) {
    nrVec3f n;
    n.addScaled(o, t, seg.dir);
    n.normalize();
    hit.offer(t, 0, n);
  }
  return reportHit(action, hit);
}
