// nrPtrArray is declared with the other typed arrays.
#pragma once

#include "nerio3d/arrays/nrTypedArray.h"
