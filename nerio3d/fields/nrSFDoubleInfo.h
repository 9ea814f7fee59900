// nrSFDoubleInfo is declared with the other field descriptors, beside its field class nrSFDouble.
#pragma once

#include "nerio3d/fields/nrSFDouble.h"
