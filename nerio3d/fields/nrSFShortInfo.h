// nrSFShortInfo is declared with the other field descriptors, beside its field class nrSFShort.
#pragma once

#include "nerio3d/fields/nrSFShort.h"
