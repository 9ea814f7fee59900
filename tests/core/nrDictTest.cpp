#include "nerio3d/core/nrDict.h"
#include "nerio3d/core/nrString.h"
#include "nerio3d/core/nrStringDict.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>

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
  unsigned long wide = 0x100000003ul;
  EXPECT_TRUE(d.enter(wide, ptr(5)));
  ASSERT_TRUE(d.find(3, v));
  EXPECT_EQ(v, ptr(31));
  EXPECT_TRUE(d.remove(3));
  EXPECT_FALSE(d.remove(3));
  ASSERT_TRUE(d.find(10, v));
  EXPECT_EQ(v, ptr(100));
  d.clear();
  EXPECT_FALSE(d.find(10, v));
}

TEST(nrStringDict, KeysAreCopiedAndEnumerationFollowsBuckets) {
  nrStringDict d(11);
  // Pick two keys whose buckets are 5 and 2, entered in that order.
  std::string k5, k2;
  for (char c = 'a'; c <= 'z' && (k5.empty() || k2.empty()); ++c) {
    std::string k(1, c);
    unsigned b = nrString::hash(k.c_str()) % 11;
    if (b == 5 && k5.empty()) k5 = k;
    if (b == 2 && k2.empty()) k2 = k;
  }
  ASSERT_FALSE(k5.empty());
  ASSERT_FALSE(k2.empty());

  char buffer[8];
  snprintf(buffer, sizeof buffer, "%s", k5.c_str());
  EXPECT_TRUE(d.enter(buffer, ptr(5)));
  buffer[0] = '#';  // the dictionary holds its own copy of the key
  EXPECT_TRUE(d.enter(k2.c_str(), ptr(2)));
  EXPECT_FALSE(d.enter(k5.c_str(), ptr(55)));
  EXPECT_EQ(d.getSize(), 2u);

  void* v = nullptr;
  ASSERT_TRUE(d.get(0, v));
  EXPECT_EQ(v, ptr(2));
  ASSERT_TRUE(d.get(1, v));
  EXPECT_EQ(v, ptr(55));
  EXPECT_FALSE(d.get(2, v));
  EXPECT_EQ(v, nullptr);

  EXPECT_TRUE(d.remove(k2.c_str()));
  EXPECT_FALSE(d.remove(k2.c_str()));
  EXPECT_EQ(d.getSize(), 1u);
}
