#include "nerio3d/actions/nrActionFunTable.h"

#include <cstdio>
#include <cstdlib>

#include "nerio3d/core/nrType.h"

nrActionFunTable::nrActionFunTable(int rowCapacity, int columnCapacity)
    : explicitTable(rowCapacity, columnCapacity), resolvedTable(rowCapacity, columnCapacity) {}

nrActionFunTable* nrActionFunTable::getTable() {
  static nrActionFunTable* table = new nrActionFunTable(10, 100);
  return table;
}

void nrActionFunTable::nop(nrAction*, nrObject*) {}

void nrActionFunTable::addAction(nrType* type) {
  if (!type) return;
  explicitTable.addRow();
  resolvedTable.addRow();
  for (int c = 0; c < explicitTable.getNumCols(); ++c) {
    explicitTable(numRows, c) = nullptr;
    resolvedTable(numRows, c) = nullptr;
  }
  if (this == getTable()) type->setActionIndex(numRows);
  ++numRows;
  rowTypes.append(type);
  dirty = true;
}

void nrActionFunTable::addObject(nrType* type) {
  if (!type) return;
  explicitTable.addCol();
  resolvedTable.addCol();
  for (int r = 0; r < explicitTable.getNumRows(); ++r) {
    explicitTable(r, numCols) = nullptr;
    resolvedTable(r, numCols) = nullptr;
  }
  if (this == getTable()) type->setObjectIndex(numCols);
  ++numCols;
  colTypes.append(type);
  dirty = true;
}

bool nrActionFunTable::cellOf(nrType* dispatchType, nrType* objectType, int& row, int& col) const {
  if (!dispatchType || !objectType) return false;
  row = rowOf(dispatchType);
  col = colOf(objectType);
  return row >= 0 && col >= 0;
}

int nrActionFunTable::rowOf(nrType* type) const {
  int i = type->getActionIndex();
  if (i >= 0 && i < numRows && rowTypes[i] == type) return i;
  return int(rowTypes.find(type));
}

int nrActionFunTable::colOf(nrType* type) const {
  int i = type->getObjectIndex();
  if (i >= 0 && i < numCols && colTypes[i] == type) return i;
  return int(colTypes.find(type));
}

void nrActionFunTable::setFunction(nrType* dispatchType, nrType* objectType, Function fn) {
  int row, col;
  if (!cellOf(dispatchType, objectType, row, col)) return;
  explicitTable(row, col) = reinterpret_cast<void*>(fn);
  dirty = true;
}

nrActionFunTable::Function nrActionFunTable::getFunction(nrType* dispatchType, nrType* objectType) {
  if (dirty) flatten();
  int row, col;
  if (!cellOf(dispatchType, objectType, row, col)) return nop;
  Function fn = reinterpret_cast<Function>(resolvedTable.get(row, col));
  return fn ? fn : nop;
}

void nrActionFunTable::apply(nrAction*, nrObject*) {
  printf("nrActionFunTable::apply: not implemented.\n");
  fflush(stdout);
  abort();
}

void nrActionFunTable::flatten() {
  dirty = false;
  if (numRows == 0 || numCols == 0) return;
  resolveRow(static_cast<nrType*>(rowTypes[0]));
}

// Resolves a dispatcher's whole row, then its subtypes' rows: parents first, so
// a child row can fall back to its parent's resolved entries.
void nrActionFunTable::resolveRow(nrType* dispatchType) {
  resolveEntry(dispatchType, static_cast<nrType*>(colTypes[0]), nullptr);
  for (int i = 0; i < dispatchType->getNumSubtypes(); ++i) resolveRow(dispatchType->getSubtype(i));
}

void nrActionFunTable::resolveEntry(nrType* dispatchType, nrType* objectType, Function inherited) {
  int row = rowOf(dispatchType), col = colOf(objectType);
  if (row < 0 || col < 0) printf("######### row = %d, col = %d ############\n", row, col);

  Function candidate = inherited;
  if (row >= 0 && col >= 0) {
    if (Function bound = reinterpret_cast<Function>(explicitTable.get(row, col))) candidate = bound;
    Function result = candidate;
    if (!result) {
      nrType* parent = dispatchType->getParent();
      int parentRow = parent ? rowOf(parent) : -1;
      if (dispatchType != rowTypes[0] && parentRow >= 0)
        result = reinterpret_cast<Function>(resolvedTable.get(parentRow, col));
      if (!result) result = nop;
    }
    resolvedTable(row, col) = reinterpret_cast<void*>(result);
  }
  // Object subtypes inherit the explicit or object-inherited value only, so
  // inheritance along the object hierarchy wins over the dispatcher fallback.
  for (int i = 0; i < objectType->getNumSubtypes(); ++i) resolveEntry(dispatchType, objectType->getSubtype(i), candidate);
}
