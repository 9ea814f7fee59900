#include "nerio3d/render/nrTexGen.h"

#include "nerio3d/fields/nrSField.h"
#include "nerio3d/render/_nrGfx.h"
#include "nerio3d/render/nrContext.h"
#include "nerio3d/render/nrGL.h"

int nrTexGen::*const nrTexGen::modes[4] = {&nrTexGen::modeS, &nrTexGen::modeT, &nrTexGen::modeR, &nrTexGen::modeQ};
nrVec4f nrTexGen::*const nrTexGen::planes[4] = {&nrTexGen::planeS, &nrTexGen::planeT, &nrTexGen::planeR,
                                                &nrTexGen::planeQ};

NR_DEFINE_TYPE(nrTexGen, nrContainer, "TexGen") {
  const char* names[] = {"OFF", "EYE_LINEAR", "EYE_LINEAR_IDENT", "OBJECT_LINEAR", "SPHERE_MAP"};
  const int values[] = {OFF, EYE_LINEAR, EYE_LINEAR_IDENT, OBJECT_LINEAR, SPHERE_MAP};
  const char* modeNames[] = {"modeS", "modeT", "modeR", "modeQ"};
  const char* planeNames[] = {"planeS", "planeT", "planeR", "planeQ"};
  const nrVec4f planeDefaults[] = {nrVec4f(1, 0, 0, 0), nrVec4f(0, 1, 0, 0), nrVec4f(0, 0, 1, 0), nrVec4f(0, 0, 0, 1)};
  for (short coord = 0; coord < 4; ++coord) {
    nrSFEnum::addTypeField(type, modeNames[coord], MODE_S + coord, OFF, modes[coord]);
    type->defineEnums(MODE_S + coord, 5, names, values);
  }
  for (short coord = 0; coord < 4; ++coord)
    nrSFVec4f::addTypeField(type, planeNames[coord], PLANE_S + coord, planeDefaults[coord], planes[coord]);
}

nrTexGen::nrTexGen(nrType* type) : nrContainer(type), id(nrContext::newId(1)), version(1) {
  initFieldDefaults(classType);
}

nrTexGen::~nrTexGen() {
  nrContext::forget(this);
  nrContext::freeId(id, 1);
}

void nrTexGen::setMode(short coord, ModeEnum value) {
  this->*modes[coord] = value;
  fieldChanged(MODE_S + coord);
}

void nrTexGen::setPlane(short index, float a, float b, float c, float d) {
  this->*planes[index - PLANE_S] = nrVec4f(a, b, c, d);
  fieldChanged(index);
}

void nrTexGen::getPlane(short index, float* a, float* b, float* c, float* d) const {
  const nrVec4f& p = getFieldValue(this->*planes[index - PLANE_S], index);
  *a = p[0];
  *b = p[1];
  *c = p[2];
  *d = p[3];
}

void nrTexGen::fieldChanged(short index) {
  ++version;
  nrContainer::fieldChanged(index);
}

void nrTexGen::copy(nrContainer* from, nrCloneTable* table) {
  nrContainer::copy(from, table);
  ++version;
}

void nrTexGen::draw(nrContext* context) {
  static const GLenum coords[4] = {GL_S, GL_T, GL_R, GL_Q};
  static const GLenum enables[4] = {GL_TEXTURE_GEN_S, GL_TEXTURE_GEN_T, GL_TEXTURE_GEN_R, GL_TEXTURE_GEN_Q};
  bool identity = false;
  cleanPendingFields();
  for (int i = 0; i < 4; ++i) {
    // The eye-linear modes also give the plane as GL_OBJECT_PLANE, so they
    // keep OpenGL's default eye planes; this is deliberate.
    const GLfloat* plane = (this->*planes[i]).vec;
    switch (this->*modes[i]) {
      case EYE_LINEAR:
        nrgl::TexGeni(coords[i], GL_TEXTURE_GEN_MODE, GL_EYE_LINEAR);
        nrgl::TexGenfv(coords[i], GL_OBJECT_PLANE, plane);
        break;
      case EYE_LINEAR_IDENT:
        if (!identity) {
          nrgl::PushMatrix();
          nrgl::LoadIdentity();
          identity = true;
        }
        nrgl::TexGenfv(coords[i], GL_OBJECT_PLANE, plane);
        nrgl::TexGeni(coords[i], GL_TEXTURE_GEN_MODE, GL_OBJECT_LINEAR);
        break;
      case OBJECT_LINEAR:
        nrgl::TexGeni(coords[i], GL_TEXTURE_GEN_MODE, GL_OBJECT_LINEAR);
        nrgl::TexGenfv(coords[i], GL_OBJECT_PLANE, plane);
        break;
      case SPHERE_MAP:
        nrgl::TexGeni(coords[i], GL_TEXTURE_GEN_MODE, GL_SPHERE_MAP);
        break;
      default:
        break;
    }
  }
  if (identity) nrgl::PopMatrix();
  if (!context->getShadowState().texGenEnable) return;
  for (int i = 0; i < 4; ++i) {
    if (this->*modes[i] != OFF)
      nrgl::Enable(enables[i]);
    else
      nrgl::Disable(enables[i]);
  }
}
