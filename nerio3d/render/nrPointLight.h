// A light radiating from a point in all directions, fading with distance.
#pragma once

#include "nerio3d/render/nrLight.h"

class nrPointLight : public nrLight {
  NR_DECLARE_CONTAINER_TYPE(nrPointLight)

  enum { LOCATION_FIELD = 6, RADIUS_FIELD, ATTENUATION_FIELD };

  nrPointLight() : nrPointLight(getClassType()) {}
  explicit nrPointLight(nrType* type);

  void setLocation(float x, float y, float z) { setLocation(nrVec3f(x, y, z)); }
  void setLocation(const nrVec3f& value) { setFieldValue(location, value, LOCATION_FIELD); }
  const nrVec3f& getLocation() const { return getFieldValue(location, LOCATION_FIELD); }
  void getLocation(nrVec3f& value) const { value = getLocation(); }
  void getLocation(float* x, float* y, float* z) const { split(getLocation(), x, y, z); }
  // The reach of the light as scene files give it; OpenGL lights have no
  // radius, so it is kept but not sent.
  void setRadius(float value) { setFieldValue(radius, value, RADIUS_FIELD); }
  float getRadius() const { return getFieldValue(radius, RADIUS_FIELD); }
  // Constant, linear and quadratic attenuation.
  void setAttenuation(float c, float l, float q) { setAttenuation(nrVec3f(c, l, q)); }
  void setAttenuation(const nrVec3f& value) { setFieldValue(attenuation, value, ATTENUATION_FIELD); }
  const nrVec3f& getAttenuation() const { return getFieldValue(attenuation, ATTENUATION_FIELD); }
  void getAttenuation(nrVec3f& value) const { value = getAttenuation(); }
  void getAttenuation(float* c, float* l, float* q) const { split(getAttenuation(), c, l, q); }

 protected:
  void define(int slot) override;
  // (location, 1) as GL_POSITION.
  void lightPosition(int slot) const;

  nrVec3f location;
  float radius;
  nrVec3f attenuation;
};
