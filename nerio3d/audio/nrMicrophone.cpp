#include "nerio3d/audio/nrMicrophone.h"

#include "nerio3d/fields/nrSField.h"

NR_DEFINE_TYPE(nrMicrophone, nrContainer, "Microphone") {
  nrSFVec3f::addTypeField(type, "position", POSITION, nrVec3f(0, 0, 0), &nrMicrophone::position);
  nrSFRotation::addTypeField(type, "orientation", ORIENTATION, nrRotation(0, 0, 1, 0), &nrMicrophone::orientation);
}

nrMicrophone::nrMicrophone(nrType* type) : nrContainer(type) { initFieldDefaults(classType); }

void nrMicrophone::setPosition(float x, float y, float z) { setFieldValue(position, nrVec3f(x, y, z), POSITION); }

void nrMicrophone::getPosition(float* x, float* y, float* z) const {
  const nrVec3f& p = getFieldValue(position, POSITION);
  *x = p[0];
  *y = p[1];
  *z = p[2];
}
