#include "nrFieldTestTypes.h"

int tstLeaf::live = 0;

NR_DEFINE_TYPE(tstLeaf, nrContainer, "TestLeaf") {
  nrSFFloat::addTypeField(type, "value", VALUE, 0.0f, &tstLeaf::value);
  nrSFFloat::addTypeField(type, "inValue", IN_VALUE, 0.0f, &tstLeaf::inValue);
  nrSFFloat::addTypeField(type, "outValue", OUT_VALUE, 0.0f, &tstLeaf::outValue);
  nrMFRef::addTypeField(type, "children", CHILDREN, tstLeaf::getClassType(), &tstLeaf::children);
}

NR_DEFINE_TYPE(tstOther, nrContainer, "TestOther") {}

NR_DEFINE_TYPE(tstAll, nrContainer, "TestAll") {
  nrSFUByte::addTypeField(type, "ubyte", UBYTE, 7, &tstAll::ubyteValue);
  nrSFShort::addTypeField(type, "short", SHORT, -2, &tstAll::shortValue);
  nrSFInt::addTypeField(type, "int", INT, 3, &tstAll::intValue);
  nrSFUInt::addTypeField(type, "uint", UINT, 0, &tstAll::uintValue);
  nrSFFloat::addTypeField(type, "float", FLOAT, 0.5f, &tstAll::floatValue);
  nrSFDouble::addTypeField(type, "double", DOUBLE, 0.0, &tstAll::doubleValue);
  nrSFTime::addTypeField(type, "time", TIME, 1.0, &tstAll::timeValue);
  nrSFEnum::addTypeField(type, "enum", ENUM, 0, &tstAll::enumValue);
  nrSFVec3f::addTypeField(type, "vec3f", VEC3F, nrVec3f(2, 2, 2), &tstAll::vec3fValue);
  nrSFVec4ub::addTypeField(type, "vec4ub", VEC4UB, nrVec4ub(255, 255, 255, 255), &tstAll::vec4ubValue);
  nrSFBitMask::addTypeField(type, "bitMask", BITMASK, nrBitMask(~0u, ~0u), &tstAll::bitMaskValue);
  nrSFName::addTypeField(type, "name", NAME, nrName("none"), &tstAll::nameValue);
  nrSFMatrix4f::addTypeField(type, "matrix", MATRIX,
                             nrMatrix4f(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1), &tstAll::matrixValue);
  nrSFRotation::addTypeField(type, "rotation", ROTATION, nrRotation(0, 0, 1, 0), &tstAll::rotationValue);
  nrSFString::addTypeField(type, "string", STRING, nrString(), &tstAll::stringValue);
  nrSFRef::addTypeField(type, "ref", REF, tstLeaf::getClassType(), &tstAll::refValue);
  nrMFByte::addTypeField(type, "mfByte", MFBYTE, &tstAll::mfByte);
  nrMFInt::addTypeField(type, "mfInt", MFINT, &tstAll::mfInt);
  nrMFFloat::addTypeField(type, "mfFloat", MFFLOAT, &tstAll::mfFloat);
  nrMFVec3f::addTypeField(type, "mfVec3f", MFVEC3F, &tstAll::mfVec3f);
  nrMFRef::addTypeField(type, "mfRef", MFREF, tstLeaf::getClassType(), &tstAll::mfRef);
  nrSFInt::addTypeField(type, "et_x", ET_X, 0, &tstAll::etX);

  type->getFieldInfo(FLOAT)->addAlias("weight");
  const char* names[] = {"FIRST_TEST", "SECOND_TEST"};
  const int values[] = {0, 1};
  type->defineEnums(ENUM, 2, names, values);
}

NR_DEFINE_TYPE(tstWide, nrContainer, "TestWide") {
  for (short i = 0; i < numFields; ++i) {
    char name[8];
    snprintf(name, sizeof name, "f%d", i);
    nrSFFloat::addTypeField(type, name, i, 0.0f, nullptr);
  }
}
