#include "nerio3d/fields/nrCloneTable.h"

#include "nerio3d/fields/nrContainer.h"

nrCloneTable::~nrCloneTable() {
  for (unsigned i = 0; i < instances.getCount(); ++i) delete static_cast<Instance*>(instances[i]);
  for (unsigned i = 0; i < connections.getCount(); ++i) delete static_cast<Connection*>(connections[i]);
}

// Nothing is cloned from a null source: it is not recorded.
void nrCloneTable::addClonedInstance(nrContainer* source, nrContainer* clone) {
  if (source) instances.insert(0, new Instance{1, source, clone});
}

nrContainer* nrCloneTable::getClonedInstance(nrContainer* source) {
  for (unsigned i = 0; i < instances.getCount(); ++i) {
    Instance* record = static_cast<Instance*>(instances[i]);
    if (record->source != source) continue;
    nrContainer* clone = record->clone;
    if (record->useCount++ == source->getParentCount()) {
      instances.fastRemoveIndex(i);
      delete record;
    }
    return clone;
  }
  return nullptr;
}

void nrCloneTable::addClonedConnection(nrField* from, nrField* to, nrField* clonedFrom, nrField* clonedTo) {
  connections.insert(0, new Connection{from, to, clonedFrom, clonedTo});
}

nrField* nrCloneTable::getClonedConnection(nrField* from, nrField* to, nrField*& clonedFrom, nrField*& clonedTo) {
  for (unsigned i = 0; i < connections.getCount(); ++i) {
    Connection* record = static_cast<Connection*>(connections[i]);
    if (record->from != from || record->to != to) continue;
    clonedFrom = record->clonedFrom;
    clonedTo = record->clonedTo;
    connections.removeIndex(i);
    delete record;
    return clonedFrom ? clonedFrom : clonedTo;
  }
  clonedFrom = clonedTo = nullptr;
  return nullptr;
}
