#include "nerio3d/core/nrObject.h"

#include <gtest/gtest.h>

#include "nerio3d/arrays/nrData.h"

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

}  // namespace

TEST(nrObject, ReferenceCounting) {
  destroyed = 0;
  // Nobody ever referenced it: unref disposes of it at once.
  EXPECT_TRUE((new TestThing)->unref());
  EXPECT_EQ(destroyed, 1);

  TestThing* t = new TestThing;
  t->ref();
  t->ref();
  EXPECT_FALSE(t->unref());
  EXPECT_EQ(t->getRefCount(), 1);
  EXPECT_TRUE(t->unref());
  EXPECT_EQ(destroyed, 2);

  TestThing* kept = new TestThing;
  kept->ref();
  EXPECT_TRUE(kept->unrefNoDelete());
  EXPECT_EQ(destroyed, 2);
  EXPECT_EQ(kept->getRefCount(), 0);
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
  EXPECT_TRUE(s->isOfType(TestThing::classType));
  EXPECT_TRUE(s->isOfType(sub));
  EXPECT_FALSE(TestThing::classType->isDerivedFrom(sub));

  // Subtypes are recorded in construction order.
  nrType* parent = TestThing::classType;
  ASSERT_GE(parent->getNumSubtypes(), 1);
  EXPECT_EQ(parent->getSubtype(parent->getNumSubtypes() - 1), sub);

  // Every type takes a column of the dispatch table; only dispatchers a row.
  EXPECT_GE(sub->getObjectIndex(), 0);
  EXPECT_EQ(sub->getActionIndex(), -1);
  s->unref();
}

TEST(nrType, EnumerationCoversTheDictionaryInBucketOrder) {
  nrObject::initClasses();
  int n = nrType::getNumTypes();
  ASSERT_GT(n, 0);
  int buckets = 251, lastBucket = -1;
  for (int i = 0; i < n; ++i) {
    nrType* t = nrType::getType(i);
    ASSERT_NE(t, nullptr);
    int bucket = static_cast<int>(nrString::hash(t->getName()) % buckets);
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
  nrType* first = new nrType(object, "TestShared");
  nrType* second = new nrType(object, "TestShared");
  EXPECT_EQ(nrType::getNumTypes(), before + 1);
  EXPECT_EQ(nrType::getType("TestShared"), second);
  EXPECT_NE(first->getObjectIndex(), second->getObjectIndex());
}

TEST(nrType, EngineListsAppendToTheParents) {
  nrType* base = new nrType(nrObject::getClassType(), "TestEngineBase");
  short in[] = {2, 3}, out[] = {4};
  base->setEngineIO(2, in, 1, out);
  nrType* derived = new nrType(base, "TestEngineDerived");
  short in2[] = {7}, out2[] = {8, 9};
  derived->setEngineIO(1, in2, 2, out2);
  const nrShortArray& inputs = derived->getEngineInputs();
  const nrShortArray& outputs = derived->getEngineOutputs();
  ASSERT_EQ(inputs.getCount(), 3u);
  EXPECT_EQ(inputs[0] * 100 + inputs[1] * 10 + inputs[2], 237);
  ASSERT_EQ(outputs.getCount(), 3u);
  EXPECT_EQ(outputs[0] * 100 + outputs[1] * 10 + outputs[2], 489);
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
  copy->unref();
  block->unref();
}
