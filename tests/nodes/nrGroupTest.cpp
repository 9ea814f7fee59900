#include <gtest/gtest.h>

#include "nerio3d/fields/nrMFRef.h"
#include "nerio3d/fields/nrSField.h"
#include "nerio3d/nodes/nrCollision.h"
#include "nerio3d/nodes/nrTransform.h"
#include "nrCapture.h"
#include "nrHeld.h"
#include "nrNodeTestTypes.h"
#include "nrOutputCapture.h"

namespace {

nrSphereBound sphereOf(nrNode* n) {
  nrSphereBound s;
  n->getSphereBound(s);
  return s;
}

void expectSphere(nrNode* n, float x, float y, float z, float r) {
  nrSphereBound s = sphereOf(n);
  const float got[] = {s.center[0], s.center[1], s.center[2], s.radius}, want[] = {x, y, z, r};
  for (int i = 0; i < 4; ++i) EXPECT_NEAR(got[i], want[i], 1e-5f) << "centre x, y, z, radius: " << i;
}

tstLeaf* leafAt(float x, float y, float z, float r) { return new tstLeaf(nrSphereBound(nrVec3f(x, y, z), r)); }

using Nodes = std::vector<nrNode*>;
Nodes children(nrGroup* g) {
  Nodes list;
  for (int i = 0; i < g->getNumChildren(); ++i) list.push_back(g->getChild(i));
  return list;
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
  tstGroup *top = nrtest::held<tstGroup>(), *mid = new tstGroup, *low = new tstGroup, *fixed = new tstGroup;
  tstLeaf* leaf = leafAt(2, 0, 0, 1);
  top->addChild(mid);
  mid->addChild(low);
  low->addChild(leaf);
  low->addChild(leafAt(-2, 0, 0, 1));
  expectSphere(top, 0, 0, 0, 3);
  tstGroup* levels[] = {top, mid, low};
  for (tstGroup* g : levels) {
    EXPECT_EQ(g->boundsComputed, 1);
    g->childNotices = 0;
  }

  leaf->setSphereBound(nrSphereBound(nrVec3f(4, 0, 0), 1));
  leaf->setSphereBound(nrSphereBound(nrVec3f(6, 0, 0), 1));
  EXPECT_EQ(std::vector({low->childNotices, mid->childNotices, top->childNotices}), std::vector({2, 1, 1}));
  for (tstGroup* g : levels) {
    EXPECT_TRUE(g->isSphereStale());
    EXPECT_EQ(g->boundsComputed, 1);
  }
  expectSphere(top, 2, 0, 0, 5);
  sphereOf(top);
  for (tstGroup* g : levels) {
    EXPECT_FALSE(g->isSphereStale());
    EXPECT_EQ(g->boundsComputed, 2);
  }

  // A static group keeps its sphere, even one set while a recomputation was
  // pending, and stops the notices.
  fixed->addChild(leafAt(3, 3, 3, 1));
  fixed->setBoundMode(nrNode::STATIC);
  fixed->setSphereBound(nrSphereBound(nrVec3f(0, 1, 0), 0.5f));
  mid->addChild(fixed);
  sphereOf(top);
  top->childNotices = 0;
  tstLeaf* inside = leafAt(9, 9, 9, 1);
  fixed->addChild(inside);
  inside->setSphereBound(nrSphereBound(nrVec3f(-9, 0, 0), 2));
  expectSphere(fixed, 0, 1, 0, 0.5f);
  EXPECT_EQ(fixed->boundsComputed, 0);
  EXPECT_EQ(top->childNotices, 0);
  // Back to DYNAMIC, it follows the children it has now, and so do the levels above.
  fixed->setBoundMode(nrNode::DYNAMIC);
  EXPECT_EQ(top->childNotices, 1);
  tstGroup* built = nrtest::held<tstGroup>();
  built->addChild(leafAt(3, 3, 3, 1));
  built->addChild(leafAt(-9, 0, 0, 2));
  nrSphereBound want = sphereOf(built), outer = sphereOf(top);
  expectSphere(fixed, want.center[0], want.center[1], want.center[2], want.radius);
  nrVec3f apart;
  apart.sub(want.center, outer.center);
  EXPECT_GE(outer.radius + 1e-4f, apart.length() + want.radius);
  nrtest::unref(built, top);
}

TEST(nrGroup, EmptyAndNullChildrenGiveWhatAroundGivesForThem) {
  nrSphereBound none, a, b, twoEmpty;
  none.around(static_cast<const nrSphereBound* const*>(nullptr), 0);
  const nrSphereBound* both[] = {&a, &b};
  twoEmpty.around(both, 2);

  tstGroup* g = nrtest::held<tstGroup>();
  EXPECT_EQ(sphereOf(g).radius, none.radius);
  g->addChild(new tstLeaf);
  g->addChild(new tstLeaf);
  expectSphere(g, twoEmpty.center[0], twoEmpty.center[1], twoEmpty.center[2], twoEmpty.radius);
  g->setChildCount(4);
  const nrGroup* readOnly = g;
  EXPECT_EQ(readOnly->getChildCount(), 4);
  EXPECT_EQ(readOnly->getChild(3), nullptr);
  g->setChild(3, leafAt(1, 2, 3, 1));
  expectSphere(g, 1, 2, 3, 1);
  g->unref();

  // Cleaning the sphere by hand recomputes it from the children, even over a
  // sphere set while STATIC; a transform places it as a read would.
  nrGroup* plain = nrtest::held<nrGroup>();
  nrTransform* placed = nrtest::held<nrTransform>();
  plain->addChild(leafAt(1, 2, 3, 1));
  placed->addChild(leafAt(1, 0, 0, 1));
  placed->setScale(2, 2, 2);
  for (nrGroup* h : {plain, static_cast<nrGroup*>(placed)}) {
    h->setBoundMode(nrNode::STATIC);
    h->setSphereBound(nrSphereBound(nrVec3f(0, 0, 0), 9));
    h->cleanSideEffect(nrNode::SPHERE_BOUND_FIELD);
  }
  expectSphere(plain, 1, 2, 3, 1);
  expectSphere(placed, 2, 0, 0, 2);
  nrtest::unref(plain, placed);
}

TEST(nrGroup, ChildrenAreOwnedByTheGroupsThatHoldThem) {
  int live = tstLeaf::live;
  tstGroup *a = nrtest::held<tstGroup>(), *b = nrtest::held<tstGroup>();
  tstLeaf *shared = new tstLeaf, *other = new tstLeaf;
  a->addChild(shared);
  a->addChild(new tstLeaf);
  b->addChild(shared);
  EXPECT_EQ(shared->getParentCount(), 2);

  EXPECT_TRUE(a->removeChild(shared));
  EXPECT_EQ(tstLeaf::live, live + 3);
  EXPECT_FALSE(a->removeChild(shared));
  a->removeChild(0);
  EXPECT_EQ(tstLeaf::live, live + 2);
  EXPECT_EQ(children(a), Nodes{});

  EXPECT_TRUE(b->replaceChild(shared, shared));
  EXPECT_EQ(tstLeaf::live, live + 2);
  b->setChild(0, other);
  EXPECT_EQ(tstLeaf::live, live + 1);
  EXPECT_FALSE(b->replaceChild(shared, other));
  b->setChildCount(0);
  EXPECT_EQ(tstLeaf::live, live);
  b->addChild(new tstLeaf);
  a->addChild(new tstLeaf);
  a->copy(b);
  EXPECT_EQ(tstLeaf::live, live + 1) << "a copy releases the children it replaces";
  b->addChild(a);
  a->unref();
  b->copy(a);
  EXPECT_EQ(b->getNumChildren(), 1) << "copied from a group that only the copy held";
  nrtest::unref(b);
  EXPECT_EQ(tstLeaf::live, live);
}

TEST(nrGroup, EveryMutatorSignalsTheChildrenEvenWhenNothingChanges) {
  tstGroup* g = nrtest::held<tstGroup>();
  tstLeaf *x = new tstLeaf, *y = new tstLeaf;
  g->addChild(x);
  g->insertChild(0, y);
  g->insertChild(1, x);
  EXPECT_EQ(children(g), (Nodes{y, x, x}));
  EXPECT_EQ(g->findChild(x), 1);
  EXPECT_EQ(x->getParentCount(), 2);
  EXPECT_EQ(g->childrenSignals, 3);

  sphereOf(g);
  g->addChild(nullptr);
  EXPECT_EQ(children(g), (Nodes{y, x, x}));
  EXPECT_EQ(g->childrenSignals, 4);
  EXPECT_TRUE(g->isSphereStale());

  g->insertChild(7, x);
  g->setChild(-1, x);
  g->removeChild(3);
  g->removeChild(static_cast<nrNode*>(nullptr));
  g->replaceChild(nullptr, x);
  g->setChildCount(3);
  EXPECT_EQ(children(g), (Nodes{y, x, x}));
  EXPECT_EQ(x->getParentCount(), 2);
  EXPECT_EQ(g->getChild(-1), nullptr);
  EXPECT_EQ(g->childrenSignals, 10);
  g->unref();
}

TEST(nrNode, InsertParentTakesThePlaceOfEveryGroupParentOnly) {
  int live = tstLeaf::live;
  tstGroup *a = nrtest::held<tstGroup>(), *b = nrtest::held<tstGroup>();
  tstHolder* holder = nrtest::held<tstHolder>();
  tstLeaf *leaf = new tstLeaf, *first = new tstLeaf;
  a->addChild(first);
  a->addChild(leaf);
  b->addChild(leaf);
  static_cast<nrSFRef*>(holder->getField("node"))->set(leaf);

  nrGroup* g = new nrGroup;
  leaf->insertParent(g);
  EXPECT_EQ(children(a), (Nodes{first, g}));
  EXPECT_EQ(children(b), Nodes{g});
  EXPECT_EQ(children(g), (Nodes{leaf, leaf}));
  EXPECT_EQ(g->getParentCount(), 2);
  EXPECT_EQ(leaf->getParentCount(), 3);
  EXPECT_EQ(static_cast<nrSFRef*>(holder->getField("node"))->get(), leaf);
  EXPECT_EQ(tstLeaf::live, live + 2);

  nrGroup* lone = nrtest::held<nrGroup>();
  tstLeaf* orphan = nrtest::held<tstLeaf>();
  orphan->insertParent(lone);
  EXPECT_EQ(children(lone), Nodes{});
  EXPECT_EQ(orphan->getParentCount(), 0);
  nrtest::unref(orphan, lone, holder, b, a);
  EXPECT_EQ(tstLeaf::live, live);
}

TEST(nrGroup, ChildrenThatWouldCloseACycleAreRefusedWithAWarning) {
  nrGroup* top = nrtest::held<nrGroup>();
  nrGroup *mid = new nrGroup, *low = new nrGroup;
  tstLeaf* leaf = new tstLeaf;
  top->addChild(mid);
  mid->addChild(low);
  low->addChild(leaf);
  nrCollision* hull = new nrCollision;
  mid->addChild(hull);
  std::string err = nrtest::captureStderr([&] {
    hull->setProxy(top);
    top->addChild(top);
    low->addChild(top);
    low->insertChild(0, mid);
    low->setChild(0, top);
    EXPECT_FALSE(low->replaceChild(leaf, mid));
    mid->insertParent(low);
    low->copy(top);
    // The children field itself refuses the same, whichever way it is set.
    nrMFRef* field = static_cast<nrMFRef*>(low->getField("children"));
    field->append(low);
    field->set(0, mid);
    field->insert(0, top);
    nrRefArray list;
    list.append(leaf);
    list.append(top);
    field->set(list);
  });
  EXPECT_EQ(hull->getProxy(), nullptr);
  EXPECT_EQ(err.find("(WARN, USAGE): Field proxy of Collision cannot hold this Group"), 0u) << err;
  const char warning[] = "(WARN, USAGE): nrGroup::addChild() - a node cannot be placed under itself\n";
  EXPECT_NE(err.find(warning), std::string::npos) << err;
  EXPECT_NE(err.find("nrGroup::replaceChild()"), std::string::npos);
  EXPECT_NE(err.find("nrGroup::copy()"), std::string::npos);
  EXPECT_NE(err.find("(WARN, USAGE): Field children of Group cannot hold this Group - a container cannot be placed "
                     "under itself\n"),
            std::string::npos);
  EXPECT_EQ(children(top), Nodes{mid});
  EXPECT_EQ(children(low), Nodes{leaf});
  nrTransformAction action;
  EXPECT_EQ(action.apply(top), 0);
  top->unref();
}

// An action whose preVisit drops the node it is given from that node's parent,
// and with it every later sibling.
struct tstDroppingAction : nrAction {
  int visits = 0;
  nrTravDirective preVisit(nrNode* n) override {
    ++visits;
    if (n->getParentCount() == 1) static_cast<nrGroup*>(n->getParent(0))->setChildCount(0);
    return CONTINUE_TRAV;
  }
};

TEST(nrGroup, ActionsMayDropNodesFromInsideTheirVisits) {
  nrGroup* top = nrtest::held<nrGroup>();
  nrGroup* mid = new nrGroup;
  top->addChild(mid);
  for (int i = 0; i < 3; ++i) mid->addChild(new nrGroup);
  top->addChild(new nrGroup);
  tstDroppingAction action;
  EXPECT_EQ(action.apply(top), CONTINUE_TRAV);
  EXPECT_EQ(action.visits, 3) << "top; mid, which drops itself and its sibling; its first child, which drops the rest";
  EXPECT_EQ(top->getNumChildren(), 0);
  // The root may lose its last holder too: it lives until the traversal ends.
  mid = new nrGroup;
  top->addChild(mid);
  mid->addChild(new nrGroup);
  tstDroppingAction again;
  again.apply(mid);
  EXPECT_EQ(again.visits, 2);
  top->unref();
}

TEST(nrGroup, ClonesShareOrCopyTheChildrenByMode) {
  tstGroup* g = nrtest::held<tstGroup>();
  tstLeaf* leaf = leafAt(1, 0, 0, 1);
  g->addChild(leaf);
  g->addChild(leaf);

  auto* shallow = static_cast<nrGroup*>(g->clone(nrContainer::SHALLOW_CLONE));
  shallow->ref();
  EXPECT_EQ(shallow->getChild(0), leaf);
  EXPECT_EQ(leaf->getParentCount(), 4);

  auto* deep = static_cast<nrGroup*>(g->clone(2));
  deep->ref();
  ASSERT_EQ(deep->getNumChildren(), 2);
  nrNode* copy = deep->getChild(0);
  EXPECT_NE(copy, leaf);
  EXPECT_EQ(children(deep), (Nodes{copy, copy}));
  EXPECT_EQ(copy->getParentCount(), 2);
  expectSphere(deep, 1, 0, 0, 1);
  copy->setSphereBound(nrSphereBound(nrVec3f(5, 0, 0), 1));
  expectSphere(deep, 5, 0, 0, 1);
  expectSphere(g, 1, 0, 0, 1);
  nrtest::unref(deep, shallow, g);
}
