// nrRefArray is declared with the other arrays of fields, descriptors and containers.
#pragma once

#include "nerio3d/arrays/nrFieldArrays.h"
