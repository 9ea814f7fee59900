// nrSFEnumInfo is declared with the other field descriptors, beside its field class nrSFEnum.
#pragma once

#include "nerio3d/fields/nrSFEnum.h"
