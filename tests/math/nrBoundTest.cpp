#include <cmath>
#include <random>
#include <utility>
#include <vector>

#include "nerio3d/math/nrBoxBound.h"
#include "nerio3d/math/nrMatrix4f.h"
#include "nerio3d/math/nrSeg.h"
#include "nerio3d/math/nrSphereBound.h"
#include "nrCapture.h"

namespace {

// The text of a bound operation that the bound's kind does not implement.
using Corners = std::pair<nrVec3f, nrVec3f>;
Corners corners(const nrBoxBound& b) { return {b.min, b.max}; }

std::string unimplemented(const char* signature) {
  return std::string("(WARN, USAGE): WARNING: Shouldn't be in pure virtual ") + signature + "\n";
}

// isect of random segments against the smallest and largest distance along
// each segment of the points inside the bound, found by stepping along it.
void expectIsectMatchesSampling(const nrBound& b, unsigned seed, float lo, float hi, float tol) {
  std::mt19937 gen(seed);
  std::uniform_real_distribution<float> u(lo, hi);
  int hits = 0;
  for (int n = 0; n < 200; ++n) {
    nrSeg s;
    s.makePts(nrVec3f(u(gen), u(gen), u(gen)), nrVec3f(u(gen), u(gen), u(gen)));
    float first = -1, last = -1, tn, tf;
    for (int i = 0; i <= 4000; ++i) {
      float t = s.length * i / 4000.0f;
      nrVec3f p;
      s.getPoint(t, p);
      if (!b.contains(p)) continue;
      if (first < 0) first = t;
      last = t;
    }
    int hit = b.isect(&s, &tn, &tf);
    if (first < 0) continue;  // grazing misses may fall between samples
    ++hits;
    ASSERT_EQ(hit, 1);
    EXPECT_NEAR(tn, first, s.length / 4000.0f + tol);
    EXPECT_NEAR(tf, last, s.length / 4000.0f + tol);
  }
  EXPECT_GT(hits, 20);
}

}  // namespace

TEST(nrBound, MixedKindsOnlyWarn) {
  auto warns = [](auto fn, const char* text) { EXPECT_EQ(nrtest::captureStderr(fn), unimplemented(text)); };
  nrBoxBound box(nrVec3f(0, 0, 0), nrVec3f(1, 1, 1)), keptBox = box;
  nrSphereBound sph(nrVec3f(0, 0, 0), 1), keptSph = sph;
  const nrBoxBound* boxes[] = {&box};
  nrBound* asBox = &box;
  nrBound* asSph = &sph;
  warns([&] { asBox->extendBy(&keptSph); }, "extendBy(const nrSphereBound* sph)");
  warns([&] { asSph->extendBy(&keptBox); }, "extendBy(const nrBoxBound* box)");
  warns([&] { EXPECT_EQ(asBox->contains(&keptSph), 0); }, "contains(const nrSphereBound* sph)");
  warns([&] { EXPECT_EQ(asSph->contains(&keptBox), 0); }, "contains(const nrBoxBound* box)");
  // Around a single bound is never implemented, whatever the kinds.
  warns([&] { asBox->around(&keptBox); }, "around(const nrBoxBound* box)");
  warns([&] { sph.around(&keptSph); }, "around(const nrSphereBound* sph)");
  EXPECT_EQ(corners(box), corners(keptBox));
  EXPECT_EQ(sph.radius, keptSph.radius);

  // A bound that implements nothing but the required operations shows the
  // texts of the array versions.
  struct Bare : nrBound {
    void makeEmpty() override {}
    int isEmpty() const override { return 1; }
    void extendBy(const nrVec3f&) override {}
    int contains(const nrVec3f&) const override { return 0; }
    int isect(const nrSeg*, float*, float*) const override { return 0; }
    using nrBound::extendBy;
    using nrBound::contains;
  } bare;
  const nrSphereBound* sphs[] = {&sph};
  nrVec3f pts[] = {nrVec3f(0, 0, 0)};
  warns([&] { bare.around(pts, 1); }, "around(const nrVec3f pts[], int npt)");
  warns([&] { bare.around(sphs, 1); }, "around(const nrSphereBound* sphs[], int nsph)");
  warns([&] { bare.around(boxes, 1); }, "around(const nrBoxBound* boxes[], int nbox)");
}

TEST(nrBoxBound, EmptinessExtensionAndContainment) {
  nrBoxBound box;
  EXPECT_TRUE(box.isEmpty());
  box.extendBy(nrVec3f(1, 2, 3));
  EXPECT_FALSE(box.isEmpty());
  EXPECT_EQ(corners(box), Corners({1, 2, 3}, {1, 2, 3}));
  nrBoxBound other(nrVec3f(-1, 0, 0), nrVec3f(0, 5, 1)), empty;
  box.extendBy(&other);
  box.extendBy(&empty);
  EXPECT_EQ(corners(box), Corners({-1, 0, 0}, {1, 5, 3}));
  EXPECT_EQ(box.contains(&other), 1);
  EXPECT_EQ(other.contains(&box), 0);
  EXPECT_EQ(box.contains(&empty), 0);
  EXPECT_EQ(box.contains(nrVec3f(1, 5, 3)), 1);
  nrBoxBound flat(nrVec3f(0, 0, 0), nrVec3f(1, -1, 1));
  EXPECT_TRUE(flat.isEmpty());

  const nrBoxBound* boxes[] = {&other, nullptr, &empty, &flat};
  box.around(boxes, 4);
  EXPECT_EQ(corners(box), corners(other));
  nrSphereBound s1(nrVec3f(0, 0, 0), 1), s2(nrVec3f(5, 0, 0), 0.5f), se;
  const nrSphereBound* sphs[] = {&s1, &se, &s2};
  box.around(sphs, 3);
  EXPECT_EQ(corners(box), Corners({-1, -1, -1}, {5.5f, 1, 1}));
  nrVec3f pts[] = {nrVec3f(1, -1, 0), nrVec3f(-2, 4, 1)};
  box.around(pts, 2);
  EXPECT_EQ(corners(box), Corners({-2, -1, 0}, {1, 4, 1}));
  box.around(pts, 0);
  EXPECT_TRUE(box.isEmpty());

  // Null bounds and lists add nothing and contain nothing.
  box = other;
  box.extendBy(static_cast<const nrBoxBound*>(nullptr));
  EXPECT_EQ(box.contains(static_cast<const nrBoxBound*>(nullptr)), 0);
  EXPECT_EQ(corners(box), corners(other));
  box.xform(nullptr, nrMatrix4f());
  EXPECT_TRUE(box.isEmpty());
  box.around(static_cast<const nrVec3f*>(nullptr), 2);
  box.around(static_cast<const nrBoxBound* const*>(nullptr), 2);
  box.around(static_cast<const nrSphereBound* const*>(nullptr), 2);
  EXPECT_TRUE(box.isEmpty());
}

TEST(nrBoxBound, SegmentsAndTransforms) {
  nrBoxBound box(nrVec3f(-1, -1, -1), nrVec3f(1, 2, 3));
  expectIsectMatchesSampling(box, 5, -4, 4, 1e-5f);
  nrSeg miss;
  miss.makePts(nrVec3f(5, 0, 0), nrVec3f(5, 0, 10));  // parallel to z, outside
  EXPECT_EQ(box.isect(&miss, nullptr, nullptr), 0);
  EXPECT_EQ(box.isect(nullptr, nullptr, nullptr) + nrSphereBound(nrVec3f(0, 0, 0), 1).isect(nullptr, nullptr, nullptr), 0);
  // A segment holding a NaN misses both kinds of bound.
  const float nan = std::nanf("");
  nrSphereBound ball(nrVec3f(0, 0, 0), 1);
  for (nrSeg bad : {nrSeg(nrVec3f(nan, 0, 0), nrVec3f(0, 0, 1), 5), nrSeg(nrVec3f(0, 0, -3), nrVec3f(0, nan, 1), 5),
                    nrSeg(nrVec3f(0, 0, -3), nrVec3f(0, 0, 1), nan)})
    EXPECT_EQ(box.isect(&bad, nullptr, nullptr) + ball.isect(&bad, nullptr, nullptr), 0);

  nrMatrix4f m;
  m.makeRot(1, 1, 0, 0.7f);
  m.postScale(m, 2, 1, 1);
  m.postTrans(m, 3, 0, -1);
  nrBoxBound moved;
  moved.xform(&box, m);
  nrBoxBound reference;
  for (int c = 0; c < 8; ++c) {
    nrVec3f p(c & 1 ? 1 : -1, c & 2 ? 2 : -1, c & 4 ? 3 : -1), q;
    q.fullXformPt(p, m);
    reference.extendBy(q);
  }
  EXPECT_TRUE(moved.min.almostEqual(reference.min, 1e-5f));
  EXPECT_TRUE(moved.max.almostEqual(reference.max, 1e-5f));
  nrBoxBound empty;
  moved.xform(empty, m);
  EXPECT_TRUE(moved.isEmpty());
}

TEST(nrSphereBound, ExtendByPointKeepsItsOwnEmptinessTest) {
  nrSphereBound s;
  EXPECT_TRUE(s.isEmpty());
  EXPECT_EQ(s.radius, -1.0f);
  // Radius -1 is not "empty" for this operation: within distance 1 nothing changes.
  s.extendBy(nrVec3f(0.5f, 0, 0));
  EXPECT_EQ(s.radius, -1.0f);
  EXPECT_EQ(s.center, nrVec3f(0, 0, 0));
  // Further away it grows from the far side at centre - (point - centre) / dist.
  s.extendBy(nrVec3f(2, 0, 0));
  EXPECT_FLOAT_EQ(s.radius, 0.5f);
  EXPECT_TRUE(s.center.almostEqual(nrVec3f(1.5f, 0, 0), 1e-6f));
  s.radius = -2;
  s.extendBy(nrVec3f(4, 5, 6));
  EXPECT_EQ(s.center, nrVec3f(4, 5, 6));
  EXPECT_EQ(s.radius, 0.0f);
  s.extendBy(nrVec3f(4, 5, 8));
  EXPECT_TRUE(s.center.almostEqual(nrVec3f(4, 5, 7), 1e-6f));
  EXPECT_FLOAT_EQ(s.radius, 1.0f);

  nrSphereBound a(nrVec3f(0, 0, 0), 1), b(nrVec3f(4, 0, 0), 1), e;
  a.extendBy(&b);
  EXPECT_TRUE(a.center.almostEqual(nrVec3f(2, 0, 0), 1e-6f));
  EXPECT_FLOAT_EQ(a.radius, 3.0f);
  a.extendBy(&e);
  EXPECT_FLOAT_EQ(a.radius, 3.0f);
  EXPECT_EQ(a.contains(&b), 1);
  EXPECT_EQ(b.contains(&a), 0);
  EXPECT_EQ(a.contains(nrVec3f(5, 0, 0)), 1);
  EXPECT_EQ(a.contains(nrVec3f(5, 0.1f, 0)), 0);
}

TEST(nrSphereBound, AroundArraysEnclosesTightly) {
  std::mt19937 gen(9);
  std::uniform_real_distribution<float> u(-3, 3);
  for (int n = 0; n < 20; ++n) {
    std::vector<nrVec3f> pts;
    for (int i = 0; i < 30; ++i) pts.emplace_back(u(gen), u(gen) * 0.3f, u(gen));
    nrSphereBound s;
    s.around(pts.data(), int(pts.size()));
    float diameter = 0;
    for (const nrVec3f& p : pts) {
      EXPECT_LE(s.center.distance(p), s.radius * (1 + 1e-6f));
      for (const nrVec3f& q : pts) diameter = std::max(diameter, p.distance(q));
    }
    // No sphere holding the farthest pair is smaller than half their distance;
    // the minimal one is at most 2/sqrt(3) of that.
    EXPECT_GE(s.radius, 0.5f * diameter * (1 - 1e-6f));
    EXPECT_LE(s.radius, 0.5f * diameter * 1.16f);
  }
  nrVec3f none[1];
  nrSphereBound s;
  s.around(none, 0);
  EXPECT_TRUE(s.isEmpty());

  nrSphereBound big(nrVec3f(0, 0, 0), 2), small(nrVec3f(3, 0, 0), 1), inner(nrVec3f(0, 1, 0), 0.5f), e;
  const nrSphereBound* sphs[] = {&small, &e, nullptr, &big, &inner};
  s.around(sphs, 5);
  EXPECT_TRUE(s.center.almostEqual(nrVec3f(1, 0, 0), 1e-5f));
  EXPECT_NEAR(s.radius, 3.0f, 1e-5f);
  const nrSphereBound* empties[] = {&e, nullptr};
  s.around(empties, 2);
  EXPECT_TRUE(s.isEmpty());
  s = big;
  s.extendBy(static_cast<const nrSphereBound*>(nullptr));
  EXPECT_EQ(std::pair(s.radius, s.contains(static_cast<const nrSphereBound*>(nullptr))), std::pair(2.0f, 0));
  for (int list = 0; list < 3; ++list) {
    s = big;
    if (list == 0) s.around(static_cast<const nrVec3f*>(nullptr), 2);
    if (list == 1) s.around(static_cast<const nrSphereBound* const*>(nullptr), 2);
    if (list == 2) s.around(static_cast<const nrBoxBound* const*>(nullptr), 2);
    EXPECT_TRUE(s.isEmpty()) << list;
  }

  nrBoxBound cube(nrVec3f(0, 0, 0), nrVec3f(2, 2, 2)), eb;
  const nrBoxBound* boxes[] = {&eb, &cube};
  s.around(boxes, 2);
  EXPECT_TRUE(s.center.almostEqual(nrVec3f(1, 1, 1), 1e-6f));
  EXPECT_NEAR(s.radius, std::sqrt(3.0f), 1e-6f);

  // A subclass overriding the list versions sees lists of changeable bounds
  // and of const pointers as well.
  struct Counted : nrSphereBound {
    int lists = 0;
    void around(const nrSphereBound* l[], int n) override { ++lists, nrSphereBound::around(l, n); }
    void around(const nrBoxBound* l[], int n) override { ++lists, nrSphereBound::around(l, n); }
    using nrSphereBound::around;
  } counted;
  nrSphereBound* changeable[] = {&big, &small};
  const nrSphereBound* const fixed[] = {&small, &big};
  counted.around(changeable, 2);
  counted.around(fixed, 2);
  counted.around(boxes, 2);
  EXPECT_EQ(counted.lists, 3);
  EXPECT_NEAR(counted.radius, std::sqrt(3.0f), 1e-6f);
  counted.around(changeable, 2);
  EXPECT_TRUE(counted.center.almostEqual(nrVec3f(1, 0, 0), 1e-5f));
}

TEST(nrSphereBound, SegmentsAndTransforms) {
  nrSphereBound s(nrVec3f(1, 2, 0), 1.5f);
  expectIsectMatchesSampling(s, 13, -3, 4, 1e-4f);
  nrSeg seg;
  seg.makePts(nrVec3f(-5, 2, 0), nrVec3f(-3, 2, 0));  // pointing at it but too short
  EXPECT_EQ(s.isect(&seg, nullptr, nullptr), 0);
  nrSphereBound empty;

  nrMatrix4f m;
  m.makeRot(0, 1, 0, 1.1f);
  m.postScale(m, 1, 3, 1);
  m.postTrans(m, 0, 0, 5);
  nrSphereBound moved;
  moved.xform(&s, m);
  nrVec3f c;
  c.xformPt(s.center, m);
  EXPECT_EQ(moved.center, c);
  EXPECT_NEAR(moved.radius, 4.5f, 1e-5f);
  // Scaled along turned axes no row is as long as the stretch.
  m.makeRot(0, 0, 1, -0.7853982f);
  m.postScale(m, 3, 1, 1);
  m.postRot(m, 0, 0, 1, 0.7853982f);
  moved.xform(&s, m);
  EXPECT_NEAR(moved.radius, 4.5f, 1e-5f);
  m.makeRot(0, 1, 0, 1.1f);
  m.postScale(m, 2, 2, 2);
  moved.orthoXform(&s, m);
  EXPECT_NEAR(moved.radius, 3.0f, 1e-5f);
  for (int from = 0; from < 3; ++from) {
    moved = s;
    from == 0 ? moved.orthoXform(empty, m) : from == 1 ? moved.xform(nullptr, m) : moved.orthoXform(nullptr, m);
    EXPECT_TRUE(moved.isEmpty()) << from;
  }
}
