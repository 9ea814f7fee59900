// nrSFRefInfo is declared with the other field descriptors, beside its field class nrSFRef.
#pragma once

#include "nerio3d/fields/nrSFRef.h"
