// nrSFVec4ubInfo is declared with the other field descriptors, beside its field class nrSFVec4ub.
#pragma once

#include "nerio3d/fields/nrSFVec4ub.h"
