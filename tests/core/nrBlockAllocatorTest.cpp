#include "nerio3d/core/nrBlockAllocator.h"

#include <gtest/gtest.h>

#include <cstring>
#include <thread>
#include <vector>

namespace {
const size_t SIZES[] = {1, 16, 17, 500, 512, 513, 4096, nrBlockAllocator::LARGE_LIMIT - 1,
                        nrBlockAllocator::LARGE_LIMIT, 5u << 20};

bool allBytes(const void* block, size_t from, size_t to, unsigned char value) {
  const unsigned char* bytes = static_cast<const unsigned char*>(block);
  for (size_t i = from; i < to; ++i)
    if (bytes[i] != value) return false;
  return true;
}
}  // namespace

// Every pair of sizes, within and across the tiers: the common prefix is kept
// and what grows reads as zero, even where a reused block held other bytes.
TEST(nrBlockAllocator, ResizingKeepsContentsAndZeroesGrowth) {
  for (size_t from : SIZES)
    for (size_t to : SIZES) {
      // Dirty the block the pool hands out next for the target size.
      void* dirty = nrBlockAllocator::allocate(to);
      memset(dirty, 0xEE, to);
      nrBlockAllocator::release(dirty, to);

      unsigned char* block = static_cast<unsigned char*>(nrBlockAllocator::allocateZeroed(from));
      ASSERT_NE(block, nullptr);
      ASSERT_TRUE(allBytes(block, 0, from, 0)) << from;
      memset(block, 0x5A, from);
      block = static_cast<unsigned char*>(nrBlockAllocator::resizeZeroed(block, from, to));
      ASSERT_NE(block, nullptr);
      size_t kept = from < to ? from : to;
      EXPECT_TRUE(allBytes(block, 0, kept, 0x5A)) << from << " -> " << to;
      EXPECT_TRUE(allBytes(block, kept, to, 0)) << from << " -> " << to;
      nrBlockAllocator::release(block, to);
    }
  EXPECT_EQ(nrBlockAllocator::allocate(0), nullptr);
  void* small = nrBlockAllocator::allocate(32);
  EXPECT_EQ(nrBlockAllocator::resizeZeroed(small, 32, 0), nullptr);
  EXPECT_EQ(nrBlockAllocator::resizeZeroed(nullptr, 0, 0), nullptr);
}

// Blocks made on one thread and released on another, by threads that end
// while the pool holds their lists: each block stays whole and unshared.
TEST(nrBlockAllocator, BlocksCrossThreadsIntact) {
  const int THREADS = 4, BLOCKS = 2000;
  std::vector<std::vector<unsigned char*>> made(THREADS);
  auto sizeOf = [](int t, int i) { return size_t(16 + (t * 7 + i) % 84 * 12); };
  std::vector<std::thread> makers;
  for (int t = 0; t < THREADS; ++t)
    makers.emplace_back([&, t] {
      for (int i = 0; i < BLOCKS; ++i) {
        unsigned char* block = static_cast<unsigned char*>(nrBlockAllocator::allocate(sizeOf(t, i)));
        memset(block, t * 31 + i % 200, sizeOf(t, i));
        made[t].push_back(block);
      }
    });
  for (auto& maker : makers) maker.join();
  std::vector<std::thread> releasers;
  for (int t = 0; t < THREADS; ++t)
    releasers.emplace_back([&, t] {
      int other = (t + 1) % THREADS;
      for (int i = 0; i < BLOCKS; ++i) {
        EXPECT_TRUE(allBytes(made[other][i], 0, sizeOf(other, i), (unsigned char)(other * 31 + i % 200)));
        nrBlockAllocator::release(made[other][i], sizeOf(other, i));
      }
      // Blocks taken again on this thread, some of them from ended threads' lists.
      std::vector<void*> again;
      for (int i = 0; i < BLOCKS; ++i) {
        again.push_back(nrBlockAllocator::allocateZeroed(sizeOf(t, i)));
        EXPECT_TRUE(allBytes(again[i], 0, sizeOf(t, i), 0));
        memset(again[i], 0xA0 + t, sizeOf(t, i));
      }
      for (int i = 0; i < BLOCKS; ++i) {
        EXPECT_TRUE(allBytes(again[i], 0, sizeOf(t, i), (unsigned char)(0xA0 + t)));
        nrBlockAllocator::release(again[i], sizeOf(t, i));
      }
    });
  for (auto& releaser : releasers) releaser.join();
}
