// The result of a pick: what was hit, where, and the path of nodes leading to it.
#pragma once

#include "nerio3d/arrays/nrTypedArray.h"
#include "nerio3d/core/nrObject.h"
#include "nerio3d/math/nrMatrix4f.h"
#include "nerio3d/math/nrVec2f.h"
#include "nerio3d/math/nrVec3f.h"

class nrGeometry;
class nrNode;

class nrHit : public nrObject {
  NR_DECLARE_TYPE(nrHit)

  // An empty record: no geometry, identity matrix.
  nrHit() : nrHit(getClassType()) {}
  explicit nrHit(nrType* type);
  nrHit(const nrHit& other);
  nrHit& operator=(const nrHit& other);

  // Back to an empty record.
  void clear();

  // The geometry that was hit; null while the record is empty.
  nrGeometry* getGeometry() const { return geometry; }
  // The shape that holds the geometry, when the shape names itself (setShape).
  nrNode* getShape() const { return shape; }
  void setShape(nrNode* s) { shape = s; }
  // Index of the primitive hit within the geometry; -1 when not told.
  int getPrimitive() const { return primitive; }

  // Containers from the root to the one holding the hit, as the traversal
  // passed them (the root is there twice when it is a group). The record does
  // not hold them: they are valid while the scene is.
  const nrPtrArray& getPath() const { return path; }

  // Distance from the start of the geometry's local segment to the hit.
  float getSegLength() const { return segLength; }
  // The hit as a fraction of the picked segment, the same at every level.
  float getFraction() const { return fraction; }

  // The hit point and surface normal in the geometry's coordinates and in
  // world coordinates. The world normal is unit length; the local one is as
  // the geometry gave it.
  const nrVec3f& getLocalPoint() const { return localPoint; }
  const nrVec3f& getWorldPoint() const { return worldPoint; }
  const nrVec3f& getLocalNormal() const { return localNormal; }
  const nrVec3f& getWorldNormal() const { return worldNormal; }
  // The texture coordinate at the hit; false (leaving tc alone) when the
  // geometry gave none.
  bool getTexCoord(nrVec2f& tc) const;
  // Local to world coordinates at the geometry.
  const nrMatrix4f& getMatrix() const { return matrix; }

 private:
  friend class nrIsectAction;

  nrPtrArray path;
  nrGeometry* geometry;
  nrNode* shape;
  int primitive;
  float segLength;
  float fraction;
  nrVec3f localPoint;
  nrVec3f worldPoint;
  nrVec3f localNormal;
  nrVec3f worldNormal;
  nrVec2f texCoord;
  bool hasTexCoord;
  nrMatrix4f matrix;
};
