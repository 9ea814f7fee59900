#include "nerio3d/render/nrFog.h"

#include "nerio3d/actions/nrDrawAction.h"
#include "nerio3d/fields/nrSField.h"
#include "nerio3d/render/nrContext.h"
#include "nerio3d/render/nrGL.h"

NR_DEFINE_TYPE(nrFog, nrNode, "Fog") {
  const char* names[] = {"LINEAR_FOG", "EXP_FOG", "EXP2_FOG"};
  const int values[] = {LINEAR_FOG, EXP_FOG, EXP2_FOG};
  nrSFUByte::addTypeField(type, "on", ON_FIELD, 1, &nrFog::on);
  nrSFEnum::addTypeField(type, "mode", MODE_FIELD, EXP_FOG, &nrFog::mode);
  type->defineEnums(MODE_FIELD, 3, names, values);
  nrSFFloat::addTypeField(type, "density", DENSITY_FIELD, 1.0f, &nrFog::density);
  nrSFFloat::addTypeField(type, "start", START_FIELD, 0.0f, &nrFog::start);
  nrSFFloat::addTypeField(type, "end", END_FIELD, 1.0f, &nrFog::end);
  nrSFFloat::addTypeField(type, "index", INDEX_FIELD, 1.0f, &nrFog::index);
  nrSFVec4f::addTypeField(type, "color", COLOR_FIELD, nrVec4f(0, 0, 0, 0), &nrFog::color);
}

void nrFog::getColor(float* r, float* g, float* b, float* a) const {
  const nrVec4f& c = getColor();
  *r = c[0];
  *g = c[1];
  *b = c[2];
  *a = c[3];
}

nrTravDirective nrFog::drawVisit(nrDrawAction* action) {
  nrTravDirective d = action->preVisit(this);
  draw(action);
  return nrTravCombine(d, action->postVisit(this));
}

void nrFog::draw(nrDrawAction* action) {
  cleanPendingFields();
  apply(action && action->getContext() ? action->getContext() : nrContext::getCurrent());
}

void nrFog::apply(nrContext* context) {
  if (context && context->syncFogState(this)) define();
}

void nrFog::define() {
  static const GLint modeGL[] = {GL_LINEAR, GL_EXP, GL_EXP2};
  nrgl::Fogi(GL_FOG_MODE, modeGL[mode >= LINEAR_FOG && mode <= EXP2_FOG ? mode : EXP_FOG]);
  nrgl::Fogf(GL_FOG_DENSITY, density);
  nrgl::Fogf(GL_FOG_START, start);
  nrgl::Fogf(GL_FOG_END, end);
  nrgl::Fogf(GL_FOG_INDEX, index);
  nrgl::Fogfv(GL_FOG_COLOR, color.vec);
}

// The fog's parameters are loaded when it is drawn, after the push.
void nrFog::push(nrContext*) {}

void nrFog::pop(nrFog* dropped, nrContext* context) {
  // The fog that ends its scope leaves its parameters in OpenGL: this one,
  // current again, takes their place (or turns fog off when it is off).
  if (dropped != this) apply(context);
}
