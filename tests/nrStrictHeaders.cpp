// Built as C++11 with -Wpedantic -Wshadow -Werror: an application on an older standard or strict
// warnings includes the whole library cleanly.
#include "nerio3d/nerio3d.h"
