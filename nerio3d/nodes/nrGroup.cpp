#include "nerio3d/nodes/nrGroup.h"

#include <string>

#include "nerio3d/actions/nrDrawAction.h"
#include "nerio3d/actions/nrIsectAction.h"
#include "nerio3d/actions/nrSoundAction.h"
#include "nerio3d/core/nrGlobal.h"
#include "nerio3d/fields/nrMFRef.h"
#include "nerio3d/render/nrContext.h"

NR_DEFINE_TYPE_AFTER(nrGroup, nrNode, "Group", nrContext) {
  nrMFRef::addTypeField(type, "children", CHILDREN_FIELD, nrNode::getClassType(), &nrGroup::children);
}

nrGroup::nrGroup(nrType* type) : nrNode(type) { initFieldDefaults(getClassType()); }

nrGroup::~nrGroup() { destroyFieldContents(getClassType()); }

// A node that is this group or holds it would make the graph a cycle, which
// every traversal would follow forever: it is refused with a warning.
bool nrGroup::closesCycle(nrNode* node, const char* who) {
  if (!liesUnder(node)) return false;
  std::string message = std::string("nrGroup::") + who + "() - a node cannot be placed under itself";
  nrGlobal::notify(nrGlobal::WARN, nrGlobal::USAGE, message.c_str());
  return true;
}

void nrGroup::addChild(nrNode* node) {
  if (closesCycle(node, "addChild")) return;
  refListAppend(children, node);
  fieldChanged(CHILDREN_FIELD);
}

void nrGroup::insertChild(int index, nrNode* node) {
  if (closesCycle(node, "insertChild")) return;
  refListInsert(children, index, node);
  fieldChanged(CHILDREN_FIELD);
}

void nrGroup::setChild(int index, nrNode* node) {
  if (closesCycle(node, "setChild")) return;
  refListSet(children, index, node);
  fieldChanged(CHILDREN_FIELD);
}

void nrGroup::setChildCount(int n) {
  refListSetCount(children, n);
  fieldChanged(CHILDREN_FIELD);
}

void nrGroup::removeChild(int index) {
  refListRemove(children, index);
  fieldChanged(CHILDREN_FIELD);
}

bool nrGroup::removeChild(nrNode* node) {
  long i = refListRemove(children, node);
  fieldChanged(CHILDREN_FIELD);
  return i >= 0;
}

bool nrGroup::replaceChild(nrNode* oldNode, nrNode* newNode) {
  if (closesCycle(newNode, "replaceChild")) return false;
  long i = refListReplace(children, oldNode, newNode);
  fieldChanged(CHILDREN_FIELD);
  return i >= 0;
}

void nrGroup::copy(nrContainer* from, nrCloneTable* table) {
  if (from && from != this && from->isOfType(getClassType())) {
    nrGroup* source = static_cast<nrGroup*>(from);
    for (int i = 0; i < source->getNumChildren(); ++i)
      if (closesCycle(source->getChild(i), "copy")) return;
  }
  nrNode::copy(from, table);
}

int nrGroup::findChild(nrNode* node) {
  validateField(CHILDREN_FIELD);
  return static_cast<int>(children.find(node));
}

int nrGroup::getNumChildren() const {
  return static_cast<int>(getFieldValue(children, CHILDREN_FIELD).getCount());
}

nrNode* nrGroup::getChild(int index) const {
  getFieldValue(children, CHILDREN_FIELD);
  if (index < 0 || static_cast<unsigned>(index) >= children.getCount()) return nullptr;
  return static_cast<nrNode*>(children[static_cast<unsigned>(index)]);
}

void nrGroup::fieldChanged(short index) {
  if (index != CHILDREN_FIELD) {
    nrNode::fieldChanged(index);
    return;
  }
  if (boundMode == DYNAMIC) propagateSideEffect(SPHERE_BOUND_FIELD);
  touchField(CHILDREN_FIELD);
}

void nrGroup::childChanged(nrContainer* child, short index) {
  if (index == SPHERE_BOUND_FIELD && boundMode == DYNAMIC)
    propagateSideEffect(SPHERE_BOUND_FIELD);
  else
    nrNode::childChanged(child, index);
}

void nrGroup::cleanSideEffect(short index) {
  if (index != SPHERE_BOUND_FIELD) {
    nrNode::cleanSideEffect(index);
    return;
  }
  takeRoutedInputs();
  calcChildrenBound(sphereBound);
  touchField(SPHERE_BOUND_FIELD);
}

void nrGroup::calcChildrenBound(nrSphereBound& sphere) {
  unsigned n = children.getCount();
  const nrSphereBound** spheres = new const nrSphereBound*[n ? n : 1];
  for (unsigned i = 0; i < n; ++i) spheres[i] = validSphereBound(static_cast<nrNode*>(children[i]));
  sphere.around(spheres, static_cast<int>(n));
  delete[] spheres;
}

void nrGroup::sound(nrSoundAction* action) {
  // As in visitChildren: the count is read again for every child, and each
  // child is held through its own visit.
  for (unsigned i = 0; i < children.getCount(); ++i) {
    nrNode* child = static_cast<nrNode*>(children[i]);
    if (!child) continue;
    child->ref();
    child->sound(action);
    child->unref();
  }
}

void nrGroup::isect(nrIsectAction* action) {
  cleanPendingFields();
  if (sphereBound.isect(&action->getSeg(), nullptr, nullptr)) isectChildren(action);
}

void nrGroup::isectChildren(nrIsectAction* action, unsigned first, unsigned end) {
  nrPtrArray& path = action->getPath();
  path.append(this);
  for (unsigned i = first; i < end && i < children.getCount(); ++i) {
    nrNode* child = static_cast<nrNode*>(children[i]);
    if (!child) continue;
    child->ref();
    child->isect(action);
    child->unref();
  }
  path.setCount(path.getCount() - 1);
}

nrTravDirective nrGroup::visit(nrAction* action) {
  cleanPendingFields();
  return traverse(action, &nrNode::visit);
}

nrTravDirective nrGroup::transformVisit(nrTransformAction* action) {
  cleanPendingFields();
  return traverse(action, &nrNode::transformVisit);
}

nrTravDirective nrGroup::vfCullVisit(nrVFCullAction* action) {
  cleanPendingFields();
  return cullTraverse(action, &nrNode::vfCullVisit);
}

nrTravDirective nrGroup::drawVisit(nrDrawAction* action) {
  cleanPendingFields();
  return cullTraverse(action, &nrNode::drawVisit);
}
