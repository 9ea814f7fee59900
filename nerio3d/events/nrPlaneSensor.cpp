#include "nerio3d/events/nrPlaneSensor.h"

#include <cmath>

#include "nerio3d/fields/nrSField.h"

NR_DEFINE_TYPE(nrPlaneSensor, nrPickSensor, "PlaneSensor") {
  nrSFUByte::addTypeField(type, "autoOffset", AUTO_OFFSET_FIELD, 1, &nrPlaneSensor::autoOffset);
  nrSFVec2f::addTypeField(type, "maxPosition", MAX_POSITION_FIELD, nrVec2f(-1, -1), &nrPlaneSensor::maxPosition);
  nrSFVec2f::addTypeField(type, "minPosition", MIN_POSITION_FIELD, nrVec2f(0, 0), &nrPlaneSensor::minPosition);
  nrSFVec3f::addTypeField(type, "offset", OFFSET_FIELD, nrVec3f(0, 0, 0), &nrPlaneSensor::offset);
  nrSFVec3f::addTypeField(type, "trackPoint", TRACK_POINT_FIELD, nrVec3f(0, 0, 0), &nrPlaneSensor::trackPoint);
  nrSFVec3f::addTypeField(type, "translation", TRANSLATION_FIELD, nrVec3f(0, 0, 0), &nrPlaneSensor::translation);
}

nrPlaneSensor::nrPlaneSensor(nrType* type) : nrPickSensor(type), moved(false) {
  initFieldDefaults(getClassType());
  toLocal.makeIdent();
  start.set(0, 0, 0);
}

nrPlaneSensor::~nrPlaneSensor() { destroyFieldContents(getClassType()); }

void nrPlaneSensor::beginGrab(const nrHit& hit) {
  calcLocalHit(hit, toLocal, start);
  moved = false;
  setFieldValue(isActive, static_cast<unsigned char>(1), IS_ACTIVE_FIELD);
}

void nrPlaneSensor::motion(const nrHit&) {
  nrSeg ray;
  if (!isActive || !getLocalPickRay(toLocal, ray)) return;
  // A ray along the plane, or one that meets it behind the eye, moves nothing.
  if (std::fabs(ray.dir[2]) < 1e-6f) return;
  const float t = (start[2] - ray.pos[2]) / ray.dir[2];
  if (t < 0) return;
  nrVec3f track;
  ray.getPoint(t, track);
  validateField(MIN_POSITION_FIELD);
  validateField(MAX_POSITION_FIELD);
  validateField(OFFSET_FIELD);
  nrVec3f moveTo(track[0] - start[0] + offset[0], track[1] - start[1] + offset[1], offset[2]);
  for (int i = 0; i < 2; ++i) {
    if (minPosition[i] > maxPosition[i]) continue;
    if (moveTo[i] < minPosition[i]) moveTo[i] = minPosition[i];
    if (moveTo[i] > maxPosition[i]) moveTo[i] = maxPosition[i];
  }
  moved = true;
  setFieldValue(trackPoint, track, TRACK_POINT_FIELD);
  setFieldValue(translation, moveTo, TRANSLATION_FIELD);
}

void nrPlaneSensor::endGrab(const nrHit&) {
  setFieldValue(isActive, static_cast<unsigned char>(0), IS_ACTIVE_FIELD);
  if (moved && getAutoOffset()) setFieldValue(offset, translation, OFFSET_FIELD);
}
