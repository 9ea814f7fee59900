// The VRML box, drawn directly as six quads.
#pragma once

#include "nerio3d/geometry/nrGeometry.h"

class nrBox : public nrGeometry {
  NR_DECLARE_CONTAINER_TYPE(nrBox)

  enum { SIZE_FIELD = 2, CENTER_FIELD = 3 };

  nrBox() : nrBox(getClassType()) {}
  explicit nrBox(nrType* type);
  ~nrBox() override;

  void setSize(const nrVec3f& s) { setValue(size, s, SIZE_FIELD); }
  void setSize(float x, float y, float z) { setValue(size, nrVec3f(x, y, z), SIZE_FIELD); }
  const nrVec3f& getSize() const { return getFieldValue(size, SIZE_FIELD); }
  void getSize(nrVec3f& value) const { value = getSize(); }
  void setCenter(const nrVec3f& c) { setValue(center, c, CENTER_FIELD); }
  void setCenter(float x, float y, float z) { setValue(center, nrVec3f(x, y, z), CENTER_FIELD); }
  const nrVec3f& getCenter() const { return getFieldValue(center, CENTER_FIELD); }
  void getCenter(nrVec3f& value) const { value = getCenter(); }

  void draw(nrDrawAction* action) override;
  // The exact box: where the segment enters it (or, from inside, leaves it),
  // the face hit as primitive in drawing order.
  int isect(nrIsectAction* action) override;
  void calcBound(nrBoxBound& box) override;
  void fieldChanged(short index) override;

 protected:
  nrVec3f size;
  nrVec3f center;
};
