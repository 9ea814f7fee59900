#include "nerio3d/core/nrString.h"

#include <string>

#include "nerio3d/core/nrDict.h"
#include "nerio3d/core/nrName.h"
#include "nerio3d/core/nrStringDict.h"
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
  auto compared = [&](const char* text) { return std::pair(s == text, s != text); };
  EXPECT_EQ(compared(nullptr), std::pair(true, true));
  EXPECT_EQ(compared("x"), std::pair(false, false));
  s += "abc";
  s += nullptr;
  s += "def";
  EXPECT_EQ(compared("abcdef"), std::pair(true, false));
  EXPECT_EQ(compared(nullptr), std::pair(false, true));
  s = s.getString();  // assigning its own text is safe
  EXPECT_TRUE(s == "abcdef");
  nrString copy(s);
  s.makeEmpty();
  EXPECT_TRUE(copy == "abcdef");
  s = std::string("from a std::string");
  EXPECT_TRUE(s == "from a std::string");
}

TEST(nrString, WriteIsInvertedOnPurpose) {
  nrString null, text("hello");
  EXPECT_EQ(nrtest::writeToString([&](nrOutput* out) { null.write(out); }), "\"(null)\"");
  EXPECT_EQ(nrtest::writeToString([&](nrOutput* out) { text.write(out); }), "(null)");
}

TEST(nrName, InterningSharesEntriesAndNewestLeadsItsBucket) {
  nrName a("interned-text"), b(std::string("interned-text").c_str());
  EXPECT_TRUE(a == b);
  EXPECT_EQ(a.getEntry(), b.getEntry());
  EXPECT_STREQ(nrName().getString(), "");
  EXPECT_TRUE(nrName(nullptr) == nrName()) << "a null text interns as the empty one";

  // "Ac" flips bit 5 of the first byte and bit 0 of the second, which lands
  // on the same bit: same hash as "ab", different bytes.
  ASSERT_EQ(nrString::hash("ab"), nrString::hash("Ac"));
  const nrNameEntry* older = nrNameEntry::insert("ab");
  const nrNameEntry* newer = nrNameEntry::insert("Ac");
  EXPECT_NE(older, newer);
  EXPECT_EQ(nrNameEntry::nameTableSize, 1999);
  EXPECT_EQ(nrNameEntry::nameTable[older->hash % nrNameEntry::nameTableSize], newer);
  EXPECT_EQ(newer->next, older);
}

TEST(nrName, TextsAtTheChunkLimit) {
  // 3999 bytes with the terminator still go into a pooled chunk; 4000 bytes get
  // their own copy and leave the chunk untouched.
  std::string fits(3998, 'q'), tooLong(3999, 'r');
  const nrNameEntry* pooled = nrNameEntry::insert(fits.c_str());
  nrNameChunk* chunk = nrNameEntry::chunk;
  ASSERT_NE(chunk, nullptr);
  EXPECT_EQ(nrNameChunk::chunkSize, 4000);
  EXPECT_GE(pooled->string, chunk->mem);
  EXPECT_LT(pooled->string, chunk->mem + nrNameChunk::chunkSize);
  int left = chunk->bytesLeft;

  const nrNameEntry* own = nrNameEntry::insert(tooLong.c_str());
  EXPECT_EQ(nrNameEntry::chunk, chunk);
  EXPECT_EQ(chunk->bytesLeft, left);
  EXPECT_FALSE(own->string >= chunk->mem && own->string < chunk->mem + nrNameChunk::chunkSize);
  EXPECT_EQ(std::string(own->string), tooLong);
}

static void* ptr(long v) { return reinterpret_cast<void*>(v); }

TEST(nrDict, EnterFindRemoveAndChainsByModulo) {
  nrDict d(7);
  void* v = ptr(1);
  EXPECT_FALSE(d.find(3, v));
  EXPECT_EQ(v, nullptr);
  EXPECT_TRUE(d.enter(3, ptr(30)));
  EXPECT_TRUE(d.enter(10, ptr(100)));  // same bucket as 3
  EXPECT_FALSE(d.enter(3, ptr(31)));   // replaces
  // Keys wider than 32 bits stay distinct (addresses are keys).
  EXPECT_TRUE(d.enter(0x100000003ul, ptr(5)));
  EXPECT_TRUE(d.find(3, v) && v == ptr(31));
  EXPECT_TRUE(d.remove(3) && !d.remove(3));
  EXPECT_TRUE(d.find(10, v) && v == ptr(100));
  d.clear();
  EXPECT_FALSE(d.find(10, v));
  // No buckets asked for still gives one.
  nrDict none(0);
  EXPECT_TRUE(none.enter(3, ptr(3)) && none.find(3, v));
}

TEST(nrStringDict, KeysAreCopiedAndEnumerationFollowsBuckets) {
  nrStringDict d(11);
  // Two keys in buckets 5 and 2, entered in that order.
  const char *k5 = "h", *k2 = "e";
  ASSERT_EQ(std::pair(nrString::hash(k5) % 11, nrString::hash(k2) % 11), std::pair(5u, 2u));
  char buffer[] = "h";
  EXPECT_TRUE(d.enter(buffer, ptr(5)));
  buffer[0] = '#';  // the dictionary holds its own copy of the key
  EXPECT_TRUE(d.enter(k2, ptr(2)));
  EXPECT_FALSE(d.enter(k5, ptr(55)));
  EXPECT_EQ(d.getSize(), 2u);
  void* v = nullptr;
  EXPECT_TRUE(d.get(0, v) && v == ptr(2));
  EXPECT_TRUE(d.get(1, v) && v == ptr(55));
  EXPECT_FALSE(d.get(2, v));
  EXPECT_EQ(v, nullptr);
  EXPECT_TRUE(d.remove(k2) && !d.remove(k2));
  EXPECT_EQ(d.getSize(), 1u);
  // A null key is never entered or found; no buckets asked for still gives one.
  EXPECT_FALSE(d.enter(nullptr, ptr(1)) || d.find(nullptr, v) || d.remove(nullptr));
  nrStringDict none(0);
  EXPECT_TRUE(none.enter("a", ptr(1)) && none.find("a", v));
}
