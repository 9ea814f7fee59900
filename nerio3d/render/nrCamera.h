// The viewpoint of a draw, cull or pick: a placement in world coordinates and a
// projection kept as a frustum. Subclasses derive the frustum from their fields.
#pragma once

#include "nerio3d/fields/nrContainer.h"
#include "nerio3d/math/nrFrustum.h"
#include "nerio3d/math/nrMatrix4f.h"
#include "nerio3d/math/nrRotation.h"
#include "nerio3d/math/nrSeg.h"
#include "nerio3d/math/nrVec3f.h"

class nrDrawAction;
class nrHit;
class nrIsectAction;
class nrNode;

class nrCamera : public nrContainer {
  NR_DECLARE_CONTAINER_TYPE(nrCamera)

  enum { POSITION_FIELD = 0, ORIENTATION_FIELD = 1 };

  nrCamera() : nrCamera(getClassType()) {}
  explicit nrCamera(nrType* type);

  void setPosition(float x, float y, float z) { setFieldValue(position, nrVec3f(x, y, z), POSITION_FIELD); }
  void getPosition(float* x, float* y, float* z) const;
  // Turns the camera, which looks down its own -z axis, by angle about (x, y, z).
  void setOrientation(float x, float y, float z, float angle) {
    setFieldValue(orientation, nrRotation(x, y, z, angle), ORIENTATION_FIELD);
  }
  void getOrientation(float* x, float* y, float* z, float* angle) const;
  // The same, from a value in the form the getters hand back.
  void setPosition(const nrVec3f& v) { setFieldValue(position, v, POSITION_FIELD); }
  void setOrientation(const nrRotation& r) { setFieldValue(orientation, r, ORIENTATION_FIELD); }
  const nrVec3f& getPosition() const { return getFieldValue(position, POSITION_FIELD); }
  const nrRotation& getOrientation() const { return getFieldValue(orientation, ORIENTATION_FIELD); }
  void getPosition(nrVec3f& v) const { v = getPosition(); }
  void getOrientation(nrRotation& r) const { r = getOrientation(); }

  // World to eye coordinates: the inverse of the camera's placement.
  const nrMatrix4f& getViewMatrix() const;
  void getViewMatrix(nrMatrix4f& m) const { m = getViewMatrix(); }
  // The projection in eye coordinates.
  const nrFrustum& getFrustum() const;
  void getFrustum(nrFrustum& f) const { f = getFrustum(); }

  // Loads the projection and the viewing matrix into OpenGL, after making the
  // action's context current.
  virtual void draw(nrDrawAction* action);
  // Picks with the viewport of the current context; 0 without one.
  virtual int pick(nrNode* root, int x, int y, nrHit& hit);
  // Finds the nearest geometry under the centre of window pixel (x, y), y
  // counted from the bottom row, within the viewport (vx, vy, vw, vh). The ray
  // runs from the near to the far plane. Returns 1 and fills hit when
  // something is hit; 0, leaving hit alone, for a miss or a pixel outside the
  // viewport.
  virtual int pick(nrNode* root, int x, int y, nrHit& hit, int vx, int vy, int vw, int vh);
  // The ray that pick follows through the centre of window pixel (x, y), in
  // world coordinates, from the near to the far plane; pixels outside the
  // viewport give rays outside the view.
  void getPickRay(int x, int y, int vx, int vy, int vw, int vh, nrSeg& ray);
  // The same with the viewport of the current context; 0 without one.
  int getPickRay(int x, int y, nrSeg& ray);
  void fieldChanged(short index) override;
  // The view matrix and the frustum come with the fields.
  void copy(nrContainer* from, nrCloneTable* table) override;
  using nrContainer::copy;

 protected:
  // The clip distances and aspect fields that the perspective and orthographic
  // cameras share, registered from index first on: nearClip, farClip,
  // aspectMode, aspectRatio.
  template <typename C>
  static void addClipAspectFields(nrType* cameraType, short first, float C::*nearClip, float C::*farClip,
                                  int C::*aspectMode, float C::*aspectRatio);
  // Hands the field at offset (0 to 3) of those four to the frustum; false for
  // any other offset.
  bool clipAspectChanged(int offset, float nearClip, float farClip, int aspectMode, float aspectRatio);

  nrVec3f position;
  nrRotation orientation;
  nrMatrix4f viewMatrix;
  nrFrustum frustum;

 private:
  // One action serves every camera's picks.
  static nrIsectAction* sharedIsect;

  static void addClipAspectFields(nrType* cameraType, short first, float nrContainer::*nearClip,
                                  float nrContainer::*farClip, int nrContainer::*aspectMode,
                                  float nrContainer::*aspectRatio);
};

template <typename C>
void nrCamera::addClipAspectFields(nrType* cameraType, short first, float C::*nearClip, float C::*farClip,
                                   int C::*aspectMode, float C::*aspectRatio) {
  addClipAspectFields(cameraType, first, static_cast<float nrContainer::*>(nearClip),
                      static_cast<float nrContainer::*>(farClip), static_cast<int nrContainer::*>(aspectMode),
                      static_cast<float nrContainer::*>(aspectRatio));
}
