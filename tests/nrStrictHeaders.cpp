// Built with -Wshadow -Werror: an application on strict warnings includes the whole library cleanly.
#include "nerio3d/nerio3d.h"
