// nrSFUIntInfo is declared with the other field descriptors, beside its field class nrSFUInt.
#pragma once

#include "nerio3d/fields/nrSFUInt.h"
