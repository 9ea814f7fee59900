// nrDictEntry is declared with the other dictionary types, beside nrDict.
#pragma once

#include "nerio3d/core/nrDict.h"
