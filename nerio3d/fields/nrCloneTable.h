// Bookkeeping of one copy or clone: which container became which clone, and
// routes of which only one end has been cloned so far.
#pragma once

#include "nerio3d/arrays/nrTypedArray.h"

class nrContainer;
class nrField;

class nrCloneTable {
 public:
  nrCloneTable() : instances(4), connections(4) {}
  ~nrCloneTable();
  nrCloneTable(const nrCloneTable&) = delete;
  nrCloneTable& operator=(const nrCloneTable&) = delete;

  void addClonedInstance(nrContainer* source, nrContainer* clone);
  // The clone of source, or null. Each lookup counts one more holder served;
  // the record goes once as many holders as source has parents were served.
  nrContainer* getClonedInstance(nrContainer* source);

  void addClonedConnection(nrField* from, nrField* to, nrField* clonedFrom, nrField* clonedTo);
  // The clones parked for the route from -> to, removing the record; null and
  // null when there is none.
  nrField* getClonedConnection(nrField* from, nrField* to, nrField*& clonedFrom, nrField*& clonedTo);

 private:
  struct Instance {
    int useCount;
    nrContainer* source;
    nrContainer* clone;
  };
  struct Connection {
    nrField* from;
    nrField* to;
    nrField* clonedFrom;
    nrField* clonedTo;
  };

  nrPtrArray instances;
  nrPtrArray connections;
};
