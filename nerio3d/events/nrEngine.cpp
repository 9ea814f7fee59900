#include "nerio3d/events/nrEngine.h"

#include "nerio3d/core/nrKeepAlive.h"
#include "nerio3d/fields/nrSField.h"

NR_DEFINE_TYPE(nrEngine, nrNode, "Engine") {
  nrSFInt::addTypeField(type, "trigger", TRIGGER_FIELD, 0, &nrEngine::trigger);
}

nrEngine::nrEngine(nrType* type)
    : nrNode(type), inputs(1), outputs(1), triggerField(nullptr), busy(false), evaluating(false) {
  initFieldDefaults(getClassType());
  if (type == classType) initEngine();
}

nrEngine::~nrEngine() { destroyFieldContents(getClassType()); }

void nrEngine::initEngine() {
  triggerField = getField(TRIGGER_FIELD);
  const nrShortArray& in = type->getEngineInputs();
  const nrShortArray& out = type->getEngineOutputs();
  inputs.setCount(0);
  outputs.setCount(0);
  inputs.setSize(in.getCount());
  outputs.setSize(out.getCount());
  for (unsigned i = 0; i < in.getCount(); ++i) {
    nrField* f = getField(in[i]);
    inputs.append(f);
    f->connect(triggerField);
  }
  for (unsigned i = 0; i < out.getCount(); ++i) {
    nrField* f = getField(out[i]);
    f->setEventClass(nrField::ENGINE_OUTPUT_EVENT);
    outputs.append(f);
  }
  triggerField->setDirty(false);
}

void nrEngine::copy(nrContainer* from, nrCloneTable* table) {
  nrContainer::copy(from, table);
  for (unsigned i = 0; i < inputs.getCount(); ++i) inputs[i]->connect(triggerField);
  for (unsigned i = 0; i < outputs.getCount(); ++i) outputs[i]->setEventClass(nrField::ENGINE_OUTPUT_EVENT);
}

bool nrEngine::isEngineOutput(nrContainer* c, short index) {
  return c && c->isOfType(getClassType()) && c->getType()->getEngineOutputs().find(index) >= 0;
}

void nrEngine::dirtyFieldOutputs(nrField* field) {
  field->setDirty(true);
  if (busy) return;
  triggerField->setDirty(true);
  busy = true;
  for (unsigned i = 0; i < outputs.getCount(); ++i) {
    nrField* out = outputs[i];
    out->setDirty(true);
    if (out->getNumOutputs()) out->dirtyOutputs();
  }
  busy = false;
}

void nrEngine::cleanFieldInputs(nrField* field) {
  if (triggerField->isDirty()) {
    // An output set by eval() can reach a destination that is being pulled at
    // that moment; the cycle path would evaluate again, but an engine runs at
    // most once per change of its inputs.
    if (!evaluating) evalWrapper();
  } else {
    // An input that went stale after the last evaluation (a route cycle back
    // into the engine), or whose stale mark outlived one of several routes
    // into it being removed: pull it, so that cleaning the container ends.
    nrContainer::cleanFieldInputs(field);
  }
}

void nrEngine::evalWrapper() {
  // What eval() sets reaches destinations whose changes may release this
  // engine: a referenced engine lives until its evaluation ends.
  const nrKeepAlive hold(this);
  evaluating = true;
  // The container's stale-input mask is tested first, so that inputs with
  // nothing pending are not touched at all.
  uint64_t stale = getStaleInputMask().getBits();
  const nrShortArray& indices = type->getEngineInputs();
  for (unsigned i = 0; i < inputs.getCount(); ++i) {
    nrField* in = inputs[i];
    if ((stale & nrField::staleBit(indices[i])) && in->isDirty()) nrContainer::cleanFieldInputs(in);
  }
  eval();
  for (unsigned i = 0; i < outputs.getCount(); ++i) outputs[i]->setDirty(false);
  triggerField->setDirty(false);
  evaluating = false;
}
