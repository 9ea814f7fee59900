// Containers used by the field tests, registered through the ordinary path.
#pragma once

#include <cstdio>
#include <cstdlib>
#include <string>

#include "nerio3d/fields/nrMFRef.h"
#include "nerio3d/fields/nrMField.h"
#include "nerio3d/fields/nrSFRef.h"
#include "nerio3d/fields/nrSField.h"

// A leaf that counts its instances, so tests can see deletions.
class tstLeaf : public nrContainer {
  NR_DECLARE_CONTAINER_TYPE(tstLeaf)
  enum { VALUE, IN_VALUE, OUT_VALUE, NUM_FIELDS };

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

  float value;
  float inValue;
  float outValue;
};

// Not derived from tstLeaf: refused by reference fields that require leaves.
class tstOther : public nrContainer {
  NR_DECLARE_CONTAINER_TYPE(tstOther)
  tstOther() : nrContainer(getClassType()) {}
};

// One field of every kind, plus hooks that record what the container was told.
class tstAll : public nrContainer {
  NR_DECLARE_CONTAINER_TYPE(tstAll)
  enum {
    UBYTE, SHORT, INT, UINT, FLOAT, DOUBLE, TIME, ENUM, VEC2F, VEC3F, VEC3S, VEC4F, VEC4UB, BITMASK, NAME,
    MATRIX, ROTATION, STRING, REF, MFBYTE, MFINT, MFFLOAT, MFMATRIX, MFROTATION, MFSTRING, MFVEC2F,
    MFVEC3F, MFVEC3S, MFVEC4F, MFREF, ET_X, NUM_FIELDS
  };

  tstAll() : nrContainer(getClassType()) { initFieldDefaults(classType); }
  ~tstAll() override { destroyFieldContents(classType); }

  using nrContainer::internalCleanFields;
  using nrContainer::propagateSideEffect;
  using nrContainer::validateField;

  unsigned char ubyteValue;
  short shortValue;
  int intValue;
  unsigned uintValue;
  float floatValue;
  double doubleValue;
  nrTime timeValue;
  int enumValue;
  nrVec2f vec2fValue;
  nrVec3f vec3fValue;
  nrVec3s vec3sValue;
  nrVec4f vec4fValue;
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
  nrMatrix4fArray mfMatrix;
  nrRotationArray mfRotation;
  nrStringArray mfString;
  nrVec2fArray mfVec2f;
  nrVec3fArray mfVec3f;
  nrVec3sArray mfVec3s;
  nrVec4fArray mfVec4f;
  nrRefArray mfRef;
  int etX;

  int changes[NUM_FIELDS] = {};
  int childChanges = 0;
  int sideEffectsCleaned = 0;

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

// Everything fn writes through an nrOutput at the given indentation level.
template <typename Fn>
std::string writeText(int level, Fn&& fn) {
  char* buffer = nullptr;
  size_t size = 0;
  {
    nrOutput out(open_memstream(&buffer, &size));
    out.setLevel(level);
    fn(&out);
  }
  std::string text(buffer, size);
  free(buffer);
  return text;
}

// The descriptor line of field `index` of container c.
inline std::string fieldLine(nrContainer* c, int index, int level = 1) {
  return writeText(level, [&](nrOutput* out) { c->getType()->getFieldInfo(index)->write(out, c); });
}

}  // namespace nrtest
