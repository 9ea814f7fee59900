#include "nerio3d/render/nrFog.h"

#include "nerio3d/fields/nrSField.h"

NR_DEFINE_TYPE(nrFog, nrNode, "Fog") { nrSFUByte::addTypeField(type, "on", ON_FIELD, 1, &nrFog::on); }

void nrFog::push(nrContext*) {}

void nrFog::pop(nrFog*, nrContext*) {}
