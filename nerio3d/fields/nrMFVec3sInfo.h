// nrMFVec3sInfo is declared with the other field descriptors, beside its field class nrMFVec3s.
#pragma once

#include "nerio3d/fields/nrMFVec3s.h"
