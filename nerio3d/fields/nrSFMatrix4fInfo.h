// nrSFMatrix4fInfo is declared with the other field descriptors, beside its field class nrSFMatrix4f.
#pragma once

#include "nerio3d/fields/nrSFMatrix4f.h"
