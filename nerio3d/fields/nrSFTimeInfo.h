// nrSFTimeInfo is declared with the other field descriptors, beside its field class nrSFTime.
#pragma once

#include "nerio3d/fields/nrSFTime.h"
