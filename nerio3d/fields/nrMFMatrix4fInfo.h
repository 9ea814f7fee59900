// nrMFMatrix4fInfo is declared with the other field descriptors, beside its field class nrMFMatrix4f.
#pragma once

#include "nerio3d/fields/nrMFMatrix4f.h"
