// nrSFRotation is declared with the other single-valued field kinds.
#pragma once

#include "nerio3d/fields/nrSField.h"
