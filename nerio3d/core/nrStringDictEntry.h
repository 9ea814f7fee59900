// nrStringDictEntry is declared with the other dictionary types, beside nrStringDict.
#pragma once

#include "nerio3d/core/nrStringDict.h"
