// nrSFFloatInfo is declared with the other field descriptors, beside its field class nrSFFloat.
#pragma once

#include "nerio3d/fields/nrSFFloat.h"
