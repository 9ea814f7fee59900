#include "nerio3d/geometry/nrPickTree.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

namespace nrDetail {

namespace {

enum { LEAF_SIZE = 4, MAX_DEPTH = 64 };

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
struct nrPickTree::Builder {
  // A triangle's Morton code above its number.
  struct Key {
    NR_POOLED_OBJECTS
    uint64_t bits;
    uint32_t code() const { return uint32_t(bits >> 32); }
    int tri() const { return int(uint32_t(bits)); }
  };

  nrPickTree& tree;
  const Tri* in;
  const unsigned char* coords;
  int stride;
  int nodeCount = 0, triCount = 0;

  // Where the run [begin, end) of sorted keys splits.
  static int split(const Key* keys, int begin, int end) {
    uint32_t differ = keys[begin].code() ^ keys[end - 1].code();
    if (!differ) return begin + (end - begin) / 2;
    uint32_t bit = 1u << (31 - __builtin_clz(differ));
    return int(std::partition_point(keys + begin, keys + end, [bit](const Key& k) { return !(k.code() & bit); }) -
               keys);
  }
  static int nodesFor(const Key* keys, int begin, int end) {
    if (end - begin <= LEAF_SIZE) return 1;
    int mid = split(keys, begin, end);
    return 1 + nodesFor(keys, begin, mid) + nodesFor(keys, mid, end);
  }

  // The 10 bits of v spread to every third bit.
  static uint32_t spread(uint32_t v) {
    v = (v | v << 16) & 0x030000FF;
    v = (v | v << 8) & 0x0300F00F;
    v = (v | v << 4) & 0x030C30C3;
    return (v | v << 2) & 0x09249249;
  }

  // Three times the centre of triangle t (the scale does not change the order).
  void centre3(const Tri& t, float out[3]) const {
    const nrVec3f &a = vertex(coords, stride, t.v[0]), &b = vertex(coords, stride, t.v[1]),
                  &c = vertex(coords, stride, t.v[2]);
    for (int k = 0; k < 3; ++k) out[k] = a[k] + b[k] + c[k];
  }

  // The keys of the triangles numbered in kept, sorted by the Morton code of
  // their centres within the centres' bounds (a radix sort of 30-bit codes).
  std::unique_ptr<Key[]> mortonOrder(const int* kept, int count) const {
    float lo[3] = {HUGE_VALF, HUGE_VALF, HUGE_VALF}, hi[3] = {-HUGE_VALF, -HUGE_VALF, -HUGE_VALF};
    for (int i = 0; i < count; ++i) {
      float c[3];
      centre3(in[kept[i]], c);
      for (int k = 0; k < 3; ++k) {
        lo[k] = std::min(lo[k], c[k]);
        hi[k] = std::max(hi[k], c[k]);
      }
    }
    // One cell size on every axis, set by the widest extent: a thin axis then
    // only orders the lowest levels, and the upper levels split the wide
    // ones, as a flat set seen from above needs.
    float extent = std::max({hi[0] - lo[0], hi[1] - lo[1], hi[2] - lo[2]});
    float scale = extent > 0 ? 1023.0f / extent : 0.0f;
    std::unique_ptr<Key[]> keys(new Key[size_t(count)]), spare(new Key[size_t(count)]);
    for (int i = 0; i < count; ++i) {
      float c[3];
      centre3(in[kept[i]], c);
      uint32_t code = 0;
      for (int k = 0; k < 3; ++k) {
        // Centres near overflow give no finite cell: they take cell 0.
        float cell = (c[k] - lo[k]) * scale;
        cell = cell >= 0 ? std::min(cell, 1023.0f) : 0.0f;
        code |= spread(uint32_t(cell)) << k;
      }
      keys[i].bits = uint64_t(code) << 32 | uint32_t(kept[i]);
    }
    enum { BITS = 10, BUCKETS = 1 << BITS };
    for (int shift = 32; shift < 62; shift += BITS) {
      int start[BUCKETS + 1] = {};
      for (int i = 0; i < count; ++i) ++start[(keys[i].bits >> shift & (BUCKETS - 1)) + 1];
      for (int b = 0; b < BUCKETS; ++b) start[b + 1] += start[b];
      for (int i = 0; i < count; ++i) spare[start[keys[i].bits >> shift & (BUCKETS - 1)]++] = keys[i];
      keys.swap(spare);
    }
    return keys;
  }

  void build(const Key* keys, int begin, int end) {
    Node& node = tree.nodes[nodeCount++];
    if (end - begin <= LEAF_SIZE) {
      node.next = triCount;
      node.count = end - begin;
      std::fill(node.min, node.min + 3, HUGE_VALF);
      std::fill(node.max, node.max + 3, -HUGE_VALF);
      for (int i = begin; i < end; ++i) {
        const Tri& t = in[keys[i].tri()];
        tree.tris[triCount++] = t;
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
      return;
    }
    int mid = split(keys, begin, end);
    build(keys, begin, mid);
    node.next = nodeCount;
    node.count = 0;
    build(keys, mid, end);
    const Node &left = (&node)[1], &right = tree.nodes[node.next];
    for (int k = 0; k < 3; ++k) {
      node.min[k] = std::min(left.min[k], right.min[k]);
      node.max[k] = std::max(left.max[k], right.max[k]);
    }
  }
};

nrPickTree::nrPickTree(int version, const Tri* in, int count, const unsigned char* coords, int stride,
                       std::unique_ptr<int[]> first, int primCount)
    : version(version), primFirst(std::move(first)), looseCount(0), prims(primCount), scale(0) {
  // The triangles boxes can hold, by number; the others are kept loose.
  std::unique_ptr<int[]> kept(new int[count > 0 ? count : 1]);
  int keptCount = 0;
  std::vector<Tri> looseTris;
  for (int i = 0; i < count; ++i) {
    const nrVec3f* p[3] = {&vertex(coords, stride, in[i].v[0]), &vertex(coords, stride, in[i].v[1]),
                           &vertex(coords, stride, in[i].v[2])};
    bool finite = true;
    for (const nrVec3f* v : p)
      for (int k = 0; k < 3; ++k) {
        finite = finite && std::isfinite((*v)[k]);
        if (finite) scale = std::max(scale, std::fabs((*v)[k]));
      }
    double ab[3], ac[3];
    for (int k = 0; k < 3; ++k) {
      ab[k] = double((*p[1])[k]) - (*p[0])[k];
      ac[k] = double((*p[2])[k]) - (*p[0])[k];
    }
    double cross[3] = {ab[1] * ac[2] - ab[2] * ac[1], ab[2] * ac[0] - ab[0] * ac[2], ab[0] * ac[1] - ab[1] * ac[0]};
    double area2 = cross[0] * cross[0] + cross[1] * cross[1] + cross[2] * cross[2];
    double ab2 = ab[0] * ab[0] + ab[1] * ab[1] + ab[2] * ab[2], ac2 = ac[0] * ac[0] + ac[1] * ac[1] + ac[2] * ac[2];
    if (!finite || !(area2 > MIN_SINE_SQUARED * ab2 * ac2))
      looseTris.push_back(in[i]);
    else
      kept[keptCount++] = i;
  }
  if (!looseTris.empty()) {
    looseCount = int(looseTris.size());
    loose.reset(new Tri[looseTris.size()]);
    std::copy(looseTris.begin(), looseTris.end(), loose.get());
  }
  if (keptCount == 0) return;
  Builder builder{*this, in, coords, stride};
  std::unique_ptr<Builder::Key[]> keys = builder.mortonOrder(kept.get(), keptCount);
  kept.reset();
  nodes.reset(new Node[Builder::nodesFor(keys.get(), 0, keptCount)]);
  tris.reset(new Tri[keptCount]);
  builder.build(keys.get(), 0, keptCount);
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
  for (int i = 0; i < looseCount; ++i) offer(loose[i]);
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
