// A bounding-volume hierarchy over the triangles of one geometry set, so that
// a pick tests the few triangles near the segment instead of all of them and
// still finds exactly what testing all of them in order finds.
#pragma once

#include <memory>

#include "nerio3d/core/nrBlockAllocator.h"
#include "nerio3d/math/nrSeg.h"

namespace nrDetail {

class nrPickTree {
 public:
  // One triangle: three coordinate element numbers and its place in the order
  // in which testing every triangle would meet it.
  struct Tri {
    NR_POOLED_OBJECTS
    int v[3];
    int order;
  };
  // The exact triangle test shared with picking without the tree.
  typedef bool (*TriTest)(const nrSeg& seg, float maxT, const nrVec3f& a, const nrVec3f& b, const nrVec3f& c,
                          int cullFace, float& t, nrVec3f& normal);
  // What a pick found: the distance, the triangle's order and unit normal.
  struct Hit {
    float t;
    int order;
    nrVec3f normal;
  };

  // Over count triangles (taken in order), whose coordinates are floats
  // stride bytes apart from coords; primFirst holds prims + 1 entries, the
  // order of each primitive's first triangle and then the count.
  nrPickTree(int version, const Tri* tris, int count, const unsigned char* coords, int stride,
             std::unique_ptr<int[]> primFirst, int prims);

  // The geometry set's version the tree was built for.
  int getVersion() const { return version; }
  // The nearest triangle met by seg no further than seg.length, the first in
  // order among equally near ones, tested by test under cullFace.
  bool pick(const nrSeg& seg, const unsigned char* coords, int stride, int cullFace, TriTest test, Hit& hit) const;
  // The primitive that holds the triangle of this order.
  int primOf(int order) const;

 private:
  // A box; a leaf's triangles are tris[next, next + count), an inner node's
  // children are the node after it and node next.
  struct Node {
    float min[3], max[3];
    int next, count;
  };
  // Nodes come straight from the block allocator, so that their storage can
  // grow while the tree is built; released with its size.
  struct NodeRelease {
    size_t bytes;
    void operator()(Node* block) const { nrBlockAllocator::release(block, bytes); }
  };
  struct Builder;

  int version;
  std::unique_ptr<Node[], NodeRelease> nodes;
  // The boxed triangles in the leaves' order, then the loose ones: those too
  // thin for a box to be sure to hold every point the exact test accepts on
  // them, tested on every pick.
  std::unique_ptr<Tri[]> tris;
  int boxedCount, looseCount;
  std::unique_ptr<int[]> primFirst;
  int prims;
  // The largest finite coordinate magnitude, which scales the boxes' margin.
  float scale;
};

}  // namespace nrDetail
