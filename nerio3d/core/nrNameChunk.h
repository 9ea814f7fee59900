// nrNameChunk is declared with the other name types, beside nrName.
#pragma once

#include "nerio3d/core/nrName.h"
