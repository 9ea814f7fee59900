// A set of render-state values that shapes apply through the graphics context;
// every element it does not set is inherited from the state around it.
#pragma once

#include "nerio3d/core/nrBitMask.h"
#include "nerio3d/fields/nrContainer.h"
#include "nerio3d/math/nrMatrix4f.h"
#include "nerio3d/math/nrVec4f.h"
#include "nerio3d/math/nrVec4ub.h"
#include "nerio3d/render/nrContext.h"

class nrDrawAction;
class nrMaterial;
class nrTexGen;
class nrTexture;
struct _nrGfx;

class nrAppearance : public nrContainer {
  NR_DECLARE_CONTAINER_TYPE(nrAppearance)

  // Field indices: each is the bit of its state element in the context.
  enum {
    TEXTURE = 0,
    TEX_ENABLE = 1,
    TEX_MODE = 2,
    TEX_BLEND_COLOR = 3,
    TEX_ENV = 4,
    TEX_GEN = 5,
    TEX_GEN_ENABLE = 6,
    LIGHT_ENABLE = 7,
    SHADE_MODEL = 8,
    TRANSP_ENABLE = 9,
    TRANSP_MODE = 10,
    ALPHA_FUNC = 11,
    ALPHA_REF = 12,
    BLEND_COLOR = 13,
    SRC_BLEND_FUNC = 14,
    DST_BLEND_FUNC = 15,
    COLOR_MASK = 16,
    DEPTH_FUNC = 17,
    DEPTH_MASK = 18,
    FOG_ENABLE = 19,
    POLY_MODE = 20,
    LINE_STIPPLE_PATTERN = 21,
    LINE_STIPPLE_FACTOR = 22,
    TEX_TRANSFORM = 23,
    MATERIAL = 24,
    BACK_MATERIAL = 25,
    DEPTH_ENABLE = 26,
    MATERIAL_MODE_ENABLE = 27,
    INHERIT = 28
  };

  nrAppearance() : nrAppearance(getClassType()) {}
  explicit nrAppearance(nrType* type);
  ~nrAppearance() override;

  // A texture is drawn only where texturing is on: setTexEnable(1) here or in
  // the state around the shape (it is off by default).
  void setTexture(nrTexture* texture);
  nrTexture* getTexture() const;
  void setTexEnable(unsigned char on) { setFieldValue(texEnable, on, TEX_ENABLE); }
  unsigned char getTexEnable() const { return getFieldValue(texEnable, TEX_ENABLE); }
  void setTexMode(nrContext::TexModeEnum mode) { setFieldValue(texMode, int(mode), TEX_MODE); }
  nrContext::TexModeEnum getTexMode() const { return nrContext::TexModeEnum(getFieldValue(texMode, TEX_MODE)); }
  void setTexBlendColor(float r, float g, float b, float a) {
    setFieldValue(texBlendColor, nrVec4f(r, g, b, a), TEX_BLEND_COLOR);
  }
  void setTexBlendColor(const nrVec4f& color) { setFieldValue(texBlendColor, color, TEX_BLEND_COLOR); }
  const nrVec4f& getTexBlendColor() const { return getFieldValue(texBlendColor, TEX_BLEND_COLOR); }
  void getTexBlendColor(float* r, float* g, float* b, float* a) const;
  void getTexBlendColor(nrVec4f& color) const { color = getTexBlendColor(); }
  void setTexEnv(nrContext::TexEnvEnum env) { setFieldValue(texEnv, int(env), TEX_ENV); }
  nrContext::TexEnvEnum getTexEnv() const { return nrContext::TexEnvEnum(getFieldValue(texEnv, TEX_ENV)); }
  void setTexGen(nrTexGen* texGen);
  nrTexGen* getTexGen() const;
  void setTexGenEnable(unsigned char on) { setFieldValue(texGenEnable, on, TEX_GEN_ENABLE); }
  unsigned char getTexGenEnable() const { return getFieldValue(texGenEnable, TEX_GEN_ENABLE); }
  void setMaterial(nrMaterial* material);
  nrMaterial* getMaterial() const;
  void setLightEnable(unsigned char on) { setFieldValue(lightEnable, on, LIGHT_ENABLE); }
  unsigned char getLightEnable() const { return getFieldValue(lightEnable, LIGHT_ENABLE); }
  void setShadeModel(nrContext::ShadeModelEnum model) { setFieldValue(shadeModel, int(model), SHADE_MODEL); }
  nrContext::ShadeModelEnum getShadeModel() const {
    return nrContext::ShadeModelEnum(getFieldValue(shadeModel, SHADE_MODEL));
  }
  void setTranspEnable(unsigned char on) { setFieldValue(transpEnable, on, TRANSP_ENABLE); }
  unsigned char getTranspEnable() const { return getFieldValue(transpEnable, TRANSP_ENABLE); }
  void setTranspMode(nrContext::TranspModeEnum mode) { setFieldValue(transpMode, int(mode), TRANSP_MODE); }
  nrContext::TranspModeEnum getTranspMode() const {
    return nrContext::TranspModeEnum(getFieldValue(transpMode, TRANSP_MODE));
  }
  void setAlphaFunc(nrContext::AlphaFuncEnum func) { setFieldValue(alphaFunc, int(func), ALPHA_FUNC); }
  nrContext::AlphaFuncEnum getAlphaFunc() const {
    return nrContext::AlphaFuncEnum(getFieldValue(alphaFunc, ALPHA_FUNC));
  }
  void setAlphaRef(float ref) { setFieldValue(alphaRef, ref, ALPHA_REF); }
  float getAlphaRef() const { return getFieldValue(alphaRef, ALPHA_REF); }
  void setBlendColor(float r, float g, float b, float a) {
    setFieldValue(blendColor, nrVec4f(r, g, b, a), BLEND_COLOR);
  }
  void setBlendColor(const nrVec4f& color) { setFieldValue(blendColor, color, BLEND_COLOR); }
  const nrVec4f& getBlendColor() const { return getFieldValue(blendColor, BLEND_COLOR); }
  void getBlendColor(float* r, float* g, float* b, float* a) const;
  void getBlendColor(nrVec4f& color) const { color = getBlendColor(); }
  void setSrcBlendFunc(nrContext::SrcBlendFuncEnum func) { setFieldValue(srcBlendFunc, int(func), SRC_BLEND_FUNC); }
  nrContext::SrcBlendFuncEnum getSrcBlendFunc() const {
    return nrContext::SrcBlendFuncEnum(getFieldValue(srcBlendFunc, SRC_BLEND_FUNC));
  }
  void setDstBlendFunc(nrContext::DstBlendFuncEnum func) { setFieldValue(dstBlendFunc, int(func), DST_BLEND_FUNC); }
  nrContext::DstBlendFuncEnum getDstBlendFunc() const {
    return nrContext::DstBlendFuncEnum(getFieldValue(dstBlendFunc, DST_BLEND_FUNC));
  }
  void setColorMask(unsigned char r, unsigned char g, unsigned char b, unsigned char a) {
    setFieldValue(colorMask, nrVec4ub(r, g, b, a), COLOR_MASK);
  }
  void setColorMask(const nrVec4ub& mask) { setFieldValue(colorMask, mask, COLOR_MASK); }
  const nrVec4ub& getColorMask() const { return getFieldValue(colorMask, COLOR_MASK); }
  void getColorMask(unsigned char* r, unsigned char* g, unsigned char* b, unsigned char* a) const;
  void getColorMask(nrVec4ub& mask) const { mask = getColorMask(); }
  void setDepthEnable(unsigned char on) { setFieldValue(depthEnable, on, DEPTH_ENABLE); }
  unsigned char getDepthEnable() const { return getFieldValue(depthEnable, DEPTH_ENABLE); }
  void setDepthFunc(nrContext::DepthFuncEnum func) { setFieldValue(depthFunc, int(func), DEPTH_FUNC); }
  nrContext::DepthFuncEnum getDepthFunc() const {
    return nrContext::DepthFuncEnum(getFieldValue(depthFunc, DEPTH_FUNC));
  }
  void setDepthMask(unsigned char on) { setFieldValue(depthMask, on, DEPTH_MASK); }
  unsigned char getDepthMask() const { return getFieldValue(depthMask, DEPTH_MASK); }
  void setFogEnable(unsigned char on) { setFieldValue(fogEnable, on, FOG_ENABLE); }
  unsigned char getFogEnable() const { return getFieldValue(fogEnable, FOG_ENABLE); }
  // Under lighting the colours of geometry show only with colour material on
  // (they then stand for the material's ambient and diffuse colours); unlit
  // geometry shows them as they are.
  void setMaterialModeEnable(nrContext::MaterialModeEnum mode) {
    setFieldValue(materialModeEnable, int(mode), MATERIAL_MODE_ENABLE);
  }
  // As the context takes it: 0 off, 1 on.
  void setMaterialModeEnable(int mode) { setFieldValue(materialModeEnable, mode, MATERIAL_MODE_ENABLE); }
  nrContext::MaterialModeEnum getMaterialModeEnable() const {
    return nrContext::MaterialModeEnum(getFieldValue(materialModeEnable, MATERIAL_MODE_ENABLE));
  }
  void setPolyMode(nrContext::PolyModeEnum mode) { setFieldValue(polyMode, int(mode), POLY_MODE); }
  nrContext::PolyModeEnum getPolyMode() const { return nrContext::PolyModeEnum(getFieldValue(polyMode, POLY_MODE)); }
  void setLineStipplePattern(unsigned int pattern) { setFieldValue(lineStipplePattern, pattern, LINE_STIPPLE_PATTERN); }
  unsigned int getLineStipplePattern() const { return getFieldValue(lineStipplePattern, LINE_STIPPLE_PATTERN); }
  void setLineStippleFactor(unsigned int factor) { setFieldValue(lineStippleFactor, factor, LINE_STIPPLE_FACTOR); }
  unsigned int getLineStippleFactor() const { return getFieldValue(lineStippleFactor, LINE_STIPPLE_FACTOR); }
  void setTexTransform(const nrMatrix4f& matrix) { setFieldValue(texTransform, matrix, TEX_TRANSFORM); }
  const nrMatrix4f& getTexTransform() const { return getFieldValue(texTransform, TEX_TRANSFORM); }
  void getTexTransform(nrMatrix4f& m) const { m = getTexTransform(); }
  void setBackMaterial(nrMaterial* material);
  nrMaterial* getBackMaterial() const;

  // A set bit hands the element to the surrounding state; the stored value stays.
  void setInherit(const nrBitMask& mask) { setFieldValue(inherit, mask, INHERIT); }
  void getInherit(nrBitMask& mask) const { mask = getInherit(); }
  const nrBitMask& getInherit() const { return getFieldValue(inherit, INHERIT); }
  // The elements written since the inherit mask was last set.
  const nrBitMask& getExplicitMask() const { return explicitMask; }
  bool isChanged() const { return changed; }

  // Applies the appearance to the context the draw action draws into; a changed
  // appearance is applied in full even when it was the last one applied.
  virtual void draw(nrDrawAction* action);

  // The appearance as a render-state record whose mask is the inherit mask.
  void getGfx(_nrGfx& gfx) const;
  void fieldChanged(short index) override;
  // The explicitly set elements come with the values, and the copy counts as
  // changed: it is applied in full even where it was the last one applied.
  void copy(nrContainer* from, nrCloneTable* table) override;
  using nrContainer::copy;

 private:
  void setRef(nrContainer*& member, nrContainer* value, short index);

  nrContainer* texture;
  unsigned char texEnable;
  int texMode;
  nrVec4f texBlendColor;
  int texEnv;
  nrContainer* texGen;
  unsigned char texGenEnable;
  nrContainer* material;
  unsigned char lightEnable;
  int shadeModel;
  unsigned char transpEnable;
  int transpMode;
  int alphaFunc;
  float alphaRef;
  nrVec4f blendColor;
  int srcBlendFunc;
  int dstBlendFunc;
  nrVec4ub colorMask;
  unsigned char depthEnable;
  int depthFunc;
  unsigned char depthMask;
  unsigned char fogEnable;
  int materialModeEnable;
  int polyMode;
  unsigned int lineStipplePattern;
  unsigned int lineStippleFactor;
  nrMatrix4f texTransform;
  nrContainer* backMaterial;
  nrBitMask inherit;

  nrBitMask explicitMask;
  bool changed;
  // Record values that no field exposes.
  nrContext::CullFaceEnum cullFace;
  float lineWidth;
  float pointSize;
};
