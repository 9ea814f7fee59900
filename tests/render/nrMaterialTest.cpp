#include "nerio3d/render/nrMaterial.h"

#include <bitset>
#include <cmath>
#include <cstring>

#include "nerio3d/fields/nrFieldInfo.h"

#include "nerio3d/render/nrAppearance.h"
#include "nrRenderFixture.h"

namespace {

using nrtest::Calls;
using Material = nrtest::ContextTest;

int countBits(const GLubyte* pattern) {
  int n = 0;
  for (int i = 0; i < nrMaterial::DITHER_PATTERN_BYTES; ++i) n += std::bitset<8>(pattern[i]).count();
  return n;
}

bool pixel(const GLubyte* pattern, int row, int col) { return pattern[row * 4 + col / 8] & (0x80 >> (col % 8)); }

TEST(nrMaterialDither, PatternKLetsExactlyKPixelsThroughAndGrowsByOne) {
  nrMaterial::getClassType();
  for (int k = 0; k < nrMaterial::DITHER_PATTERNS; ++k) {
    const GLubyte* pattern = nrMaterial::_ditherMatrix[k];
    ASSERT_EQ(countBits(pattern), k) << "pattern " << k;
    if (k == 0) continue;
    const GLubyte* previous = nrMaterial::_ditherMatrix[k - 1];
    for (int i = 0; i < nrMaterial::DITHER_PATTERN_BYTES; ++i)
      ASSERT_EQ(previous[i] & ~pattern[i], 0) << "pattern " << k << " keeps every pixel of " << k - 1;
  }
  // An ordered dither spreads evenly at every scale: a quarter or a half
  // lights the same number of pixels in every 2 x 2 block.
  for (int k : {256, 512, 768})
    for (int r = 0; r < 32; r += 2)
      for (int c = 0; c < 32; c += 2) {
        const GLubyte* p = nrMaterial::_ditherMatrix[k];
        int lit = pixel(p, r, c) + pixel(p, r, c + 1) + pixel(p, r + 1, c) + pixel(p, r + 1, c + 1);
        ASSERT_EQ(lit, k / 256) << "pattern " << k << " block " << r << "," << c;
      }
  EXPECT_EQ(nrMaterial::ditherPattern(0.25f), 768);
  EXPECT_EQ(nrMaterial::ditherPattern(-1), 1024);
  EXPECT_EQ(nrMaterial::ditherPattern(2), 0);
  EXPECT_EQ(nrMaterial::ditherPattern(std::nanf("")), 1024) << "not a number draws solid";
}

// Exposes the drawing hook, as a caller outside the context reaches it.
struct tstMaterial : nrMaterial {
  using nrMaterial::draw;
};

TEST_F(Material, ColoursCarryOpacityShininessIsScaledTo128AndScreenDoorStipples) {
  tstMaterial* m = nrtest::held<tstMaterial>();
  m->setDiffuseColor(1, 0.5f, 0);
  m->setSpecularColor(0, 0, 1);
  m->setShininess(1.0f);
  m->setTransparency(0.25f);
  nrGLRecorder rec;
  context->setMaterial(m);
  EXPECT_EQ(rec.calls(), (Calls{"glMaterialfv(GL_FRONT, GL_AMBIENT, {0.2, 0.1, 0, 0.75})",
                                "glMaterialfv(GL_FRONT, GL_DIFFUSE, {1, 0.5, 0, 0.75})",
                                "glMaterialfv(GL_FRONT, GL_SPECULAR, {0, 0, 1, 0.75})",
                                "glMaterialfv(GL_FRONT, GL_EMISSION, {0, 0, 0, 0.75})",
                                "glMaterialf(GL_FRONT, GL_SHININESS, 128)"}));
  context->setBackMaterial(m);
  GLfloat diffuse[4];
  nrgl::GetMaterialfv(GL_BACK, GL_DIFFUSE, diffuse);
  EXPECT_EQ(diffuse[1], 0.5f);

  // Neither the front nor the back material: sent only when its version is
  // new, and then only the values OpenGL does not hold already.
  context->setMaterial(nullptr);
  context->setBackMaterial(nullptr);
  m->setEmissiveColor(nrVec3f(1, 1, 1));
  rec.clear();
  m->draw(nrMaterial::BACK_FACE, context);
  EXPECT_EQ(rec.calls(), Calls{"glMaterialfv(GL_BACK, GL_EMISSION, {1, 1, 1, 0.75})"});
  rec.clear();
  m->draw(nrMaterial::BACK_FACE, context);
  EXPECT_EQ(rec.calls(), Calls{});

  // Colour tracking rewrites ambient and diffuse; switching it off sends them again.
  context->setMaterial(m);
  context->setMaterialModeEnable(nrContext::COLOR_MATERIAL);
  nrgl::Color4f(0, 0, 0, 1);
  rec.clear();
  context->setMaterialModeEnable(nrContext::NO_COLOR_MATERIAL);
  EXPECT_EQ(rec.calls(), (Calls{"glDisable(GL_COLOR_MATERIAL)", "glMaterialfv(GL_FRONT, GL_AMBIENT, {0.2, 0.1, 0, 0.75})",
                                "glMaterialfv(GL_FRONT, GL_DIFFUSE, {1, 0.5, 0, 0.75})"}));

  context->setTranspMode(nrContext::SCREEN_DOOR_TRANSP);
  context->setTranspEnable(1);
  rec.clear();
  context->setMaterial(nullptr);
  context->setMaterial(m);
  EXPECT_EQ(rec.calls(), Calls{"glPolygonStipple(ptr)"});
  GLubyte stipple[128];
  nrgl::GetPolygonStipple(stipple);
  EXPECT_EQ(memcmp(stipple, nrMaterial::_ditherMatrix[768], 128), 0);
  m->unref();
}

TEST(nrMaterialFields, AmbientColourFollowsIntensityAndDiffuseColour) {
  nrMaterial* m = nrtest::held<nrMaterial>();
  EXPECT_EQ(m->getAmbientColor()[0], 0.16f);
  m->setAmbientIntensity(0.5f);
  EXPECT_EQ(m->getAmbientColor()[0], 0.4f);
  m->setDiffuseColor(0.2f, 0.4f, 0.6f);
  float r, g, b;
  static_cast<const nrMaterial*>(m)->getAmbientColor(&r, &g, &b);
  EXPECT_FLOAT_EQ(b, 0.3f);
  m->setAmbientColor(0.05f, 0.1f, 0.15f);
  EXPECT_FLOAT_EQ(m->getAmbientIntensity(), 0.25f);
  m->setDiffuseColor(0, 0, 0);
  m->setAmbientColor(1, 1, 1);
  EXPECT_EQ(m->getAmbientIntensity(), 0);
  EXPECT_STREQ(nrMaterial::getClassType()->getFieldInfo(nrMaterial::TRANSPARENCY)->getName().getString(),
               "transparency");
  m->unref();
}

}  // namespace
