// Lighting-material parameters that the graphics context sends for the front or back face.
#pragma once

#include <GL/gl.h>

#include "nerio3d/fields/nrContainer.h"
#include "nerio3d/math/nrVec3f.h"

class nrContext;

class nrMaterial : public nrContainer {
  NR_DECLARE_CONTAINER_TYPE(nrMaterial)

  enum FaceEnum { FRONT_FACE = 0, BACK_FACE = 1 };
  enum {
    AMBIENT_INTENSITY,
    AMBIENT_COLOR,
    DIFFUSE_COLOR,
    SPECULAR_COLOR,
    EMISSIVE_COLOR,
    AMBIENT_INDEX,
    DIFFUSE_INDEX,
    SPECULAR_INDEX,
    SHININESS,
    TRANSPARENCY
  };
  // Screen-door patterns: pattern k is a 32 x 32 polygon stipple that lets
  // exactly k of its 1024 pixels through, spread by an ordered dither.
  enum { DITHER_PATTERNS = 1025, DITHER_PATTERN_BYTES = 128 };
  static GLubyte _ditherMatrix[DITHER_PATTERNS][DITHER_PATTERN_BYTES];

  nrMaterial() : nrMaterial(getClassType()) {}
  explicit nrMaterial(nrType* type);
  ~nrMaterial() override;

  // Setting the ambient intensity or the diffuse colour makes the ambient colour
  // their product; setting the ambient colour makes the intensity the scale that
  // best turns the diffuse colour into it.
  // Getters bring a value arriving through a connection up to date first.
  void setAmbientIntensity(float intensity) { setFieldValue(ambientIntensity, intensity, AMBIENT_INTENSITY); }
  float getAmbientIntensity() const { return getFieldValue(ambientIntensity, AMBIENT_INTENSITY); }
  void setAmbientColor(float r, float g, float b) { setAmbientColor(nrVec3f(r, g, b)); }
  void setAmbientColor(const nrVec3f& color) { setFieldValue(ambientColor, color, AMBIENT_COLOR); }
  const nrVec3f& getAmbientColor() const { return getFieldValue(ambientColor, AMBIENT_COLOR); }
  void getAmbientColor(nrVec3f& color) const { color = getAmbientColor(); }
  void getAmbientColor(float* r, float* g, float* b) const { split(getAmbientColor(), r, g, b); }
  void setDiffuseColor(float r, float g, float b) { setDiffuseColor(nrVec3f(r, g, b)); }
  void setDiffuseColor(const nrVec3f& color) { setFieldValue(diffuseColor, color, DIFFUSE_COLOR); }
  const nrVec3f& getDiffuseColor() const { return getFieldValue(diffuseColor, DIFFUSE_COLOR); }
  void getDiffuseColor(nrVec3f& color) const { color = getDiffuseColor(); }
  void getDiffuseColor(float* r, float* g, float* b) const { split(getDiffuseColor(), r, g, b); }
  void setSpecularColor(float r, float g, float b) { setSpecularColor(nrVec3f(r, g, b)); }
  void setSpecularColor(const nrVec3f& color) { setFieldValue(specularColor, color, SPECULAR_COLOR); }
  const nrVec3f& getSpecularColor() const { return getFieldValue(specularColor, SPECULAR_COLOR); }
  void getSpecularColor(nrVec3f& color) const { color = getSpecularColor(); }
  void getSpecularColor(float* r, float* g, float* b) const { split(getSpecularColor(), r, g, b); }
  void setEmissiveColor(float r, float g, float b) { setEmissiveColor(nrVec3f(r, g, b)); }
  void setEmissiveColor(const nrVec3f& color) { setFieldValue(emissiveColor, color, EMISSIVE_COLOR); }
  const nrVec3f& getEmissiveColor() const { return getFieldValue(emissiveColor, EMISSIVE_COLOR); }
  void getEmissiveColor(nrVec3f& color) const { color = getEmissiveColor(); }
  void getEmissiveColor(float* r, float* g, float* b) const { split(getEmissiveColor(), r, g, b); }
  void setAmbientIndex(short index) { setFieldValue(ambientIndex, index, AMBIENT_INDEX); }
  short getAmbientIndex() const { return getFieldValue(ambientIndex, AMBIENT_INDEX); }
  void setDiffuseIndex(short index) { setFieldValue(diffuseIndex, index, DIFFUSE_INDEX); }
  short getDiffuseIndex() const { return getFieldValue(diffuseIndex, DIFFUSE_INDEX); }
  void setSpecularIndex(short index) { setFieldValue(specularIndex, index, SPECULAR_INDEX); }
  short getSpecularIndex() const { return getFieldValue(specularIndex, SPECULAR_INDEX); }
  void setShininess(float amount) { setFieldValue(shininess, amount, SHININESS); }
  float getShininess() const { return getFieldValue(shininess, SHININESS); }
  void setTransparency(float amount) { setFieldValue(transparency, amount, TRANSPARENCY); }
  float getTransparency() const { return getFieldValue(transparency, TRANSPARENCY); }

  // Without the ambient colour, which the intensity and the diffuse colour
  // give again when the text is read (in any order of the fields).
  void write(nrOutput* out) override;

  // The screen-door pattern number of a transparency.
  static int ditherPattern(float transparency);
  void fieldChanged(short index) override;
  // Copied values count as a change, as set ones do.
  void copy(nrContainer* from, nrCloneTable* table) override;
  using nrContainer::copy;

 protected:
  friend class nrContext;
  // Sends the material for face; one that is not the context's current front or
  // back material is sent only when the context lacks this version of it.
  virtual void draw(FaceEnum face, nrContext* context);

 private:
  static void split(const nrVec3f& color, float* r, float* g, float* b) {
    *r = color[0];
    *g = color[1];
    *b = color[2];
  }

  float ambientIntensity;
  nrVec3f ambientColor;
  nrVec3f diffuseColor;
  nrVec3f specularColor;
  nrVec3f emissiveColor;
  short ambientIndex;
  short diffuseIndex;
  short specularIndex;
  float shininess;
  float transparency;

  int id;
  int version;
};
