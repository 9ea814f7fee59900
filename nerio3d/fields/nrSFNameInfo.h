// nrSFNameInfo is declared with the other field descriptors, beside its field class nrSFName.
#pragma once

#include "nerio3d/fields/nrSFName.h"
