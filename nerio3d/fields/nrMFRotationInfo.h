// nrMFRotationInfo is declared with the other field descriptors, beside its field class nrMFRotation.
#pragma once

#include "nerio3d/fields/nrMFRotation.h"
