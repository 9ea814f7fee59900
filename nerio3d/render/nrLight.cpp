#include "nerio3d/render/nrLight.h"

#include "nerio3d/actions/nrDrawAction.h"
#include "nerio3d/fields/nrSField.h"
#include "nerio3d/render/nrContext.h"
#include "nerio3d/render/nrGL.h"

const nrVec3f nrLight::specularColor(1, 1, 1);

NR_DEFINE_TYPE(nrLight, nrNode, "Light") {
  nrSFUByte::addTypeField(type, "on", ON_FIELD, 1, &nrLight::on);
  nrSFFloat::addTypeField(type, "intensity", INTENSITY_FIELD, 1.0f, &nrLight::intensity);
  nrSFFloat::addTypeField(type, "ambientIntensity", AMBIENT_INTENSITY_FIELD, 0.0f, &nrLight::ambientIntensity);
  nrSFVec3f::addTypeField(type, "color", COLOR_FIELD, nrVec3f(1, 1, 1), &nrLight::color);
}

nrLight::nrLight(nrType* type) : nrNode(type), id(nrContext::newId(1)), version(1) { initFieldDefaults(classType); }

void nrLight::fieldChanged(short index) {
  ++version;
  nrNode::fieldChanged(index);
}

void nrLight::copy(nrContainer* from, nrCloneTable* table) {
  nrNode::copy(from, table);
  ++version;
}

nrTravDirective nrLight::drawVisit(nrDrawAction* action) {
  nrTravDirective d = action->preVisit(this);
  draw(action);
  return nrTravCombine(d, action->postVisit(this));
}

void nrLight::draw(nrDrawAction* action) {
  cleanPendingFields();
  nrContext* context = action && action->getContext() ? action->getContext() : nrContext::getCurrent();
  if (!context) return;
  nrMatrix4f matrix;
  nrgl::GetFloatv(GL_MODELVIEW_MATRIX, matrix.mat[0]);
  int same;
  int slot = context->getLightTarget(this, matrix, same);
  if (slot < 0) return;
  // The slot may be current while the light itself changed since it was loaded.
  bool changed = context->isDirty(id, version);
  if (same < 0 || changed) define(slot);
}

void nrLight::pop(int slot, const nrMatrix4f& matrix) {
  nrgl::PushMatrix();
  nrgl::LoadMatrixf(matrix.mat[0]);
  define(slot);
  nrgl::PopMatrix();
}

void nrLight::light(int slot, GLenum pname, const GLfloat* values) { nrgl::Lightfv(GL_LIGHT0 + slot, pname, values); }

void nrLight::lightColor(int slot, GLenum pname, float scale, const nrVec3f& c) {
  const GLfloat rgba[4] = {scale * c[0], scale * c[1], scale * c[2], 1};
  light(slot, pname, rgba);
}

void nrLight::lightAttenuation(int slot, const nrVec3f& terms) {
  light(slot, GL_CONSTANT_ATTENUATION, terms[0]);
  light(slot, GL_LINEAR_ATTENUATION, terms[1]);
  light(slot, GL_QUADRATIC_ATTENUATION, terms[2]);
}

void nrLight::lightColors(int slot) const {
  lightColor(slot, GL_DIFFUSE, intensity, color);
  lightColor(slot, GL_AMBIENT, ambientIntensity, color);
  lightColor(slot, GL_SPECULAR, intensity, specularColor);
}
