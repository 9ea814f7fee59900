#include "Examiner.h"

#include <algorithm>
#include <cmath>

#include "nerio3d/math/nrMatrix4f.h"
#include "nerio3d/render/nrPerspCamera.h"

void Examiner::frame(const nrBoxBound& box) {
  view = View();
  radius = 1;
  if (!box.isEmpty()) {
    view.center.add(box.min, box.max);
    view.center.scale(0.5f, view.center);
    radius = std::max(box.min.distance(box.max) / 2, 1e-3f);
  }
  // Each corner, seen from the centre's axis, needs the eye far enough back
  // for its offset to stay within the half-angles of the view.
  float t = std::tan(FIELD_OF_VIEW / 2), small = float(std::min(width, height));
  float tanX = t * width / small, tanY = t * height / small;
  view.distance = 0;
  for (int i = 0; i < 8 && !box.isEmpty(); ++i) {
    nrVec3f corner(i & 1 ? box.max[0] : box.min[0], i & 2 ? box.max[1] : box.min[1], i & 4 ? box.max[2] : box.min[2]);
    nrVec3f d;
    d.sub(corner, view.center);
    view.distance = std::max(view.distance, d[2] + std::max(std::fabs(d[0]) / tanX, std::fabs(d[1]) / tanY));
  }
  // A small margin.
  view.distance = std::max(1.05f * view.distance, radius);
  home = view;
}

nrVec3f Examiner::getAxis(int i) const {
  nrMatrix4f m;
  m.makeRot(view.orientation.axis[0], view.orientation.axis[1], view.orientation.axis[2], view.orientation.angle);
  nrVec3f unit(i == 0, i == 1, i == 2), axis;
  axis.xformVec(unit, m);
  return axis;
}

nrVec3f Examiner::getEye() const {
  nrVec3f eye;
  eye.addScaled(view.center, view.distance, getAxis(2));
  return eye;
}

void Examiner::setViewport(int w, int h) {
  width = std::max(w, 1);
  height = std::max(h, 1);
}

void Examiner::rotate(int dx, int dy) {
  float perPixel = float(M_PI) / float(height);
  // Dragging right turns the scene's front to the right: the eye moves the
  // other way round. Dragging up shows more of the scene's underside.
  nrRotation pitch(1, 0, 0, dy * perPixel), yaw(0, 1, 0, -dx * perPixel);
  view.orientation.mult(pitch, view.orientation);
  view.orientation.mult(view.orientation, yaw);
}

void Examiner::pan(int dx, int dy) {
  float perPixel = 2 * view.distance * std::tan(FIELD_OF_VIEW / 2) / float(std::min(width, height));
  view.center.addScaled(view.center, -dx * perPixel, getAxis(0));
  view.center.addScaled(view.center, -dy * perPixel, getAxis(1));
}

void Examiner::zoom(float factor) {
  view.distance = std::min(std::max(view.distance * factor, 0.01f * radius), 1000.0f * radius);
}

void Examiner::place(nrPerspCamera* camera) const {
  nrVec3f eye = getEye();
  camera->setPosition(eye[0], eye[1], eye[2]);
  const nrRotation& r = view.orientation;
  camera->setOrientation(r.axis[0], r.axis[1], r.axis[2], r.angle);
  // The scene lies between distance - radius and distance + radius; from
  // inside it the near plane stays a little way ahead of the eye.
  float nearClip = std::max(view.distance - 1.5f * radius, 0.01f * radius);
  camera->setNearClip(nearClip);
  camera->setFarClip(view.distance + 1.5f * radius);
  // The narrower side sees FIELD_OF_VIEW, the wider one more.
  float t = std::tan(FIELD_OF_VIEW / 2), small = float(std::min(width, height));
  camera->setHorizFOV(2 * std::atan(t * width / small));
  camera->setVertFOV(2 * std::atan(t * height / small));
}
