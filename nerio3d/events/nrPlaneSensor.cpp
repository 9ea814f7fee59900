#include "nerio3d/events/nrPlaneSensor.h"

#include <cmath>

#include "nerio3d/fields/nrSField.h"

NR_DEFINE_TYPE(nrPlaneSensor, nrPickSensor, "PlaneSensor") {
  nrSFUByte::addTypeField(type, "autoOffset", AUTO_OFFSET_FIELD, 1, &nrPlaneSensor::autoOffset);
  nrSFVec2f::addTypeField(type, "maxPosition", MAX_POSITION_FIELD, nrVec2f(-1, -1), &nrPlaneSensor::maxPosition);
  nrSFVec2f::addTypeField(type, "minPosition", MIN_POSITION_FIELD, nrVec2f(0, 0), &nrPlaneSensor::minPosition);
  nrSFVec3f::addTypeField(type, "offset", OFFSET_FIELD, nrVec3f(0, 0, 0), &nrPlaneSensor::offset);
  nrSFVec3f::addTypeField(type, "trackPoint", TRACK_POINT_FIELD, nrVec3f(0, 0, 0), &nrPlaneSensor::trackPoint);
  nrSFVec3f::addTypeField(type, "translation", TRANSLATION_FIELD, nrVec3f(0, 0, 0), &nrPlaneSensor::output);
}

nrPlaneSensor::nrPlaneSensor(nrType* type)
    : nrDragSensor(type, AUTO_OFFSET_FIELD, OFFSET_FIELD, TRACK_POINT_FIELD, TRANSLATION_FIELD) {
  initFieldDefaults(getClassType());
}

nrPlaneSensor::~nrPlaneSensor() { destroyFieldContents(getClassType()); }

void nrPlaneSensor::motion(const nrHit&) {
  nrSeg ray;
  // A ray along the plane, or one that meets it behind the eye, moves nothing.
  if (!getDragRay(ray) || std::fabs(ray.dir[2]) < 1e-6f) return;
  const float t = (start[2] - ray.pos[2]) / ray.dir[2];
  if (t < 0) return;
  nrVec3f track;
  ray.getPoint(t, track);
  const nrVec2f low = getMinPosition(), high = getMaxPosition();
  const nrVec3f base = getOffset();
  nrVec3f moveTo(track[0] - start[0] + base[0], track[1] - start[1] + base[1], base[2]);
  for (int i = 0; i < 2; ++i) {
    if (low[i] > high[i]) continue;
    if (moveTo[i] < low[i]) moveTo[i] = low[i];
    if (moveTo[i] > high[i]) moveTo[i] = high[i];
  }
  report(track, moveTo);
}
