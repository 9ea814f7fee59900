// The VRML cone: side and bottom drawn from one shared unit tessellation,
// scaled and moved to the node's fields.
#pragma once

#include "nerio3d/geometry/nrGeometry.h"

class nrTriStripSet;

class nrCone : public nrGeometry {
  NR_DECLARE_CONTAINER_TYPE(nrCone)

  enum { BOTTOM_RADIUS_FIELD = 2, HEIGHT_FIELD, SIDE_FIELD, BOTTOM_FIELD, CENTER_FIELD };

  nrCone() : nrCone(getClassType()) {}
  explicit nrCone(nrType* type);
  ~nrCone() override;

  void setBottomRadius(float r) { setValue(bottomRadius, r, BOTTOM_RADIUS_FIELD); }
  float getBottomRadius() const { return getFieldValue(bottomRadius, BOTTOM_RADIUS_FIELD); }
  void setHeight(float h) { setValue(height, h, HEIGHT_FIELD); }
  float getHeight() const { return getFieldValue(height, HEIGHT_FIELD); }
  void setSide(unsigned char on) { setValue(side, on, SIDE_FIELD); }
  unsigned char getSide() const { return getFieldValue(side, SIDE_FIELD); }
  void setBottom(unsigned char on) { setValue(bottom, on, BOTTOM_FIELD); }
  unsigned char getBottom() const { return getFieldValue(bottom, BOTTOM_FIELD); }
  void setCenter(const nrVec3f& c) { setValue(center, c, CENTER_FIELD); }
  void setCenter(float x, float y, float z) { setValue(center, nrVec3f(x, y, z), CENTER_FIELD); }
  const nrVec3f& getCenter() const { return getFieldValue(center, CENTER_FIELD); }
  void getCenter(nrVec3f& value) const { value = getCenter(); }

  // The shared unit parts (radius 1 at y = -1, apex at y = 1).
  static nrTriStripSet* getUnitSide();
  static nrTriStripSet* getUnitBottom();

  void draw(nrDrawAction* action) override;
  // The parts that are drawn, exactly: primitive 0 the side, 1 the bottom.
  int isect(nrIsectAction* action) override;
  void calcBound(nrBoxBound& box) override;
  void fieldChanged(short index) override;

 protected:
  float bottomRadius;
  float height;
  unsigned char side;
  unsigned char bottom;
  nrVec3f center;

 private:
  static nrTriStripSet* unitSide;
  static nrTriStripSet* unitBottom;
};
