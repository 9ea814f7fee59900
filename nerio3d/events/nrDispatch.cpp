#include "nerio3d/events/nrDispatch.h"

#include "nerio3d/actions/nrActionFunTable.h"
#include "nerio3d/render/nrContext.h"

NR_DEFINE_TYPE_AFTER(nrDispatch, nrObject, "nrDispatch", nrContext) {}

// The table keeps one pointer type for every dispatcher; each function goes
// back to its own type before it is called.
void nrDispatch::bindFunction(nrType* dispatchType, nrType* objectType, Function fn) {
  if (!dispatchType || !objectType) return;
  registerAsDispatch(dispatchType);
  registerAsObject(objectType);
  nrActionFunTable::getTable()->setFunction(dispatchType, objectType,
                                            reinterpret_cast<nrActionFunTable::Function>(fn));
}

void nrDispatch::apply(nrObject* object) {
  if (!object) return;
  nrActionFunTable::Function fn = nrActionFunTable::getTable()->getFunction(getType(), object->getType());
  if (fn != &nrActionFunTable::nop) reinterpret_cast<Function>(fn)(this, object);
}

void nrDispatch::registerAsDispatch(nrType* type) {
  nrActionFunTable* table = nrActionFunTable::getTable();
  if (type->getActionIndex() < 0) table->addAction(type);
  registerAsObject(type);
}

void nrDispatch::registerAsObject(nrType* type) {
  if (type->getObjectIndex() < 0) nrActionFunTable::getTable()->addObject(type);
}
