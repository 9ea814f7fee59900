#include "nerio3d/core/nrName.h"

#include <cstring>
#include <string>

#include "nerio3d/core/nrString.h"
#include "nrOutputCapture.h"

TEST(nrName, InterningSharesEntriesAndNewestLeadsItsBucket) {
  nrName a("interned-text"), b(std::string("interned-text").c_str());
  EXPECT_TRUE(a == b);
  EXPECT_EQ(a.getEntry(), b.getEntry());
  EXPECT_STREQ(nrName().getString(), "");

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

TEST(nrName, WritesQuotedText) {
  nrName n("Shape");
  EXPECT_EQ(nrtest::writeToString([&](nrOutput* out) { n.write(out); }), "\"Shape\"");
}
