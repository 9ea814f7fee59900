#include <cmath>
#include <string>

#include "nerio3d/math/nrMatrix4f.h"
#include "nerio3d/math/nrRotation.h"
#include "nerio3d/math/nrVec2f.h"
#include "nerio3d/math/nrVec3f.h"
#include "nerio3d/math/nrVec3s.h"
#include "nerio3d/math/nrVec4f.h"
#include "nerio3d/math/nrVec4ub.h"
#include "nrOutputCapture.h"

// Arrays of these are handed to OpenGL as plain floats, shorts and bytes.
static_assert(sizeof(nrVec2f) == 8 && sizeof(nrVec3f) == 12 && sizeof(nrVec4f) == 16 && sizeof(nrVec3s) == 6 &&
              sizeof(nrVec4ub) == 4 && sizeof(nrRotation) == 16 && sizeof(nrMatrix4f) == 64);

namespace {
template <typename T>
std::string written(const T& value) {
  return nrtest::writeToString([&](nrOutput* out) { value.write(out); });
}
}  // namespace

TEST(nrVec, NormalizeToleranceAndAliasedCross) {
  nrVec3f v(3, 4, 12);
  EXPECT_FLOAT_EQ(v.normalize(), 13.0f);
  EXPECT_NEAR(v.length(), 1.0f, 1e-6f);
  nrVec3f zero(0, 0, 0);
  EXPECT_EQ(zero.normalize(), 0.0f);
  EXPECT_EQ(zero, nrVec3f(0, 0, 0));

  // Both ends of the tolerance band count as equal.
  EXPECT_TRUE(nrVec3f(1.5f, 0, 0).almostEqual(nrVec3f(1, 0, 0), 0.5f));
  EXPECT_TRUE(nrVec3f(0.5f, 0, 0).almostEqual(nrVec3f(1, 0, 0), 0.5f));
  EXPECT_FALSE(nrVec3f(1, 0, 0.5001f).almostEqual(nrVec3f(1, 0, 0), 0.5f));

  nrVec3f a(2, 0, 0);
  a.cross(a, nrVec3f(0, 0, 3));  // aliasing: the result uses the old a
  EXPECT_EQ(a, nrVec3f(0, -6, 0));

  // Components by name are the ones by index.
  a.z = 7;
  const nrVec4f c(1, 2, 3, 4);
  EXPECT_EQ(a, nrVec3f(0, -6, 7));
  EXPECT_EQ(nrVec2f(5, 6).y + c.w + a.y, 4.0f);
}

TEST(nrVec, TransformsByRowVectorConvention) {
  nrMatrix4f m(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16);
  nrVec3f p(1, 0, -1);
  nrVec3f r;
  r.xformPt(p, m);  // p * rows 0-2 + row 3
  EXPECT_EQ(r, nrVec3f(1 - 9 + 13, 2 - 10 + 14, 3 - 11 + 15));
  r.xformVec(p, m);
  EXPECT_EQ(r, nrVec3f(-8, -8, -8));
  nrVec4f h(1, 0, -1, 2);
  h.xform(h, m);
  EXPECT_EQ(h, nrVec4f(1 - 9 + 26, 2 - 10 + 28, 3 - 11 + 30, 4 - 12 + 32));

  // w within nrEpsilon of 1: no division at all.
  nrMatrix4f t(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 2, 4, 6, 1.000001f);
  r.fullXformPt(nrVec3f(0, 0, 0), t);
  EXPECT_EQ(r, nrVec3f(2, 4, 6));
  t[3][3] = 2.0f;
  r.fullXformPt(nrVec3f(0, 0, 0), t);
  EXPECT_EQ(r, nrVec3f(1, 2, 3));
  // The tolerances are the application's to change.
  const float epsilon = nrEpsilon;
  nrEpsilon = 1.5f;
  r.fullXformPt(nrVec3f(0, 0, 0), t);
  nrEpsilon = epsilon;
  EXPECT_EQ(r, nrVec3f(2, 4, 6));
  // w = 0 is replaced by nrEta before dividing.
  t[3][3] = 0.0f;
  r.fullXformPt(nrVec3f(0, 0, 0), t);
  EXPECT_FLOAT_EQ(r[0], 2.0f / 1.0e-15f);
  EXPECT_FLOAT_EQ(r[2], 6.0f / 1.0e-15f);
}

TEST(nrVec, WritesSpaceSeparatedNumbers) {
  EXPECT_EQ(written(nrVec2f(1.5f, -2)), "1.5 -2");
  EXPECT_EQ(written(nrVec3f(0, 0.25f, 1e7f)), "0 0.25 1e+07");
  EXPECT_EQ(written(nrVec4f(1, 2, 3, 4)), "1 2 3 4");
  EXPECT_EQ(written(nrVec3s(-32768, 0, 32767)), "-32768 0 32767");
  EXPECT_EQ(written(nrVec4ub(0, 128, 255, 7)), "0 128 255 7");
  EXPECT_EQ(written(nrRotation()), "0 0 1 0");
  nrMatrix4f m;
  m.makeTrans(1, 2, 3);
  EXPECT_EQ(written(m), "1 0 0 0 0 1 0 0 0 0 1 0 1 2 3 1");
}
