// Base of the light nodes; the graphics context assigns each light an OpenGL light slot.
#pragma once

#include <GL/gl.h>

#include "nerio3d/math/nrMatrix4f.h"
#include "nerio3d/math/nrVec3f.h"
#include "nerio3d/nodes/nrNode.h"

class nrLight : public nrNode {
  NR_DECLARE_TYPE(nrLight)

  enum { ON_FIELD = 2, INTENSITY_FIELD, AMBIENT_INTENSITY_FIELD, COLOR_FIELD };

  explicit nrLight(nrType* type);

  // A light that is off keeps its slot with the OpenGL light disabled.
  void setOn(unsigned char value) { setFieldValue(on, value, ON_FIELD); }
  unsigned char getOn() const { return getFieldValue(on, ON_FIELD); }
  void setIntensity(float value) { setFieldValue(intensity, value, INTENSITY_FIELD); }
  float getIntensity() const { return getFieldValue(intensity, INTENSITY_FIELD); }
  void setAmbientIntensity(float value) { setFieldValue(ambientIntensity, value, AMBIENT_INTENSITY_FIELD); }
  float getAmbientIntensity() const { return getFieldValue(ambientIntensity, AMBIENT_INTENSITY_FIELD); }
  void setColor(float r, float g, float b) { setColor(nrVec3f(r, g, b)); }
  void setColor(const nrVec3f& value) { setFieldValue(color, value, COLOR_FIELD); }
  const nrVec3f& getColor() const { return getFieldValue(color, COLOR_FIELD); }
  void getColor(nrVec3f& value) const { value = getColor(); }
  void getColor(float* r, float* g, float* b) const { split(getColor(), r, g, b); }

  // A light met outside an environment is placed in the light slots of the
  // current context level.
  nrTravDirective drawVisit(nrDrawAction* action) override;
  // Places the light under the current model-view matrix, loading its
  // parameters when its slot is new or stale.
  virtual void draw(nrDrawAction* action);

  // Called by the context when a light level is left and this light is back in
  // slot, placed with matrix: the parameters are loaded there again.
  virtual void pop(int slot, const nrMatrix4f& matrix);

  int getId() const { return id; }
  int getVersion() const { return version; }
  void fieldChanged(short index) override;
  // Copied values are loaded again, as changed ones are.
  void copy(nrContainer* from, nrCloneTable* table) override;
  using nrNode::copy;

 protected:
  // Loads the parameters into OpenGL light GL_LIGHT0 + slot, in the light's
  // model-view matrix.
  virtual void define(int slot) = 0;

  // Lights have no specular colour of their own: the highlight is white,
  // scaled by the intensity.
  static const nrVec3f specularColor;

  // glLightfv of GL_LIGHT0 + slot.
  static void light(int slot, GLenum pname, const GLfloat* values);
  static void light(int slot, GLenum pname, float value) { light(slot, pname, &value); }
  // (scale x color, 1).
  static void lightColor(int slot, GLenum pname, float scale, const nrVec3f& color);
  // The three attenuation terms: constant, linear, quadratic.
  static void lightAttenuation(int slot, const nrVec3f& terms);
  // GL_DIFFUSE, GL_AMBIENT and GL_SPECULAR from intensity, ambientIntensity and color.
  void lightColors(int slot) const;

  static void split(const nrVec3f& v, float* x, float* y, float* z) {
    *x = v[0];
    *y = v[1];
    *z = v[2];
  }

  unsigned char on;
  float intensity;
  float ambientIntensity;
  nrVec3f color;

 private:
  int id;
  int version;
};
