#include "nerio3d/events/nrMorphEng4f.h"

NR_DEFINE_TYPE(nrMorphEng4f, nrMorphEng, "MorphEng4f") { addIOFields(type, "input"); }
