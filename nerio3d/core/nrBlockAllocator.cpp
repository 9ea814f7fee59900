#include "nerio3d/core/nrBlockAllocator.h"

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <mutex>
#include <new>

#include "nerio3d/platform/nrOS.h"

#if defined(__SANITIZE_ADDRESS__)
#define NR_PLAIN_BLOCKS 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(leak_sanitizer)
#define NR_PLAIN_BLOCKS 1
#endif
#endif

namespace {

const size_t GRAIN = 16;
const size_t CLASSES = nrBlockAllocator::SMALL_LIMIT / GRAIN;
static_assert(CLASSES <= 64, "one bit per size class in Depot::stocked");
// A thread carves its blocks from spans it takes from the shared chunk.
const size_t SPAN = 64 * 1024;
// The first chunk is small pages, so that small programs stay small; the
// next ones are huge pages.
const size_t FIRST_CHUNK = 1 << 20;
const size_t CHUNK = 4 << 20;

struct FreeBlock {
  FreeBlock* next;
};

inline unsigned classOf(size_t bytes) { return unsigned((bytes + GRAIN - 1) / GRAIN - 1); }

// Each thread's free lists and the rest of its span. Trivially destructible,
// so that objects released while the process exits still find it.
struct ThreadCache {
  FreeBlock* lists[CLASSES];
  char* cursor;
  char* limit;
  bool registered;
  bool retired;
};
thread_local ThreadCache cache;

// What the threads share: the chunk spans are cut from, and the free lists
// of threads that have ended, taken up whole by the next thread short of
// blocks of a size. Made once and never destroyed.
struct Depot {
  std::mutex lock;
  FreeBlock* lists[CLASSES] = {};
  std::atomic<uint64_t> stocked{0};  // bit c: lists[c] holds blocks
  char* cursor = nullptr;
  char* limit = nullptr;
  std::atomic<size_t> pooled{0};
  std::atomic<size_t> large{0};
  nrOS::SlotKey exitSlot;

  Depot();
  static Depot& get() {
    static Depot* depot = new Depot;
    return *depot;
  }

  void push(unsigned c, FreeBlock* first, FreeBlock* last) {
    last->next = lists[c];
    lists[c] = first;
    stocked.fetch_or(uint64_t(1) << c, std::memory_order_relaxed);
  }
  FreeBlock* takeList(unsigned c) {
    std::lock_guard<std::mutex> hold(lock);
    FreeBlock* list = lists[c];
    lists[c] = nullptr;
    stocked.fetch_and(~(uint64_t(1) << c), std::memory_order_relaxed);
    return list;
  }
  // A span of SPAN bytes, or null when no memory is left.
  char* takeSpan() {
    std::lock_guard<std::mutex> hold(lock);
    if (size_t(limit - cursor) < SPAN) {
      bool first = pooled.load(std::memory_order_relaxed) == 0;
      size_t size = first ? FIRST_CHUNK : CHUNK;
      char* chunk = static_cast<char*>(nrOS::mapPages(size, !first));
      if (!chunk) return nullptr;
      cursor = chunk;
      limit = chunk + size;
      pooled.fetch_add(size, std::memory_order_relaxed);
    }
    char* span = cursor;
    cursor += SPAN;
    return span;
  }
};

// An ending thread hands its free lists to the depot; blocks it releases
// later on its way out go straight there.
void retireCache(void*) {
  ThreadCache& t = cache;
  Depot& depot = Depot::get();
  std::lock_guard<std::mutex> hold(depot.lock);
  for (unsigned c = 0; c < CLASSES; ++c) {
    FreeBlock* first = t.lists[c];
    if (!first) continue;
    FreeBlock* last = first;
    while (last->next) last = last->next;
    depot.push(c, first, last);
    t.lists[c] = nullptr;
  }
  t.retired = true;
}

Depot::Depot() : exitSlot(nrOS::createSlot(retireCache)) {}

void* takeSmall(size_t bytes) {
  unsigned c = classOf(bytes);
  ThreadCache& t = cache;
  if (FreeBlock* block = t.lists[c]) {
    t.lists[c] = block->next;
    return block;
  }
  Depot& depot = Depot::get();
  if (!t.registered) {
    t.registered = true;
    nrOS::setSlot(depot.exitSlot, &t);
  }
  if (!t.retired && depot.stocked.load(std::memory_order_relaxed) >> c & 1) {
    if (FreeBlock* block = depot.takeList(c)) {
      t.lists[c] = block->next;
      return block;
    }
  }
  size_t size = (c + 1) * GRAIN;
  if (size_t(t.limit - t.cursor) < size) {
    // What is left of the span is too short: it becomes a free block of its
    // own size, and a new span is taken.
    size_t rest = size_t(t.limit - t.cursor);
    if (rest >= GRAIN) {
      FreeBlock* block = reinterpret_cast<FreeBlock*>(t.cursor);
      unsigned restClass = classOf(rest + 1) - 1;
      block->next = t.lists[restClass];
      t.lists[restClass] = block;
    }
    char* span = depot.takeSpan();
    if (!span) return nullptr;
    // The span will be carved to its end: its pages come in at once.
    nrOS::populatePages(span, SPAN);
    t.cursor = span;
    t.limit = span + SPAN;
  }
  void* block = t.cursor;
  t.cursor += size;
  return block;
}

void giveSmall(void* block, size_t bytes) {
  unsigned c = classOf(bytes);
  FreeBlock* freed = static_cast<FreeBlock*>(block);
  ThreadCache& t = cache;
  if (t.retired) {
    Depot& depot = Depot::get();
    std::lock_guard<std::mutex> hold(depot.lock);
    depot.push(c, freed, freed);
    return;
  }
  freed->next = t.lists[c];
  t.lists[c] = freed;
}

void* mapLarge(size_t bytes) {
  void* block = nrOS::mapPages(bytes);
  if (block) Depot::get().large.fetch_add(bytes, std::memory_order_relaxed);
  return block;
}

void unmapLarge(void* block, size_t bytes) {
  nrOS::unmapPages(block, bytes);
  Depot::get().large.fetch_sub(bytes, std::memory_order_relaxed);
}

enum Tier { SMALL, MEDIUM, LARGE };
inline Tier tierOf(size_t bytes) {
#ifdef NR_PLAIN_BLOCKS
  (void)bytes;
  return MEDIUM;
#else
  return bytes <= nrBlockAllocator::SMALL_LIMIT ? SMALL : bytes < nrBlockAllocator::LARGE_LIMIT ? MEDIUM : LARGE;
#endif
}

}  // namespace

void* nrBlockAllocator::allocate(size_t bytes) {
  if (!bytes) return nullptr;
  switch (tierOf(bytes)) {
    case SMALL: return takeSmall(bytes);
    case MEDIUM: return malloc(bytes);
    case LARGE: return mapLarge(bytes);
  }
  return nullptr;
}

void* nrBlockAllocator::allocateObject(size_t bytes) {
  if (void* block = allocate(bytes ? bytes : 1)) return block;
  throw std::bad_alloc();
}

void* nrBlockAllocator::allocateZeroed(size_t bytes) {
  if (!bytes) return nullptr;
  switch (tierOf(bytes)) {
    case SMALL: {
      void* block = takeSmall(bytes);
      if (block) memset(block, 0, bytes);
      return block;
    }
    case MEDIUM: return calloc(1, bytes);
    case LARGE: return mapLarge(bytes);
  }
  return nullptr;
}

void* nrBlockAllocator::resizeZeroed(void* block, size_t oldBytes, size_t newBytes) {
  if (!block || !oldBytes) return allocateZeroed(newBytes);
  if (!newBytes) {
    release(block, oldBytes);
    return nullptr;
  }
  Tier from = tierOf(oldBytes), to = tierOf(newBytes);
  void* resized = nullptr;
  if (from == SMALL && to == SMALL && classOf(oldBytes) == classOf(newBytes)) {
    resized = block;
  } else if (from == MEDIUM && to == MEDIUM) {
    resized = realloc(block, newBytes);
  } else if (from == LARGE && to == LARGE) {
    resized = nrOS::remapPages(block, oldBytes, newBytes);
    if (resized) Depot::get().large.fetch_add(newBytes - oldBytes, std::memory_order_relaxed);
    return resized;
  } else {
    resized = allocate(newBytes);
    if (!resized) return nullptr;
    memcpy(resized, block, std::min(oldBytes, newBytes));
    release(block, oldBytes);
  }
  // Fresh mappings are zero already; writing them would only fault them in.
  if (resized && newBytes > oldBytes && to != LARGE) memset(static_cast<char*>(resized) + oldBytes, 0, newBytes - oldBytes);
  return resized;
}

void nrBlockAllocator::release(void* block, size_t bytes) {
  if (!block) return;
  switch (tierOf(bytes)) {
    case SMALL: giveSmall(block, bytes); return;
    case MEDIUM: free(block); return;
    case LARGE: unmapLarge(block, bytes); return;
  }
}

size_t nrBlockAllocator::getMappedBytes() {
  Depot& depot = Depot::get();
  return depot.pooled.load(std::memory_order_relaxed) + depot.large.load(std::memory_order_relaxed);
}
