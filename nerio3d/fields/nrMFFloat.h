// nrMFFloat is declared with the other multi-valued field kinds.
#pragma once

#include "nerio3d/fields/nrMField.h"
