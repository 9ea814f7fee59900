#include "nerio3d/events/nrTouchSensor.h"

#include "nerio3d/fields/nrSField.h"

NR_DEFINE_TYPE(nrTouchSensor, nrPickSensor, "TouchSensor") {
  nrSFVec3f::addTypeField(type, "hitNormal", HIT_NORMAL_FIELD, nrVec3f(0, 0, 0), &nrTouchSensor::hitNormal);
  nrSFVec3f::addTypeField(type, "hitPoint", HIT_POINT_FIELD, nrVec3f(0, 0, 0), &nrTouchSensor::hitPoint);
  nrSFVec2f::addTypeField(type, "hitTexCoord", HIT_TEX_COORD_FIELD, nrVec2f(0, 0), &nrTouchSensor::hitTexCoord);
  nrSFUByte::addTypeField(type, "isOver", IS_OVER_FIELD, 0, &nrTouchSensor::isOver);
  nrSFTime::addTypeField(type, "touchTime", TOUCH_TIME_FIELD, nrTime(0.0), &nrTouchSensor::touchTime);
}

nrTouchSensor::nrTouchSensor(nrType* type) : nrPickSensor(type), over(false) { initFieldDefaults(getClassType()); }

nrTouchSensor::~nrTouchSensor() { destroyFieldContents(getClassType()); }

void nrTouchSensor::copy(nrContainer* from, nrCloneTable* table) {
  nrPickSensor::copy(from, table);
  if (from && from != this && from->isOfType(getClassType())) over = static_cast<nrTouchSensor*>(from)->over;
}

void nrTouchSensor::beginGrab(const nrHit& hit) {
  setFieldValue(isActive, static_cast<unsigned char>(1), IS_ACTIVE_FIELD);
  motion(hit);
}

void nrTouchSensor::motion(const nrHit& hit) {
  if (!isPicked()) {
    if (over) {
      over = false;
      setFieldValue(isOver, static_cast<unsigned char>(0), IS_OVER_FIELD);
    }
    return;
  }
  // Normals go to the sensor's coordinates through the transpose of the
  // inverse of toLocal, which is the transpose of toWorld.
  nrMatrix4f toWorld, toLocal, transposed;
  nrVec3f point, normal;
  calcWorkingSpace(hit, toWorld);
  toLocal.invertAffine(toWorld);
  point.xformPt(hit.getWorldPoint(), toLocal);
  transposed.transpose(toWorld);
  normal.xformVec(hit.getWorldNormal(), transposed);
  normal.normalize();
  setFieldValue(hitPoint, point, HIT_POINT_FIELD);
  setFieldValue(hitNormal, normal, HIT_NORMAL_FIELD);
  nrVec2f texCoord;
  if (hit.getTexCoord(texCoord)) setFieldValue(hitTexCoord, texCoord, HIT_TEX_COORD_FIELD);
  if (!over) {
    over = true;
    setFieldValue(isOver, static_cast<unsigned char>(1), IS_OVER_FIELD);
  }
}

void nrTouchSensor::endGrab(const nrHit&) {
  setFieldValue(isActive, static_cast<unsigned char>(0), IS_ACTIVE_FIELD);
  if (isPicked()) setFieldValue(touchTime, nrTime::getTimeOfDay(), TOUCH_TIME_FIELD);
}
