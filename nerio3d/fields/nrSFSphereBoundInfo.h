// nrSFSphereBoundInfo is declared with the other field descriptors, beside its field class nrSFSphereBound.
#pragma once

#include "nerio3d/fields/nrSFSphereBound.h"
