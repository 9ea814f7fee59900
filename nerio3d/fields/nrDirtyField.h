// nrDirtyField is declared with the other field types, beside nrField.
#pragma once

#include "nerio3d/fields/nrField.h"
