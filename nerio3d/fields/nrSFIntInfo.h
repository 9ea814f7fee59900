// nrSFIntInfo is declared with the other field descriptors, beside its field class nrSFInt.
#pragma once

#include "nerio3d/fields/nrSFInt.h"
