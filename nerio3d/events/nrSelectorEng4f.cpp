#include "nerio3d/events/nrSelectorEng4f.h"

NR_DEFINE_TYPE(nrSelectorEng4f, nrSelectorEng, "SelectorEng4f") { addIOFields(type, "input", nrVec4f(0, 0, 0, 0)); }
