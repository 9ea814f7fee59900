// A primitive set whose primitives each have their own vertex count, kept in
// field 15 (strip, fan or polygon lengths).
#pragma once

#include "nerio3d/geometry/nrGeoSet.h"

class nrLengthGeoSet : public nrGeoSet {
 public:
  enum { LENGTHS_FIELD = 15 };

  int getPrimLen(int prim) override {
    return prim >= 0 && unsigned(prim) < lengths.getCount() ? lengths[unsigned(prim)] : -1;
  }

  void setLength(int prim, int length) {
    if (prim < 0) return;
    lengths.set(unsigned(prim), length);
    fieldChanged(LENGTHS_FIELD);
  }
  int getLength(int prim) {
    validateField(LENGTHS_FIELD);
    return getPrimLen(prim);
  }
  void setLengths(const nrIntArray& values) {
    lengths.set(values);
    fieldChanged(LENGTHS_FIELD);
  }
  void setLengths(int count, const int* values) { setList(lengths, count, values, LENGTHS_FIELD); }
  const nrIntArray& getLengths() const { return getFieldValue(lengths, LENGTHS_FIELD); }
  void fieldChanged(short index) override {
    if (index == LENGTHS_FIELD) boundChanged();
    nrGeoSet::fieldChanged(index);
  }

 protected:
  explicit nrLengthGeoSet(nrType* typeOfClass) : nrGeoSet(typeOfClass) {}

  // Replaces an integer list field's values and reports the change.
  void setList(nrIntArray& list, int count, const int* values, short index) {
    list.setCount(0);
    if (count > 0 && values) list.setRange(0, unsigned(count), values);
    fieldChanged(index);
  }

  nrIntArray lengths;
};
