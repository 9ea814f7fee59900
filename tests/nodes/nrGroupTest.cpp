#include <gtest/gtest.h>

#include "nerio3d/fields/nrSField.h"
#include "nrNodeTestTypes.h"
#include "nrHeld.h"
#include "nrOutputCapture.h"

namespace {

nrSphereBound sphereOf(nrNode* n) {
  nrSphereBound s;
  n->getSphereBound(s);
  return s;
}

void expectSphere(const nrSphereBound& s, float x, float y, float z, float r) {
  const float got[] = {s.center[0], s.center[1], s.center[2], s.radius}, want[] = {x, y, z, r};
  for (int i = 0; i < 4; ++i) EXPECT_NEAR(got[i], want[i], 1e-5f) << "centre x, y, z, radius: " << i;
}

}  // namespace

TEST(nrNode, StartsEmptyAndDynamicWithItsFieldsByName) {
  nrNode* n = nrtest::held<nrNode>();
  EXPECT_TRUE(sphereOf(n).isEmpty());
  EXPECT_EQ(n->getBoundMode(), nrNode::DYNAMIC);
  EXPECT_EQ(n->getField("sphereBound")->getType(), nrSFSphereBound::getClassType());
  EXPECT_STREQ(n->getType()->mapEnum(nrNode::BOUND_MODE_FIELD, nrNode::STATIC), "STATIC");
  EXPECT_TRUE(n->getField(0)->isDefault());
  n->setSphereBound(nrSphereBound(nrVec3f(1, 2, 3), 4));
  EXPECT_EQ(nrtest::writeToString([&](nrOutput* out) { n->getField(0)->write(out); }), "1 2 3 4");
  n->unref();
}

TEST(nrGroup, ChangesBelowMarkEveryDynamicLevelStaleOnceAndComputeOnRead) {
  tstGroup* top = nrtest::held<tstGroup>();
  tstGroup* mid = new tstGroup;
  tstGroup* low = new tstGroup;
  tstLeaf* leaf = new tstLeaf(nrSphereBound(nrVec3f(2, 0, 0), 1));
  top->addChild(mid);
  mid->addChild(low);
  low->addChild(leaf);
  low->addChild(new tstLeaf(nrSphereBound(nrVec3f(-2, 0, 0), 1)));
  expectSphere(sphereOf(top), 0, 0, 0, 3);
  tstGroup* levels[] = {top, mid, low};
  for (tstGroup* g : levels) {
    EXPECT_EQ(g->boundsComputed, 1);
    g->childNotices = 0;
  }

  leaf->setSphereBound(nrSphereBound(nrVec3f(4, 0, 0), 1));
  leaf->setSphereBound(nrSphereBound(nrVec3f(6, 0, 0), 1));
  EXPECT_EQ(low->childNotices, 2);
  EXPECT_EQ(mid->childNotices, 1);
  EXPECT_EQ(top->childNotices, 1);
  for (tstGroup* g : levels) {
    EXPECT_TRUE(g->isSphereStale());
    EXPECT_EQ(g->boundsComputed, 1);
  }

  expectSphere(sphereOf(top), 2, 0, 0, 5);
  sphereOf(top);
  for (tstGroup* g : levels) {
    EXPECT_FALSE(g->isSphereStale());
    EXPECT_EQ(g->boundsComputed, 2);
  }
  top->unref();
}

TEST(nrGroup, StaticGroupKeepsItsSphereAndStopsTheNotices) {
  tstGroup* top = nrtest::held<tstGroup>();
  tstGroup* fixed = new tstGroup;
  fixed->setBoundMode(nrNode::STATIC);
  fixed->setSphereBound(nrSphereBound(nrVec3f(0, 1, 0), 0.5f));
  top->addChild(fixed);
  sphereOf(top);
  top->childNotices = 0;

  tstLeaf* leaf = new tstLeaf(nrSphereBound(nrVec3f(9, 9, 9), 1));
  fixed->addChild(leaf);
  leaf->setSphereBound(nrSphereBound(nrVec3f(-9, 0, 0), 2));
  expectSphere(sphereOf(fixed), 0, 1, 0, 0.5f);
  EXPECT_EQ(fixed->boundsComputed, 0);
  EXPECT_EQ(top->childNotices, 0);
  top->unref();
}

TEST(nrGroup, EmptyAndNullChildrenGiveWhatAroundGivesForThem) {
  nrSphereBound emptyAround;
  emptyAround.around(static_cast<const nrSphereBound* const*>(nullptr), 0);

  tstGroup* g = nrtest::held<tstGroup>();
  nrSphereBound s = sphereOf(g);
  EXPECT_EQ(s.radius, emptyAround.radius);

  g->addChild(new tstLeaf);
  g->addChild(new tstLeaf);
  nrSphereBound a, b;
  const nrSphereBound* both[] = {&a, &b};
  nrSphereBound twoEmpty;
  twoEmpty.around(both, 2);
  s = sphereOf(g);
  expectSphere(s, twoEmpty.center[0], twoEmpty.center[1], twoEmpty.center[2], twoEmpty.radius);

  g->setChildCount(4);
  EXPECT_EQ(g->getChild(3), nullptr);
  g->setChild(3, new tstLeaf(nrSphereBound(nrVec3f(1, 2, 3), 1)));
  expectSphere(sphereOf(g), 1, 2, 3, 1);
  g->unref();
}

TEST(nrGroup, ChildrenAreOwnedByTheGroupsThatHoldThem) {
  int live = tstLeaf::live;
  tstGroup* a = nrtest::held<tstGroup>();
  tstGroup* b = nrtest::held<tstGroup>();
  tstLeaf* shared = new tstLeaf;
  tstLeaf* only = new tstLeaf;
  a->addChild(shared);
  a->addChild(only);
  b->addChild(shared);
  EXPECT_EQ(shared->getParentCount(), 2);

  EXPECT_TRUE(a->removeChild(shared));
  EXPECT_EQ(tstLeaf::live, live + 2);
  EXPECT_FALSE(a->removeChild(shared));
  a->removeChild(0);
  EXPECT_EQ(tstLeaf::live, live + 1);
  EXPECT_EQ(a->getNumChildren(), 0);

  EXPECT_TRUE(b->replaceChild(shared, shared));
  EXPECT_EQ(tstLeaf::live, live + 1);
  tstLeaf* other = new tstLeaf;
  b->setChild(0, other);
  EXPECT_EQ(tstLeaf::live, live + 1);
  EXPECT_FALSE(b->replaceChild(shared, other));

  b->setChildCount(0);
  EXPECT_EQ(tstLeaf::live, live);
  b->addChild(new tstLeaf);
  nrtest::unref(b, a);
  EXPECT_EQ(tstLeaf::live, live);
}

TEST(nrGroup, EveryMutatorSignalsTheChildrenEvenWhenNothingChanges) {
  tstGroup* g = nrtest::held<tstGroup>();
  tstLeaf* x = new tstLeaf;
  tstLeaf* y = new tstLeaf;
  g->addChild(x);
  g->insertChild(0, y);
  g->insertChild(1, x);
  EXPECT_EQ(g->getChild(0), y);
  EXPECT_EQ(g->findChild(x), 1);
  EXPECT_EQ(x->getParentCount(), 2);
  EXPECT_EQ(g->childrenSignals, 3);

  sphereOf(g);
  g->addChild(nullptr);
  EXPECT_EQ(g->getNumChildren(), 3);
  EXPECT_EQ(g->childrenSignals, 4);
  EXPECT_TRUE(g->isSphereStale());

  g->insertChild(7, x);
  g->setChild(-1, x);
  g->removeChild(3);
  g->removeChild(static_cast<nrNode*>(nullptr));
  g->replaceChild(nullptr, x);
  g->setChildCount(3);
  EXPECT_EQ(g->getNumChildren(), 3);
  EXPECT_EQ(x->getParentCount(), 2);
  EXPECT_EQ(g->getChild(-1), nullptr);
  EXPECT_EQ(g->childrenSignals, 10);
  g->unref();
}

TEST(nrNode, InsertParentTakesThePlaceOfEveryGroupParentOnly) {
  int live = tstLeaf::live;
  tstGroup* a = nrtest::held<tstGroup>();
  tstGroup* b = nrtest::held<tstGroup>();
  tstHolder* holder = nrtest::held<tstHolder>();
  tstLeaf* leaf = new tstLeaf;
  tstLeaf* first = new tstLeaf;
  a->addChild(first);
  a->addChild(leaf);
  b->addChild(leaf);
  static_cast<nrSFRef*>(holder->getField("node"))->set(leaf);

  nrGroup* g = new nrGroup;
  leaf->insertParent(g);
  EXPECT_EQ(a->getChild(0), first);
  EXPECT_EQ(a->getChild(1), g);
  EXPECT_EQ(b->getChild(0), g);
  EXPECT_EQ(g->getNumChildren(), 2);
  EXPECT_EQ(g->getChild(1), leaf);
  EXPECT_EQ(g->getParentCount(), 2);
  EXPECT_EQ(leaf->getParentCount(), 3);
  EXPECT_EQ(static_cast<nrSFRef*>(holder->getField("node"))->get(), leaf);
  EXPECT_EQ(tstLeaf::live, live + 2);

  nrGroup* lone = nrtest::held<nrGroup>();
  tstLeaf* orphan = nrtest::held<tstLeaf>();
  orphan->insertParent(lone);
  EXPECT_EQ(lone->getNumChildren(), 0);
  EXPECT_EQ(orphan->getParentCount(), 0);
  nrtest::unref(orphan, lone, holder, b, a);
  EXPECT_EQ(tstLeaf::live, live);
}

TEST(nrGroup, ClonesShareOrCopyTheChildrenByMode) {
  tstGroup* g = nrtest::held<tstGroup>();
  tstLeaf* leaf = new tstLeaf(nrSphereBound(nrVec3f(1, 0, 0), 1));
  g->addChild(leaf);
  g->addChild(leaf);

  nrGroup* shallow = static_cast<nrGroup*>(g->clone(nrContainer::SHALLOW_CLONE));
  shallow->ref();
  EXPECT_EQ(shallow->getChild(0), leaf);
  EXPECT_EQ(leaf->getParentCount(), 4);

  nrGroup* deep = static_cast<nrGroup*>(g->clone(2));
  deep->ref();
  ASSERT_EQ(deep->getNumChildren(), 2);
  nrNode* copy = deep->getChild(0);
  EXPECT_NE(copy, leaf);
  EXPECT_EQ(deep->getChild(1), copy);
  EXPECT_EQ(copy->getParentCount(), 2);
  expectSphere(sphereOf(deep), 1, 0, 0, 1);
  copy->setSphereBound(nrSphereBound(nrVec3f(5, 0, 0), 1));
  expectSphere(sphereOf(deep), 5, 0, 0, 1);
  expectSphere(sphereOf(g), 1, 0, 0, 1);
  nrtest::unref(deep, shallow, g);
}
