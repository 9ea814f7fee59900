// Table of free functions indexed by a dispatcher type (row) and an object
// type (column); bindings are inherited along both type hierarchies, object
// hierarchy first.
#pragma once

#include "nerio3d/arrays/nrPtrArray2D.h"
#include "nerio3d/arrays/nrTypedArray.h"

class nrAction;
class nrObject;
class nrType;

class nrActionFunTable {
 public:
  typedef void (*Function)(nrAction*, nrObject*);

  nrActionFunTable(int rowCapacity, int columnCapacity);

  // The process-wide table every run-time type is entered into; made on first
  // use with room for 10 dispatcher types and 100 object types, never freed.
  static nrActionFunTable* getTable();

  // The value of every pair that resolves to nothing.
  static void nop(nrAction*, nrObject*);

  void addAction(nrType* type);
  void addObject(nrType* type);
  void setFunction(nrType* dispatchType, nrType* objectType, Function fn);
  // The resolved function of the pair, re-flattening the table first when a
  // registration or binding happened since the last lookup.
  Function getFunction(nrType* dispatchType, nrType* objectType);
  // Not supported: prints a message and aborts the process.
  void apply(nrAction* action, nrObject* object);

  int getNumActions() const { return numRows; }
  int getNumObjects() const { return numCols; }

 private:
  // The cell of a pair of types registered in this table; false for any other pair.
  bool cellOf(nrType* dispatchType, nrType* objectType, int& row, int& col) const;
  // The row or column of a type in this table, or -1. The type records hold
  // their indices in the process table; any other table looks its types up.
  int rowOf(nrType* type) const;
  int colOf(nrType* type) const;
  void flatten();
  void resolveRow(nrType* dispatchType);
  void resolveEntry(nrType* dispatchType, nrType* objectType, Function inherited);

  bool dirty = true;
  int numRows = 0;
  int numCols = 0;
  nrPtrArray2D explicitTable;
  nrPtrArray2D resolvedTable;
  nrPtrArray rowTypes;
  nrPtrArray colTypes;
};
