#include <gtest/gtest.h>

#include "nerio3d/fields/nrMField.h"
#include "nerio3d/fields/nrSField.h"

namespace {
// A container type with one enumerated field, for the type-level enumeration calls.
class tstEnumHolder : public nrContainer {
  NR_DECLARE_CONTAINER_TYPE(tstEnumHolder)
  tstEnumHolder() : nrContainer(getClassType()) { initFieldDefaults(classType); }
  int mode;
};
}  // namespace

NR_DEFINE_TYPE(tstEnumHolder, nrContainer, "TestEnumHolder") {
  nrSFEnum::addTypeField(type, "mode", 0, 0, &tstEnumHolder::mode);
  const char* names[] = {"OFF_MODE", "ON_MODE", "ALSO_ON_MODE"};
  const int values[] = {0, 1, 1};
  type->defineEnums(0, 3, names, values);
}

TEST(nrTypeFields, DefineEnumsAndMapEnumGoThroughTheFieldDescriptor) {
  nrType* t = tstEnumHolder::getClassType();
  EXPECT_STREQ(t->mapEnum(0, 0), "OFF_MODE");
  EXPECT_STREQ(t->mapEnum(0, 1), "ON_MODE") << "the first name of a value wins";
  EXPECT_STREQ(t->mapEnum(0, 2), "(nameless)");
  EXPECT_STREQ(t->getFieldInfo(0)->mapEnum(1), "ON_MODE");
}

TEST(nrTypeFields, SharedFieldTypeNamesResolveToTheMultiValuedType) {
  nrObject::initClasses();
  EXPECT_EQ(nrType::getType("nrFloat"), nrMFFloat::getClassType());
  EXPECT_STREQ(nrSFFloat::getClassType()->getName(), "nrFloat");
  EXPECT_EQ(nrType::getType("nrUByte"), nrSFUByte::getClassType()) << "a kind with no list keeps its name";
  EXPECT_FALSE(nrField::getClassType()->isDerivedFrom(nrObject::getClassType()));
  EXPECT_EQ(nrType::getType("nrMFRef")->getParent(), nrMField::getClassType());
}
