// Bounding sphere; empty when the radius is negative (makeEmpty gives -1).
#pragma once

#include "nerio3d/math/nrBound.h"
#include "nerio3d/math/nrVec3f.h"

class nrMatrix4f;
class nrOutput;

class nrSphereBound : public nrBound {
 public:
  nrVec3f center{0.0f, 0.0f, 0.0f};
  float radius = -1.0f;

  // An empty sphere.
  nrSphereBound() = default;
  nrSphereBound(const nrVec3f& c, float r) : center(c), radius(r) {}

  using nrBound::around;
  using nrBound::contains;
  using nrBound::extendBy;

  void makeEmpty() override;
  int isEmpty() const override;
  // The arrays give a close enclosing sphere; empty input gives an empty sphere.
  void around(const nrBoxBound* boxes[], int n) override;
  void around(const nrSphereBound* sphs[], int n) override;
  void around(const nrVec3f pts[], int n) override;
  // The smallest sphere around this one and sph.
  void extendBy(const nrSphereBound* sph) override;
  // Grows toward pt; a radius below -1 (not merely negative) counts as empty here.
  void extendBy(const nrVec3f& pt) override;
  int contains(const nrSphereBound* sph) const override;
  int contains(const nrVec3f& pt) const override;
  int isect(const nrSeg* seg, float* tNear, float* tFar) const override;

  // sph transformed by m; the radius grows by the most m lengthens a vector.
  void xform(const nrSphereBound* sph, const nrMatrix4f& m);
  void xform(const nrSphereBound& sph, const nrMatrix4f& m) { xform(&sph, m); }
  // sph transformed by a rotation, uniform scale and translation: the radius
  // takes the scale of row 0.
  void orthoXform(const nrSphereBound* sph, const nrMatrix4f& m);
  void orthoXform(const nrSphereBound& sph, const nrMatrix4f& m) { orthoXform(&sph, m); }

  // The centre then the radius, space-separated.
  void write(nrOutput* out) const;
};
