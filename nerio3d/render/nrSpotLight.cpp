#include "nerio3d/render/nrSpotLight.h"

#include "nerio3d/fields/nrSField.h"

NR_DEFINE_TYPE(nrSpotLight, nrPointLight, "SpotLight") {
  nrSFVec3f::addTypeField(type, "direction", DIRECTION_FIELD, nrVec3f(0, 0, -1), &nrSpotLight::direction);
  nrSFFloat::addTypeField(type, "exponent", EXPONENT_FIELD, 0.0f, &nrSpotLight::exponent);
  nrSFFloat::addTypeField(type, "cutOffAngle", CUT_OFF_ANGLE_FIELD, 180.0f, &nrSpotLight::cutOffAngle);
}

nrSpotLight::nrSpotLight(nrType* type) : nrPointLight(type) { initFieldDefaults(classType); }

void nrSpotLight::define(int slot) {
  lightPosition(slot);
  light(slot, GL_SPOT_DIRECTION, direction.vec);
  light(slot, GL_SPOT_CUTOFF, cutOffAngle);
  light(slot, GL_SPOT_EXPONENT, exponent);
  lightColors(slot);
  lightAttenuation(slot, attenuation);
}
