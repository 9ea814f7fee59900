#include <functional>

#include "nerio3d/math/nrMatStack4f.h"
#include "nrCapture.h"

namespace {

// Runs op, which must refuse with the given text.
void expectRefused(const std::function<int()>& op, const char* text) {
  int result = 1;
  EXPECT_EQ(nrtest::captureStderr([&] { result = op(); }), text);
  EXPECT_EQ(result, 0);
}

}  // namespace

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
  expectRefused([&] { return stack.push(); }, "(WARN, USAGE): nrMatStack4f::push() - Matrix stack full\n");
  EXPECT_EQ(stack.getDepth(), 63);
  expectRefused([&] { return stack.pushIdent(); }, "(WARN, USAGE): nrMatStack4f::pushIdent() - Matrix stack full\n");
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
  expectRefused([&] { return stack.pop(); }, "(WARN, USAGE): nrMatStack4f::pop() - Matrix stack empty\n");
  EXPECT_EQ(stack.getDepth(), 1);
  EXPECT_EQ(*stack.getTop(), ident);

  *stack.getTop() = s;
  stack.push();
  stack.push();
  stack.reset();
  EXPECT_EQ(stack.getDepth(), 1);
  EXPECT_EQ(*stack.getTop(), ident);
}
