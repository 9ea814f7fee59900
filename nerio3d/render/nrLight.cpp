#include "nerio3d/render/nrLight.h"

#include "nerio3d/fields/nrSField.h"

NR_DEFINE_TYPE(nrLight, nrNode, "Light") { nrSFUByte::addTypeField(type, "on", ON_FIELD, 1, &nrLight::on); }

void nrLight::pop(int, const nrMatrix4f&) {}
