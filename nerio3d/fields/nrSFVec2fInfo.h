// nrSFVec2fInfo is declared with the other field descriptors, beside its field class nrSFVec2f.
#pragma once

#include "nerio3d/fields/nrSFVec2f.h"
