#include "nrTraversalTestTypes.h"

std::string tstTrace;

NR_DEFINE_TYPE(tstRecorder, nrDrawAction, "tstRecorder") {}
NR_DEFINE_TYPE(tstVisited, nrNode, "tstVisited") {}
NR_DEFINE_TYPE(tstBall, nrNode, "tstBall") {}
