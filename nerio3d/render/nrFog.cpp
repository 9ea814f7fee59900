#include "nerio3d/render/nrFog.h"

void nrFog::push(nrContext*) {}

void nrFog::pop(nrFog*, nrContext*) {}
