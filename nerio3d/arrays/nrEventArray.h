// nrEventArray is declared with the other window types, beside nrEvent.
#pragma once

#include "nerio3d/window/nrEventArray.h"
