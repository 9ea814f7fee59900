#include "nerio3d/render/nrContext.h"

#include <climits>
#include <cstdio>
#include <cstring>

#include "nerio3d/actions/nrDrawAction.h"
#include "nerio3d/arrays/nrTypedArray.h"
#include "nerio3d/core/nrPrivate.h"
#include "nerio3d/render/_nrGfx.h"
#include "nerio3d/render/nrAppearance.h"
#include "nerio3d/render/nrFog.h"
#include "nerio3d/render/nrGL.h"
#include "nerio3d/render/nrLight.h"
#include "nerio3d/render/nrMaterial.h"
#include "nerio3d/geometry/nrOverrideGeoProp.h"
#include "nerio3d/render/nrTexGen.h"
#include "nerio3d/render/nrTexture.h"
#include "nerio3d/window/nrWindow.h"

nrPtrArray* nrContext::contexts = nullptr;
nrIntArray* nrContext::freeIds = nullptr;
int nrContext::nextId = 1;
bool nrContext::soundInitialized = false;

NR_DEFINE_TYPE(nrContext, nrObject, "Context") {
  contexts = new nrPtrArray(4);
  freeIds = new nrIntArray(32);
}

namespace {

// OpenGL values of the enumerations, indexed by enumeration value.
const GLenum texEnvGL[] = {GL_MODULATE, GL_BLEND, GL_REPLACE, GL_ADD, GL_DECAL};
const GLenum shadeModelGL[] = {GL_FLAT, GL_SMOOTH};
const GLenum alphaFuncGL[] = {GL_NEVER, GL_LESS, GL_EQUAL, GL_LEQUAL, GL_GREATER, GL_NOTEQUAL, GL_GEQUAL, GL_ALWAYS};
const GLenum srcBlendGL[] = {GL_ZERO,
                             GL_ONE,
                             GL_DST_COLOR,
                             GL_ONE_MINUS_DST_COLOR,
                             GL_SRC_ALPHA_SATURATE,
                             GL_SRC_ALPHA,
                             GL_ONE_MINUS_SRC_ALPHA,
                             GL_DST_ALPHA,
                             GL_ONE_MINUS_DST_ALPHA};
const GLenum dstBlendGL[] = {GL_ZERO,      GL_ONE,           GL_SRC_COLOR, GL_ONE_MINUS_SRC_COLOR,
                             GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA, GL_DST_ALPHA, GL_ONE_MINUS_DST_ALPHA};
const GLenum depthFuncGL[] = {GL_NEVER, GL_LESS, GL_EQUAL, GL_LEQUAL, GL_GREATER, GL_NOTEQUAL, GL_GEQUAL, GL_ALWAYS};
const GLenum polyModeGL[] = {GL_POINT, GL_LINE, GL_FILL};
const GLenum cullFaceGL[] = {0, GL_FRONT, GL_BACK, GL_FRONT_AND_BACK};

// A value outside its enumeration of count values: the setter refuses it.
bool inRange(int value, int count, const char* who) {
  if (value >= 0 && value < count) return true;
  fprintf(stderr, "nrContext::%s() - value %d out of range\n", who, value);
  return false;
}

// A value outside its enumeration has no OpenGL code.
template <size_t N>
bool known(const GLenum (&)[N], int value, const char* who) {
  return inRange(value, static_cast<int>(N), who);
}

// OpenGL refuses a line width or point size that is not positive and keeps
// its own, which would leave the shadow wrong: the setter refuses it first.
bool positive(float size, const char* who) {
  if (size > 0) return true;
  fprintf(stderr, "nrContext::%s() - value %g out of range\n", who, static_cast<double>(size));
  return false;
}

void enable(GLenum cap, bool on) {
  if (on)
    nrgl::Enable(cap);
  else
    nrgl::Disable(cap);
}

bool isStippleMode(nrContext::TranspModeEnum mode) {
  return mode == nrContext::FAST_TRANSP || mode == nrContext::SCREEN_DOOR_TRANSP;
}

// How one state element is copied between records and applied to a context
// through its setter; the table below has one entry per mask bit.
struct Element {
  void (*copy)(_nrGfx& to, const _nrGfx& from);
  void (*apply)(nrContext* context, const _nrGfx& from);
};

template <auto Member, auto Setter>
constexpr Element element() {
  return {[](_nrGfx& to, const _nrGfx& from) { to.*Member = from.*Member; },
          [](nrContext* context, const _nrGfx& from) { (context->*Setter)(from.*Member); }};
}

const Element elements[_nrGfx::ELT_COUNT] = {
    element<&_nrGfx::texture, &nrContext::setTexture>(),
    element<&_nrGfx::texEnable, &nrContext::setTexEnable>(),
    element<&_nrGfx::texMode, &nrContext::setTexMode>(),
    element<&_nrGfx::texBlendColor, &nrContext::setTexBlendColor>(),
    element<&_nrGfx::texEnv, &nrContext::setTexEnv>(),
    element<&_nrGfx::texGen, &nrContext::setTexGen>(),
    element<&_nrGfx::texGenEnable, &nrContext::setTexGenEnable>(),
    element<&_nrGfx::lightEnable, &nrContext::setLightEnable>(),
    element<&_nrGfx::shadeModel, &nrContext::setShadeModel>(),
    element<&_nrGfx::transpEnable, &nrContext::setTranspEnable>(),
    element<&_nrGfx::transpMode, &nrContext::setTranspMode>(),
    element<&_nrGfx::alphaFunc, &nrContext::setAlphaFunc>(),
    element<&_nrGfx::alphaRef, &nrContext::setAlphaRef>(),
    element<&_nrGfx::blendColor, &nrContext::setBlendColor>(),
    element<&_nrGfx::srcBlendFunc, &nrContext::setSrcBlendFunc>(),
    element<&_nrGfx::dstBlendFunc, &nrContext::setDstBlendFunc>(),
    element<&_nrGfx::colorMask, &nrContext::setColorMask>(),
    element<&_nrGfx::depthFunc, &nrContext::setDepthFunc>(),
    element<&_nrGfx::depthMask, &nrContext::setDepthMask>(),
    element<&_nrGfx::fogEnable, &nrContext::setFogEnable>(),
    element<&_nrGfx::polyMode, &nrContext::setPolyMode>(),
    element<&_nrGfx::lineStipplePattern, &nrContext::setLineStipplePattern>(),
    element<&_nrGfx::lineStippleFactor, &nrContext::setLineStippleFactor>(),
    element<&_nrGfx::texTransform, &nrContext::setTexTransform>(),
    element<&_nrGfx::material, &nrContext::setMaterial>(),
    element<&_nrGfx::backMaterial, &nrContext::setBackMaterial>(),
    element<&_nrGfx::depthEnable, &nrContext::setDepthEnable>(),
    element<&_nrGfx::materialModeEnable, &nrContext::setMaterialModeEnable>(),
    {nullptr, nullptr},
    element<&_nrGfx::cullFace, &nrContext::setCullFace>(),
    element<&_nrGfx::lineWidth, &nrContext::setLineWidth>(),
    element<&_nrGfx::pointSize, &nrContext::setPointSize>(),
};

// Elements an appearance names; the three after them belong to geometry overrides.
const int APPEARANCE_ELTS = _nrGfx::MATERIAL_MODE_ENABLE_ELT + 1;

const nrBitMask ALL_BITS = nrBitMask::fromBits(~uint64_t(0));

}  // namespace

nrContext::nrContext(nrDrawable* drawable) : nrContext(drawable, getClassType()) {}

nrContext::nrContext(nrDrawable* drawable, nrType* type) : nrObject(type) {
  stack = new _nrGfx[STACK_DEPTH];
  global = new _nrGfx;
  for (auto& level : lights)
    for (LightSlot& slot : level) slot.matrix.makeIdent();
  init(drawable);
}

void nrContext::init(nrDrawable* drawable) {
  lightLevel = 0;
  refusedLightPushes = 0;
  for (LightSlot& slot : lights[0]) {
    slot.assigned = 0;
    slot.enabled = 0;
    slot.light = nullptr;
  }
  fogStack = new nrPtrArray(4);
  nrFog* baseFog = new nrFog;
  baseFog->setOn(0);
  baseFog->ref();
  fogStack->append(baseFog);
  overrideAppTop = -1;
  overrideGeoPropTop = -1;
  globalChanged = true;
  depth = 0;
  refusedStatePushes = 0;
  top = stack;
  top->setDefaults();
  *global = *top;
  recordTarget = global;
  normalizeEnable = 0;
  localViewer = 0;
  clientArrays = 0;
  memset(heldMaterialKnown, 0, sizeof heldMaterialKnown);
  defaultApp = new nrAppearance;
  defaultApp->ref();
  lastApp = defaultApp;
  lastApp->ref();
  lastMerged = false;
  lastInherit = ALL_BITS;
  viewport[0] = viewport[1] = viewport[2] = viewport[3] = 0;
  viewportRead = false;
  current = false;
  this->drawable = drawable;
  glContext = drawable ? drawable->createContext() : nullptr;
  colorMode = drawable && !drawable->isRGBA() ? INDEX_CMODE : RGBA_CMODE;
  versions = new nrIntArray(32);
  versions->setCount(32);
  versions->fillRange(0, 32, 0);

  long empty = contexts->find(nullptr);
  if (empty >= 0)
    (*contexts)[static_cast<unsigned>(empty)] = this;
  else
    contexts->append(this);
}

nrContext::~nrContext() {
  if (nrPrivate::getContext() == this) {
    nrDrawable::releaseCurrent();
    nrPrivate::setContext(nullptr);
  }
  nrDrawable::destroyContext(glContext);
  contexts->replace(this, nullptr);
  nrDrawAction::forgetContext(this);

  for (int level = 0; level < depth; ++level)
    if (appliedBelow[level].app) appliedBelow[level].app->unref();
  while (lightLevel > 0) {
    for (LightSlot& slot : lights[lightLevel])
      if (slot.light) slot.light->unref();
    --lightLevel;
  }
  for (LightSlot& slot : lights[0])
    if (slot.light) slot.light->unref();
  for (unsigned i = 0; i < fogStack->getCount(); ++i) static_cast<nrFog*>((*fogStack)[i])->unref();
  while (overrideAppTop >= 0) overrideApps[overrideAppTop--]->unref();
  while (overrideGeoPropTop >= 0) overrideGeoProps[overrideGeoPropTop--]->unref();
  delete fogStack;
  if (lastApp) lastApp->unref();
  defaultApp->unref();
  delete versions;
  delete[] stack;
  delete global;
}

nrContext* nrContext::getCurrent() { return nrPrivate::getContext(); }

void nrContext::makeCurrent(nrDrawable* target) {
  if (!target) return;
  nrContext* previous = nrPrivate::getContext();
  if (previous == this && current && drawable == target) return;
  if (previous) previous->current = false;
  nrPrivate::setContext(this);
  drawable = target;
  top = stack + depth;
  target->makeCurrent(glContext);
  if (!viewportRead) {
    nrgl::GetIntegerv(GL_VIEWPORT, viewport);
    viewportRead = true;
    // The new OpenGL context starts drawing in white; it can only be told so
    // once it is current.
    nrgl::Color4f(1, 1, 1, 1);
    // The shadow's ALWAYS_AFUNC stands for what setting it sends: the alpha
    // test on with GL_ALWAYS. OpenGL starts with the test off, so it is put in
    // that state here, and a set of ALWAYS_AFUNC finds it already so.
    nrgl::Enable(GL_ALPHA_TEST);
    nrgl::AlphaFunc(GL_ALWAYS, 0);
  }
  current = true;
  const GLfloat ambient[4] = {0, 0, 0, 1};
  nrgl::LightModelfv(GL_LIGHT_MODEL_AMBIENT, ambient);
}

void nrContext::makeCurrent(nrWindow* window) {
  if (window && window->getHDC()) makeCurrent(window->getHDC());
}

void nrContext::releaseCurrent() {
  nrDrawable::releaseCurrent();
  if (nrContext* context = nrPrivate::getContext()) context->current = false;
  nrPrivate::setContext(nullptr);
}

void nrContext::setViewport(int x, int y, int w, int h) {
  if (x == viewport[0] && y == viewport[1] && w == viewport[2] && h == viewport[3]) return;
  viewport[0] = x;
  viewport[1] = y;
  viewport[2] = w;
  viewport[3] = h;
  nrgl::Viewport(x, y, w, h);
}

void nrContext::getViewport(int& x, int& y, int& w, int& h) const {
  x = viewport[0];
  y = viewport[1];
  w = viewport[2];
  h = viewport[3];
}

void nrContext::clear(int flags) { clear(flags, 0, 0, 0, 1); }

void nrContext::clear(int flags, float r, float g, float b, float a) {
  GLbitfield mask = 0;
  if (flags & COLOR_CLEAR) {
    nrgl::ClearColor(r, g, b, a);
    mask |= GL_COLOR_BUFFER_BIT;
  }
  if (flags & DEPTH_CLEAR) {
    nrgl::ClearDepth(1.0);
    mask |= GL_DEPTH_BUFFER_BIT;
  }
  if (mask) nrgl::Clear(mask);
}

// ---- the set rule ----

template <typename T>
void nrContext::record(int elt, T _nrGfx::*member, const T& value) {
  if (recordTarget != global) return;
  global->*member = value;
  global->mask.setBit(elt);
  globalChanged = true;
}

template <typename T>
bool nrContext::change(int elt, T _nrGfx::*member, const T& value) {
  if (top->*member == value) return false;
  top->mask.setBit(elt);
  top->*member = value;
  return true;
}

void nrContext::setTexture(nrTexture* texture) {
  if (set(_nrGfx::TEXTURE_ELT, &_nrGfx::texture, texture) && texture) texture->draw(this);
}

void nrContext::setTexEnable(unsigned char on) {
  if (set(_nrGfx::TEX_ENABLE_ELT, &_nrGfx::texEnable, on)) enable(GL_TEXTURE_2D, on);
}

void nrContext::setTexMode(TexModeEnum mode) {
  if (inRange(mode, PERSP_TEX + 1, "setTexMode")) set(_nrGfx::TEX_MODE_ELT, &_nrGfx::texMode, mode);
}

void nrContext::setTexBlendColor(const nrVec4f& color) {
  if (set(_nrGfx::TEX_BLEND_COLOR_ELT, &_nrGfx::texBlendColor, color))
    nrgl::TexEnvfv(GL_TEXTURE_ENV, GL_TEXTURE_ENV_COLOR, color.vec);
}

void nrContext::setTexEnv(TexEnvEnum env) {
  if (known(texEnvGL, env, "setTexEnv") && set(_nrGfx::TEX_ENV_ELT, &_nrGfx::texEnv, env))
    nrgl::TexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, texEnvGL[env]);
}

void nrContext::setTexGen(nrTexGen* texGen) {
  if (set(_nrGfx::TEX_GEN_ELT, &_nrGfx::texGen, texGen) && texGen) texGen->draw(this);
}

void nrContext::setTexGenEnable(unsigned char on) {
  if (!set(_nrGfx::TEX_GEN_ENABLE_ELT, &_nrGfx::texGenEnable, on)) return;
  const GLenum coords[4] = {GL_TEXTURE_GEN_S, GL_TEXTURE_GEN_T, GL_TEXTURE_GEN_R, GL_TEXTURE_GEN_Q};
  if (!on) {
    for (GLenum coord : coords) nrgl::Disable(coord);
  } else if (nrTexGen* texGen = top->texGen) {
    const nrTexGen::ModeEnum modes[4] = {texGen->getModeS(), texGen->getModeT(), texGen->getModeR(),
                                         texGen->getModeQ()};
    for (int i = 0; i < 4; ++i)
      if (modes[i] != nrTexGen::OFF) nrgl::Enable(coords[i]);
  }
}

void nrContext::setLightEnable(unsigned char on) {
  if (set(_nrGfx::LIGHT_ENABLE_ELT, &_nrGfx::lightEnable, on)) enable(GL_LIGHTING, on);
}

void nrContext::setShadeModel(ShadeModelEnum model) {
  if (known(shadeModelGL, model, "setShadeModel") && set(_nrGfx::SHADE_MODEL_ELT, &_nrGfx::shadeModel, model))
    nrgl::ShadeModel(shadeModelGL[model]);
}

void nrContext::setTranspEnable(unsigned char on) {
  if (set(_nrGfx::TRANSP_ENABLE_ELT, &_nrGfx::transpEnable, on)) applyTransparency(top->transpMode, on);
}

void nrContext::setTranspMode(TranspModeEnum mode) {
  if (!inRange(mode, SCREEN_DOOR_TRANSP + 1, "setTranspMode")) return;
  if (!set(_nrGfx::TRANSP_MODE_ELT, &_nrGfx::transpMode, mode) || !top->transpEnable) return;
  if (!isStippleMode(mode)) nrgl::Disable(GL_POLYGON_STIPPLE);
  applyTransparency(mode, true);
}

void nrContext::applyTransparency(TranspModeEnum mode, bool on) {
  if (isStippleMode(mode)) {
    enable(GL_POLYGON_STIPPLE, on);
    if (on) setBlendFuncs(ONE_SBLEND, ZERO_DBLEND);
  } else if (on) {
    setBlendFuncs(SRC_ALPHA_SBLEND, ONE_MINUS_SRC_ALPHA_DBLEND);
  } else {
    setBlendFuncs(ONE_SBLEND, ZERO_DBLEND);
  }
}

void nrContext::setAlphaFunc(AlphaFuncEnum func) {
  if (!known(alphaFuncGL, func, "setAlphaFunc") || !set(_nrGfx::ALPHA_FUNC_ELT, &_nrGfx::alphaFunc, func)) return;
  // The enumeration is compared with the OpenGL code of GL_ALWAYS (519), which
  // no enumeration value has: ALWAYS_AFUNC keeps the alpha test enabled. Kept so.
  if (static_cast<int>(func) == GL_ALWAYS) {
    nrgl::Disable(GL_ALPHA_TEST);
  } else {
    nrgl::Enable(GL_ALPHA_TEST);
    nrgl::AlphaFunc(alphaFuncGL[func], top->alphaRef);
  }
}

void nrContext::setAlphaRef(float ref) {
  if (set(_nrGfx::ALPHA_REF_ELT, &_nrGfx::alphaRef, ref)) nrgl::AlphaFunc(alphaFuncGL[top->alphaFunc], ref);
}

void nrContext::setBlendColor(const nrVec4f& color) { set(_nrGfx::BLEND_COLOR_ELT, &_nrGfx::blendColor, color); }

void nrContext::setSrcBlendFunc(SrcBlendFuncEnum func) {
  if (!known(srcBlendGL, func, "setSrcBlendFunc")) return;
  record(_nrGfx::SRC_BLEND_FUNC_ELT, &_nrGfx::srcBlendFunc, func);
  applySrcBlendFunc(func, true);
}

void nrContext::setDstBlendFunc(DstBlendFuncEnum func) {
  if (!known(dstBlendGL, func, "setDstBlendFunc")) return;
  record(_nrGfx::DST_BLEND_FUNC_ELT, &_nrGfx::dstBlendFunc, func);
  applyDstBlendFunc(func, true);
}

// GL_BLEND is on exactly when the pair is not (ONE, ZERO); each factor decides
// it only while the other one has its neutral value.
void nrContext::applySrcBlendFunc(SrcBlendFuncEnum func, bool mark) {
  if (top->srcBlendFunc == func) return;
  if (mark) top->mask.setBit(_nrGfx::SRC_BLEND_FUNC_ELT);
  top->srcBlendFunc = func;
  if (top->dstBlendFunc == ZERO_DBLEND) enable(GL_BLEND, func != ONE_SBLEND);
  nrgl::BlendFunc(srcBlendGL[func], dstBlendGL[top->dstBlendFunc]);
}

void nrContext::applyDstBlendFunc(DstBlendFuncEnum func, bool mark) {
  if (top->dstBlendFunc == func) return;
  if (mark) top->mask.setBit(_nrGfx::DST_BLEND_FUNC_ELT);
  top->dstBlendFunc = func;
  if (top->srcBlendFunc == ONE_SBLEND) enable(GL_BLEND, func != ZERO_DBLEND);
  nrgl::BlendFunc(srcBlendGL[top->srcBlendFunc], dstBlendGL[func]);
}

void nrContext::setBlendFuncs(SrcBlendFuncEnum src, DstBlendFuncEnum dst) {
  record(_nrGfx::SRC_BLEND_FUNC_ELT, &_nrGfx::srcBlendFunc, src);
  record(_nrGfx::DST_BLEND_FUNC_ELT, &_nrGfx::dstBlendFunc, dst);
  applySrcBlendFunc(src, false);
  applyDstBlendFunc(dst, false);
}

void nrContext::setColorMask(const nrVec4ub& mask) {
  if (set(_nrGfx::COLOR_MASK_ELT, &_nrGfx::colorMask, mask))
    nrgl::ColorMask(mask[0] != 0, mask[1] != 0, mask[2] != 0, mask[3] != 0);
}

void nrContext::setDepthEnable(unsigned char on) {
  if (set(_nrGfx::DEPTH_ENABLE_ELT, &_nrGfx::depthEnable, on)) enable(GL_DEPTH_TEST, on);
}

void nrContext::setDepthFunc(DepthFuncEnum func) {
  if (known(depthFuncGL, func, "setDepthFunc") && set(_nrGfx::DEPTH_FUNC_ELT, &_nrGfx::depthFunc, func))
    nrgl::DepthFunc(depthFuncGL[func]);
}

void nrContext::setDepthMask(unsigned char on) {
  if (set(_nrGfx::DEPTH_MASK_ELT, &_nrGfx::depthMask, on)) nrgl::DepthMask(on != 0);
}

void nrContext::setFogEnable(unsigned char on) {
  record(_nrGfx::FOG_ENABLE_ELT, &_nrGfx::fogEnable, on);
  applyFogEnable(on);
}

void nrContext::applyFogEnable(unsigned char on) {
  if (fogStack->getCount() > 2 && !static_cast<nrFog*>((*fogStack)[fogStack->getCount() - 1])->getOn()) on = 0;
  if (change(_nrGfx::FOG_ENABLE_ELT, &_nrGfx::fogEnable, on)) enable(GL_FOG, on);
}

unsigned char nrContext::syncFogState(nrFog* fog) {
  if (!global->fogEnable) return 0;
  applyFogEnable(fog->getOn());
  return fog->getOn();
}

void nrContext::setPolyMode(PolyModeEnum mode) {
  if (known(polyModeGL, mode, "setPolyMode") && set(_nrGfx::POLY_MODE_ELT, &_nrGfx::polyMode, mode))
    nrgl::PolygonMode(GL_FRONT_AND_BACK, polyModeGL[mode]);
}

const nrOverrideGeoProp* nrContext::activeGeoOverride(int elt) const {
  if (overrideGeoPropTop < 0 || !overrideGeoProps[overrideGeoPropTop]->overrides(elt)) return nullptr;
  return overrideGeoProps[overrideGeoPropTop];
}

void nrContext::setCullFace(CullFaceEnum face) {
  if (!known(cullFaceGL, face, "setCullFace")) return;
  record(_nrGfx::CULL_FACE_ELT, &_nrGfx::cullFace, face);
  if (const nrOverrideGeoProp* prop = activeGeoOverride(_nrGfx::CULL_FACE_ELT)) face = prop->getCullFace();
  if (!change(_nrGfx::CULL_FACE_ELT, &_nrGfx::cullFace, face)) return;
  if (face == NO_CULL) {
    nrgl::Disable(GL_CULL_FACE);
  } else {
    nrgl::Enable(GL_CULL_FACE);
    nrgl::CullFace(cullFaceGL[face]);
  }
}

void nrContext::setLineWidth(float width) {
  if (!positive(width, "setLineWidth")) return;
  record(_nrGfx::LINE_WIDTH_ELT, &_nrGfx::lineWidth, width);
  if (const nrOverrideGeoProp* prop = activeGeoOverride(_nrGfx::LINE_WIDTH_ELT)) width = prop->getLineWidth();
  if (positive(width, "setLineWidth") && change(_nrGfx::LINE_WIDTH_ELT, &_nrGfx::lineWidth, width)) nrgl::LineWidth(width);
}

void nrContext::setPointSize(float size) {
  if (!positive(size, "setPointSize")) return;
  record(_nrGfx::POINT_SIZE_ELT, &_nrGfx::pointSize, size);
  if (const nrOverrideGeoProp* prop = activeGeoOverride(_nrGfx::POINT_SIZE_ELT)) size = prop->getPointSize();
  if (positive(size, "setPointSize") && change(_nrGfx::POINT_SIZE_ELT, &_nrGfx::pointSize, size)) nrgl::PointSize(size);
}

void nrContext::setLineStipplePattern(unsigned int pattern) {
  if (!set(_nrGfx::LINE_STIPPLE_PATTERN_ELT, &_nrGfx::lineStipplePattern, pattern)) return;
  if (pattern == 0xFFFF) {
    nrgl::Disable(GL_LINE_STIPPLE);
  } else {
    nrgl::Enable(GL_LINE_STIPPLE);
    nrgl::LineStipple(top->lineStippleFactor, static_cast<GLushort>(pattern));
  }
}

void nrContext::setLineStippleFactor(unsigned int factor) {
  if (set(_nrGfx::LINE_STIPPLE_FACTOR_ELT, &_nrGfx::lineStippleFactor, factor) && top->lineStipplePattern != 0xFFFF)
    nrgl::LineStipple(factor, static_cast<GLushort>(top->lineStipplePattern));
}

void nrContext::setTexTransform(const nrMatrix4f& matrix) {
  if (!set(_nrGfx::TEX_TRANSFORM_ELT, &_nrGfx::texTransform, matrix)) return;
  nrgl::MatrixMode(GL_TEXTURE);
  nrgl::LoadMatrixf(&matrix.mat[0][0]);
  nrgl::MatrixMode(GL_MODELVIEW);
}

void nrContext::sendMaterial(nrMaterial* material, int face) {
  if (material) material->draw(static_cast<nrMaterial::FaceEnum>(face), this);
}

void nrContext::setMaterial(nrMaterial* material) {
  if (set(_nrGfx::MATERIAL_ELT, &_nrGfx::material, material)) sendMaterial(material, nrMaterial::FRONT_FACE);
}

void nrContext::setBackMaterial(nrMaterial* material) {
  if (!set(_nrGfx::BACK_MATERIAL_ELT, &_nrGfx::backMaterial, material)) return;
  nrgl::LightModeli(GL_LIGHT_MODEL_TWO_SIDE, material ? 1 : 0);
  sendMaterial(material, nrMaterial::BACK_FACE);
}

void nrContext::setMaterialModeEnable(int mode) {
  if (!set(_nrGfx::MATERIAL_MODE_ENABLE_ELT, &_nrGfx::materialModeEnable, mode ? COLOR_MATERIAL : NO_COLOR_MATERIAL))
    return;
  if (mode) {
    for (auto& face : heldMaterialKnown) face[0] = face[1] = false;
    nrgl::Enable(GL_COLOR_MATERIAL);
    nrgl::ColorMaterial(GL_FRONT_AND_BACK, GL_AMBIENT_AND_DIFFUSE);
  } else {
    // Colour tracking overwrote the materials while it was on.
    nrgl::Disable(GL_COLOR_MATERIAL);
    sendMaterial(top->material, nrMaterial::FRONT_FACE);
    sendMaterial(top->backMaterial, nrMaterial::BACK_FACE);
  }
}

void nrContext::sendMaterialValues(int face, const float (&colors)[4][4], float shininess) {
  static const GLenum names[4] = {GL_AMBIENT, GL_DIFFUSE, GL_SPECULAR, GL_EMISSION};
  const GLenum glFace = face == nrMaterial::BACK_FACE ? GL_BACK : GL_FRONT;
  float (&held)[5][4] = heldMaterial[face == nrMaterial::BACK_FACE];
  bool (&known)[5] = heldMaterialKnown[face == nrMaterial::BACK_FACE];
  const bool tracking = top->materialModeEnable != NO_COLOR_MATERIAL;
  for (int i = 0; i < 4; ++i) {
    if (known[i] && memcmp(held[i], colors[i], sizeof held[i]) == 0) continue;
    nrgl::Materialfv(glFace, names[i], colors[i]);
    memcpy(held[i], colors[i], sizeof held[i]);
    known[i] = !(tracking && i < 2);
  }
  if (known[4] && held[4][0] == shininess) return;
  nrgl::Materialf(glFace, GL_SHININESS, shininess);
  held[4][0] = shininess;
  known[4] = true;
}

void nrContext::setNormalizeEnable(unsigned char on) {
  if (on == normalizeEnable) return;
  normalizeEnable = on;
  enable(GL_NORMALIZE, on);
}

void nrContext::setLocalViewer(unsigned char on) {
  if (on == localViewer) return;
  localViewer = on;
  nrgl::LightModeli(GL_LIGHT_MODEL_LOCAL_VIEWER, on);
}

void nrContext::setClientArrays(unsigned arrays) {
  static const GLenum kinds[4] = {GL_COLOR_ARRAY, GL_NORMAL_ARRAY, GL_TEXTURE_COORD_ARRAY, GL_VERTEX_ARRAY};
  unsigned changed = arrays ^ clientArrays;
  if (!changed) return;
  clientArrays = arrays;
  for (int i = 0; i < 4; ++i) {
    if (!(changed & (1u << i))) continue;
    if (arrays & (1u << i))
      nrgl::EnableClientState(kinds[i]);
    else
      nrgl::DisableClientState(kinds[i]);
  }
}

// ---- appearances and the state stack ----

void nrContext::setStateElts(const nrBitMask& mask, const _nrGfx& gfx) {
  for (int elt = 0; elt < _nrGfx::ELT_COUNT; ++elt)
    if (elements[elt].apply && mask.isBitSet(elt)) elements[elt].apply(this, gfx);
}

void nrContext::drawApp(nrAppearance* app, unsigned char force) {
  bool isMerged = overrideAppTop >= 0 && app != overrideApps[overrideAppTop];
  if (!isMerged && app == lastApp && !lastMerged && !force && !globalChanged) return;

  // Without an appearance everything is inherited: the application's own state
  // comes back by undoing what the previous appearance set.
  _nrGfx appGfx;
  const _nrGfx* gfx = global;
  nrBitMask inherit = ALL_BITS;
  if (app) {
    app->getGfx(appGfx);
    gfx = &appGfx;
    inherit = appGfx.mask;
  }
  if (isMerged) {
    _nrGfx over;
    overrideApps[overrideAppTop]->getGfx(over);
    _nrGfx merged;
    merged.mask = ALL_BITS;
    for (int elt = 0; elt < APPEARANCE_ELTS; ++elt) {
      const _nrGfx* from = nullptr;
      if (!over.mask.isBitSet(elt))
        from = &over;
      else if (app && !inherit.isBitSet(elt))
        from = &appGfx;
      if (!from) continue;
      elements[elt].copy(merged, *from);
      merged.mask.clearBit(elt);
    }
    appGfx = merged;
    gfx = &appGfx;
    inherit = merged.mask;
  }

  recordTarget = top;
  setStateElts(~lastInherit & inherit, *global);
  setStateElts(~inherit, *gfx);
  recordTarget = global;

  // The last appearance is held so that its address cannot be reused by a new
  // one while the early return above compares against it.
  nrAppearance* applied = isMerged ? nullptr : app;
  if (applied) applied->ref();
  if (lastApp) lastApp->unref();
  lastApp = applied;
  lastMerged = isMerged;
  lastInherit = inherit;
  globalChanged = false;
}

void nrContext::pushState() {
  // A push past the sixteen levels is refused, and the pop that matches it
  // undoes nothing, so pushes and pops stay paired.
  if (depth == STACK_DEPTH - 1) {
    ++refusedStatePushes;
    return;
  }
  if (lastApp) lastApp->ref();
  appliedBelow[depth] = {lastApp, lastMerged, lastInherit};
  ++depth;
  pushLights();
  pushFog(nullptr);
  stack[depth] = *top;
  top = stack + depth;
}

void nrContext::popState() {
  if (refusedStatePushes > 0) {
    --refusedStatePushes;
    return;
  }
  if (depth == 0) return;
  _nrGfx* lower = top - 1;
  // The fog of the level below decides whether fog may come back on: the
  // pushed level's entry leaves the fog stack before the elements are restored.
  nrFog* droppedFog = takeTopFog();
  recordTarget = top;
  // What a geometry-property pop left unknown (-1) below has no value to restore.
  nrBitMask restore = top->mask | lower->mask;
  if (lower->cullFace < 0) restore.clearBit(_nrGfx::CULL_FACE_ELT);
  if (lower->lineWidth < 0) restore.clearBit(_nrGfx::LINE_WIDTH_ELT);
  if (lower->pointSize < 0) restore.clearBit(_nrGfx::POINT_SIZE_ELT);
  setStateElts(restore, *lower);
  setStateElts(global->mask, *global);
  recordTarget = global;
  // The lower level takes what OpenGL now holds, which differs from what it
  // held before only when the application set state inside the pushed level.
  nrBitMask mask = lower->mask | top->mask;
  *lower = *top;
  lower->mask = mask;
  --depth;
  top = lower;
  restoreFogBelow(droppedFog);
  popLights();
  // OpenGL holds again what the appearance last applied at the level below
  // set: that one is the previous appearance for the next to undo.
  if (lastApp) lastApp->unref();
  lastApp = appliedBelow[depth].app;
  lastMerged = appliedBelow[depth].merged;
  lastInherit = appliedBelow[depth].inherit;
  globalChanged = true;
}

// ---- lights ----

void nrContext::enableLightSlot(int slot, unsigned char on) {
  enable(GL_LIGHT0 + slot, on);
  lights[lightLevel][slot].enabled = on;
}

int nrContext::getLightTarget(nrLight* light, const nrMatrix4f& matrix, int& sameIndex) {
  sameIndex = -1;
  if (!light) return -1;
  LightSlot* slots = lights[lightLevel];
  for (int i = 0; i < LIGHT_SLOTS; ++i) {
    LightSlot& slot = slots[i];
    if (slot.light != light) continue;
    if (slot.enabled != light->getOn()) {
      enableLightSlot(i, light->getOn());
      slot.matrix = matrix;
    } else if (slot.matrix != matrix) {
      slot.matrix = matrix;
    } else {
      sameIndex = i;
    }
    return i;
  }

  int target = -1;
  for (int i = LIGHT_SLOTS - 1; i >= 0 && target < 0; --i)
    if (!slots[i].light) target = i;
  for (int i = LIGHT_SLOTS - 1; i >= 0 && target < 0; --i)
    if (!slots[i].enabled) target = i;
  // A ninth light while all eight slots hold enabled lights gets no slot (-1):
  // the lights already placed keep theirs.
  if (target < 0) return -1;

  LightSlot& slot = slots[target];
  if (slot.light) slot.light->unref();
  slot.assigned = 1;
  slot.light = light;
  light->ref();
  enableLightSlot(target, light->getOn());
  slot.matrix = matrix;
  return target;
}

nrLight* nrContext::getLight(int slot) const {
  if (slot < 0 || slot >= LIGHT_SLOTS) return nullptr;
  return lights[lightLevel][slot].light;
}

void nrContext::pushLights() {
  if (lightLevel == STACK_DEPTH - 1) {
    ++refusedLightPushes;
    return;
  }
  for (int i = 0; i < LIGHT_SLOTS; ++i) {
    LightSlot& slot = lights[lightLevel + 1][i];
    slot = lights[lightLevel][i];
    if (slot.light) slot.light->ref();
  }
  ++lightLevel;
}

void nrContext::popLights() {
  if (refusedLightPushes > 0) {
    --refusedLightPushes;
    return;
  }
  if (lightLevel == 0) return;
  LightSlot* lower = lights[lightLevel - 1];
  for (int i = 0; i < LIGHT_SLOTS; ++i) {
    LightSlot& slot = lights[lightLevel][i];
    if (!slot.light) continue;
    // Each OpenGL light goes back to what the level below holds in its slot:
    // nothing, or its light as it was there, switched off there or on again
    // where this level switched it off. A light this level put in the place
    // of another one leaves that one restored.
    const LightSlot& below = lower[i];
    if (!below.light) {
      nrgl::Disable(GL_LIGHT0 + i);
    } else {
      if (!below.enabled)
        nrgl::Disable(GL_LIGHT0 + i);
      else if (!slot.enabled)
        nrgl::Enable(GL_LIGHT0 + i);
      below.light->pop(i, below.matrix);
    }
    slot.light->unref();
    slot.light = nullptr;
  }
  --lightLevel;
}

void nrContext::disableLightTargets() {
  for (int i = 0; i < LIGHT_SLOTS; ++i)
    if (lights[lightLevel][i].enabled) enableLightSlot(i, 0);
}

void nrContext::disableLight(nrLight* light) {
  if (!contexts) return;
  for (unsigned c = 0; c < contexts->getCount(); ++c) {
    nrContext* context = static_cast<nrContext*>((*contexts)[c]);
    if (!context) continue;
    for (int i = 0; i < LIGHT_SLOTS; ++i) {
      const LightSlot& slot = context->lights[context->lightLevel][i];
      if (slot.light == light && slot.enabled) context->enableLightSlot(i, 0);
    }
  }
}

// ---- fog ----

void nrContext::pushFog(nrFog* fog) {
  if (!fog) fog = static_cast<nrFog*>((*fogStack)[fogStack->getCount() - 1]);
  fogStack->append(fog);
  fog->push(this);
  fog->ref();
}

void nrContext::popFog() { restoreFogBelow(takeTopFog()); }

nrFog* nrContext::takeTopFog() {
  if (fogStack->getCount() <= 1) return nullptr;
  nrFog* dropped = static_cast<nrFog*>((*fogStack)[fogStack->getCount() - 1]);
  fogStack->removeIndex(fogStack->getCount() - 1);
  return dropped;
}

void nrContext::restoreFogBelow(nrFog* dropped) {
  if (!dropped) return;
  static_cast<nrFog*>((*fogStack)[fogStack->getCount() - 1])->pop(dropped, this);
  dropped->unref();
}

// ---- overrides ----

// The override stacks reference their entries, so an entry released by the
// application stays usable until it is popped; a pop hands the entry back
// without deleting it, even when the stack held the last reference.
// A null entry is ignored.
void nrContext::pushOverrideAppearance(nrAppearance* app) {
  if (overrideAppTop == OVERRIDE_DEPTH - 1) {
    fputs("overflow in nrContext override appearance stack\n", stderr);
    return;
  }
  if (!app) return;
  app->ref();
  overrideApps[++overrideAppTop] = app;
}

nrAppearance* nrContext::popOverrideAppearance() {
  if (overrideAppTop < 0) {
    fputs("underflow in nrContext override appearance stack\n", stderr);
    return nullptr;
  }
  nrAppearance* app = overrideApps[overrideAppTop--];
  app->unrefNoDelete();
  return app;
}

void nrContext::pushOverrideGeoProp(nrOverrideGeoProp* prop) {
  if (overrideGeoPropTop == OVERRIDE_DEPTH - 1) {
    fputs("overflow in nrContext override geometry property stack\n", stderr);
    return;
  }
  if (!prop) return;
  prop->ref();
  overrideGeoProps[++overrideGeoPropTop] = prop;
}

nrOverrideGeoProp* nrContext::popOverrideGeoProp() {
  if (overrideGeoPropTop < 0) {
    fputs("underflow in nrContext override geometry property stack\n", stderr);
    return nullptr;
  }
  // Values no set can match, so the next set of each reaches OpenGL.
  top->cullFace = static_cast<CullFaceEnum>(-1);
  top->lineWidth = -1;
  top->pointSize = -1;
  nrOverrideGeoProp* prop = overrideGeoProps[overrideGeoPropTop--];
  prop->unrefNoDelete();
  return prop;
}

// ---- objects the records point at ----

namespace {
template <typename T>
void forgetIn(T*& member, const void* object) {
  if (member == object) member = nullptr;
}

void forgetIn(_nrGfx& gfx, const void* object) {
  forgetIn(gfx.texture, object);
  forgetIn(gfx.texGen, object);
  forgetIn(gfx.material, object);
  forgetIn(gfx.backMaterial, object);
}
}  // namespace

void nrContext::forget(const void* object) {
  if (!contexts || !object) return;
  for (unsigned c = 0; c < contexts->getCount(); ++c) {
    nrContext* context = static_cast<nrContext*>((*contexts)[c]);
    if (!context) continue;
    if (context->drawable == object) context->drawable = nullptr;
    // Levels above the depth are overwritten by the next push.
    for (int level = 0; level <= context->depth; ++level) forgetIn(context->stack[level], object);
    forgetIn(*context->global, object);
  }
}

// ---- shared object ids ----

namespace {
// Doubles the size of a version array, from twice its current size, until id fits.
void fitVersions(nrIntArray* versions, int id) {
  unsigned size = versions->getCount();
  if (static_cast<unsigned>(id) < size) return;
  do size *= 2;
  while (static_cast<unsigned>(id) >= size);
  versions->fillRange(versions->getCount(), size - versions->getCount(), 0);
}
}  // namespace

int nrContext::newId(int count) {
  getClassType();
  if (count == 1 && freeIds->getCount() > 0) {
    int id = (*freeIds)[0];
    freeIds->removeIndex(0);
    return id;
  }
  int id = nextId;
  // A request for no ids (or fewer) takes none: the counter never goes back
  // to ids already handed out.
  if (count > 0) nextId += count;
  return id;
}

void nrContext::freeId(int first, int count) {
  getClassType();
  // A range that runs past the largest id was never handed out.
  if (first < 0 || count < 1 || first > INT_MAX - (count - 1)) return;
  for (unsigned c = 0; c < contexts->getCount(); ++c) {
    nrContext* context = static_cast<nrContext*>((*contexts)[c]);
    if (!context) continue;
    // Ids beyond a context's array have no version there: it counts them as
    // unseen already, so the array need not grow for them.
    for (int k = 0; k < count && static_cast<unsigned>(first + k) < context->versions->getCount(); ++k)
      (*context->versions)[first + k] = 0;
  }
  for (int k = 0; k < count; ++k) freeIds->append(first + k);
}

int nrContext::isDirty(int id, int version) {
  // A negative id was never handed out: nothing can be remembered for it.
  if (id < 0) return 1;
  if (static_cast<unsigned>(id) < versions->getCount() && version <= (*versions)[id]) return 0;
  fitVersions(versions, id);
  if (static_cast<unsigned>(id) < versions->getCount()) (*versions)[id] = version;
  return 1;
}

// ---- audio ----

void nrContext::initSound() {
  // This platform offers one audio resource, the default output, and no audio
  // port opens on it: every attempt reports the failure.
  fputs("Warning - Failed to open AudioPort for Audio Resource\n", stderr);
  soundInitialized = true;
}
