// nrSFUByteInfo is declared with the other field descriptors, beside its field class nrSFUByte.
#pragma once

#include "nerio3d/fields/nrSFUByte.h"
