// nrMFByteInfo is declared with the other field descriptors, beside its field class nrMFByte.
#pragma once

#include "nerio3d/fields/nrMFByte.h"
