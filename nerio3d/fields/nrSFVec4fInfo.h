// nrSFVec4fInfo is declared with the other field descriptors, beside its field class nrSFVec4f.
#pragma once

#include "nerio3d/fields/nrSFVec4f.h"
