// nrSFBitMaskInfo is declared with the other field descriptors, beside its field class nrSFBitMask.
#pragma once

#include "nerio3d/fields/nrSFBitMask.h"
