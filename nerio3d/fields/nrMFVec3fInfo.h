// nrMFVec3fInfo is declared with the other field descriptors, beside its field class nrMFVec3f.
#pragma once

#include "nerio3d/fields/nrMFVec3f.h"
