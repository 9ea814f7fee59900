#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "nrCapture.h"
#include "nrFieldTestTypes.h"

using nrtest::field;
using nrtest::floatField;

TEST(nrField, SetNotifiesTheOwnerOnceAndListsEditInPlace) {
  tstAll* c = nrtest::held<tstAll>();
  floatField(c, tstAll::FLOAT)->set(3.0f);
  EXPECT_EQ(c->floatValue, 3.0f);
  EXPECT_EQ(c->changes[tstAll::FLOAT], 1);
  nrMFVec3f* list = field<nrMFVec3f>(c, tstAll::MFVEC3F);
  list->set(2, nrVec3f(1, 2, 3));
  EXPECT_EQ((*list)[2][1], 2.0f);
  EXPECT_EQ(static_cast<const nrMFVec3f*>(list)->get(2)[1], 2.0f) << "reads through a const field";
  list->edit()[0] = nrVec3f(9, 9, 9);
  EXPECT_EQ(c->mfVec3f[0][0], 9.0f);
  nrVec3f fill[2] = {nrVec3f(1, 1, 1), nrVec3f(2, 2, 2)};
  list->setRange(3, 2, fill);
  list->fillRange(0, 1, nrVec3f(5, 5, 5));
  EXPECT_EQ(list->getCount(), 5u);
  EXPECT_EQ(std::pair(list->get(4)[0], list->get(0)[0]), std::pair(2.0f, 5.0f));
  EXPECT_EQ(c->changes[tstAll::MFVEC3F], 3);
  nrVec3f past(7, 7, 7);
  list->get(5, past);
  EXPECT_EQ(std::tuple(past[0], list->get(~0u)[1], (*list)[5][2]), std::tuple(0.0f, 0.0f, 0.0f)) << "reads past the end";

  // Copies take a value of the same kind only, strings as their own text.
  tstAll* other = nrtest::held<tstAll>();
  field<nrSFString>(c, tstAll::STRING)->set(nrString("s"));
  field<nrSFString>(other, tstAll::STRING)->copy(c->getField(tstAll::STRING));
  field<nrSFString>(other, tstAll::STRING)->copy(c->getField(tstAll::FLOAT));
  EXPECT_STREQ(other->stringValue.getString(), "s");
  EXPECT_NE(other->stringValue.getString(), c->stringValue.getString());
  EXPECT_EQ(other->changes[tstAll::STRING], 1);
  nrtest::unref(other, c);
}

TEST(nrField, EngineOutputListsForwardChangesInsteadOfNotifying) {
  tstAll *engine = new tstAll, *a = new tstAll, *b = new tstAll;
  nrMFFloat* out = field<nrMFFloat>(engine, tstAll::MFFLOAT);
  out->setEventClass(3);
  out->connect(a->getField(tstAll::MFFLOAT));
  out->connect(b->getField(tstAll::MFFLOAT));
  out->set(1, 4.0f);
  out->append(6.0f);
  for (int i = 0; i < 64; ++i) out->append((*out)[1]);  // each growth replaces the storage read from
  out->set(~0u, 1.0f);  // refused stores send nothing on
  out->fillRange(~0u - 1, 4, 1.0f);
  EXPECT_EQ(engine->changes[tstAll::MFFLOAT], 0);
  for (tstAll* c : {a, b}) {
    ASSERT_EQ(c->mfFloat.getCount(), 67u);
    EXPECT_EQ(std::tuple(c->mfFloat[1], c->mfFloat[2], c->mfFloat[66]), std::tuple(4.0f, 6.0f, 4.0f));
    EXPECT_EQ(c->changes[tstAll::MFFLOAT], 66);
  }
  nrtest::unref(a, b, engine);
}

TEST(nrField, RoutesPullTheSourceValueOnTheNextRead) {
  tstAll *a = new tstAll, *b = new tstAll, *c = new tstAll;
  nrSFFloat *fa = floatField(a, tstAll::FLOAT), *fb = floatField(b, tstAll::FLOAT), *fc = floatField(c, tstAll::FLOAT);
  fa->set(5.0f);
  a->connect(tstAll::FLOAT, b, tstAll::FLOAT);
  a->connect(tstAll::FLOAT, b, tstAll::FLOAT);
  EXPECT_EQ(std::pair(fa->getNumOutputs(), fb->isDirty()), std::pair(1, true));
  EXPECT_EQ(b->floatValue, 0.5f) << "nothing is copied before the read";
  EXPECT_EQ(fb->get(), 5.0f);
  EXPECT_FALSE(fb->isDirty() || !b->getStaleInputMask().isZero());
  fa->set(6.0f);
  EXPECT_EQ(static_cast<const nrSFFloat*>(fb)->get(), 6.0f) << "a const field pulls too";

  // Fan-in: the last source to push staleness wins.
  c->connect(tstAll::FLOAT, b, tstAll::FLOAT);
  for (auto [first, last] : {std::pair{fa, fc}, std::pair{fc, fa}}) {
    first->set(1.0f);
    last->set(2.0f);
    EXPECT_EQ(fb->get(), 2.0f);
  }
  fa->set(7.0f);
  a->disconnect(tstAll::FLOAT, b, tstAll::FLOAT);
  EXPECT_EQ(std::pair(fa->getNumOutputs(), fb->getNumInputs()), std::pair(0, 1));
  EXPECT_EQ(fb->get(), 2.0f) << "a value pending from a source since disconnected is not read";

  // Input-only sources and output-only destinations are refused silently.
  a->getField(tstAll::INT)->setEventClass(nrField::INPUT_ONLY_EVENT);
  a->connect(tstAll::INT, b, tstAll::INT);
  b->getField(tstAll::SHORT)->setEventClass(nrField::OUTPUT_ONLY_EVENT);
  a->connect(tstAll::SHORT, b, tstAll::SHORT);
  EXPECT_EQ(b->getField(tstAll::INT)->getNumInputs() + b->getField(tstAll::SHORT)->getNumInputs(), 0);

  // A dying container takes its routes with it.
  c->unref();
  EXPECT_EQ(std::pair(fb->getNumInputs(), b->getStaleInputMask().isZero()), std::pair(0, true));
  nrtest::unref(a, b);
}

TEST(nrField, CyclesStopAtBusyFieldsAndLongChainsAtTheDepthLimit) {
  tstAll *a = new tstAll, *b = new tstAll;
  a->connect(tstAll::FLOAT, b, tstAll::FLOAT);
  b->connect(tstAll::FLOAT, a, tstAll::FLOAT);
  floatField(a, tstAll::FLOAT)->set(7.0f);
  EXPECT_EQ(floatField(b, tstAll::FLOAT)->get(), 7.0f);
  EXPECT_FALSE(a->getField(tstAll::FLOAT)->isBusy());
  nrtest::unref(a, b);

  // A chain as long as the limit delivers end to end. Set at every limit's
  // length from the far end, a chain eight times as long is stale all along:
  // pushes and the pull stop with warnings instead of running out of stack.
  const int depth = nrField::MAX_ROUTE_DEPTH;
  std::vector<tstAll*> chain(8 * depth + 1);
  for (size_t i = 0; i < chain.size(); ++i) {
    chain[i] = new tstAll;
    if (i) chain[i - 1]->connect(tstAll::FLOAT, chain[i], tstAll::FLOAT);
  }
  std::string err = nrtest::captureStderr([&] {
    for (int k = 7 * depth; k >= 0; k -= depth) floatField(chain[k], tstAll::FLOAT)->set(k + 1.0f);
    EXPECT_EQ(floatField(chain[depth], tstAll::FLOAT)->get(), 1.0f);
    floatField(chain.back(), tstAll::FLOAT)->get();
  });
  EXPECT_NE(err.find("(WARN, USAGE): Route chain too deep: change not sent on\n"), std::string::npos);
  EXPECT_NE(err.find("(WARN, USAGE): Route chain too deep: value not brought up to date\n"), std::string::npos);
  for (tstAll* c : chain) c->unref();
}

TEST(nrField, ReferencesKeepWhatTheyHoldAlive) {
  tstAll* owner = nrtest::held<tstAll>();
  nrSFRef* ref = field<nrSFRef>(owner, tstAll::REF);
  tstLeaf* leaf = new tstLeaf;
  ref->set(leaf);
  EXPECT_EQ(leaf->getParent(0), owner);
  ref->set(leaf);
  EXPECT_EQ(tstLeaf::live, 1) << "setting what it holds keeps it";
  EXPECT_EQ(std::pair(leaf->getRefCount(), leaf->getParentCount()), std::pair(1, 1));
  ref->set(nullptr);
  EXPECT_EQ(tstLeaf::live, 0);

  nrMFRef* list = field<nrMFRef>(owner, tstAll::MFREF);
  list->append(leaf = new tstLeaf);
  list->append(leaf);
  EXPECT_EQ(std::pair(leaf->getRefCount(), leaf->getParentCount()), std::pair(2, 2));
  EXPECT_TRUE(list->remove(leaf));
  EXPECT_EQ(std::pair(leaf->getParentCount(), leaf->getParent(1)), (std::pair<int, nrContainer*>(1, nullptr)));
  tstLeaf* other = new tstLeaf;
  list->set(0u, other);
  EXPECT_EQ(tstLeaf::live, 1);
  list->insert(0, leaf = new tstLeaf);
  list->fillRange(2, 2, other);
  EXPECT_EQ(other->getRefCount(), 3);
  nrContainer* range[2] = {leaf, leaf};
  list->setRange(2, 2, range);
  EXPECT_EQ(other->getRefCount(), 1);
  EXPECT_EQ(list->replace(other, leaf), 1);
  EXPECT_EQ(std::pair(tstLeaf::live, leaf->getParentCount()), std::pair(1, 4));
  nrContainer* read[4] = {};
  list->getRange(2, 4, read);
  EXPECT_EQ(read[1], leaf);
  EXPECT_EQ(read[2], nullptr) << "a range past the end is cut at the count";
  nrContainer* first = nullptr;
  list->get(0, first);
  EXPECT_EQ(first, list->edit()[1]);
  list->set(nrRefArray());
  EXPECT_EQ(tstLeaf::live, 0);
  // Stores past the count null the slots skipped over, which still hold the
  // elements released above.
  list->set(2u, leaf = new tstLeaf);
  nrContainer* one[1] = {leaf};
  list->setRange(4, 1, one);
  EXPECT_EQ(std::pair(list->get(1), list->get(3)), (std::pair<nrContainer*, nrContainer*>()));

  // Stores that find no storage, or would leave an element outside the list,
  // change nothing; a range from the list's own storage survives its growth.
  const int refs = leaf->getRefCount();
  list->set(~0u, leaf);
  list->insert(6, leaf);
  list->fillRange(~0u - 1, 4, leaf);
  list->setRange(0, 2, nullptr);
  list->copy(nullptr);
  EXPECT_EQ(list->getCount(), 5u);
  list->setRange(12, 5, list->edit());
  EXPECT_EQ(std::tuple(list->get(14), list->get(11), (*list)[~0u]), (std::tuple<nrContainer*, nrContainer*, nrContainer*>(leaf, nullptr, nullptr)));
  EXPECT_EQ(leaf->getRefCount(), refs + 2);

  // Elements taken from the list of one that only this list holds, and that
  // the change releases, arrive whole.
  for (bool whole : {true, false}) {
    list->set(nrRefArray());
    tstLeaf* middle = new tstLeaf;
    list->append(middle);
    nrMFRef* below = field<nrMFRef>(middle, tstLeaf::CHILDREN);
    below->append(new tstLeaf);
    below->append(new tstLeaf);
    if (whole)
      list->set(below->getArray());
    else
      list->setRange(0, 2, below->edit());
    EXPECT_EQ(std::tuple(tstLeaf::live, list->getCount(), list->get(1)->getParent(0)), std::tuple(2, 2u, owner));
  }

  list->append(new tstLeaf);
  ref->set(new tstLeaf);
  owner->unref();
  EXPECT_EQ(tstLeaf::live, 0) << "a dying owner releases what it holds";
}

TEST(nrField, ReferencesRefuseContainersOfTheWrongType) {
  tstAll* owner = nrtest::held<tstAll>();
  tstOther* bad = nrtest::held<tstOther>();
  tstLeaf* good = new tstLeaf;
  nrSFRef* ref = field<nrSFRef>(owner, tstAll::REF);
  nrMFRef* list = field<nrMFRef>(owner, tstAll::MFREF);
  list->append(good);

  EXPECT_EQ(nrtest::captureStderr([&] { ref->set(bad); }),
            "nrSFRef::set(): Bad type - TestOther not derived from TestLeaf.  parent (null) type TestAll\n");
  owner->setName("root");
  const std::string tail = ": Bad type - TestOther not derived from TestLeaf.  parent root type TestAll\n";
  nrRefArray mixed;
  for (nrContainer* c : std::initializer_list<nrContainer*>{good, bad, bad}) mixed.append(c);
  nrContainer* range[1] = {bad};
  const std::pair<std::function<void()>, std::string> table[] = {
      {[&] { list->set(0u, bad); }, "nrMFRef::set(int, nrContainer*)" + tail},
      {[&] { list->set(mixed); }, "nrMFRef::set(const nrRefArray&) Bad type\n" + tail},
      {[&] { list->setRange(0, 1, range); }, "nrMFRef::setRange(int, int, nrContainer*[])" + tail},
      {[&] { list->fillRange(0, 1, bad); }, "nrMFRef::fillRange(int, int, nrContainer*)\n" + tail},
      {[&] { list->append(bad); }, "nrMFRef::append(int, nrContainer*)" + tail},
      {[&] { list->insert(0, bad); }, "nrMFRef::insert(int, nrContainer*)" + tail},
      {[&] { EXPECT_EQ(list->replace(good, bad), -1); }, "nrMFRef::replace(nrContainer*, nrContainer*)" + tail},
  };
  for (const auto& [call, message] : table) EXPECT_EQ(nrtest::captureStderr(call), message);

  EXPECT_EQ(ref->get(), nullptr);
  const nrMFRef* readOnly = list;
  EXPECT_EQ(std::pair(readOnly->getCount(), readOnly->get(0)), std::pair(1u, static_cast<nrContainer*>(good)));
  EXPECT_EQ(std::pair(bad->getRefCount(), bad->getParentCount()), std::pair(1, 0));
  EXPECT_EQ(owner->changes[tstAll::MFREF], 1);
  nrtest::unref(bad, owner);
}
