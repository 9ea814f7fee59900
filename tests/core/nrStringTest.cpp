#include "nerio3d/core/nrString.h"

#include <cstdio>
#include <string>

#include "nerio3d/fields/nrOutput.h"
#include "nrOutputCapture.h"

TEST(nrString, HashXorsSignExtendedBytesAtWrappingShifts) {
  EXPECT_EQ(nrString::hash(nullptr), 0u);
  EXPECT_EQ(nrString::hash(""), 0u);
  EXPECT_EQ(nrString::hash("a"), 97u);
  EXPECT_EQ(nrString::hash("ab"), 97u ^ (98u << 5));

  // Shifts run 0, 5, ..., 20, then wrap to 1, 6, ...: check a 26-character text
  // against the shift sequence written out.
  const int shifts[26] = {0, 5, 10, 15, 20, 1, 6, 11, 16, 21, 2, 7, 12, 17, 22, 3, 8, 13, 18, 23, 4, 9, 14, 19, 24, 5};
  const char* text = "abcdefghijklmnopqrstuvwxyz";
  unsigned expected = 0;
  for (int i = 0; i < 26; ++i) expected ^= static_cast<unsigned>(text[i]) << shifts[i];
  EXPECT_EQ(nrString::hash(text), expected);

  // Bytes above 127 contribute their sign-extended value.
  EXPECT_EQ(nrString::hash("\xff"), 0xffffffffu);
}

TEST(nrString, AssignAppendAndCompare) {
  nrString s;
  EXPECT_TRUE(s.isNull());
  // A null string equals a null pointer under both operators: kept asymmetry.
  EXPECT_TRUE(s == nullptr);
  EXPECT_TRUE(s != nullptr);
  EXPECT_FALSE(s == "x");
  EXPECT_FALSE(s != "x");

  s += "abc";
  s += nullptr;
  s += "def";
  EXPECT_TRUE(s == "abcdef");
  EXPECT_FALSE(s != "abcdef");

  s = s.getString();  // assigning its own text is safe
  EXPECT_TRUE(s == "abcdef");
  nrString copy(s);
  s.makeEmpty();
  EXPECT_TRUE(copy == "abcdef");
}

TEST(nrString, WriteIsInvertedOnPurpose) {
  nrString null, text("hello");
  EXPECT_EQ(nrtest::writeToString([&](nrOutput* out) { null.write(out); }), "\"(null)\"");
  EXPECT_EQ(nrtest::writeToString([&](nrOutput* out) { text.write(out); }), "(null)");
}
