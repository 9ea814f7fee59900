// nrMFVec2fInfo is declared with the other field descriptors, beside its field class nrMFVec2f.
#pragma once

#include "nerio3d/fields/nrMFVec2f.h"
