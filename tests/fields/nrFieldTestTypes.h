// Containers used by the field tests, registered through the ordinary path.
#pragma once

#include <string>

#include "nerio3d/fields/nrMFRef.h"
#include "nerio3d/fields/nrMField.h"
#include "nerio3d/fields/nrSFRef.h"
#include "nerio3d/fields/nrSField.h"
#include "nrHeld.h"
#include "nrOutputCapture.h"

// A leaf that counts its instances, so tests can see deletions.
class tstLeaf : public nrContainer {
  NR_DECLARE_CONTAINER_TYPE(tstLeaf)
  enum { VALUE, IN_VALUE, OUT_VALUE, CHILDREN, NUM_FIELDS };

  tstLeaf() : nrContainer(getClassType()) {
    initFieldDefaults(classType);
    ++live;
  }
  ~tstLeaf() override {
    destroyFieldContents(classType);
    --live;
  }
  static int live;

  using nrContainer::propagateSideEffect;
  using nrContainer::validateField;

  float value, inValue, outValue;
  nrRefArray children;
};

// Not derived from tstLeaf: refused by reference fields that require leaves.
class tstOther : public nrContainer {
  NR_DECLARE_CONTAINER_TYPE(tstOther)
  tstOther() : nrContainer(getClassType()) {}
};

// A field of each kind the tests write, plus hooks that record what the container was told.
class tstAll : public nrContainer {
  NR_DECLARE_CONTAINER_TYPE(tstAll)
  enum {
    UBYTE, SHORT, INT, UINT, FLOAT, DOUBLE, TIME, ENUM, VEC3F, VEC4UB, BITMASK, NAME, MATRIX, ROTATION, STRING,
    REF, MFBYTE, MFINT, MFFLOAT, MFVEC3F, MFREF, ET_X, NUM_FIELDS
  };

  tstAll() : nrContainer(getClassType()) { initFieldDefaults(classType); }
  ~tstAll() override { destroyFieldContents(classType); }

  using nrContainer::internalCleanFields;
  using nrContainer::propagateSideEffect;
  using nrContainer::validateField;

  unsigned char ubyteValue;
  short shortValue;
  int intValue, enumValue, etX;
  unsigned uintValue;
  float floatValue;
  double doubleValue;
  nrTime timeValue;
  nrVec3f vec3fValue;
  nrVec4ub vec4ubValue;
  nrBitMask bitMaskValue;
  nrName nameValue;
  nrMatrix4f matrixValue;
  nrRotation rotationValue;
  nrString stringValue;
  nrContainer* refValue;
  nrByteArray mfByte;
  nrIntArray mfInt;
  nrFloatArray mfFloat;
  nrVec3fArray mfVec3f;
  nrRefArray mfRef;

  int changes[NUM_FIELDS] = {}, childChanges = 0, sideEffectsCleaned = 0;

 protected:
  void fieldChanged(short index) override {
    ++changes[index];
    nrContainer::fieldChanged(index);
  }
  void childChanged(nrContainer*, short) override { ++childChanges; }
  void cleanSideEffect(short) override { ++sideEffectsCleaned; }
};

// Forty floats kept by the field objects themselves (no storage member).
class tstWide : public nrContainer {
  NR_DECLARE_CONTAINER_TYPE(tstWide)
  tstWide() : nrContainer(getClassType()) { initFieldDefaults(classType); }
  ~tstWide() override { destroyFieldContents(classType); }
  static const int numFields = 40;
};

namespace nrtest {

// The descriptor line of field `index` of container c.
inline std::string fieldLine(nrContainer* c, int index, int level = 1) {
  return writeToString([&](nrOutput* out) { c->getType()->getFieldInfo(index)->write(out, c); }, level);
}

// Field `index` of c, as the kind F it is.
template <typename F>
F* field(nrContainer* c, int index) {
  return static_cast<F*>(c->getField(index));
}
inline nrSFFloat* floatField(nrContainer* c, int index) { return field<nrSFFloat>(c, index); }

}  // namespace nrtest
