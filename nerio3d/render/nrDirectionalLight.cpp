#include "nerio3d/render/nrDirectionalLight.h"

#include "nerio3d/fields/nrSField.h"

NR_DEFINE_TYPE(nrDirectionalLight, nrLight, "DirectionalLight") {
  nrSFVec3f::addTypeField(type, "direction", DIRECTION_FIELD, nrVec3f(0, 0, -1), &nrDirectionalLight::direction);
}

nrDirectionalLight::nrDirectionalLight(nrType* type) : nrLight(type) { initFieldDefaults(classType); }

void nrDirectionalLight::define(int slot) {
  nrVec3f toLight = direction;
  toLight.normalize();
  // Adding 0 turns the -0 of a negated zero into 0.
  const GLfloat position[4] = {-toLight[0] + 0.0f, -toLight[1] + 0.0f, -toLight[2] + 0.0f, 0};
  light(slot, GL_POSITION, position);
  lightColor(slot, GL_AMBIENT, ambientIntensity, color);
  lightColor(slot, GL_DIFFUSE, intensity, color);
  lightColor(slot, GL_SPECULAR, intensity, specularColor);
  light(slot, GL_SPOT_CUTOFF, 180.0f);
  light(slot, GL_SPOT_EXPONENT, 0.0f);
  lightAttenuation(slot, nrVec3f(1, 0, 0));
}
