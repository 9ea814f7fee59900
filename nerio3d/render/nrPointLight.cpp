#include "nerio3d/render/nrPointLight.h"

#include "nerio3d/fields/nrSField.h"

NR_DEFINE_TYPE(nrPointLight, nrLight, "PointLight") {
  nrSFVec3f::addTypeField(type, "location", LOCATION_FIELD, nrVec3f(0, 0, 0), &nrPointLight::location);
  nrSFFloat::addTypeField(type, "radius", RADIUS_FIELD, 100.0f, &nrPointLight::radius);
  nrSFVec3f::addTypeField(type, "attenuation", ATTENUATION_FIELD, nrVec3f(1, 0, 0), &nrPointLight::attenuation);
}

nrPointLight::nrPointLight(nrType* type) : nrLight(type) { initFieldDefaults(classType); }

void nrPointLight::lightPosition(int slot) const {
  const GLfloat position[4] = {location[0], location[1], location[2], 1};
  light(slot, GL_POSITION, position);
}

void nrPointLight::define(int slot) {
  lightPosition(slot);
  lightColors(slot);
  light(slot, GL_SPOT_CUTOFF, 180.0f);
  light(slot, GL_SPOT_EXPONENT, 0.0f);
  lightAttenuation(slot, attenuation);
}
