#include "nerio3d/render/nrAppearance.h"

#include <initializer_list>

#include "nerio3d/actions/nrDrawAction.h"
#include "nerio3d/fields/nrSFRef.h"
#include "nerio3d/fields/nrSField.h"
#include "nerio3d/render/_nrGfx.h"
#include "nerio3d/render/nrMaterial.h"
#include "nerio3d/render/nrTexGen.h"
#include "nerio3d/render/nrTexture.h"

namespace {

const nrBitMask ALL_BITS = nrBitMask::fromBits(~uint64_t(0));

// Registers an enumeration field whose value names are numbered from 0.
template <typename C>
void addEnumField(nrType* type, const char* name, short index, int defaultValue, int C::*storage,
                  std::initializer_list<const char*> names) {
  nrSFEnum::addTypeField(type, name, index, defaultValue, storage);
  int value = 0;
  for (const char* valueName : names) type->getFieldInfo(index)->addEnum(value++, valueName);
}

// Hands the four components of a colour or mask out through pointers.
template <typename V, typename T>
void getComponents(const V& v, T* r, T* g, T* b, T* a) {
  *r = v[0];
  *g = v[1];
  *b = v[2];
  *a = v[3];
}

}  // namespace

NR_DEFINE_TYPE(nrAppearance, nrContainer, "Appearance") {
  nrMatrix4f identity;
  identity.makeIdent();
  nrSFRef::addTypeField(type, "texture", TEXTURE, nrTexture::getClassType(), &nrAppearance::texture);
  nrSFUByte::addTypeField(type, "texEnable", TEX_ENABLE, 0, &nrAppearance::texEnable);
  addEnumField(type, "texMode", TEX_MODE, nrContext::FAST_TEX, &nrAppearance::texMode,
               {"FAST_TEX", "NICE_TEX", "NON_PERSP_TEX", "PERSP_TEX"});
  nrSFVec4f::addTypeField(type, "texBlendColor", TEX_BLEND_COLOR, nrVec4f(0, 0, 0, 0), &nrAppearance::texBlendColor);
  addEnumField(type, "texEnv", TEX_ENV, nrContext::MODULATE_TENV, &nrAppearance::texEnv,
               {"MODULATE_TENV", "BLEND_TENV", "REPLACE_TENV", "ADD_TENV", "DECAL_TENV"});
  nrSFRef::addTypeField(type, "texGen", TEX_GEN, nrTexGen::getClassType(), &nrAppearance::texGen);
  nrSFUByte::addTypeField(type, "texGenEnable", TEX_GEN_ENABLE, 0, &nrAppearance::texGenEnable);
  nrSFRef::addTypeField(type, "material", MATERIAL, nrMaterial::getClassType(), &nrAppearance::material);
  nrSFUByte::addTypeField(type, "lightEnable", LIGHT_ENABLE, 0, &nrAppearance::lightEnable);
  addEnumField(type, "shadeModel", SHADE_MODEL, nrContext::SMOOTH_SHADE, &nrAppearance::shadeModel,
               {"FLAT_SHADE", "SMOOTH_SHADE"});
  nrSFUByte::addTypeField(type, "transpEnable", TRANSP_ENABLE, 0, &nrAppearance::transpEnable);
  addEnumField(type, "transpMode", TRANSP_MODE, nrContext::BLEND_TRANSP, &nrAppearance::transpMode,
               {"FAST_TRANSP", "NICE_TRANSP", "BLEND_TRANSP", "SCREEN_DOOR_TRANSP"});
  addEnumField(type, "alphaFunc", ALPHA_FUNC, nrContext::ALWAYS_AFUNC, &nrAppearance::alphaFunc,
               {"NEVER_AFUNC", "LESS_AFUNC", "EQUAL_AFUNC", "LEQUAL_AFUNC", "GREATER_AFUNC", "NOTEQUAL_AFUNC",
                "GEQUAL_AFUNC", "ALWAYS_AFUNC"});
  nrSFFloat::addTypeField(type, "alphaRef", ALPHA_REF, 0.0f, &nrAppearance::alphaRef);
  nrSFVec4f::addTypeField(type, "blendColor", BLEND_COLOR, nrVec4f(0, 0, 0, 0), &nrAppearance::blendColor);
  addEnumField(type, "srcBlendFunc", SRC_BLEND_FUNC, nrContext::ONE_SBLEND, &nrAppearance::srcBlendFunc,
               {"ZERO_SBLEND", "ONE_SBLEND", "DST_COLOR_SBLEND", "ONE_MINUS_DST_COLOR_SBLEND",
                "SRC_ALPHA_SATURATE_SBLEND", "SRC_ALPHA_SBLEND", "ONE_MINUS_SRC_ALPHA_SBLEND", "DST_ALPHA_SBLEND",
                "ONE_MINUS_DST_ALPHA_SBLEND"});
  addEnumField(type, "dstBlendFunc", DST_BLEND_FUNC, nrContext::ZERO_DBLEND, &nrAppearance::dstBlendFunc,
               {"ZERO_DBLEND", "ONE_DBLEND", "SRC_COLOR_DBLEND", "ONE_MINUS_SRC_COLOR_DBLEND", "SRC_ALPHA_DBLEND",
                "ONE_MINUS_SRC_ALPHA_DBLEND", "DST_ALPHA_DBLEND", "ONE_MINUS_DST_ALPHA_DBLEND"});
  nrSFVec4ub::addTypeField(type, "colorMask", COLOR_MASK, nrVec4ub(255, 255, 255, 255), &nrAppearance::colorMask);
  nrSFUByte::addTypeField(type, "depthEnable", DEPTH_ENABLE, 0, &nrAppearance::depthEnable);
  addEnumField(type, "depthFunc", DEPTH_FUNC, nrContext::LESS_DFUNC, &nrAppearance::depthFunc,
               {"NEVER_DFUNC", "LESS_DFUNC", "EQUAL_DFUNC", "LEQUAL_DFUNC", "GREATER_DFUNC", "NOTEQUAL_DFUNC",
                "GEQUAL_DFUNC", "ALWAYS_DFUNC"});
  nrSFUByte::addTypeField(type, "depthMask", DEPTH_MASK, 1, &nrAppearance::depthMask);
  nrSFUByte::addTypeField(type, "fogEnable", FOG_ENABLE, 0, &nrAppearance::fogEnable);
  addEnumField(type, "materialModeEnable", MATERIAL_MODE_ENABLE, nrContext::NO_COLOR_MATERIAL,
               &nrAppearance::materialModeEnable, {"NO_COLOR_MATERIAL", "COLOR_MATERIAL"});
  addEnumField(type, "polyMode", POLY_MODE, nrContext::FILL_PMODE, &nrAppearance::polyMode,
               {"POINT_PMODE", "LINE_PMODE", "FILL_PMODE"});
  nrSFUInt::addTypeField(type, "lineStipplePattern", LINE_STIPPLE_PATTERN, 65535, &nrAppearance::lineStipplePattern);
  nrSFUInt::addTypeField(type, "lineStippleFactor", LINE_STIPPLE_FACTOR, 1, &nrAppearance::lineStippleFactor);
  nrSFMatrix4f::addTypeField(type, "texTransform", TEX_TRANSFORM, identity, &nrAppearance::texTransform);
  nrSFRef::addTypeField(type, "backMaterial", BACK_MATERIAL, nrMaterial::getClassType(), &nrAppearance::backMaterial);
  nrSFBitMask::addTypeField(type, "inherit", INHERIT, ALL_BITS, &nrAppearance::inherit);
}

nrAppearance::nrAppearance(nrType* type)
    : nrContainer(type), changed(false), cullFace(nrContext::NO_CULL), lineWidth(1), pointSize(1) {
  initFieldDefaults(classType);
}

nrAppearance::~nrAppearance() { destroyFieldContents(classType); }

void nrAppearance::setRef(nrContainer*& member, nrContainer* value, short index) {
  refer(member, value);
  member = value;
  fieldChanged(index);
}

void nrAppearance::setTexture(nrTexture* value) { setRef(texture, value, TEXTURE); }
nrTexture* nrAppearance::getTexture() const { return static_cast<nrTexture*>(getFieldValue(texture, TEXTURE)); }
void nrAppearance::setTexGen(nrTexGen* value) { setRef(texGen, value, TEX_GEN); }
nrTexGen* nrAppearance::getTexGen() const { return static_cast<nrTexGen*>(getFieldValue(texGen, TEX_GEN)); }
void nrAppearance::setMaterial(nrMaterial* value) { setRef(material, value, MATERIAL); }
nrMaterial* nrAppearance::getMaterial() const { return static_cast<nrMaterial*>(getFieldValue(material, MATERIAL)); }
void nrAppearance::setBackMaterial(nrMaterial* value) { setRef(backMaterial, value, BACK_MATERIAL); }
nrMaterial* nrAppearance::getBackMaterial() const {
  return static_cast<nrMaterial*>(getFieldValue(backMaterial, BACK_MATERIAL));
}

void nrAppearance::fieldChanged(short index) {
  if (index == INHERIT) {
    explicitMask = ~inherit;
    changed = true;
  } else if (index >= 0 && index < INHERIT) {
    inherit.clearBit(index);
    explicitMask.setBit(index);
    changed = true;
  }
  nrContainer::fieldChanged(index);
}

void nrAppearance::copy(nrContainer* from, nrCloneTable* table) {
  nrContainer::copy(from, table);
  if (!from || from == this || !from->isOfType(getClassType())) return;
  explicitMask = static_cast<nrAppearance*>(from)->explicitMask;
  changed = true;
}

void nrAppearance::draw(nrDrawAction* action) {
  // Without an action, or before one has a context, the thread's current one.
  nrContext* context = action && action->getContext() ? action->getContext() : nrContext::getCurrent();
  if (!context) return;
  // Values routed in since the last draw are taken first (they mark it changed).
  cleanPendingFields();
  context->drawApp(this, changed);
  changed = false;
}

void nrAppearance::getGfx(_nrGfx& gfx) const {
  const_cast<nrAppearance*>(this)->cleanPendingFields();
  gfx.mask = inherit;
  gfx.alphaRef = alphaRef;
  gfx.texMode = nrContext::TexModeEnum(texMode);
  gfx.texture = static_cast<nrTexture*>(texture);
  gfx.texBlendColor = texBlendColor;
  gfx.texEnv = nrContext::TexEnvEnum(texEnv);
  gfx.texGen = static_cast<nrTexGen*>(texGen);
  gfx.material = static_cast<nrMaterial*>(material);
  gfx.shadeModel = nrContext::ShadeModelEnum(shadeModel);
  gfx.transpMode = nrContext::TranspModeEnum(transpMode);
  gfx.alphaFunc = nrContext::AlphaFuncEnum(alphaFunc);
  gfx.blendColor = blendColor;
  gfx.srcBlendFunc = nrContext::SrcBlendFuncEnum(srcBlendFunc);
  gfx.dstBlendFunc = nrContext::DstBlendFuncEnum(dstBlendFunc);
  gfx.colorMask = colorMask;
  gfx.depthFunc = nrContext::DepthFuncEnum(depthFunc);
  gfx.depthMask = depthMask;
  gfx.polyMode = nrContext::PolyModeEnum(polyMode);
  gfx.cullFace = cullFace;
  gfx.materialModeEnable = nrContext::MaterialModeEnum(materialModeEnable);
  gfx.lineStipplePattern = lineStipplePattern;
  gfx.lineStippleFactor = lineStippleFactor;
  gfx.texTransform = texTransform;
  gfx.backMaterial = static_cast<nrMaterial*>(backMaterial);
  gfx.lineWidth = lineWidth;
  gfx.pointSize = pointSize;
  gfx.texEnable = texEnable;
  gfx.texGenEnable = texGenEnable;
  gfx.lightEnable = lightEnable;
  gfx.transpEnable = transpEnable;
  gfx.fogEnable = fogEnable;
  gfx.depthEnable = depthEnable;
}

void nrAppearance::getTexBlendColor(float* r, float* g, float* b, float* a) const {
  getComponents(getTexBlendColor(), r, g, b, a);
}

void nrAppearance::getBlendColor(float* r, float* g, float* b, float* a) const {
  getComponents(getBlendColor(), r, g, b, a);
}

void nrAppearance::getColorMask(unsigned char* r, unsigned char* g, unsigned char* b, unsigned char* a) const {
  getComponents(getColorMask(), r, g, b, a);
}
