#include <gtest/gtest.h>

#include "nerio3d/arrays/nrData.h"
#include "nerio3d/fields/nrCloneTable.h"
#include "nrCapture.h"
#include "nrFieldTestTypes.h"

using nrtest::field;
using nrtest::floatField;

TEST(nrContainer, SideEffectsNotifyParentsOncePerPendingChange) {
  tstAll* parent = nrtest::held<tstAll>();
  nrMFRef* children = field<nrMFRef>(parent, tstAll::MFREF);
  tstLeaf* leaf = new tstLeaf;
  children->append(leaf);
  children->append(leaf);
  leaf->propagateSideEffect(2);
  EXPECT_EQ(parent->childChanges, 2) << "once per parent entry";
  leaf->propagateSideEffect(2);
  EXPECT_EQ(parent->childChanges, 2);
  EXPECT_TRUE(leaf->getSideEffectMask().isBitSet(2));
  leaf->validateField(2);
  EXPECT_TRUE(leaf->getSideEffectMask().isZero());
  leaf->propagateSideEffect(2);
  EXPECT_EQ(parent->childChanges, 4);
  // Setting the field itself clears its pending side effect.
  floatField(leaf, 2)->set(1.0f);
  EXPECT_TRUE(leaf->getSideEffectMask().isZero());

  tstAll* c = nrtest::held<tstAll>();
  c->propagateSideEffect(tstAll::FLOAT);
  c->validateField(tstAll::FLOAT);
  c->validateField(tstAll::FLOAT);
  EXPECT_EQ(c->sideEffectsCleaned, 1);
  nrtest::unref(c, parent);
}

TEST(nrContainer, StaleBitsUseThe32BitShiftWhileReadsUseTheFieldsOwnBit) {
  tstWide *w = nrtest::held<tstWide>(), *src = nrtest::held<tstWide>();
  floatField(src, 0)->set(8.0f);
  src->connect(0, w, 35);
  EXPECT_EQ(w->getStaleInputMask().getBits(), 0x8ull);
  src->connect(0, w, 31);
  EXPECT_EQ(w->getStaleInputMask().getBits(), 0xFFFFFFFF80000008ull);
  EXPECT_EQ(floatField(w, 31)->get(), 8.0f);
  EXPECT_EQ(w->getStaleInputMask().getBits(), 0x8ull) << "clearing bit 31 clears the whole high word";
  EXPECT_EQ(floatField(w, 35)->get(), 0.0f) << "bit 35 is never looked at";
  src->disconnect(0, w, 35);
  EXPECT_EQ(w->getStaleInputMask().getBits(), 0x0ull);
  nrtest::unref(src, w);
}

TEST(nrContainer, ParentsAreASingleLinkOrAList) {
  tstAll *a = nrtest::held<tstAll>(), *b = nrtest::held<tstAll>();
  tstLeaf* leaf = nrtest::held<tstLeaf>();
  nrMFRef* la = field<nrMFRef>(a, tstAll::MFREF);
  la->append(leaf);
  la->append(leaf);
  field<nrSFRef>(b, tstAll::REF)->set(leaf);
  EXPECT_EQ(leaf->getParent(2), b);
  EXPECT_EQ(leaf->getParent(3), nullptr);
  EXPECT_EQ(std::pair(la->getInput(0), la->getOutput(-1)), (std::pair<nrField*, nrField*>()));
  a->copy(a);
  EXPECT_EQ(leaf->getParentCount(), 3) << "copying into itself references nothing again";

  nrOutput nowhere(static_cast<const char*>(nullptr));
  nowhere.write(a);
  a->write(nullptr);
  la->removeIndex(0);
  la->fastRemoveIndex(0);
  EXPECT_EQ(leaf->getParentCount(), 1);
  EXPECT_EQ(leaf->getParent(0), b);
  b->unref();
  EXPECT_EQ(leaf->getParentCount(), 0);
  tstAll* c = nrtest::held<tstAll>();
  field<nrSFRef>(a, tstAll::REF)->set(leaf);
  a->copy(c);
  EXPECT_EQ(leaf->getParentCount(), 0) << "a copy releases what it replaces";
  EXPECT_EQ(a->mfRef.getSize(), 0u) << "a copied list has room for the source's elements only";
  floatField(leaf, tstLeaf::VALUE)->set(5.0f);
  field<nrSFRef>(c, tstAll::REF)->set(leaf);
  leaf->copy(c);
  EXPECT_EQ(floatField(leaf, tstLeaf::VALUE)->get(), 5.0f) << "an unrelated type shares no field to copy";
  EXPECT_EQ(c->childChanges, 1) << "the containers referring to one copied into learn that it changed";
  tstLeaf *above = nrtest::held<tstLeaf>(), *source = nrtest::held<tstLeaf>();
  field<nrMFRef>(above, tstLeaf::CHILDREN)->append(leaf);
  field<nrMFRef>(source, tstLeaf::CHILDREN)->append(above);
  EXPECT_EQ(nrtest::captureStderr([&] { leaf->copy(source); }),
            "(WARN, USAGE): Field children of TestLeaf cannot hold this TestLeaf - a container cannot be placed under "
            "itself\n");
  EXPECT_EQ(leaf->children.getCount(), 0u) << "a copy that would close a cycle is refused whole";
  nrtest::unref(source, above, leaf, a, c);
}

TEST(nrContainer, ClonesCopyValuesAndPullPendingInputsFirst) {
  tstAll *src = nrtest::held<tstAll>(), *c = nrtest::held<tstAll>();
  floatField(c, tstAll::FLOAT)->set(2.0f);
  field<nrMFInt>(c, tstAll::MFINT)->append(4);
  field<nrSFString>(c, tstAll::STRING)->set(nrString("s"));
  src->connect(tstAll::DOUBLE, c, tstAll::DOUBLE);
  field<nrSFDouble>(src, tstAll::DOUBLE)->set(6.0);
  tstLeaf* shared = new tstLeaf;
  field<nrSFRef>(c, tstAll::REF)->set(shared);
  nrData* data = nrData::create(8);
  c->setUserData(data);
  c->setUserData(data);
  EXPECT_EQ(data->getRefCount(), 1);
  c->setName("first");
  c->setName(c->getName());

  tstAll* copy = static_cast<tstAll*>(c->clone(nrContainer::COPY_CLONE));
  copy->ref();
  EXPECT_STREQ(copy->getName(), "first");
  EXPECT_EQ(std::pair(copy->getUserData(), data->getRefCount()), std::pair(data, 2));
  EXPECT_EQ(std::pair(copy->floatValue, copy->doubleValue), std::pair(2.0f, 6.0));
  EXPECT_EQ(copy->mfInt.getCount(), 1u);
  EXPECT_STREQ(copy->stringValue.getString(), "s");
  EXPECT_NE(copy->stringValue.getString(), c->stringValue.getString());
  EXPECT_EQ(copy->refValue, shared) << "a shallow clone shares what it refers to";
  EXPECT_EQ(shared->getParentCount(), 2);
  EXPECT_EQ(copy->getField(tstAll::DOUBLE)->getNumInputs(), 0) << "routes to outside containers stay behind";
  nrtest::unref(copy, c, src);
  EXPECT_EQ(tstLeaf::live, 0);
}

TEST(nrContainer, DeepClonesKeepSharedContainersSharedAndRoutesAmongThem) {
  tstAll* root = nrtest::held<tstAll>();
  tstLeaf *shared = new tstLeaf, *single = new tstLeaf;
  nrMFRef* list = field<nrMFRef>(root, tstAll::MFREF);
  for (tstLeaf* leaf : {shared, single, shared}) list->append(leaf);
  field<nrSFRef>(root, tstAll::REF)->set(shared);
  floatField(single, tstLeaf::VALUE)->set(3.0f);
  single->connect(tstLeaf::OUT_VALUE, shared, tstLeaf::IN_VALUE);
  shared->connect(tstLeaf::OUT_VALUE, shared, tstLeaf::VALUE);
  root->connect(tstAll::FLOAT, single, tstLeaf::IN_VALUE);

  // Modes by number too; without a table the clone keeps one of its own.
  tstAll* copy = static_cast<tstAll*>(root->clone(2, nullptr));
  copy->ref();
  EXPECT_EQ(tstLeaf::live, 4);
  nrContainer *sharedCopy = copy->mfRef[0], *singleCopy = copy->mfRef[1];
  EXPECT_NE(sharedCopy, shared);
  EXPECT_EQ(std::pair(copy->mfRef[2], copy->refValue), std::pair(sharedCopy, sharedCopy));
  EXPECT_EQ(sharedCopy->getRefCount(), 3);
  EXPECT_EQ(shared->getParentCount(), 3) << "the source graph is left as it was";
  EXPECT_EQ(static_cast<tstLeaf*>(singleCopy)->value, 3.0f);

  for (auto [from, to] : {std::pair{singleCopy, tstLeaf::IN_VALUE}, std::pair{sharedCopy, tstLeaf::VALUE}}) {
    nrField* out = from->getField(tstLeaf::OUT_VALUE);
    ASSERT_EQ(out->getNumOutputs(), 1);
    EXPECT_EQ(out->getOutput(0), sharedCopy->getField(to));
  }
  EXPECT_EQ(single->getField(tstLeaf::OUT_VALUE)->getNumOutputs(), 1);
  floatField(copy, tstAll::FLOAT)->set(9.0f);
  EXPECT_EQ(std::pair(floatField(singleCopy, tstLeaf::IN_VALUE)->get(), floatField(single, tstLeaf::IN_VALUE)->get()),
            std::pair(9.0f, 0.5f));

  copy->unref();
  EXPECT_EQ(tstLeaf::live, 2);
  root->unref();
  EXPECT_EQ(tstLeaf::live, 0);

  // A plain container is concrete too.
  nrContainer plain;
  nrContainer* plainCopy = plain.clone(nrContainer::DEEP_CLONE);
  ASSERT_NE(plainCopy, nullptr);
  EXPECT_EQ(plainCopy->getType(), nrContainer::getClassType());
  delete plainCopy;
  // A table records nothing for a null source.
  nrCloneTable table;
  table.addClonedInstance(nullptr, &plain);
  EXPECT_EQ(table.getClonedInstance(nullptr), nullptr);
}

TEST(nrContainer, UnconnectedSingleValuedFieldsCanBeDroppedAndRecreated) {
  tstAll *a = nrtest::held<tstAll>(), *b = nrtest::held<tstAll>();
  floatField(a, tstAll::FLOAT)->set(4.0f);
  a->getField(tstAll::INT);
  a->freeUnconnectedFields();
  EXPECT_EQ(a->floatValue, 4.0f);
  EXPECT_EQ(floatField(a, tstAll::FLOAT)->get(), 4.0f) << "the value outlives its field object";

  a->connect(tstAll::SHORT, b, tstAll::SHORT);
  nrField *route = a->getField(tstAll::SHORT), *list = a->getField(tstAll::MFINT);
  a->freeUnconnectedFields();
  EXPECT_EQ(std::pair(a->getField(tstAll::SHORT), a->getField(tstAll::MFINT)), std::pair(route, list));

  // Fields that keep their own value are kept as well.
  tstWide* w = nrtest::held<tstWide>();
  floatField(w, 5)->set(1.0f);
  w->freeUnconnectedFields();
  EXPECT_EQ(floatField(w, 5)->get(), 1.0f);
  nrtest::unref(w, b, a);
}

TEST(nrContainer, DirtyFieldTrackingBringsRecordedFieldsUpToDate) {
  nrField::enableDirtyFieldTracking(true);
  tstAll *a = nrtest::held<tstAll>(), *b = nrtest::held<tstAll>();
  auto settled = [&] { return (b->getStaleInputMask() | b->getSideEffectMask()).isZero(); };
  a->connect(tstAll::FLOAT, b, tstAll::FLOAT);
  floatField(a, tstAll::FLOAT)->set(6.0f);
  b->propagateSideEffect(tstAll::INT);
  EXPECT_TRUE(b->getField(tstAll::FLOAT)->isDirty());
  nrField::cleanFields();
  EXPECT_FALSE(b->getField(tstAll::FLOAT)->isDirty());
  EXPECT_EQ(std::pair(b->floatValue, b->sideEffectsCleaned), std::pair(6.0f, 1));
  EXPECT_TRUE(settled());

  // A record of a field that goes away is dropped with it.
  floatField(a, tstAll::FLOAT)->set(7.0f);
  b->unref();
  nrField::cleanFields();
  nrField::enableDirtyFieldTracking(false);

  // Without tracking, internalCleanFields settles every pending bit it is given.
  b = nrtest::held<tstAll>();
  a->connect(tstAll::FLOAT, b, tstAll::FLOAT);
  a->connect(tstAll::INT, b, tstAll::INT);
  b->propagateSideEffect(tstAll::MFREF);
  b->internalCleanFields((b->getStaleInputMask() | b->getSideEffectMask()).getBits());
  EXPECT_TRUE(settled());
  EXPECT_EQ(b->intValue, 3);
  nrtest::unref(b, a);
}
