// The VRML sphere, drawn from one shared unit tessellation scaled and moved
// to the node's fields.
#pragma once

#include "nerio3d/geometry/nrGeometry.h"

class nrTriStripSet;

class nrSphere : public nrGeometry {
  NR_DECLARE_CONTAINER_TYPE(nrSphere)

  enum { CENTER_FIELD = 2, RADIUS_FIELD = 3 };

  nrSphere() : nrSphere(getClassType()) {}
  explicit nrSphere(nrType* type);
  ~nrSphere() override;

  void setCenter(const nrVec3f& c) { setValue(center, c, CENTER_FIELD); }
  void setCenter(float x, float y, float z) { setValue(center, nrVec3f(x, y, z), CENTER_FIELD); }
  const nrVec3f& getCenter() const { return getFieldValue(center, CENTER_FIELD); }
  void getCenter(nrVec3f& value) const { value = getCenter(); }
  void setRadius(float r) { setValue(radius, r, RADIUS_FIELD); }
  float getRadius() const { return getFieldValue(radius, RADIUS_FIELD); }

  // The unit sphere as a subdivided octahedron: k = (int)sqrt(n / 8)
  // subdivisions per octant edge, k strips per octant, 8k strips in all.
  static nrTriStripSet* makeSphere(int n);
  // The shared unit sphere, makeSphere(200): 40 strips.
  static nrTriStripSet* getUnitSphere();

  void draw(nrDrawAction* action) override;
  // The exact sphere: the nearest point where the segment meets its surface.
  int isect(nrIsectAction* action) override;
  void calcBound(nrBoxBound& box) override;
  void fieldChanged(short index) override;

 protected:
  nrVec3f center;
  float radius;

 private:
  static nrTriStripSet* unitSphere;
};
