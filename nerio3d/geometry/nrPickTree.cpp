#include "nerio3d/geometry/nrPickTree.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <new>
#include <vector>

namespace nrDetail {

namespace {

// AHEAD: how many triangles ahead of the one being boxed the loads of its
// points start.
enum { LEAF_SIZE = 4, MAX_DEPTH = 64, AHEAD = 32 };

// How much a triangle's box grows beyond its extent, and a node's beyond its
// box per unit of coordinate magnitude, so that the boxes hold every point
// the exact float test accepts: that test is off by a few units in the last
// place of the coordinates, and by the triangle's size over the sine squared
// of its first corner's angle, which loose triangles bound from below.
const float TRI_MARGIN = 1e-2f, SCALE_MARGIN = 2e-5f;
const double MIN_SINE_SQUARED = 1e-3;

const nrVec3f& vertex(const unsigned char* coords, int stride, int e) {
  return *reinterpret_cast<const nrVec3f*>(coords + std::ptrdiff_t(stride) * e);
}

}  // namespace

// Orders the triangles along a Morton curve through their centres, then
// splits each run of them where the highest bit of their codes changes (in
// the middle when all codes are equal), down to leaves of LEAF_SIZE: each
// node is then one cell of an octree over the centres, and the whole costs
// one sort instead of a selection at every level. Boxes are gathered on the
// way back.
//
// The sort needs no storage of its own: the tree's triangles take twice the
// bytes of its keys (a triangle's code above its number), which it moves
// between the lower and the upper end of their storage, to end in the upper
// one; the leaves, filled in order from the lower end, then only ever
// overwrite keys already read. Keys are read and written as bytes, since the
// same bytes hold triangles.
struct nrPickTree::Builder {
  nrPickTree& tree;
  const Tri* in;
  const unsigned char* coords;
  int stride;
  int count;
  // The ends of the storage: the keys start at the lower one and end at keys.
  unsigned char *lower, *keys;
  int capacity = 0, used = 0;

  uint64_t key(int i) const {
    uint64_t k;
    memcpy(&k, keys + 8 * size_t(i), 8);
    return k;
  }
  uint32_t code(int i) const { return uint32_t(key(i) >> 32); }

  // Where the run [begin, end) of sorted keys splits.
  int split(int begin, int end) const {
    uint32_t differ = code(begin) ^ code(end - 1);
    if (!differ) return begin + (end - begin) / 2;
    // The first code with the bit set: halving without branches to mispredict,
    // then counting the last few codes without it, which need not wait on
    // one another.
    uint32_t bit = 1u << (31 - __builtin_clz(differ));
    int n = end - begin;
    while (n > 16) {
      int half = n / 2;
      begin = code(begin + half) & bit ? begin : begin + half;
      n -= half;
    }
    int clear = 0;
    for (int i = begin; i < begin + n; ++i) clear += !(code(i) & bit);
    return begin + clear;
  }

  // The 10 bits of v spread to every third bit.
  static uint32_t spread(uint32_t v) {
    v = (v | v << 16) & 0x030000FF;
    v = (v | v << 8) & 0x0300F00F;
    v = (v | v << 4) & 0x030C30C3;
    return (v | v << 2) & 0x09249249;
  }

  // What the first pass leaves for each boxed triangle where two keys go:
  // three times its centre (the scale does not change the order) and its
  // number.
  struct Centre {
    float c[3];
    uint32_t number;
  };

  // Sorts the keys of the boxed triangles by the Morton code of their centres
  // within the centres' bounds lo, hi (a radix sort of 30-bit codes): made at
  // the lower end from the centres, and sorted to the upper one.
  void mortonOrder(const float lo[3], const float hi[3]) {
    // One cell size on every axis, set by the widest extent: a thin axis then
    // only orders the lowest levels, and the upper levels split the wide
    // ones, as a flat set seen from above needs.
    float extent = std::max({hi[0] - lo[0], hi[1] - lo[1], hi[2] - lo[2]});
    float scale = extent > 0 ? 1023.0f / extent : 0.0f;
    enum { BITS = 10, BUCKETS = 1 << BITS, PASSES = 3 };
    std::unique_ptr<int[]> start(new int[PASSES * BUCKETS]());
    unsigned char* from = lower;
    for (int i = 0; i < count; ++i) {
      // Key i overwrites half of centre i / 2, read before.
      Centre centre;
      memcpy(&centre, from + sizeof(Centre) * size_t(i), sizeof centre);
      uint32_t code = 0;
      for (int a = 0; a < 3; ++a) {
        // Centres near overflow give no finite cell: they take cell 0.
        float cell = (centre.c[a] - lo[a]) * scale;
        cell = cell >= 0 ? std::min(cell, 1023.0f) : 0.0f;
        code |= spread(uint32_t(cell)) << a;
      }
      uint64_t k = uint64_t(code) << 32 | centre.number;
      memcpy(from + 8 * size_t(i), &k, 8);
      for (int p = 0; p < PASSES; ++p) ++start[p * BUCKETS + (code >> (p * BITS) & (BUCKETS - 1))];
    }
    for (int p = 0; p < PASSES; ++p) {
      int* bucket = &start[p * BUCKETS];
      for (int b = 0, sum = 0; b < BUCKETS; ++b) {
        int n = bucket[b];
        bucket[b] = sum;
        sum += n;
      }
      unsigned char* to = p % 2 ? lower : keys;
      int shift = 32 + p * BITS;
      for (int i = 0; i < count; ++i) {
        uint64_t k;
        memcpy(&k, from + 8 * size_t(i), 8);
        memcpy(to + 8 * size_t(bucket[k >> shift & (BUCKETS - 1)]++), &k, 8);
      }
      from = to;
    }
  }

  // Gives the nodes room for n. Room is made at first for three nodes in four
  // triangles, as many as sets commonly need, grown by half when short and
  // trimmed once the tree is built: storage grown in small steps would miss
  // most of the huge pages that a block mapped at once gets.
  void makeRoom(int n) {
    size_t bytes = sizeof(Node) * size_t(n);
    void* moved = nrBlockAllocator::resizeZeroed(tree.nodes.get(), tree.nodes.get_deleter().bytes, bytes);
    if (!moved) throw std::bad_alloc();
    tree.nodes.release();
    tree.nodes = std::unique_ptr<Node[], NodeRelease>(static_cast<Node*>(moved), NodeRelease{bytes});
    capacity = n;
  }
  int newNode() {
    if (used == capacity) makeRoom(capacity ? capacity + capacity / 2 : count - count / 4 + 1);
    return used++;
  }

  int build(int begin, int end) {
    int at = newNode();
    if (end - begin <= LEAF_SIZE) {
      Node& node = tree.nodes[at];
      node.next = begin;
      node.count = end - begin;
      std::fill(node.min, node.min + 3, HUGE_VALF);
      std::fill(node.max, node.max + 3, -HUGE_VALF);
      int numbers[LEAF_SIZE];
      for (int i = begin; i < end; ++i) {
        numbers[i - begin] = int(uint32_t(key(i)));
        // The triangles are met out of their order: theirs and their points'
        // loads are started well ahead.
        if (i + 2 * AHEAD < count) __builtin_prefetch(&in[uint32_t(key(i + 2 * AHEAD))]);
        if (i + AHEAD < count)
          for (int e : in[uint32_t(key(i + AHEAD))].v) __builtin_prefetch(&vertex(coords, stride, e));
      }
      for (int i = begin; i < end; ++i) {
        const Tri& t = in[numbers[i - begin]];
        tree.tris[i] = t;
        float lo[3], hi[3];
        for (int k = 0; k < 3; ++k) {
          const nrVec3f &a = vertex(coords, stride, t.v[0]), &b = vertex(coords, stride, t.v[1]),
                        &c = vertex(coords, stride, t.v[2]);
          lo[k] = std::min({a[k], b[k], c[k]});
          hi[k] = std::max({a[k], b[k], c[k]});
        }
        float margin = TRI_MARGIN * std::max({hi[0] - lo[0], hi[1] - lo[1], hi[2] - lo[2]});
        for (int k = 0; k < 3; ++k) {
          node.min[k] = std::min(node.min[k], lo[k] - margin);
          node.max[k] = std::max(node.max[k], hi[k] + margin);
        }
      }
      return at;
    }
    int mid = split(begin, end);
    for (int k = 1; k < 8; ++k) __builtin_prefetch(keys + 8 * size_t(mid + (end - mid) * k / 8));
    build(begin, mid);
    int right = build(mid, end);
    Node &node = tree.nodes[at], &left = tree.nodes[at + 1], &other = tree.nodes[right];
    node.next = right;
    node.count = 0;
    for (int k = 0; k < 3; ++k) {
      node.min[k] = std::min(left.min[k], other.min[k]);
      node.max[k] = std::max(left.max[k], other.max[k]);
    }
    return at;
  }
};

nrPickTree::nrPickTree(int version, const Tri* in, int count, const unsigned char* coords, int stride,
                       std::unique_ptr<int[]> first, int primCount)
    : version(version),
      nodes(nullptr, NodeRelease{0}),
      tris(new Tri[count > 0 ? count : 1]),
      boxedCount(0),
      looseCount(0),
      primFirst(std::move(first)),
      prims(primCount),
      scale(0) {
  // The centres of the triangles boxes can hold go to the storage, and their
  // bounds are gathered on the way.
  unsigned char* storage = reinterpret_cast<unsigned char*>(tris.get());
  float lo[3] = {HUGE_VALF, HUGE_VALF, HUGE_VALF}, hi[3] = {-HUGE_VALF, -HUGE_VALF, -HUGE_VALF};
  std::vector<Tri> looseTris;
  for (int i = 0; i < count; ++i) {
    const nrVec3f* p[3] = {&vertex(coords, stride, in[i].v[0]), &vertex(coords, stride, in[i].v[1]),
                           &vertex(coords, stride, in[i].v[2])};
    bool finite = true;
    for (const nrVec3f* v : p)
      for (int k = 0; k < 3; ++k) {
        float magnitude = std::fabs((*v)[k]);
        bool usable = magnitude < HUGE_VALF;
        finite &= usable;
        scale = usable && magnitude > scale ? magnitude : scale;
      }
    double ab[3], ac[3];
    for (int k = 0; k < 3; ++k) {
      ab[k] = double((*p[1])[k]) - (*p[0])[k];
      ac[k] = double((*p[2])[k]) - (*p[0])[k];
    }
    double cross[3] = {ab[1] * ac[2] - ab[2] * ac[1], ab[2] * ac[0] - ab[0] * ac[2], ab[0] * ac[1] - ab[1] * ac[0]};
    double area2 = cross[0] * cross[0] + cross[1] * cross[1] + cross[2] * cross[2];
    double ab2 = ab[0] * ab[0] + ab[1] * ab[1] + ab[2] * ab[2], ac2 = ac[0] * ac[0] + ac[1] * ac[1] + ac[2] * ac[2];
    if (!finite || !(area2 > MIN_SINE_SQUARED * ab2 * ac2)) {
      looseTris.push_back(in[i]);
      continue;
    }
    // Written field by field: a whole record built first would be read back
    // before its parts had reached memory.
    unsigned char* centre = storage + sizeof(Builder::Centre) * size_t(boxedCount++);
    for (int k = 0; k < 3; ++k) {
      float c = (*p[0])[k] + (*p[1])[k] + (*p[2])[k];
      lo[k] = std::min(lo[k], c);
      hi[k] = std::max(hi[k], c);
      memcpy(centre + offsetof(Builder::Centre, c) + sizeof c * size_t(k), &c, sizeof c);
    }
    uint32_t number = uint32_t(i);
    memcpy(centre + offsetof(Builder::Centre, number), &number, sizeof number);
  }
  looseCount = int(looseTris.size());
  if (boxedCount) {
    static_assert(sizeof(Tri) >= 2 * sizeof(uint64_t) && sizeof(Builder::Centre) <= sizeof(Tri),
                  "a triangle's storage holds two keys or a centre");
    unsigned char* keys = storage + sizeof(Tri) * size_t(count) - sizeof(uint64_t) * size_t(boxedCount);
    Builder builder{*this, in, coords, stride, boxedCount, storage, keys};
    builder.mortonOrder(lo, hi);
    builder.build(0, boxedCount);
    builder.makeRoom(builder.used);
  }
  std::copy(looseTris.begin(), looseTris.end(), tris.get() + boxedCount);
}

bool nrPickTree::pick(const nrSeg& seg, const unsigned char* coords, int stride, int cullFace, TriTest test,
                      Hit& hit) const {
  bool found = false;
  float best = seg.length;
  auto offer = [&](const Tri& tri) {
    float t = 0;
    nrVec3f normal;
    if (!test(seg, best, vertex(coords, stride, tri.v[0]), vertex(coords, stride, tri.v[1]),
              vertex(coords, stride, tri.v[2]), cullFace, t, normal) ||
        !(t >= 0))
      return;
    // The test keeps t within best: a nearer one, or an equally near one met earlier in order.
    if (found && !(t < best) && tri.order > hit.order) return;
    found = true;
    best = t;
    hit.t = t;
    hit.order = tri.order;
    hit.normal = normal;
  };
  for (int i = boxedCount; i < boxedCount + looseCount; ++i) offer(tris[i]);
  if (!nodes) return found;

  float pad = SCALE_MARGIN * (scale + std::max({std::fabs(seg.pos[0]), std::fabs(seg.pos[1]), std::fabs(seg.pos[2])}));
  float inv[3];
  for (int k = 0; k < 3; ++k) {
    float d = seg.dir[k];
    inv[k] = std::fabs(d) > 1e-30f ? 1 / d : std::copysign(1e30f, d);
  }
  // The distance at which seg enters the node's box grown by pad, or HUGE_VALF when it misses it.
  auto enter = [&](const Node& n) {
    float lo = -pad, hi = best + pad;
    for (int k = 0; k < 3; ++k) {
      float t1 = (n.min[k] - pad - seg.pos[k]) * inv[k], t2 = (n.max[k] + pad - seg.pos[k]) * inv[k];
      if (t1 > t2) std::swap(t1, t2);
      lo = std::max(lo, t1);
      hi = std::min(hi, t2);
    }
    return lo <= hi ? lo : HUGE_VALF;
  };
  struct Entry {
    int node;
    float t;
  } stack[MAX_DEPTH];
  int depth = 0;
  float t0 = enter(nodes[0]);
  if (t0 != HUGE_VALF) stack[depth++] = {0, t0};
  while (depth > 0) {
    Entry e = stack[--depth];
    if (e.t > best + pad) continue;
    const Node& n = nodes[e.node];
    if (n.count) {
      for (int i = n.next; i < n.next + n.count; ++i) offer(tris[i]);
      continue;
    }
    Entry near = {e.node + 1, enter(nodes[e.node + 1])}, far = {n.next, enter(nodes[n.next])};
    if (far.t < near.t) std::swap(near, far);
    if (far.t != HUGE_VALF) stack[depth++] = far;
    if (near.t != HUGE_VALF) stack[depth++] = near;
  }
  return found;
}

int nrPickTree::primOf(int order) const {
  return int(std::upper_bound(primFirst.get(), primFirst.get() + prims + 1, order) - primFirst.get()) - 1;
}

}  // namespace nrDetail
