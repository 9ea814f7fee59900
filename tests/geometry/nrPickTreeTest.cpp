// Picking through the tree of boxes finds exactly what testing every triangle
// in order finds, on random, grid-aligned and grazing segments.
#include <cmath>
#include <random>

#include "nerio3d/actions/nrIsectAction.h"
#include "nerio3d/geometry/nrIndexedFaceSet.h"
#include "nerio3d/geometry/nrPolySet.h"
#include "nerio3d/geometry/nrQuadSet.h"
#include "nerio3d/geometry/nrTriFanSet.h"
#include "nerio3d/geometry/nrTriSet.h"
#include "nerio3d/geometry/nrTriStripSet.h"
#include "nrGeometryFixture.h"

namespace {

class PickTree : public nrtest::GeometryTest {
 protected:
  // The hit of every triangle tested in order through isectTri, behind the
  // same box test as the set's own pick.
  static nrHit everyTriangle(nrGeoSet* s, const nrSeg& seg) {
    nrIsectAction pick;
    pick.setSeg(seg);
    pick.reset();
    if (s->getCullFace() != nrContext::BOTH_CULL && s->getBoxBound().isect(&seg, nullptr, nullptr)) {
      const nrVec3f* points = static_cast<nrCoordSet3f*>(s->getCoordSet())->getArray().getArray();
      const int* index = s->getCoordIndexSet() ? s->getCoordIndexSet()->getArray().getArray() : nullptr;
      for (int p = 0, first = 0; p < s->getPrimCount(); first += s->getPrimLen(p++)) {
        int v[3];
        for (int t = 0; s->getPrimTri(first, s->getPrimLen(p), t, v); ++t) {
          for (int& e : v) e = index ? index[e] : e;
          s->isectTri(&pick, points[v[0]], points[v[1]], points[v[2]], s->getCullFace(), p);
        }
      }
    }
    return pick.getHit();
  }

  // Segments through the set's box: random ones, vertical ones through the
  // points of the unit grid (they meet shared edges and corners), and some
  // that graze the plane y = 0.
  std::vector<nrSeg> segments(nrGeoSet* s, int count) {
    const nrBoxBound& box = s->getBoxBound();
    nrVec3f size;
    size.sub(box.max, box.min);
    float span = size.length();
    std::uniform_real_distribution<float> unit(0, 1);
    auto inside = [&](float grow) {
      nrVec3f p;
      for (int k = 0; k < 3; ++k) p[k] = box.min[k] - grow * size[k] + (1 + 2 * grow) * size[k] * unit(random);
      return p;
    };
    std::vector<nrSeg> segs;
    for (int i = 0; i < count; ++i) {
      nrSeg seg;
      seg.makePts(inside(1), inside(0));
      seg.length = 3 * span;
      segs.push_back(seg);
      nrVec3f top(box.min[0] + std::floor(unit(random) * size[0]), box.max[1] + 1,
                  box.min[2] + std::floor(unit(random) * size[2]));
      segs.push_back(nrSeg(top, nrVec3f(0, -1, 0), 3 * span));
      nrVec3f graze(unit(random) - 0.5f, 1e-4f * (unit(random) - 0.5f), unit(random) - 0.5f);
      graze.normalize();
      nrVec3f from = inside(0);
      from[1] = 0;
      from.addScaled(from, -span, graze);
      segs.push_back(nrSeg(from, graze, 3 * span));
    }
    return segs;
  }

  void expectSameHits(nrGeoSet* s, const char* what) {
    int hits = 0;
    for (const nrSeg& seg : segments(s, 150)) {
      nrHit expected = everyTriangle(s, seg);
      nrIsectAction pick;
      pick.setSeg(seg);
      pick.reset();
      s->isect(&pick);
      const nrHit& hit = pick.getHit();
      ASSERT_EQ(hit.getGeometry(), expected.getGeometry()) << what;
      hits += expected.getGeometry() != nullptr;
      EXPECT_EQ(hit.getPrimitive(), expected.getPrimitive()) << what;
      EXPECT_EQ(hit.getLocalPoint(), expected.getLocalPoint()) << what;
      EXPECT_EQ(hit.getLocalNormal(), expected.getLocalNormal()) << what;
    }
    EXPECT_GT(hits, 150) << what << ": most segments should hit";
  }

  // A set of kind T over points with count primitives, culling as given.
  template <typename T>
  T* over(nrCoordSet3f* points, int count, int face = -1) {
    T* s = set<T>(points, count);
    if (face >= 0) s->setCullFace(nrContext::CullFaceEnum(face));
    return s;
  }

  // n x n unit quads on a rolling surface, as a face set's index list.
  nrIndexedFaceSet* terrain(int n) {
    nrIndexedFaceSet* s = make<nrIndexedFaceSet>();
    nrCoordSet3f* points = make<nrCoordSet3f>();
    for (int j = 0; j <= n; ++j)
      for (int i = 0; i <= n; ++i) points->append(nrVec3f(float(i), std::sin(i * 0.5f) * std::cos(j * 0.3f), float(j)));
    std::vector<int> list;
    for (int j = 0; j < n; ++j)
      for (int i = 0; i < n; ++i) {
        int a = j * (n + 1) + i;
        list.insert(list.end(), {a, a + n + 1, a + n + 2, a + 1, -1});
      }
    s->setCoordSet(points);
    s->setCoordIndex(int(list.size()), list.data());
    return s;
  }

  std::mt19937 random{7};
};

TEST_F(PickTree, TerrainUnderEachCullFace) {
  nrIndexedFaceSet* s = terrain(30);
  // Normals follow the coordinates' index list: the two share one index set.
  nrNormalSet3f* normals = make<nrNormalSet3f>();
  for (int i = 0; i < 31 * 31; ++i) normals->append(nrVec3f(0, 1, 0));
  s->setNormalSet(normals);
  for (auto face : {nrContext::BACK_CULL, nrContext::FRONT_CULL, nrContext::NO_CULL}) {
    s->setCullFace(face);
    expectSameHits(s, "terrain");
  }
  EXPECT_EQ(s->getNormalIndexSet(), s->getCoordIndexSet());

  // Moved points are picked where they now are.
  nrVec3f* p = static_cast<nrCoordSet3f*>(s->getCoordSet())->edit();
  for (int i = 0; i < 31 * 31; i += 3) p[i][1] += 0.7f;
  static_cast<nrCoordSet3f*>(s->getCoordSet())->changed();
  expectSameHits(s, "moved terrain");
}

TEST_F(PickTree, StripsFansPolygonsQuadsAndThinOrRepeatedTriangles) {
  // Rows of a rolling surface, each point at (i, h, j).
  auto surface = [](int i, int j) { return nrVec3f(float(i), std::sin(float(i * j)) * 0.4f, float(j)); };
  const int rows = 12, cols = 12;

  nrCoordSet3f* stripPoints = make<nrCoordSet3f>();
  nrIntArray stripLengths;
  for (int j = 0; j < rows; ++j) {
    for (int i = 0; i <= cols; ++i) {
      stripPoints->append(surface(i, j + 1));
      stripPoints->append(surface(i, j));
    }
    stripLengths.append(2 * (cols + 1));
  }
  auto* strips = over<nrTriStripSet>(stripPoints, rows, nrContext::NO_CULL);
  strips->setStripLength(stripLengths);

  // Fans over each cell of shared points through an index list, polygons
  // over the same points, some of them cut to a triangle.
  nrCoordSet3f* grid = make<nrCoordSet3f>();
  for (int j = 0; j <= rows; ++j)
    for (int i = 0; i <= cols; ++i) grid->append(surface(i, j));
  nrIndexSet* fanIndex = make<nrIndexSet>();
  nrIndexSet* polyIndex = make<nrIndexSet>();
  nrIntArray fanLengths, polyLengths;
  for (int j = 0; j < rows; ++j)
    for (int i = 0; i < cols; ++i) {
      int a = j * (cols + 1) + i, ring[] = {a, a + 1, a + cols + 2, a + cols + 1, a}, len = (i + j) % 3 ? 5 : 3;
      for (int v : ring) fanIndex->append(v);
      for (int k = 0; k < len; ++k) polyIndex->append(ring[k]);
      fanLengths.append(5);
      polyLengths.append(len);
    }
  auto* fans = over<nrTriFanSet>(grid, rows * cols);
  fans->setCoordIndexSet(fanIndex);
  fans->setFanLength(fanLengths);
  auto* polys = over<nrPolySet>(grid, rows * cols, nrContext::FRONT_CULL);
  polys->setCoordIndexSet(polyIndex);
  polys->setPolyLength(polyLengths);

  // Quads with a corner pulled in (split along the other diagonal).
  nrCoordSet3f* quadPoints = make<nrCoordSet3f>();
  for (int j = 0; j < rows; ++j)
    for (int i = 0; i < cols; ++i) {
      nrVec3f c[] = {surface(i, j), surface(i + 1, j), surface(i + 1, j + 1), surface(i, j + 1)};
      if ((i * j) % 4 == 1) c[1].addScaled(c[1], 0.8f, nrVec3f(-1, 0, 1));
      for (const nrVec3f& v : c) quadPoints->append(v);
    }

  // Every triangle of a grid five times (equally near: the first wins; the
  // tree then needs more nodes than most sets), with slivers, triangles of
  // one point and some with a corner not a number among them.
  const int copies = 5;
  nrCoordSet3f* triPoints = make<nrCoordSet3f>();
  for (int copy = 0; copy < copies; ++copy)
    for (int j = 0; j < rows; ++j)
      for (int i = 0; i < cols; ++i) {
        nrVec3f a = surface(i, j), b = surface(i + 1, j + 1), c = surface(i, j + 1);
        if (i % 5 == 2) c.addScaled(a, 1e-3f, nrVec3f(1, 0, 1));
        if (i % 7 == 3) b = c = a;
        if ((i + j) % 13 == 4) b[1] = NAN;
        for (const nrVec3f& v : {a, b, c}) triPoints->append(v);
      }

  expectSameHits(strips, "strips");
  expectSameHits(fans, "fans");
  expectSameHits(polys, "polygons");
  expectSameHits(over<nrQuadSet>(quadPoints, rows * cols, nrContext::NO_CULL), "quads");
  expectSameHits(over<nrTriSet>(triPoints, copies * rows * cols, nrContext::NO_CULL), "repeated triangles");
}

}  // namespace
