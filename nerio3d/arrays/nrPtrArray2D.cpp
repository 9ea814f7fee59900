#include "nerio3d/arrays/nrPtrArray2D.h"

#include <algorithm>
#include <cstdint>
#include <new>

// A negative capacity counts as none, and so do capacities beyond the memory
// there is: the table then grows from nothing as rows and columns are added.
nrPtrArray2D::nrPtrArray2D(int rowCap, int colCap)
    : rowCapacity(std::max(rowCap, 0)),
      colCapacity(std::max(colCap, 0)),
      cells(nullptr) {
  size_t n = static_cast<size_t>(rowCapacity) * static_cast<size_t>(colCapacity);
  if (n <= PTRDIFF_MAX / sizeof(void*)) cells = new (std::nothrow) void*[n];
  if (!cells) {
    rowCapacity = colCapacity = 0;
    cells = new void*[1];
  }
}

nrPtrArray2D::~nrPtrArray2D() { delete[] cells; }

void nrPtrArray2D::addRow() {
  if (rows == rowCapacity) reallocate(rowCapacity * 2 + 1, std::max(cols * 2 + 1, colCapacity));
  ++rows;
}

void nrPtrArray2D::addCol() {
  if (cols == colCapacity) reallocate(std::max(rows * 2 + 1, rowCapacity), colCapacity * 2 + 1);
  ++cols;
}

void nrPtrArray2D::reallocate(int newRowCapacity, int newColCapacity) {
  void** grown = new void*[static_cast<size_t>(newRowCapacity) * newColCapacity];
  for (int r = 0; r < rows; ++r)
    for (int c = 0; c < cols; ++c) grown[r * newColCapacity + c] = cells[r * colCapacity + c];
  delete[] cells;
  cells = grown;
  rowCapacity = newRowCapacity;
  colCapacity = newColCapacity;
}
