// nrMFStringInfo is declared with the other field descriptors, beside its field class nrMFString.
#pragma once

#include "nerio3d/fields/nrMFString.h"
