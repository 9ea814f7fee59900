// Polygons described by VRML index lists (-1 ends a face). The lists are
// turned into the polygon set's flat index sets and lengths when the set is
// next used, so that a list filled one element at a time costs one pass.
#pragma once

#include "nerio3d/geometry/nrPolySet.h"

class nrIndexedFaceSet : public nrPolySet {
  NR_DECLARE_CONTAINER_TYPE(nrIndexedFaceSet)

  enum {
    CCW_FIELD = 16,
    SOLID_FIELD,
    CONVEX_FIELD,
    CREASE_ANGLE_FIELD,
    COORD_INDEX_FIELD,
    COLOR_INDEX_FIELD,
    TEX_COORD_INDEX_FIELD,
    NORMAL_INDEX_FIELD,
    COLOR_PER_VERTEX_FIELD,
    NORMAL_PER_VERTEX_FIELD
  };

  nrIndexedFaceSet() : nrIndexedFaceSet(getClassType()) {}
  explicit nrIndexedFaceSet(nrType* type);
  ~nrIndexedFaceSet() override;

  // solid and ccw choose the set's own cull face: none when not solid, else
  // the back of counter-clockwise faces or the front of clockwise ones.
  void setCcw(unsigned char on) { setValue(ccw, on, CCW_FIELD); }
  unsigned char getCcw() const { return getFieldValue(ccw, CCW_FIELD); }
  void setSolid(unsigned char on) { setValue(solid, on, SOLID_FIELD); }
  unsigned char getSolid() const { return getFieldValue(solid, SOLID_FIELD); }
  // Kept for normal generation; drawing does not use them.
  void setConvex(unsigned char on) { setValue(convex, on, CONVEX_FIELD); }
  unsigned char getConvex() const { return getFieldValue(convex, CONVEX_FIELD); }
  void setCreaseAngle(float angle) { setValue(creaseAngle, angle, CREASE_ANGLE_FIELD); }
  float getCreaseAngle() const { return getFieldValue(creaseAngle, CREASE_ANGLE_FIELD); }
  void setColorPerVertex(unsigned char on) { setValue(colorPerVertex, on, COLOR_PER_VERTEX_FIELD); }
  unsigned char getColorPerVertex() const { return getFieldValue(colorPerVertex, COLOR_PER_VERTEX_FIELD); }
  void setNormalPerVertex(unsigned char on) { setValue(normalPerVertex, on, NORMAL_PER_VERTEX_FIELD); }
  unsigned char getNormalPerVertex() const { return getFieldValue(normalPerVertex, NORMAL_PER_VERTEX_FIELD); }

  // The VRML index lists. An attribute whose list is empty follows the
  // coordinate indices: it shares the coordinates' index set object.
  void setCoordIndex(int count, const int* values) { setList(coordIndex, count, values, COORD_INDEX_FIELD); }
  const nrIntArray& getCoordIndex() const { return getFieldValue(coordIndex, COORD_INDEX_FIELD); }
  void setColorIndex(int count, const int* values) { setList(colorIndex, count, values, COLOR_INDEX_FIELD); }
  const nrIntArray& getColorIndex() const { return getFieldValue(colorIndex, COLOR_INDEX_FIELD); }
  void setTexCoordIndex(int count, const int* values) { setList(texCoordIndex, count, values, TEX_COORD_INDEX_FIELD); }
  const nrIntArray& getTexCoordIndex() const { return getFieldValue(texCoordIndex, TEX_COORD_INDEX_FIELD); }
  void setNormalIndex(int count, const int* values) { setList(normalIndex, count, values, NORMAL_INDEX_FIELD); }
  const nrIntArray& getNormalIndex() const { return getFieldValue(normalIndex, NORMAL_INDEX_FIELD); }

  // Puts the face set's own normal index set (made on first need) in use
  // with count indices, one per face corner, for normal generation to fill
  // in place and report with changed(). normalIndex is rebuilt from it, with
  // the face ends, when it is next read.
  nrIndexSet* useNormalIndexSet(int count);

  // Shares the values of from; the index sets are this set's own, made
  // again from the index lists.
  void copy(nrContainer* from, nrCloneTable* table) override;
  using nrPolySet::copy;
  // VRML text: the attribute sets under their VRML names, the flags and the index lists.
  void write(nrOutput* out) override;
  void fieldChanged(short index) override;
  void cleanSideEffect(short index) override;

 protected:
  // The index lists kept as index sets wait until they are read.
  void cleanFieldsForUse(const nrBitMask& pending) override;

 private:
  // Conversions waiting for the next use of the set, a bit per index list.
  enum { COORD_PENDING = 1, NORMAL_PENDING = 2, COLOR_PENDING = 4, TEX_COORD_PENDING = 8, ALL_PENDING = 15 };

  // Records conversions and marks the fields they produce as pending.
  void schedule(int conversions);
  void convert();
  // Points the attribute's index set field at its own index set (made on
  // first need) filled from list, or at the coordinates' set when list is empty.
  // Frees coordIndex when the index set and the lengths can make it again.
  void dropCoordIndex();
  // An index list again from the flat index set it was converted to (or
  // that normal generation filled) and the face lengths.
  void rebuildList(nrIntArray& list, const nrIntArray& flat);

  unsigned char ccw;
  unsigned char solid;
  unsigned char convex;
  float creaseAngle;
  nrIntArray coordIndex;
  nrIntArray colorIndex;
  nrIntArray texCoordIndex;
  nrIntArray normalIndex;
  unsigned char colorPerVertex;
  unsigned char normalPerVertex;

  int pending;
  // coordIndex waits to be rebuilt from the coordinate index set.
  bool coordIndexFromSet;
  // normalIndex waits to be rebuilt from the normal index set.
  bool normalIndexFromSet;
  nrIndexSet* ownNormalIndexSet;
  nrIndexSet* ownColorIndexSet;
  nrIndexSet* ownTexCoordIndexSet;
};
