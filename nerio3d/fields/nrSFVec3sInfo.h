// nrSFVec3sInfo is declared with the other field descriptors, beside its field class nrSFVec3s.
#pragma once

#include "nerio3d/fields/nrSFVec3s.h"
