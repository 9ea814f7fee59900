#include "nerio3d/window/nrEvent.h"

#include "nerio3d/fields/nrContainer.h"

// Registered below the container type, though a record is a plain object.
NR_DEFINE_TYPE(nrEvent, nrContainer, "Event") {}
