// nrMFIntInfo is declared with the other field descriptors, beside its field class nrMFInt.
#pragma once

#include "nerio3d/fields/nrMFInt.h"
