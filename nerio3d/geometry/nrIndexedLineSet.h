// Polylines described by VRML index lists (-1 ends a polyline), turned into
// the line-strip set's index sets and lengths as soon as a list changes.
// Drawn unlit and untextured, in white when it has no colours.
#pragma once

#include "nerio3d/geometry/nrLineStripSet.h"

class nrIndexedLineSet : public nrLineStripSet {
  NR_DECLARE_CONTAINER_TYPE(nrIndexedLineSet)

  enum { COORD_INDEX_FIELD = 17, COLOR_INDEX_FIELD, COLOR_PER_VERTEX_FIELD };

  nrIndexedLineSet() : nrIndexedLineSet(getClassType()) {}
  explicit nrIndexedLineSet(nrType* type);
  ~nrIndexedLineSet() override;

  // The VRML index lists. Without a list of their own the colours follow
  // the coordinate indices: they share the coordinates' index set object.
  void setCoordIndex(int count, const int* values) { setList(coordIndex, count, values, COORD_INDEX_FIELD); }
  const nrIntArray& getCoordIndex() const { return getFieldValue(coordIndex, COORD_INDEX_FIELD); }
  void setColorIndex(int count, const int* values) { setList(colorIndex, count, values, COLOR_INDEX_FIELD); }
  const nrIntArray& getColorIndex() const { return getFieldValue(colorIndex, COLOR_INDEX_FIELD); }
  void setColorPerVertex(unsigned char on) { setValue(colorPerVertex, on, COLOR_PER_VERTEX_FIELD); }
  unsigned char getColorPerVertex() const { return getFieldValue(colorPerVertex, COLOR_PER_VERTEX_FIELD); }

  // Switches lighting and texturing off for the lines inside a pushed
  // context state, so that the state around them is left as it was.
  void draw(nrDrawAction* action) override;

  // Shares the values of from; the index sets are this set's own, made
  // again from the index lists.
  void copy(nrContainer* from, nrCloneTable* table) override;
  using nrLineStripSet::copy;
  // VRML text: the attribute sets under their VRML names, the index lists
  // and the flags (the width too once written).
  void write(nrOutput* out) override;
  void fieldChanged(short index) override;

 private:
  nrIntArray coordIndex;
  nrIntArray colorIndex;
  unsigned char colorPerVertex;

  nrIndexSet* ownColorIndexSet;
};
