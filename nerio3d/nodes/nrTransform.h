// Group whose children live in a coordinate system placed by a translation, a
// rotation, a scale with its own orientation, and a centre of rotation and
// scaling. It caches the matrix of these parts, classifies it so that drawing
// can use a single glTranslatef or glRotatef where that suffices, and keeps its
// bounding sphere in the parent's coordinates.
#pragma once

#include "nerio3d/math/nrMatrix4f.h"
#include "nerio3d/math/nrRotation.h"
#include "nerio3d/math/nrVec3f.h"
#include "nerio3d/nodes/nrGroup.h"

class nrTransform : public nrGroup {
  NR_DECLARE_CONTAINER_TYPE(nrTransform)

  enum { TRANSLATION_FIELD = 3, ROTATION_FIELD, SCALE_FIELD, SCALE_ORIENTATION_FIELD, CENTER_FIELD };
  // Bits of getKind().
  enum {
    TRANSLATE_KIND = 1,      // translation or centre has been set; never cleared again
    ROTATE_KIND = 2,         // non-zero rotation
    UNIFORM_SCALE_KIND = 4,  // three equal scales other than 1, no scale orientation
    SCALE_KIND = 8,          // any other scale
    MATRIX_KIND = 16         // set with setMatrix (together with SCALE_KIND)
  };

  nrTransform() : nrTransform(getClassType()) {}
  explicit nrTransform(nrType* type);
  ~nrTransform() override;

  // Each setter first derives the parts from a matrix set with setMatrix.
  void setTranslation(float x, float y, float z) { setPart(translation, nrVec3f(x, y, z), TRANSLATION_FIELD); }
  void setRotation(float x, float y, float z, float angle) {
    setPart(rotation, nrRotation(x, y, z, angle), ROTATION_FIELD);
  }
  void setScale(float x, float y, float z) { setPart(scale, nrVec3f(x, y, z), SCALE_FIELD); }
  void setScaleOrientation(float x, float y, float z, float angle) {
    setPart(scaleOrientation, nrRotation(x, y, z, angle), SCALE_ORIENTATION_FIELD);
  }
  void setCenter(float x, float y, float z) { setPart(center, nrVec3f(x, y, z), CENTER_FIELD); }
  // The same, from a value in the form the getters hand back.
  void setTranslation(const nrVec3f& v) { setPart(translation, v, TRANSLATION_FIELD); }
  void setRotation(const nrRotation& r) { setPart(rotation, r, ROTATION_FIELD); }
  void setScale(const nrVec3f& v) { setPart(scale, v, SCALE_FIELD); }
  void setScaleOrientation(const nrRotation& r) { setPart(scaleOrientation, r, SCALE_ORIENTATION_FIELD); }
  void setCenter(const nrVec3f& v) { setPart(center, v, CENTER_FIELD); }

  void getTranslation(float* x, float* y, float* z) const { getVec(translation, TRANSLATION_FIELD, x, y, z); }
  void getRotation(float* x, float* y, float* z, float* angle) const { getRot(rotation, ROTATION_FIELD, x, y, z, angle); }
  void getScale(float* x, float* y, float* z) const { getVec(scale, SCALE_FIELD, x, y, z); }
  void getScaleOrientation(float* x, float* y, float* z, float* angle) const {
    getRot(scaleOrientation, SCALE_ORIENTATION_FIELD, x, y, z, angle);
  }
  void getCenter(float* x, float* y, float* z) const { getVec(center, CENTER_FIELD, x, y, z); }
  const nrVec3f& getTranslation() const { return getFieldValue(translation, TRANSLATION_FIELD); }
  const nrRotation& getRotation() const { return getFieldValue(rotation, ROTATION_FIELD); }
  const nrVec3f& getScale() const { return getFieldValue(scale, SCALE_FIELD); }
  const nrRotation& getScaleOrientation() const { return getFieldValue(scaleOrientation, SCALE_ORIENTATION_FIELD); }
  const nrVec3f& getCenter() const { return getFieldValue(center, CENTER_FIELD); }
  void getTranslation(nrVec3f& v) const { v = getTranslation(); }
  void getRotation(nrRotation& r) const { r = getRotation(); }
  void getScale(nrVec3f& v) const { v = getScale(); }
  void getScaleOrientation(nrRotation& r) const { r = getScaleOrientation(); }
  void getCenter(nrVec3f& v) const { v = getCenter(); }

  // Takes m as the matrix of the node, drawn exactly as given (shear and
  // reflection included) until a part is set again; the parts are derived
  // from it at once.
  void setMatrix(const nrMatrix4f& m);
  // The matrix from the children's coordinates to the parent's.
  const nrMatrix4f& getMatrix() const;
  void getMatrix(nrMatrix4f& m) const { m = getMatrix(); }
  // The classification of the parts (bits above).
  int getKind() const { return kind; }

  nrTravDirective transformVisit(nrTransformAction* action) override;
  nrTravDirective vfCullVisit(nrVFCullAction* action) override;
  nrTravDirective drawVisit(nrDrawAction* action) override;
  void isect(nrIsectAction* action) override;
  void fieldChanged(short index) override;
  void childChanged(nrContainer* child, short index) override;
  void cleanSideEffect(short index) override;
  // The matrix and its classification come with the parts.
  void copy(nrContainer* from, nrCloneTable* table) override;
  using nrGroup::copy;

 protected:
  enum PathEnum { NO_PATH, TRANSLATE_PATH, ROTATE_PATH, MATRIX_PATH };
  // Bits of the state word.
  enum { MATRIX_STALE = 1, PARTS_CHANGED = 2, PARTS_STALE = 4, CHILD_SPHERE_STALE = 8, SPHERE_STALE = 16 };

  // Rebuilds the matrix from the parts.
  void cleanMatrix();
  // Derives the parts from the matrix, leaving the kind alone.
  void cleanParts();
  // Enters the children's coordinates on the action's matrix stack; which way
  // it went (nothing at all for a transform that changes nothing).
  PathEnum transformPushMatrix(nrTransformAction* action);
  // The same with the matching OpenGL calls; whether a matrix was pushed.
  int drawPushMatrix(nrDrawAction* action);
  // preVisit, the children inside the pushed matrix when preVisit let them,
  // postVisit; the larger result.
  template <typename Action>
  nrTravDirective placedTraverse(Action* action, nrTravDirective (nrNode::*childVisit)(Action*));

  nrVec3f translation;
  nrRotation rotation;
  nrVec3f scale;
  nrRotation scaleOrientation;
  nrVec3f center;

  nrMatrix4f matrix;
  int kind;
  int state;
  nrSphereBound childSphere;
  unsigned char savedNormalize;
  unsigned char normalizeSaved;

 private:
  template <typename T>
  void setPart(T& member, const T& value, short index) {
    if (state & PARTS_STALE) cleanParts();
    member = value;
    fieldChanged(index);
  }
  void getRot(const nrRotation& r, short index, float* x, float* y, float* z, float* angle) const;
  // The scale bits that scale and scaleOrientation call for.
  int scaleKind() const;
};

template <typename Action>
nrTravDirective nrTransform::placedTraverse(Action* action, nrTravDirective (nrNode::*childVisit)(Action*)) {
  nrTravDirective d = action->preVisit(this);
  if (d == CONTINUE_TRAV) {
    PathEnum path = transformPushMatrix(action);
    d = visitChildren(action, childVisit);
    if (path != NO_PATH) action->popMatrix();
  }
  return nrTravCombine(d, action->postVisit(this));
}
