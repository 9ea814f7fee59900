// nrDictEntry is declared with the dictionary it belongs to, beside nrDict.
#pragma once

#include "nerio3d/core/nrDict.h"
