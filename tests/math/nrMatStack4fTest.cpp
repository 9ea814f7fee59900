#include "nerio3d/math/nrMatStack4f.h"
#include "nrCapture.h"

TEST(nrMatStack4f, DepthStopsOneBelowCapacity) {
  nrMatStack4f stack;
  EXPECT_EQ(stack.getCapacity(), 64);
  EXPECT_EQ(stack.getDepth(), 1);
  stack.top->makeTrans(1, 2, 3);  // the top is reached directly
  for (int i = 0; i < 62; ++i) ASSERT_EQ(stack.push(), 1) << i;
  EXPECT_EQ(stack.getDepth(), 63);
  nrMatrix4f t;
  t.makeTrans(1, 2, 3);
  EXPECT_EQ(*stack.getTop(), t);  // each push copies the matrix below
  int result = 1;
  std::string err = nrtest::captureStderr([&] { result = stack.push(); });
  EXPECT_EQ(result, 0);
  EXPECT_EQ(err, "(WARN, USAGE): nrMatStack4f::push() - Matrix stack full\n");
  EXPECT_EQ(stack.getDepth(), 63);
  err = nrtest::captureStderr([&] { result = stack.pushIdent(); });
  EXPECT_EQ(result, 0);
  EXPECT_EQ(err, "(WARN, USAGE): nrMatStack4f::pushIdent() - Matrix stack full\n");
  EXPECT_EQ(*stack.getTop(), t);
}

TEST(nrMatStack4f, PopBelowOneResetsToIdentity) {
  nrMatStack4f stack(4);
  nrMatrix4f ident, s;
  ident.makeIdent();
  s.makeScale(2, 2, 2);
  *stack.getTop() = s;
  EXPECT_EQ(stack.pushIdent(), 1);
  EXPECT_EQ(*stack.getTop(), ident);
  EXPECT_EQ(stack.pop(), 1);
  EXPECT_EQ(*stack.getTop(), s);
  int result = 1;
  std::string err = nrtest::captureStderr([&] { result = stack.pop(); });
  EXPECT_EQ(result, 0);
  EXPECT_EQ(err, "(WARN, USAGE): nrMatStack4f::pop() - Matrix stack empty\n");
  EXPECT_EQ(stack.getDepth(), 1);
  EXPECT_EQ(*stack.getTop(), ident);

  *stack.getTop() = s;
  stack.push();
  stack.push();
  stack.reset();
  EXPECT_EQ(stack.getDepth(), 1);
  EXPECT_EQ(*stack.getTop(), ident);
}
