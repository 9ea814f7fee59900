// nrStringDictEntry is declared with the dictionary it belongs to, beside nrStringDict.
#pragma once

#include "nerio3d/core/nrStringDict.h"
