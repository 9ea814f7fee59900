// nrSFBoxBoundInfo is declared with the other field descriptors, beside its field class nrSFBoxBound.
#pragma once

#include "nerio3d/fields/nrSFBoxBound.h"
