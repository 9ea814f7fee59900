// Leaf node binding one appearance to a list of geometries: where drawing
// applies render state and draws, and where picking reaches geometry.
#pragma once

#include "nerio3d/arrays/nrFieldArrays.h"
#include "nerio3d/nodes/nrNode.h"

class nrAppearance;
class nrGeometry;

class nrShape : public nrNode {
  NR_DECLARE_CONTAINER_TYPE(nrShape)

  enum { APPEARANCE_FIELD = 2, GEOMETRY_FIELD = 3 };

  nrShape() : nrShape(getClassType()) {}
  explicit nrShape(nrType* type);
  ~nrShape() override;

  void setAppearance(nrAppearance* app);
  nrAppearance* getAppearance() const;

  // Every editing call reports a change of the geometry list, even one that
  // changes nothing (an index out of range is ignored).
  void setGeometryCount(int n);
  void setGeometry(int index, nrGeometry* geometry);
  void addGeometry(nrGeometry* geometry);
  void insertGeometry(int index, nrGeometry* geometry);
  void removeGeometry(int index);
  // Non-zero when geometry was in the list (its first occurrence is removed).
  int removeGeometry(nrGeometry* geometry);
  int replaceGeometry(nrGeometry* oldGeometry, nrGeometry* newGeometry);
  // Index of the first occurrence, -1 when absent.
  int findGeometry(nrGeometry* geometry);
  int getGeometryCount() const;
  // Null for an index out of range.
  nrGeometry* getGeometry(int index) const;

  // Paths kept with the shape for the application; the shape does not own them.
  void appendPath(nrPtrArray* path);
  nrPtrArray* getPath(int index) const;
  int getPathListCount() const { return static_cast<int>(paths.getCount()); }
  void setPathListCount(int n);

  // The result of the last frustum test of the shape (0 outside, else visible).
  int getLastCullResult() const { return lastCullResult; }

  // Applies the appearance (or, without one, the application's own state)
  // and draws each geometry in order.
  virtual void draw(nrDrawAction* action);
  // The same with the fields taken as they are.
  void drawWithoutClean(nrDrawAction* action);
  nrTravDirective drawVisit(nrDrawAction* action) override;
  nrTravDirective vfCullVisit(nrVFCullAction* action) override;
  nrTravDirective transformVisit(nrTransformAction* action) override;
  void isect(nrIsectAction* action) override;
  void fieldChanged(short index) override;
  void childChanged(nrContainer* child, short index) override;
  void cleanSideEffect(short index) override;

 protected:
  nrContainer* appearance;
  nrRefArray geometry;
  nrPtrArray paths;
  int lastCullResult;
};
