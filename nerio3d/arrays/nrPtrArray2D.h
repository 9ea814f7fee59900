// Pointer table indexed by row and column, grown by whole rows and columns.
#pragma once

class nrPtrArray2D {
 public:
  // Allocates the cells without clearing them; no rows or columns in use.
  nrPtrArray2D(int rowCapacity, int columnCapacity);
  ~nrPtrArray2D();
  nrPtrArray2D(const nrPtrArray2D&) = delete;
  nrPtrArray2D& operator=(const nrPtrArray2D&) = delete;

  // Add one row or column; the caller clears the cells it adds.
  void addRow();
  void addCol();

  int getNumRows() const { return rows; }
  int getNumCols() const { return cols; }
  int getRowCapacity() const { return rowCapacity; }
  int getColCapacity() const { return colCapacity; }

  void*& operator()(int row, int col) { return cells[row * colCapacity + col]; }
  void* get(int row, int col) const { return cells[row * colCapacity + col]; }

 private:
  void reallocate(int newRowCapacity, int newColCapacity);

  int rows = 0;
  int cols = 0;
  int rowCapacity;
  int colCapacity;
  void** cells;
};
