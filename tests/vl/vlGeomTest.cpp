#include "nerio3d/vl/vlGeom.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "nerio3d/geometry/nrCoordSet3f.h"
#include "nerio3d/geometry/nrIndexedFaceSet.h"
#include "nerio3d/geometry/nrNormalSet3f.h"
#include "nrCapture.h"

namespace {

// A face set over points with the VRML index list given, held by the test.
struct FaceSet {
  FaceSet(const std::vector<nrVec3f>& points, const std::vector<int>& index) : set(new nrIndexedFaceSet) {
    set->ref();
    nrCoordSet3f* coords = new nrCoordSet3f;
    for (const nrVec3f& p : points) coords->append(p);
    set->setCoordSet(coords);
    set->setCoordIndex(int(index.size()), index.data());
  }
  ~FaceSet() { set->unref(); }
  FaceSet(const FaceSet&) = delete;

  std::vector<nrVec3f> normals() {
    nrNormalSet3f* n = static_cast<nrNormalSet3f*>(set->getNormalSet());
    const nrVec3fArray& a = n->getArray();
    return std::vector<nrVec3f>(a.getArray(), a.getArray() + a.getCount());
  }
  // The normal of each corner, through the normal indices.
  std::vector<nrVec3f> cornerNormals() {
    std::vector<nrVec3f> all = normals(), out;
    const nrIntArray& index = set->getNormalIndexSet()->getArray();
    for (unsigned i = 0; i < index.getCount(); ++i) out.push_back(all[unsigned(index[i])]);
    return out;
  }

  nrIndexedFaceSet* set;
};

// A unit cube with four coordinates of its own on each face, wound outwards.
FaceSet cube() {
  std::vector<nrVec3f> points;
  std::vector<int> index;
  const int faces[6][4] = {{0, 2, 3, 1}, {4, 5, 7, 6}, {0, 1, 5, 4}, {2, 6, 7, 3}, {0, 4, 6, 2}, {1, 3, 7, 5}};
  for (const auto& face : faces) {
    for (int corner : face) {
      index.push_back(int(points.size()));
      points.push_back(nrVec3f(float(corner & 1), float(corner >> 1 & 1), float(corner >> 2 & 1)));
    }
    index.push_back(-1);
  }
  return FaceSet(points, index);
}

bool near(const nrVec3f& a, const nrVec3f& b) { return a.almostEqual(b, 1e-6f); }

TEST(vlGeom, CreaseAngleZeroGivesEveryCornerItsFacesNormalInFirstAppearanceOrder) {
  // Two coplanar triangles sharing the edge 1-2.
  FaceSet s({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {1, 1, 0}}, {0, 1, 2, -1, 2, 1, 3, -1});
  vlGeom::computeNorms(s.set, 0);
  EXPECT_EQ(s.set->getNormalBind(), nrGeoSet::PER_VERTEX_NORMAL);
  ASSERT_EQ(s.normals().size(), 6u);
  for (const nrVec3f& n : s.normals()) EXPECT_EQ(n, nrVec3f(0, 0, 1));
  // Positions in order of first sight; each position's corners in walk order.
  const nrIntArray& list = s.set->getNormalIndex();
  EXPECT_EQ(std::vector<int>(list.getArray(), list.getArray() + list.getCount()),
            (std::vector<int>{0, 1, 3, -1, 4, 2, 5, -1}));
}

TEST(vlGeom, CubeCornersSplitAtRightAnglesUnlessTheCreaseIsWider) {
  const float third = 1 / std::sqrt(3.0f);
  for (float crease : {0.5f, 1.6f, 3.14159265f}) {
    FaceSet s = cube();
    vlGeom::computeNorms(s.set, crease);
    std::vector<nrVec3f> corners = s.cornerNormals();
    ASSERT_EQ(corners.size(), 24u);
    if (crease < 1.5708f) {
      // Three normals per position, each its face's own.
      EXPECT_EQ(s.normals().size(), 24u);
      for (int f = 0; f < 6; ++f) EXPECT_EQ(corners[4 * f], corners[4 * f + 3]) << f;
      EXPECT_EQ(corners[0], nrVec3f(0, 0, -1));
    } else {
      // Welded by position across their separate coordinates: one smooth normal each.
      EXPECT_EQ(s.normals().size(), 8u) << crease;
      for (const nrVec3f& n : s.normals())
        EXPECT_TRUE(near(nrVec3f(std::fabs(n[0]), std::fabs(n[1]), std::fabs(n[2])), nrVec3f(third, third, third)));
      EXPECT_TRUE(near(corners[0], nrVec3f(-third, -third, -third)));
    }
    // Normals and indices handed to another set stay its own when these are made again.
    FaceSet other = cube();
    other.set->setNormalSet(s.set->getNormalSet());
    nrIndexSet* handed = s.set->getNormalIndexSet();
    other.set->setNormalIndexSet(handed);
    const nrIntArray& kept = handed->getArray();
    std::vector<int> indices(kept.getArray(), kept.getArray() + kept.getCount());
    vlGeom::computeNorms(s.set, 3.1f - crease);
    EXPECT_NE(s.set->getNormalIndexSet(), handed);
    EXPECT_EQ(std::vector<int>(kept.getArray(), kept.getArray() + kept.getCount()), indices) << crease;
    EXPECT_EQ(other.cornerNormals(), corners) << crease;
    EXPECT_NE(s.cornerNormals(), corners) << crease;
  }
}

TEST(vlGeom, AWideCreaseSmoothsAllButExactlyOppositeFaces) {
  // A fold of face 1 almost flat onto face 0, and face 2 back to back with face 0.
  FaceSet s({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0.01f, 1, -0.01f}}, {0, 1, 2, -1, 1, 0, 3, -1, 0, 2, 1, -1});
  vlGeom::computeNorms(s.set, 3.14159265f);
  std::vector<nrVec3f> corners = s.cornerNormals();
  EXPECT_EQ(corners[0], corners[4]) << "the fold is smoothed";
  EXPECT_FALSE(near(corners[0], corners[8])) << "opposite faces keep their own normals";
  EXPECT_TRUE(near(corners[8], nrVec3f(0, 0, -1)));
}

TEST(vlGeom, FacesWithoutAPlaneLeaveTheirNeighboursNormalsWhole) {
  // A two-corner face seen first at the triangle's corners 0 and 1.
  for (float crease : {0.0f, 3.14159265f}) {
    FaceSet s({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}, {0, 1, -1, 0, 1, 2, -1});
    vlGeom::computeNorms(s.set, crease);
    std::vector<nrVec3f> corners = s.cornerNormals();
    ASSERT_EQ(corners.size(), 5u);
    for (int k = 2; k < 5; ++k) EXPECT_TRUE(near(corners[k], nrVec3f(0, 0, 1))) << crease << " " << k;
    EXPECT_EQ(corners[0], crease > 0 ? nrVec3f(0, 0, 1) : nrVec3f(0, 0, 0)) << crease;
  }
}

TEST(vlGeom, AnIndexPastTheCoordinatesIsReportedAndNothingIsAttached) {
  FaceSet s({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}, {0, 1, 9});
  EXPECT_EQ(nrtest::captureStderr([&] { vlGeom::computeNorms(s.set, 0); }),
            "vl error in vlGeom::computeNorms(): Coordinate index 9 out of range\n");
  EXPECT_EQ(s.set->getNormalSet(), nullptr);

  // Face lengths given directly that are negative or overflow the index list.
  const int negative[] = {3, -2}, huge[] = {2000000000, 2000000000, 294967299};
  EXPECT_EQ(nrtest::captureStderr([&] {
              s.set->setPolyLength(2, negative);
              s.set->setPrimCount(2);
              vlGeom::computeNorms(s.set, 0);
              s.set->setPolyLength(3, huge);
              s.set->setPrimCount(3);
              vlGeom::computeNorms(s.set, 0);
            }),
            "vl error in vlGeom::computeNorms(): Face 1 has -2 corners\n"
            "vl error in vlGeom::computeNorms(): 4294967299 corners but 3 coordinate indices\n");
  EXPECT_EQ(s.set->getNormalSet(), nullptr);
}

TEST(vlGeom, StaticBoundIsComputedOnceFromTheConvertedLists) {
  FaceSet s({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {5, 5, 5}}, {0, 1, 2});
  vlGeom::calcStaticBound(s.set);
  EXPECT_EQ(s.set->getBoundMode(), nrGeometry::STATIC);
  EXPECT_EQ(s.set->getBoxBound().max, nrVec3f(1, 1, 0));
  const int all[] = {0, 1, 3};
  s.set->setCoordIndex(3, all);
  EXPECT_EQ(s.set->getBoxBound().max, nrVec3f(1, 1, 0)) << "a static box stays";
}

}  // namespace
