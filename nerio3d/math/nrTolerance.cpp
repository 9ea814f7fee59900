#include "nerio3d/math/nrTolerance.h"

float nrEpsilon = 1.0e-5f;
float nrEta = 1.0e-15f;
