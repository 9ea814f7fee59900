#include "nerio3d/fields/nrField.h"

#include "nerio3d/core/nrGlobal.h"
#include "nerio3d/fields/nrCloneTable.h"
#include "nerio3d/fields/nrContainer.h"
#include "nerio3d/fields/nrFieldInfo.h"

NR_DEFINE_ROOT_TYPE(nrField, "nrField") {}

static bool dirtyTracking = false;
static nrDirtyField* dirtyList = nullptr;
static nrDirtyField* freeList = nullptr;
// Nested pushes of staleness on this thread, one per routed field passed.
static thread_local int pushDepth = 0;

nrField::nrField(nrContainer* owner, short i)
    : container(owner), index(i), flags(0), eventClass(PLAIN_EVENT), source(nullptr), inputs(nullptr), outputs(nullptr) {
  owner->addField(this);
}


nrField::~nrField() {
  while (inputs && inputs->getCount()) (*inputs)[0]->disconnect(this);
  while (outputs && outputs->getCount()) {
    nrField* to = (*outputs)[0];
    // The destination keeps no pointer to a field that is going away.
    if (to->source == this) to->source = nullptr;
    disconnect(to);
  }
  delete inputs;
  delete outputs;
  // Drop records of this field from the dirty list so cleanFields never sees it.
  for (nrDirtyField** link = &dirtyList; *link;) {
    nrDirtyField* node = *link;
    if (node->field == this) {
      *link = node->next;
      node->next = freeList;
      freeList = node;
    } else {
      link = &node->next;
    }
  }
}

bool nrField::isOfType(const nrType* t) const { return getType()->isDerivedFrom(t); }

nrFieldInfo* nrField::getFieldInfo() const { return container->getType()->getFieldInfo(index); }

const char* nrField::getName() const { return getFieldInfo()->getName().getString(); }

bool nrField::isDefault() { return getFieldInfo()->isDefault(container); }

void nrField::validate() const { container->validateKnownField(index, const_cast<nrField*>(this)); }

void nrField::changed() { container->fieldChanged(index); }

void nrField::setDirty(bool on) {
  uint64_t mask = container->staleInputs.getBits();
  if (on) {
    if (dirtyTracking) recordDirty();
    flags |= STALE_FLAG;
    mask |= staleBit(index);
  } else {
    flags &= ~STALE_FLAG;
    mask &= ~staleBit(index);
  }
  container->staleInputs = nrBitMask::fromBits(mask);
}

void nrField::dirtyOutputs() {
  if (pushDepth >= MAX_ROUTE_DEPTH) {
    nrGlobal::notify(nrGlobal::WARN, nrGlobal::USAGE, "Route chain too deep: change not sent on");
    return;
  }
  ++pushDepth;
  for (unsigned i = 0; outputs && i < outputs->getCount(); ++i) {
    nrField* d = (*outputs)[i];
    if (d->isBusy()) {
      container->cleanFieldInputs(this);
    } else {
      d->source = this;
      d->container->dirtyFieldOutputs(d);
    }
  }
  --pushDepth;
}

void nrField::connect(nrField* to) {
  if (!to || eventClass == INPUT_ONLY_EVENT || to->eventClass == OUTPUT_ONLY_EVENT) return;
  if (outputs && outputs->find(to) >= 0) return;
  if (!outputs) outputs = new nrFieldArray(1);
  if (!to->inputs) to->inputs = new nrFieldArray(1);
  outputs->append(to);
  to->inputs->append(this);
  to->source = this;
  to->container->dirtyFieldOutputs(to);
}

void nrField::disconnect(nrField* to) {
  if (!outputs || !to) return;
  if (outputs->remove(to)) {
    if (to->inputs) to->inputs->remove(this);
    if (!to->inputs || to->inputs->getCount() == 0)
      to->container->staleInputs = nrBitMask::fromBits(to->container->staleInputs.getBits() & ~staleBit(to->index));
  }
  to->flags &= ~STALE_FLAG;
}


void nrField::copyConnections(nrField* to, nrCloneTable* table) {
  nrField* clonedFrom;
  nrField* clonedTo;
  for (int i = 0; i < getNumOutputs(); ++i) {
    nrField* dest = getOutput(i);
    if (table->getClonedConnection(this, dest, clonedFrom, clonedTo))
      to->connect(clonedTo);
    else
      table->addClonedConnection(this, dest, to, nullptr);
  }
  for (int i = 0; i < getNumInputs(); ++i) {
    nrField* src = getInput(i);
    if (table->getClonedConnection(src, this, clonedFrom, clonedTo))
      clonedFrom->connect(to);
    else
      table->addClonedConnection(src, this, nullptr, to);
  }
}

void nrField::pushDirty(nrField* f) {
  nrDirtyField* node = freeList;
  if (node)
    freeList = node->next;
  else
    node = new nrDirtyField;
  node->field = f;
  node->next = dirtyList;
  dirtyList = node;
}

void nrField::recordDirty() {
  if (!isDirty()) pushDirty(this);
}

void nrField::enableDirtyFieldTracking(bool on) {
  dirtyTracking = on;
  if (on) return;
  auto freeAll = [](nrDirtyField*& list) {
    while (list) {
      nrDirtyField* node = list;
      list = node->next;
      delete node;
    }
  };
  freeAll(dirtyList);
  freeAll(freeList);
}

bool nrField::isDirtyFieldTrackingEnabled() { return dirtyTracking; }

void nrField::cleanFields() {
  while (dirtyList) {
    nrDirtyField* node = dirtyList;
    dirtyList = node->next;
    node->field->container->validateField(node->field->index);
    node->next = freeList;
    freeList = node;
  }
}
