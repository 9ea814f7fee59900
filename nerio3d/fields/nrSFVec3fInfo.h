// nrSFVec3fInfo is declared with the other field descriptors, beside its field class nrSFVec3f.
#pragma once

#include "nerio3d/fields/nrSFVec3f.h"
