#include "nerio3d/render/nrTexGen.h"

#include "nerio3d/fields/nrSField.h"

NR_DEFINE_TYPE(nrTexGen, nrContainer, "TexGen") {
  const char* names[] = {"OFF", "EYE_LINEAR", "EYE_LINEAR_IDENT", "OBJECT_LINEAR", "SPHERE_MAP"};
  const int values[] = {OFF, EYE_LINEAR, EYE_LINEAR_IDENT, OBJECT_LINEAR, SPHERE_MAP};
  nrSFEnum::addTypeField(type, "modeS", MODE_S, OFF, &nrTexGen::modeS);
  nrSFEnum::addTypeField(type, "modeT", MODE_T, OFF, &nrTexGen::modeT);
  nrSFEnum::addTypeField(type, "modeR", MODE_R, OFF, &nrTexGen::modeR);
  nrSFEnum::addTypeField(type, "modeQ", MODE_Q, OFF, &nrTexGen::modeQ);
  for (short coord = MODE_S; coord <= MODE_Q; ++coord) type->defineEnums(coord, 5, names, values);
}

void nrTexGen::setMode(short coord, ModeEnum mode) {
  int* storage[] = {&modeS, &modeT, &modeR, &modeQ};
  *storage[coord] = mode;
  fieldChanged(coord);
}

void nrTexGen::draw(nrContext*) {}
