#include "nerio3d/render/nrAppearance.h"

#include <tuple>

#include "nerio3d/actions/nrDrawAction.h"
#include "nerio3d/fields/nrFieldInfo.h"
#include "nerio3d/render/_nrGfx.h"
#include "nerio3d/render/nrMaterial.h"
#include "nerio3d/geometry/nrOverrideGeoProp.h"
#include "nerio3d/render/nrTexGen.h"
#include "nrRenderFixture.h"

namespace {

using nrtest::Calls;
using Appearance = nrtest::ContextTest;

TEST_F(Appearance, WrittenFieldsAreAppliedAndEverythingElseIsInherited) {
  nrAppearance* app = nrtest::held<nrAppearance>();
  nrBitMask inherit;

  context->setShadeModel(nrContext::FLAT_SHADE);
  nrGLRecorder rec;
  app->draw(nullptr);
  EXPECT_EQ(rec.calls(), Calls{}) << "a fresh appearance changes nothing";

  app->setShadeModel(nrContext::SMOOTH_SHADE);
  app->setDepthEnable(1);
  app->getInherit(inherit);
  EXPECT_EQ(inherit.getBits(), ~((1ull << 8) | (1ull << 26)));
  EXPECT_EQ(app->getExplicitMask().getBits(), (1ull << 8) | (1ull << 26));
  app->draw(nullptr);
  EXPECT_EQ(rec.calls(), (Calls{"glShadeModel(GL_SMOOTH)", "glEnable(GL_DEPTH_TEST)"}))
      << "writing the default value still applies it";

  rec.clear();
  app->draw(nullptr);
  EXPECT_EQ(rec.calls(), Calls{}) << "the same appearance twice issues nothing";

  inherit.setBit(nrAppearance::SHADE_MODEL);
  app->setInherit(inherit);
  EXPECT_EQ(app->getExplicitMask().getBits(), 1ull << 26);
  EXPECT_EQ(app->getShadeModel(), nrContext::SMOOTH_SHADE) << "the value is kept";
  app->draw(nullptr);
  EXPECT_EQ(rec.calls(), Calls{"glShadeModel(GL_FLAT)"}) << "handed back to the application's state";

  nrAppearance* plain = nrtest::held<nrAppearance>();
  rec.clear();
  plain->draw(nullptr);
  EXPECT_EQ(rec.calls(), Calls{"glDisable(GL_DEPTH_TEST)"});
  plain->unref();

  app->setLightEnable(1);
  app->setPolyMode(nrContext::LINE_PMODE);
  app->draw(nullptr);
  context->setPolyMode(nrContext::POINT_PMODE);
  rec.clear();
  app->draw(nullptr);
  EXPECT_EQ(rec.calls(), Calls{"glPolygonMode(GL_FRONT_AND_BACK, GL_LINE)"})
      << "a direct set in between defeats the early return";
  rec.clear();
  app->setColorMask(255, 255, 255, 0);
  app->draw(nullptr);
  EXPECT_EQ(rec.calls(), Calls{"glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_FALSE)"});
  // Another appearance copied into the one last applied: its elements, no
  // more, are applied at the next draw.
  nrAppearance* flat = nrtest::held<nrAppearance>();
  flat->setShadeModel(nrContext::FLAT_SHADE);
  app->copy(flat);
  EXPECT_EQ(app->getExplicitMask().getBits(), 1ull << 8);
  app->draw(nullptr);
  EXPECT_EQ(context->getShadowState().colorMask[3], 255) << "the copy's inherited mask is the application's";
  EXPECT_FALSE(isOn(GL_DEPTH_TEST));
  nrtest::unref(app, flat);
}

TEST_F(Appearance, DrawingAndGettersTakeWhatConnectionsBring) {
  nrAppearance *from = nrtest::held<nrAppearance>(), *to = nrtest::held<nrAppearance>();
  nrTexGen *genFrom = nrtest::held<nrTexGen>(), *genTo = nrtest::held<nrTexGen>();
  from->connect(nrAppearance::SHADE_MODEL, to, nrAppearance::SHADE_MODEL);
  from->connect(nrAppearance::ALPHA_REF, to, nrAppearance::ALPHA_REF);
  from->connect(nrAppearance::COLOR_MASK, to, nrAppearance::COLOR_MASK);
  from->connect(nrAppearance::BLEND_COLOR, to, nrAppearance::BLEND_COLOR);
  genFrom->connect(nrTexGen::PLANE_T, genTo, nrTexGen::PLANE_T);
  to->draw(nullptr);
  from->setShadeModel(nrContext::FLAT_SHADE);
  nrGLRecorder rec;
  to->draw(nullptr);
  EXPECT_EQ(rec.calls(), Calls{"glShadeModel(GL_FLAT)"}) << "a routed value reaches OpenGL at the next draw";
  from->setAlphaRef(0.5f);
  genFrom->setPlaneT(1, 2, 3, 4);
  EXPECT_EQ(to->getAlphaRef(), 0.5f);
  from->setColorMask(1, 0, 1, 0);
  from->setBlendColor(0.5f, 0.25f, 0, 1);
  nrVec4ub mask, maskOut;
  nrVec4f color, colorOut;
  nrMatrix4f transformOut;
  to->getColorMask(&mask[0], &mask[1], &mask[2], &mask[3]);
  to->getBlendColor(&color[0], &color[1], &color[2], &color[3]);
  to->getColorMask(maskOut);
  to->getBlendColor(colorOut);
  to->getTexTransform(transformOut);
  EXPECT_EQ(mask, nrVec4ub(1, 0, 1, 0));
  EXPECT_EQ(color, nrVec4f(0.5f, 0.25f, 0, 1));
  EXPECT_EQ(std::make_tuple(maskOut, colorOut, transformOut), std::make_tuple(mask, color, to->getTexTransform()))
      << "by reference";
  EXPECT_EQ(genTo->getPlaneT(), nrVec4f(1, 2, 3, 4));
  nrtest::unref(from, to, genFrom, genTo);
}

TEST_F(Appearance, AppliesToTheContextOfTheDrawAction) {
  nrDrawable* otherDrawable = nrDrawable::createOffscreen(8, 8);
  nrContext* other = new nrContext(otherDrawable);
  other->ref();
  nrAppearance* app = nrtest::held<nrAppearance>();
  app->setShadeModel(nrContext::FLAT_SHADE);
  nrDrawAction draw;
  draw.setContext(other);
  app->draw(&draw);
  EXPECT_EQ(other->getShadowState().shadeModel, nrContext::FLAT_SHADE);
  EXPECT_EQ(context->getShadowState().shadeModel, nrContext::SMOOTH_SHADE) << "not the current context";
  nrtest::unref(app, other);
  delete otherDrawable;
}

TEST(nrAppearanceType, FieldsSitAtTheirStateElementBits) {
  const std::pair<nrType*, const char*> types[] = {{nrAppearance::getClassType(), "Appearance"},
                                                   {nrContext::getClassType(), "Context"},
                                                   {nrOverrideGeoProp::getClassType(), "OverrideGeoProp"},
                                                   {nrMaterial::getClassType(), "Material"}};
  for (const auto& [t, name] : types) EXPECT_EQ(t, nrType::getType(name)) << name;
  nrType* type = nrAppearance::getClassType();
  EXPECT_EQ(type->getNumFields(), 29);
  const char* names[] = {"texture", "texEnable", "texMode", "texBlendColor", "texEnv", "texGen", "texGenEnable",
                         "lightEnable", "shadeModel", "transpEnable", "transpMode", "alphaFunc", "alphaRef",
                         "blendColor", "srcBlendFunc", "dstBlendFunc", "colorMask", "depthFunc", "depthMask",
                         "fogEnable", "polyMode", "lineStipplePattern", "lineStippleFactor", "texTransform",
                         "material", "backMaterial", "depthEnable", "materialModeEnable", "inherit"};
  for (int i = 0; i < 29; ++i) EXPECT_STREQ(type->getFieldInfo(i)->getName().getString(), names[i]) << i;
  EXPECT_STREQ(type->mapEnum(nrAppearance::TRANSP_MODE, nrContext::SCREEN_DOOR_TRANSP), "SCREEN_DOOR_TRANSP");
  EXPECT_STREQ(type->mapEnum(nrAppearance::SRC_BLEND_FUNC, nrContext::ONE_MINUS_DST_ALPHA_SBLEND),
               "ONE_MINUS_DST_ALPHA_SBLEND");

  nrAppearance* app = nrtest::held<nrAppearance>();
  nrMaterial* material = new nrMaterial;
  app->setMaterial(material);
  _nrGfx gfx;
  app->getGfx(gfx);
  EXPECT_EQ(gfx.material, material);
  EXPECT_FALSE(gfx.mask.isBitSet(nrAppearance::MATERIAL));
  app->unref();
}

}  // namespace
