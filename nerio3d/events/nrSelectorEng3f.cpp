#include "nerio3d/events/nrSelectorEng3f.h"

NR_DEFINE_TYPE(nrSelectorEng3f, nrSelectorEng, "SelectorEng3f") { addIOFields(type, "input", nrVec3f(0, 0, 0)); }
