#include "nerio3d/events/nrMorphEng3f.h"

NR_DEFINE_TYPE(nrMorphEng3f, nrMorphEng, "MorphEng3f") { addIOFields(type, "input"); }
