// Storage for the library's objects and array elements, in three tiers by
// size. Small blocks (nodes, fields, short arrays) come from per-thread free
// lists carved out of large shared chunks: a scene read into memory then sits
// densely in few pages, huge pages once the pool has grown, instead of costing
// a page fault every few nodes. Medium blocks come from malloc. Large blocks
// are mappings of their own, which grow without copying and whose new pages
// read as zero; they are asked for to be filled, so their pages are made
// resident at once rather than faulted in one by one.
//
// A block is released with the size it was asked for, which picks its tier.
// Small blocks freed go back to the pool for reuse, not to the system. Builds
// with the address or leak sanitizer take every block from malloc, so that
// the sanitizers see each one.
#pragma once

#include <cstddef>

class nrBlockAllocator {
 public:
  static const size_t SMALL_LIMIT = 1024;
  static const size_t LARGE_LIMIT = 256 * 1024;

  // Null for 0 bytes or when memory is exhausted.
  static void* allocate(size_t bytes);
  // For operator new: throws std::bad_alloc when memory is exhausted.
  static void* allocateObject(size_t bytes);
  static void* allocateZeroed(size_t bytes);
  // The first min(oldBytes, newBytes) bytes kept, those past oldBytes zero.
  // Null, with the block unchanged, when memory is exhausted; null, with the
  // block released, when newBytes is 0.
  static void* resizeZeroed(void* block, size_t oldBytes, size_t newBytes);
  static void release(void* block, size_t bytes);

  // Bytes the allocator has mapped itself: the pool's chunks (blocks in use
  // or free) and the large blocks in use. malloc's statistics miss them.
  static size_t getMappedBytes();
};

// In a class body: the class's objects and arrays, and those of classes
// derived from it, come from the block pool (large arrays from mappings of
// their own, resident at once). Deleting through a base needs a virtual
// destructor, as it always does, so that the size released is the object's.
#define NR_POOLED_OBJECTS                                                                            \
  static void* operator new(std::size_t bytes) { return nrBlockAllocator::allocateObject(bytes); }   \
  static void* operator new[](std::size_t bytes) { return nrBlockAllocator::allocateObject(bytes); } \
  static void operator delete(void* block, std::size_t bytes) { nrBlockAllocator::release(block, bytes); } \
  static void operator delete[](void* block, std::size_t bytes) { nrBlockAllocator::release(block, bytes); }
