#include "nerio3d/render/nrLight.h"

void nrLight::pop(int, const nrMatrix4f&) {}
