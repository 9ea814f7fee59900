// The VRML cylinder: side, top and bottom drawn from one shared unit
// tessellation, scaled and moved to the node's fields.
#pragma once

#include "nerio3d/geometry/nrGeometry.h"

class nrTriStripSet;

class nrCylinder : public nrGeometry {
  NR_DECLARE_CONTAINER_TYPE(nrCylinder)

  enum { RADIUS_FIELD = 2, HEIGHT_FIELD, SIDE_FIELD, TOP_FIELD, BOTTOM_FIELD, CENTER_FIELD };

  nrCylinder() : nrCylinder(getClassType()) {}
  explicit nrCylinder(nrType* type);
  ~nrCylinder() override;

  void setRadius(float r) { setValue(radius, r, RADIUS_FIELD); }
  float getRadius() const { return getFieldValue(radius, RADIUS_FIELD); }
  void setHeight(float h) { setValue(height, h, HEIGHT_FIELD); }
  float getHeight() const { return getFieldValue(height, HEIGHT_FIELD); }
  void setSide(unsigned char on) { setValue(side, on, SIDE_FIELD); }
  unsigned char getSide() const { return getFieldValue(side, SIDE_FIELD); }
  void setTop(unsigned char on) { setValue(top, on, TOP_FIELD); }
  unsigned char getTop() const { return getFieldValue(top, TOP_FIELD); }
  void setBottom(unsigned char on) { setValue(bottom, on, BOTTOM_FIELD); }
  unsigned char getBottom() const { return getFieldValue(bottom, BOTTOM_FIELD); }
  void setCenter(const nrVec3f& c) { setValue(center, c, CENTER_FIELD); }
  void setCenter(float x, float y, float z) { setValue(center, nrVec3f(x, y, z), CENTER_FIELD); }
  const nrVec3f& getCenter() const { return getFieldValue(center, CENTER_FIELD); }
  void getCenter(nrVec3f& value) const { value = getCenter(); }

  // A disc of segments vertices around the y axis at height y, facing +y
  // (facing > 0) or -y, as one strip.
  static nrTriStripSet* makeCircle(int segments, float radius, int facing, float y);
  // The side between a ring at bottomY and one at topY as one strip of
  // 2 (segments + 1) vertices, the seam vertices repeated for the texture.
  static nrTriStripSet* makePipe(int segments, float bottomRadius, float topRadius, float bottomY, float topY);

  // The shared unit parts (radius 1, from y = -1 to 1).
  static nrTriStripSet* getUnitSide();
  static nrTriStripSet* getUnitTop();
  static nrTriStripSet* getUnitBottom();

  void draw(nrDrawAction* action) override;
  // The parts that are drawn, exactly: primitive 0 the side, 1 the top, 2 the bottom.
  int isect(nrIsectAction* action) override;
  void calcBound(nrBoxBound& box) override;
  void fieldChanged(short index) override;

 protected:
  float radius;
  float height;
  unsigned char side;
  unsigned char top;
  unsigned char bottom;
  nrVec3f center;

 private:
  static nrTriStripSet* unitSide;
  static nrTriStripSet* unitTop;
  static nrTriStripSet* unitBottom;
};
