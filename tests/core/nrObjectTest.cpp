#include "nerio3d/core/nrObject.h"

#include <gtest/gtest.h>

#include "nerio3d/arrays/nrData.h"
#include "nerio3d/fields/nrMField.h"
#include "nerio3d/fields/nrSField.h"
#include "nrHeld.h"

namespace {

int destroyed = 0;

// A registering class of the tests' own, built through the library's macros.
class TestThing : public nrObject {
  NR_DECLARE_TYPE(TestThing)
  TestThing() : nrObject(getClassType()) {}
  ~TestThing() override { ++destroyed; }
};
NR_DEFINE_TYPE(TestThing, nrObject, "TestThing") {}

class TestSubThing : public TestThing {
  NR_DECLARE_TYPE(TestSubThing)
  TestSubThing() { type = getClassType(); }
};
NR_DEFINE_TYPE(TestSubThing, TestThing, "TestSubThing") {}

// A container type with one enumerated field, for the type-level enumeration calls.
class tstEnumHolder : public nrContainer {
  NR_DECLARE_CONTAINER_TYPE(tstEnumHolder)
  tstEnumHolder() : nrContainer(getClassType()) { initFieldDefaults(classType); }
  int mode;
};

}  // namespace

TEST(nrObject, ReferenceCounting) {
  destroyed = 0;
  // Nobody ever referenced it: unref disposes of it at once.
  EXPECT_TRUE((new TestThing)->unref());
  EXPECT_EQ(destroyed, 1);

  TestThing *t = new TestThing, *kept = new TestThing;
  t->ref();
  t->ref();
  EXPECT_FALSE(t->unref());
  EXPECT_EQ(t->getRefCount(), 1);
  EXPECT_TRUE(t->unref());
  kept->ref();
  EXPECT_TRUE(kept->unrefNoDelete());
  EXPECT_EQ(std::pair(destroyed, kept->getRefCount()), std::pair(2, 0));
  kept->unref();
  EXPECT_EQ(destroyed, 3);
}

TEST(nrType, RegistrationParentFirstAndLookup) {
  EXPECT_EQ(TestSubThing::classType, nullptr);
  TestSubThing* s = new TestSubThing;
  nrType* sub = TestSubThing::classType;
  ASSERT_NE(sub, nullptr);
  EXPECT_EQ(sub->getParent(), TestThing::classType);
  EXPECT_EQ(nrType::getType("TestSubThing"), sub);
  EXPECT_TRUE(s->isOfType(TestThing::classType) && s->isOfType(sub));
  EXPECT_FALSE(TestThing::classType->isDerivedFrom(sub));
  // Subtypes are recorded in construction order.
  EXPECT_EQ(TestThing::classType->getSubtype(TestThing::classType->getNumSubtypes() - 1), sub);
  EXPECT_EQ(sub->getSubtype(-1), nullptr);
  // Every type takes a column of the dispatch table; only dispatchers a row.
  EXPECT_GE(sub->getObjectIndex(), 0);
  EXPECT_EQ(sub->getActionIndex(), -1);
  s->unref();
}

TEST(nrType, EnumerationCoversTheDictionaryInBucketOrder) {
  nrObject::initClasses();
  int n = nrType::getNumTypes();
  ASSERT_GT(n, 0);
  int lastBucket = -1;
  for (int i = 0; i < n; ++i) {
    nrType* t = nrType::getType(i);
    ASSERT_NE(t, nullptr);
    int bucket = static_cast<int>(nrString::hash(t->getName()) % 251);
    EXPECT_GE(bucket, lastBucket) << t->getName();
    lastBucket = bucket;
    EXPECT_EQ(nrType::getType(t->getName()), t);
  }
  EXPECT_EQ(nrType::getType(n), nullptr);
  EXPECT_EQ(nrType::getType(-1), nullptr);
}

TEST(nrType, SameNameReplacesTheDictionaryEntryButBothRecordsStay) {
  nrType* object = nrObject::getClassType();
  int before = nrType::getNumTypes();
  nrType *first = new nrType(object, "TestShared"), *second = new nrType(object, "TestShared");
  EXPECT_EQ(nrType::getNumTypes(), before + 1);
  EXPECT_EQ(nrType::getType("TestShared"), second);
  EXPECT_NE(first->getObjectIndex(), second->getObjectIndex());
}

TEST(nrType, EngineListsAppendToTheParents) {
  nrType* base = new nrType(nrObject::getClassType(), "TestEngineBase");
  nrType* derived = new nrType(base, "TestEngineDerived");
  short in[] = {2, 3}, out[] = {4}, in2[] = {7}, out2[] = {8, 9};
  base->setEngineIO(2, in, 1, out);
  derived->setEngineIO(1, in2, 2, out2);
  for (auto [list, digits] : {std::pair{&derived->getEngineInputs(), 237}, std::pair{&derived->getEngineOutputs(), 489}}) {
    ASSERT_EQ(list->getCount(), 3u);
    EXPECT_EQ((*list)[0] * 100 + (*list)[1] * 10 + (*list)[2], digits);
  }
}

TEST(nrData, PayloadFollowsTheHeaderAndClonesByteForByte) {
  nrData* block = new (10) nrData;
  EXPECT_STREQ(block->getType()->getName(), "Data");
  EXPECT_EQ(block->getSize(), 10u);
  unsigned char* bytes = static_cast<unsigned char*>(block->getPayload());
  EXPECT_GT(static_cast<void*>(bytes), static_cast<void*>(block));
  EXPECT_EQ(bytes[9], 0);
  bytes[9] = 27;
  nrData* copy = block->clone();
  EXPECT_EQ(copy->getSize(), 10u);
  EXPECT_NE(copy->getPayload(), block->getPayload());
  EXPECT_EQ(static_cast<unsigned char*>(copy->getPayload())[9], 27);
  nrtest::unref(copy, block);
}

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
  // Indices past the fields and null lists change nothing.
  for (int index : {-1, 1}) EXPECT_EQ(t->getFieldInfo(index), nullptr);
  EXPECT_STREQ(t->mapEnum(5, 0), "(nameless)");
  t->defineEnums(5, 1, nullptr, nullptr);
  t->defineEnums(0, 1, nullptr, nullptr);
  t->setFieldInfo(-1, nullptr);
  t->setEngineIO(2, nullptr, 1, nullptr);
  EXPECT_EQ(t->getNumFields(), 1);
  EXPECT_EQ(t->getEngineInputs().getCount(), 0u);
  EXPECT_STREQ(t->mapEnum(0, 7), "(nameless)");
}

TEST(nrTypeFields, SharedFieldTypeNamesResolveToTheMultiValuedType) {
  nrObject::initClasses();
  EXPECT_EQ(nrType::getType("nrFloat"), nrMFFloat::getClassType());
  EXPECT_STREQ(nrSFFloat::getClassType()->getName(), "nrFloat");
  EXPECT_EQ(nrType::getType("nrUByte"), nrSFUByte::getClassType()) << "a kind with no list keeps its name";
  EXPECT_FALSE(nrField::getClassType()->isDerivedFrom(nrObject::getClassType()));
  EXPECT_EQ(nrType::getType("nrMFRef")->getParent(), nrMField::getClassType());
}
