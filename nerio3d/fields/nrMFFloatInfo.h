// nrMFFloatInfo is declared with the other field descriptors, beside its field class nrMFFloat.
#pragma once

#include "nerio3d/fields/nrMFFloat.h"
