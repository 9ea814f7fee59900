// nrMFVec4fInfo is declared with the other field descriptors, beside its field class nrMFVec4f.
#pragma once

#include "nerio3d/fields/nrMFVec4f.h"
