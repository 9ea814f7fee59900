// nrSFStringInfo is declared with the other field descriptors, beside its field class nrSFString.
#pragma once

#include "nerio3d/fields/nrSFString.h"
