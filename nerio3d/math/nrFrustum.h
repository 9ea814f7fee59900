// View volume of a camera: the eye at the origin looking down -z, a near
// rectangle, near and far distances, six planes and eight corners.
#pragma once

#include "nerio3d/math/nrPlane.h"
#include "nerio3d/math/nrVec2f.h"
#include "nerio3d/math/nrVec3f.h"

class nrBoxBound;
class nrMatrix4f;
class nrSphereBound;

class nrFrustum {
 public:
  enum KindEnum { PERSP_KIND = 0, ORTHO_KIND = 1, OFFCENTER_PERSP_KIND = 2 };
  // How frust_calc derives the near rectangle: as given, height kept and width
  // from the aspect ratio, or width kept and height from the aspect ratio.
  enum AspectModeEnum { FREE_ASPECT = 0, FIXED_HEIGHT_ASPECT = 1, FIXED_WIDTH_ASPECT = 2 };
  enum PlaneEnum { LEFT_PLANE = 0, RIGHT_PLANE, NEAR_PLANE, FAR_PLANE, BOTTOM_PLANE, TOP_PLANE };

  nrFrustum();
  virtual ~nrFrustum() = default;
  nrFrustum(const nrFrustum&) = default;
  nrFrustum& operator=(const nrFrustum&) = default;

  virtual void copy(const nrFrustum* f);

  // Near rectangle extents at distance near; a centred one is kind PERSP_KIND,
  // any other OFFCENTER_PERSP_KIND.
  void makePersp(float left, float right, float bottom, float top);
  void makeOrtho(float left, float right, float bottom, float top);
  // A perspective frustum keeps its field of view: the near rectangle scales
  // with the near distance. Distances that project nothing (equal ones, or
  // for a perspective one not both ahead of the eye) are refused with a
  // warning, the frustum staying as it was.
  void setNearFar(float nearDist, float farDist);
  void getNearFar(float* nearDist, float* farDist) const;

  int getKind() const { return kind; }
  // Corners in the order lower-left, lower-right, upper-right, upper-left.
  void getNear(nrVec3f& ll, nrVec3f& lr, nrVec3f& ur, nrVec3f& ul) const;
  void getFar(nrVec3f& ll, nrVec3f& lr, nrVec3f& ur, nrVec3f& ul) const;
  void getNear(nrVec3f* ll, nrVec3f* lr, nrVec3f* ur, nrVec3f* ul) const { getNear(*ll, *lr, *ur, *ul); }
  void getFar(nrVec3f* ll, nrVec3f* lr, nrVec3f* ur, nrVec3f* ul) const { getFar(*ll, *lr, *ur, *ul); }
  // The extents of the near rectangle and the two distances: the six numbers
  // of glFrustum and glOrtho.
  void getDiagCorners(float* nearLeft, float* nearRight, float* nearBottom, float* nearTop, float* nearDistance,
                      float* farDistance) const;
  void getDiagCorners(float& nearLeft, float& nearRight, float& nearBottom, float& nearTop, float& nearDistance,
                      float& farDistance) const {
    getDiagCorners(&nearLeft, &nearRight, &nearBottom, &nearTop, &nearDistance, &farDistance);
  }
  void getCenter(float* x, float* y) const;
  const nrPlane& getPlane(int which) const { return planes[which]; }

  void setAspectMode(int mode);
  AspectModeEnum getAspectMode() const { return static_cast<AspectModeEnum>(aspectMode); }
  // Ratios of zero or below are ignored.
  void setAspectRatio(float ratio);
  float getAspectRatio() const { return aspectRatio; }

  // The matrix glFrustum or glOrtho would build, in the row-vector layout
  // that glLoadMatrixf takes unchanged.
  void getGLProjMat(nrMatrix4f& m) const;

  // 0 outside, 1 partly inside, 7 inside.
  int contains(const nrBoxBound* box) const;
  // 0 outside, 3 partly inside, 7 inside.
  int contains(const nrSphereBound* sph) const;
  // 1 inside, 0 outside.
  int contains(const nrVec3f& pt) const;

 protected:
  // Recomputes the near rectangle for the aspect mode, the corners and the planes.
  void frust_calc(int mode);

  int kind;
  float nearDist;
  float farDist;
  nrVec2f center;
  int aspectMode;
  float aspectRatio;
  float left, right, bottom, top;
  nrVec3f corners[8];
  nrPlane planes[6];

 private:
  void makeExtents(int newKind, float l, float r, float b, float t);
};
