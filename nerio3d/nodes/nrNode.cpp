#include "nerio3d/nodes/nrNode.h"

#include "nerio3d/fields/nrSField.h"
#include "nerio3d/nodes/nrGroup.h"

NR_DEFINE_TYPE(nrNode, nrContainer, "Node") {
  nrSFSphereBound::addTypeField(type, "sphereBound", SPHERE_BOUND_FIELD, nrSphereBound(), &nrNode::sphereBound);
  nrSFEnum::addTypeField(type, "boundMode", BOUND_MODE_FIELD, DYNAMIC, &nrNode::boundMode);
  const char* names[] = {"STATIC", "DYNAMIC"};
  const int values[] = {STATIC, DYNAMIC};
  type->defineEnums(BOUND_MODE_FIELD, 2, names, values);
}

nrNode::nrNode(nrType* type) : nrContainer(type) { initFieldDefaults(getClassType()); }

nrNode::~nrNode() { destroyFieldContents(getClassType()); }

void nrNode::setSphereBound(const nrSphereBound& sphere) {
  sphereBound = sphere;
  // Through the field object, as setting the field by name does: touching an
  // existing field drops a recomputation still pending, so the set sphere holds.
  getField(SPHERE_BOUND_FIELD);
  fieldChanged(SPHERE_BOUND_FIELD);
}

void nrNode::getSphereBound(nrSphereBound& sphere) const {
  sphere = getSphereBound();
}

void nrNode::setBoundMode(BoundModeEnum mode) {
  boundMode = mode;
  fieldChanged(BOUND_MODE_FIELD);
}

nrNode::BoundModeEnum nrNode::getBoundMode() const {
  return static_cast<BoundModeEnum>(getFieldValue(boundMode, BOUND_MODE_FIELD));
}

void nrNode::insertParent(nrGroup* g) {
  if (!g) return;
  // The parent list changes under the replacements; walk a snapshot of it.
  nrPtrArray parents(static_cast<unsigned>(getParentCount()));
  for (int i = 0; i < getParentCount(); ++i) parents.append(getParent(i));
  for (unsigned i = 0; i < parents.getCount(); ++i) {
    nrContainer* p = static_cast<nrContainer*>(parents[i]);
    // g itself stays a parent: it cannot be put between this node and itself.
    if (p == g || !p->isOfType(nrGroup::getClassType())) continue;
    int before = g->getNumChildren();
    g->addChild(this);
    // Refused because g lies below this node: replacing would drop this node.
    if (g->getNumChildren() == before) return;
    static_cast<nrGroup*>(p)->replaceChild(this, g);
  }
}

void nrNode::fieldChanged(short index) {
  if (index == SPHERE_BOUND_FIELD) notifyParents(SPHERE_BOUND_FIELD);
  // Back to DYNAMIC: the sphere follows the contents again, whatever changed
  // below while it was STATIC.
  if (index == BOUND_MODE_FIELD && boundMode == DYNAMIC) propagateSideEffect(SPHERE_BOUND_FIELD);
  touchField(index);
}

void nrNode::dirtyFieldOutputs(nrField* field) {
  nrContainer::dirtyFieldOutputs(field);
  if (field->getIndex() != SPHERE_BOUND_FIELD && boundMode == DYNAMIC) propagateSideEffect(SPHERE_BOUND_FIELD);
}

void nrNode::takeRoutedInputs() {
  // One pass, as a cleaning pass goes; the sphere's own bit is the caller's.
  const uint64_t pending = getStaleInputMask().getBits() & ~(uint64_t(1) << SPHERE_BOUND_FIELD);
  for (short i = 0; i < 64; ++i)
    if (pending >> i & 1) validateField(i);
}

void nrNode::copy(nrContainer* from, nrCloneTable* table) {
  nrContainer::copy(from, table);
  if (from && from != this && from->getType() != getType() && boundMode == DYNAMIC)
    propagateSideEffect(SPHERE_BOUND_FIELD);
}

void nrNode::getVec(const nrVec3f& v, short index, float* x, float* y, float* z) const {
  getFieldValue(v, index);
  *x = v[0];
  *y = v[1];
  *z = v[2];
}

const nrSphereBound* nrNode::validSphereBound(nrNode* node) {
  if (!node) return nullptr;
  node->validateField(SPHERE_BOUND_FIELD);
  return &node->sphereBound;
}
