#include "nerio3d/actions/nrActionFunTable.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include "nerio3d/core/nrObject.h"
#include "nrCapture.h"

namespace {
void bindingA(nrAction*, nrObject*) {}
void bindingB(nrAction*, nrObject*) {}
void bindingC(nrAction*, nrObject*) {}

// A small dispatcher hierarchy and object hierarchy of raw types.
struct Hierarchy {
  nrType* object = nrObject::getClassType();
  nrType* dispatch = new nrType(object, "nrDispatch");
  nrType* subDispatch = new nrType(dispatch, "TestSubDispatch");
  nrType* node = new nrType(object, "TestNode");
  nrType* shape = new nrType(node, "TestShapeNode");
  nrType* light = new nrType(node, "TestLightNode");
};

Hierarchy& hierarchy() {
  static Hierarchy h;
  return h;
}
}  // namespace

TEST(nrActionFunTable, InheritanceAlongBothHierarchiesObjectFirst) {
  Hierarchy& h = hierarchy();
  // Dispatchers, and only they, get a row as well as a column.
  EXPECT_GE(h.dispatch->getActionIndex(), 0);
  EXPECT_GE(h.dispatch->getObjectIndex(), 0);
  EXPECT_GE(h.subDispatch->getActionIndex(), 0);
  nrActionFunTable* table = nrActionFunTable::getTable();
  EXPECT_EQ(table->getFunction(h.dispatch, h.shape), &nrActionFunTable::nop);

  // One binding on (dispatcher, node) serves every node type under it and the
  // dispatcher's subtypes that bind nothing closer.
  table->setFunction(h.dispatch, h.node, bindingA);
  EXPECT_EQ(table->getFunction(h.dispatch, h.shape), &bindingA);
  EXPECT_EQ(table->getFunction(h.subDispatch, h.light), &bindingA);
  EXPECT_EQ(table->getFunction(h.subDispatch, h.object), &nrActionFunTable::nop);

  // (parent dispatcher, shape) against (sub dispatcher, node): for the sub
  // dispatcher and a shape, the object-hierarchy binding wins.
  table->setFunction(h.dispatch, h.shape, bindingB);
  table->setFunction(h.subDispatch, h.node, bindingC);
  EXPECT_EQ(table->getFunction(h.subDispatch, h.shape), &bindingC);
  EXPECT_EQ(table->getFunction(h.dispatch, h.light), &bindingA);

  // A binding made after a lookup is seen by the next lookup, as is a type
  // registered after it.
  nrType* late = new nrType(h.shape, "TestLateShape");
  EXPECT_EQ(table->getFunction(h.dispatch, late), &bindingB);
  table->setFunction(h.dispatch, late, bindingA);
  EXPECT_EQ(table->getFunction(h.dispatch, late), &bindingA);

  // Null types and a type without a row bind and find nothing.
  table->setFunction(h.node, h.shape, bindingC);
  table->setFunction(nullptr, h.shape, bindingC);
  EXPECT_EQ(table->getFunction(h.dispatch, h.shape), &bindingB);
  EXPECT_EQ(table->getFunction(nullptr, nullptr), &nrActionFunTable::nop);
}

TEST(nrActionFunTable, AnotherTableResolvesItsOwnTypesAndLeavesTheProcessTableAlone) {
  Hierarchy& h = hierarchy();
  const int row = h.dispatch->getActionIndex(), col = h.shape->getObjectIndex();
  nrActionFunTable own(1, 1);
  own.addAction(h.dispatch);
  own.addObject(h.node);
  own.addObject(h.shape);
  own.setFunction(h.dispatch, h.node, bindingC);
  nrActionFunTable::Function found = nullptr;
  // Subtypes it never registered are reported on standard output as it resolves.
  nrtest::captureStdout([&] { found = own.getFunction(h.dispatch, h.shape); });
  EXPECT_EQ(found, &bindingC);
  EXPECT_EQ(own.getFunction(h.dispatch, h.light), &nrActionFunTable::nop);
  EXPECT_EQ(h.dispatch->getActionIndex(), row);
  EXPECT_EQ(h.shape->getObjectIndex(), col);
  EXPECT_NE(nrActionFunTable::getTable()->getFunction(h.dispatch, h.shape), &bindingC);
}

TEST(nrActionFunTableDeathTest, ApplyIsATrap) {
  // The message goes to standard output; send it where the death test looks.
  EXPECT_DEATH(
      {
        dup2(2, 1);
        nrActionFunTable::getTable()->apply(nullptr, nullptr);
      },
      "nrActionFunTable::apply: not implemented\\.");
}
