#include "nerio3d/nodes/nrSwitch.h"

#include "nerio3d/actions/nrDrawAction.h"
#include "nerio3d/actions/nrIsectAction.h"
#include "nerio3d/fields/nrFieldInfo.h"
#include "nerio3d/fields/nrMFRef.h"
#include "nerio3d/fields/nrSField.h"

NR_DEFINE_TYPE(nrSwitch, nrGroup, "Switch") {
  nrSFInt::addTypeField(type, "whichChild", WHICH_CHILD_FIELD, NO_CHILD, &nrSwitch::whichChildIndex);
  type->getFieldInfo(WHICH_CHILD_FIELD)->addAlias("whichChoice");
  aliasChildren(type, "choice");
}

nrSwitch::nrSwitch(nrType* type) : nrGroup(type) { initFieldDefaults(getClassType()); }

nrSwitch::~nrSwitch() { destroyFieldContents(getClassType()); }

void nrSwitch::aliasChildren(nrType* type, const char* alias) {
  nrMFRef::addTypeField(type, "children", CHILDREN_FIELD, nrNode::getClassType(), &nrSwitch::children);
  type->getFieldInfo(CHILDREN_FIELD)->addAlias(alias);
}

int nrSwitch::getWhichChild() const {
  return getFieldValue(whichChildIndex, WHICH_CHILD_FIELD);
}

void nrSwitch::selected(unsigned& first, unsigned& end) const {
  first = end = 0;
  if (whichChildIndex == ALL_CHILDREN) {
    end = ALL_END;
  } else if (whichChildIndex >= 0) {
    first = static_cast<unsigned>(whichChildIndex);
    end = first + 1;
  }
}

nrTravDirective nrSwitch::vfCullVisit(nrVFCullAction* action) { return switchTraverse(action, &nrNode::vfCullVisit); }

nrTravDirective nrSwitch::drawVisit(nrDrawAction* action) { return switchTraverse(action, &nrNode::drawVisit); }

void nrSwitch::isect(nrIsectAction* action) {
  cleanPendingFields();
  if (whichChildIndex == NO_CHILD || !sphereBound.isect(&action->getSeg(), nullptr, nullptr)) return;
  unsigned first, end;
  selected(first, end);
  isectChildren(action, first, end);
}
