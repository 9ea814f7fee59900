#include "nrNodeTestTypes.h"

int tstLeaf::live = 0;

NR_DEFINE_TYPE(tstLeaf, nrNode, "tstLeaf") {}
NR_DEFINE_TYPE(tstGroup, nrGroup, "tstGroup") {}
NR_DEFINE_TYPE(tstHolder, nrContainer, "tstHolder") {
  nrSFRef::addTypeField(type, "node", 0, nrNode::getClassType(), &tstHolder::node);
}
