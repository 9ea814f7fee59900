// Examiner navigation: a camera that orbits a centre point at a distance.
// Drags turn the scene about the centre (turntable: horizontal motion about the
// world's vertical axis, vertical motion about the view's horizontal axis),
// pan the centre across the view, and zoom by changing the distance.
#pragma once

#include "nerio3d/math/nrBoxBound.h"
#include "nerio3d/math/nrRotation.h"
#include "nerio3d/math/nrVec3f.h"

class nrPerspCamera;

class Examiner {
 public:
  // Field of view across the viewport's narrower side, in radians.
  static constexpr float FIELD_OF_VIEW = 0.7853982f;

  // Looks down -z at the box's centre from just far enough for the whole box
  // to fit the viewport; this becomes the view that reset() returns to.
  void frame(const nrBoxBound& box);
  void reset() { view = home; }

  // The viewport in pixels, for the drags and the camera's aspect.
  void setViewport(int width, int height);

  // Pointer motion in pixels, y up. Dragging across the whole height turns
  // the scene half a turn.
  void rotate(int dx, int dy);
  // The centre moves so that what lies at its depth follows the pointer.
  void pan(int dx, int dy);
  // Multiplies the distance by factor (below 1 comes closer), within limits
  // set by the scene's size.
  void zoom(float factor);

  // Places camera at the eye, looking at the centre, with clip distances
  // around the scene and the viewport's aspect.
  void place(nrPerspCamera* camera) const;

  const nrVec3f& getCenter() const { return view.center; }
  float getDistance() const { return view.distance; }
  const nrRotation& getOrientation() const { return view.orientation; }
  nrVec3f getEye() const;
  // The view's axes in world coordinates: 0 right, 1 up, 2 backwards.
  nrVec3f getAxis(int i) const;

 private:
  struct View {
    nrVec3f center{0, 0, 0};
    float distance = 1;
    nrRotation orientation;
  };
  View view, home;
  // Half the framed box's diagonal: the scale of clip distances and zoom limits.
  float radius = 1;
  int width = 1, height = 1;
};
