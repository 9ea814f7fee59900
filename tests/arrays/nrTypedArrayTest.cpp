#include "nerio3d/arrays/nrTypedArray.h"

#include <gtest/gtest.h>

#include <functional>
#include <initializer_list>
#include <vector>

#include "nerio3d/arrays/nrDList.h"
#include "nerio3d/arrays/nrData.h"
#include "nerio3d/arrays/nrPtrArray2D.h"
#include "nrCapture.h"
#include "nrOutputCapture.h"

namespace {

template <typename A, typename... V>
A arrayOf(const V&... values) {
  A a;
  (a.append(values), ...);
  return a;
}

template <typename A>
std::string written(const A& a, int level = 0) {
  return nrtest::writeToString([&](nrOutput* o) { a.write(o); }, level);
}

}  // namespace

TEST(nrTypedArray, GrowthIsLinearInStepsOfTheExtension) {
  nrIntArray a, b, c;
  EXPECT_EQ(a.getSize(), 16u);
  EXPECT_EQ(a.getCount(), 0u);
  a.set(16, 1);
  EXPECT_EQ(a.getSize(), 48u);
  EXPECT_EQ(a.getCount(), 17u);
  b.set(100, 1);
  EXPECT_EQ(b.getSize(), 112u);
  c.setExtension(1);
  c.set(20, 1);
  EXPECT_EQ(c.getSize(), 21u);
  EXPECT_EQ(nrFloatArray(0).getSize(), 1u);
  EXPECT_EQ(nrFloatArray(5).getSize(), 5u);

  // setSize may shrink the capacity and leaves the count alone; regrown
  // storage is zero-filled.
  nrIntArray d;
  d.set(3, 9);
  d.set(1, 4);
  d.setSize(2);
  EXPECT_EQ(d.getSize(), 2u);
  EXPECT_EQ(d.getCount(), 4u);
  int walked = 0;
  for (int v : d) walked += v >= 0;
  EXPECT_EQ(walked, 2) << "range-for stops where the storage ends";
  // Growth to at least twice the size and a smaller step keep the contents alike.
  for (unsigned size : {8u, 9u}) {
    d.setSize(size);
    EXPECT_EQ(d[1], 4);
    EXPECT_EQ(d[3], 0) << "a value cut off by shrinking stays gone";
    EXPECT_EQ(d[size - 1], 0);
  }
}

TEST(nrTypedArray, EditingOperations) {
  nrIntArray a;
  a.set(5, 7);
  ASSERT_EQ(a.getCount(), 6u);
  for (unsigned i = 0; i < 5; ++i) EXPECT_EQ(a[i], 0);

  const int three[] = {1, 2, 3};
  nrIntArray g;
  g.setRange(0, 3, three);
  nrIntArray r = g, f = g;
  g.insert(10, 9);  // beyond the count: a gap, count grows by one only
  EXPECT_EQ(g.getCount(), 4u);
  EXPECT_EQ(g[10], 9);
  g.insert(0, 0);
  EXPECT_EQ(g.getCount(), 5u);
  EXPECT_EQ(g[0], 0);
  EXPECT_EQ(g[3], 3);

  EXPECT_TRUE(r.remove(1));
  EXPECT_EQ(r.getCount(), 2u);
  EXPECT_EQ(std::make_pair(r[0], r[1]), std::make_pair(2, 3));
  EXPECT_TRUE(f.fastRemove(1));
  EXPECT_EQ(std::make_pair(f[0], f[1]), std::make_pair(3, 2));
  EXPECT_FALSE(f.remove(42));
  EXPECT_EQ(f.find(2), 1);
  EXPECT_EQ(f.find(42), -1);
  EXPECT_EQ(f.replace(2, 20), 1);
  EXPECT_EQ(f.replace(2, 20), -1);
  f.removeIndex(7);
  EXPECT_EQ(f.getCount(), 2u);

  int out[5] = {-1, -1, -1, -1, -1};
  f.getRange(1, 4, out);  // clipped to the count
  EXPECT_EQ(std::make_pair(out[0], out[1]), std::make_pair(20, -1));
  f.fillRange(1, 3, 4);
  EXPECT_EQ(f.getCount(), 4u);
  EXPECT_EQ(f[3], 4);
  nrIntArray copy;
  copy.set(f);
  EXPECT_EQ(copy.getCount(), 4u);
  EXPECT_EQ(copy[1], 4);

  // A range taken from the array itself moves as a whole, up or down.
  const int four[] = {0, 1, 2, 3};
  nrIntArray up, down;
  up.setRange(0, 4, four);
  down.setRange(0, 4, four);
  up.setRange(1, 3, up.getArray());
  down.setRange(0, 3, down.getArray() + 1);
  EXPECT_EQ(std::vector<int>(up.getArray(), up.getArray() + 4), (std::vector<int>{0, 0, 1, 2}));
  EXPECT_EQ(std::vector<int>(down.getArray(), down.getArray() + 4), (std::vector<int>{1, 2, 3, 3}));
}

TEST(nrTypedArray, CompositeAndStringElements) {
  nrVec3fArray v = arrayOf<nrVec3fArray>(nrVec3f(1, 2, 3), nrVec3f(4, 5, 6));
  EXPECT_EQ(v.find(nrVec3f(4, 5, 6)), 1);
  EXPECT_EQ(v.find(nrVec3f(4, 5, 7)), -1);

  nrString a("alpha");
  nrStringArray s = arrayOf<nrStringArray>(a, nrString("beta"));
  a = "changed";  // each slot holds its own copy
  EXPECT_TRUE(s[0] == "alpha");
  EXPECT_EQ(s.find(nrString("beta")), 1);
  EXPECT_TRUE(s.remove(nrString("alpha")));
  EXPECT_TRUE(s[0] == "beta");
  s.insert(0, nrString("first"));
  EXPECT_TRUE(s[1] == "beta");

  // An element of the array itself as the value, across growth and shifting.
  nrStringArray full;
  nrIntArray ints;
  for (int i = 0; i < 16; ++i) {
    full.append(nrString(i ? "later" : "first"));
    ints.append(i + 100);
  }
  full.append(full[0]);
  EXPECT_TRUE(full[16] == "first");
  full.insert(0, full[1]);
  EXPECT_TRUE(full[0] == "later");
  ints.set(60, ints[0]);
  ints.fillRange(100, 20, ints[1]);
  ints.insert(0, ints[2]);
  EXPECT_EQ(ints[61], 100);
  EXPECT_EQ(ints[120], 101);
  EXPECT_EQ(ints[0], 102);
}

TEST(nrTypedArray, ViewsOfASharedBlock) {
  nrData* block = nrData::create(100);
  block->ref();
  {
    nrVec3fArray view(block, 4, 24);
    EXPECT_EQ(block->getRefCount(), 2);
    EXPECT_EQ(view.getSize(), 8u);  // (100 - 4) / 12: element size, not stride
    EXPECT_EQ(view.getCount(), 0u);
    view.set(1, nrVec3f(1, 2, 3));
    const float* payload = reinterpret_cast<const float*>(static_cast<char*>(block->getPayload()) + 4 + 24);
    EXPECT_EQ(payload[2], 3.0f);
    // Range-for steps at the view's stride over its counted elements.
    view.set(0, nrVec3f(0, 0, 0));
    for (nrVec3f& v : view) v.x += 1;
    float sum = 0;
    for (const nrVec3f& v : static_cast<const nrVec3fArray&>(view)) sum += v.x + v.y + v.z;
    EXPECT_EQ(sum, 1 + (2 + 2 + 3));
    EXPECT_EQ(payload[0], 2.0f);

    EXPECT_EQ(nrtest::captureStderr([&] { view.setCount(9); }), "(FATAL, RESOURCE): Cannot resize interleaved array\n");
    EXPECT_EQ(view.getSize(), 8u);
    EXPECT_EQ(view.getCount(), 9u);
  }
  EXPECT_EQ(block->getRefCount(), 1);
  block->unref();

  nrData* empty = new nrData;
  EXPECT_EQ(empty->getSize(), 0u);
  EXPECT_TRUE(empty->unref());
}

TEST(nrTypedArray, HostileIndicesRangesAndViewsStoreNothingOutside) {
  nrIntArray a = arrayOf<nrIntArray>(1, 2, 3);
  int out[4] = {7, 7, 7, 7};
  a.set(~0u, 9);
  a.insert(~0u, 9);
  a.fillRange(~0u - 4, 8, 9);
  a.setRange(1, 2, nullptr);
  a.getRange(3, 2, out);
  a.getRange(2, ~0u, out);
  EXPECT_EQ(a.getCount(), 3u);
  EXPECT_EQ(a.getSize(), 16u);
  EXPECT_EQ(out[0], 3);
  EXPECT_EQ(out[1], 7);

  // A range taken from the array's own storage survives the growth it causes.
  a.setRange(16, 16, a.getArray());
  EXPECT_EQ(a.getCount(), 32u);
  EXPECT_EQ(a[18], 3);
  // An index that was negative cannot wrap the growth round to a smaller size.
  EXPECT_EQ(nrtest::captureStderr([&] { a.set(~0u - 4, 9); }), "(FATAL, RESOURCE): Cannot allocate array storage\n");
  EXPECT_EQ(a.getSize(), 48u);

  // Shrinking a list of texts frees those cut off (the leak checker sees it).
  nrStringArray texts = arrayOf<nrStringArray>(nrString("x"), nrString("y"));
  texts.setSize(1);

  nrData* block = nrData::create(16);
  block->ref();
  for (short offset : {short(-8), short(20)}) {
    nrIntArray view(block, offset, 4);
    EXPECT_EQ(view.getSize(), 0u) << offset;
    EXPECT_EQ(nrtest::captureStderr([&] { view.set(0, 1); }), "(FATAL, RESOURCE): Cannot resize interleaved array\n");
    EXPECT_EQ(view.getCount(), 0u);
  }
  // A strided view's capacity (counted in elements of its size) runs past
  // the block: stores beyond the last whole element at the stride are refused.
  nrIntArray strided(block, 0, 8);
  EXPECT_EQ(strided.getSize(), 4u);
  strided.setRange(0, 2, out);
  for (auto store : std::initializer_list<std::function<void()>>{
           [&] { strided.append(9); }, [&] { strided.insert(0, 9); }, [&] { strided.fillRange(1, 2, 9); },
           [&] { strided.setRange(2, 1, out); }}) {
    EXPECT_EQ(nrtest::captureStderr(store), "(FATAL, RESOURCE): Cannot resize interleaved array\n");
    EXPECT_EQ(strided.getCount(), 2u);
  }
  strided.setCount(3);
  EXPECT_EQ(strided.find(12345), -1);
  strided.fastRemoveIndex(0);
  EXPECT_EQ(strided[0], 3);
  block->unref();
  nrIntArray unviewed(nullptr, 0, 4);
  unviewed.append(5);
  EXPECT_EQ(unviewed[0], 5);
}

TEST(nrTypedArray, WriteFormats) {
  EXPECT_EQ(written(arrayOf<nrIntArray>(1, 2), 1), "[\n  1,\n  2,\n  ]");
  EXPECT_EQ(written(nrFloatArray()), "[\n]");
  EXPECT_EQ(written(arrayOf<nrByteArray>(static_cast<char>(0xff), char(0x10))), "[\n0xffffffff,\n0x10,\n]");
  EXPECT_EQ(written(arrayOf<nrFloatArray>(1.5f)), "[\n1.500000,\n]");
  EXPECT_EQ(written(arrayOf<nrStringArray>(nrString("x"))), "[\n(null),\n]");
  EXPECT_EQ(written(arrayOf<nrVec2fArray>(nrVec2f(1, 0.5f))), "[\n1 0.5,\n]");
}

TEST(nrPtrArray2D, GrowsRowsAndColumnsKeepingCells) {
  nrPtrArray2D t(10, 100);
  for (int c = 0; c < 3; ++c) t.addCol();
  for (int r = 0; r < 10; ++r) {
    t.addRow();
    for (int c = 0; c < 3; ++c) t(r, c) = reinterpret_cast<void*>(static_cast<long>(r * 10 + c + 1));
  }
  EXPECT_EQ(t.getRowCapacity(), 10);
  t.addRow();  // the eleventh row
  EXPECT_EQ(t.getRowCapacity(), 21);
  EXPECT_EQ(t.getColCapacity(), 100);
  EXPECT_EQ(t.getNumRows(), 11);
  EXPECT_EQ(t.get(9, 2), reinterpret_cast<void*>(93L));

  nrPtrArray2D narrow(2, 1);
  narrow.addRow();
  narrow.addCol();
  narrow(0, 0) = &narrow;
  narrow.addCol();  // column capacity 1 -> 3, rows max(1 * 2 + 1, 2) = 3
  EXPECT_EQ(narrow.getColCapacity(), 3);
  nrPtrArray2D vast(1 << 30, 1 << 30);  // beyond any memory: grows from nothing
  vast.addRow();
  EXPECT_EQ(vast.getRowCapacity(), 1);
  EXPECT_EQ(narrow.getRowCapacity(), 3);
  EXPECT_EQ(narrow.get(0, 0), &narrow);
}

TEST(nrDList, AnItemLinkedAlreadyIsRefused) {
  struct Item : nrDListItem {} a, b;
  nrDList list;
  list.append(&a);
  list.append(&b);
  EXPECT_EQ(nrtest::captureStderr([&] { list.append(&a); }),
            "(WARN, USAGE): nrDList::append() - item is in a list already\n");
  EXPECT_EQ(list.getCount(), 2);
}
