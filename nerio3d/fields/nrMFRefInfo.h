// nrMFRefInfo is declared with the other field descriptors, beside its field class nrMFRef.
#pragma once

#include "nerio3d/fields/nrMFRef.h"
