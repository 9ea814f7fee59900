// nrSFRotationInfo is declared with the other field descriptors, beside its field class nrSFRotation.
#pragma once

#include "nerio3d/fields/nrSFRotation.h"
