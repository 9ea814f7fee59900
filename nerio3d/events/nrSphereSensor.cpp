#include "nerio3d/events/nrSphereSensor.h"

#include <cmath>

#include "nerio3d/fields/nrSField.h"

NR_DEFINE_TYPE(nrSphereSensor, nrPickSensor, "SphereSensor") {
  nrSFUByte::addTypeField(type, "autoOffset", AUTO_OFFSET_FIELD, 1, &nrSphereSensor::autoOffset);
  nrSFRotation::addTypeField(type, "offset", OFFSET_FIELD, nrRotation(0, 1, 0, 0), &nrSphereSensor::offset);
  nrSFRotation::addTypeField(type, "rotation", ROTATION_FIELD, nrRotation(0, 0, 1, 0), &nrSphereSensor::output);
  nrSFVec3f::addTypeField(type, "trackPoint", TRACK_POINT_FIELD, nrVec3f(0, 0, 0), &nrSphereSensor::trackPoint);
}

nrSphereSensor::nrSphereSensor(nrType* type)
    : nrDragSensor(type, AUTO_OFFSET_FIELD, OFFSET_FIELD, TRACK_POINT_FIELD, ROTATION_FIELD) {
  initFieldDefaults(getClassType());
}

nrSphereSensor::~nrSphereSensor() { destroyFieldContents(getClassType()); }

void nrSphereSensor::motion(const nrHit&) {
  nrSeg ray;
  const float radius = start.length();
  if (radius < 1e-6f || !getDragRay(ray)) return;
  // With the unit direction d: |p + t d|^2 = r^2 at t = -b -+ sqrt(b^2 - c),
  // b = p.d, c = p.p - r^2. The nearer crossing in front of the eye is the
  // visible one; a ray that misses takes the point of the sphere nearest to it.
  const float b = ray.pos.dot(ray.dir);
  const float disc = b * b - (ray.pos.dot(ray.pos) - radius * radius);
  nrVec3f track;
  if (disc >= 0) {
    const float root = std::sqrt(disc);
    ray.getPoint(-b - root >= 0 ? -b - root : -b + root, track);
  } else {
    ray.getPoint(-b, track);
    track.scale(radius / track.length(), track);
  }

  nrVec3f axis;
  axis.cross(start, track);
  const float turn = std::atan2(axis.length(), start.dot(track));
  nrRotation drag;
  if (axis.normalize() > 1e-6f) drag.set(axis[0], axis[1], axis[2], turn);
  nrRotation total;
  total.mult(getOffset(), drag);
  report(track, total);
}
