// One complete set of render-state values with a mask over its elements: the
// context's shadow and global records, an appearance's state, a geometry-property override.
#pragma once

#include "nerio3d/core/nrBitMask.h"
#include "nerio3d/math/nrMatrix4f.h"
#include "nerio3d/math/nrVec4f.h"
#include "nerio3d/math/nrVec4ub.h"
#include "nerio3d/render/nrContext.h"

class nrMaterial;
class nrTexGen;
class nrTexture;

struct _nrGfx {
  // Bit numbers of the state elements in mask; bit 28 names no element.
  enum EltEnum {
    TEXTURE_ELT = 0,
    TEX_ENABLE_ELT = 1,
    TEX_MODE_ELT = 2,
    TEX_BLEND_COLOR_ELT = 3,
    TEX_ENV_ELT = 4,
    TEX_GEN_ELT = 5,
    TEX_GEN_ENABLE_ELT = 6,
    LIGHT_ENABLE_ELT = 7,
    SHADE_MODEL_ELT = 8,
    TRANSP_ENABLE_ELT = 9,
    TRANSP_MODE_ELT = 10,
    ALPHA_FUNC_ELT = 11,
    ALPHA_REF_ELT = 12,
    BLEND_COLOR_ELT = 13,
    SRC_BLEND_FUNC_ELT = 14,
    DST_BLEND_FUNC_ELT = 15,
    COLOR_MASK_ELT = 16,
    DEPTH_FUNC_ELT = 17,
    DEPTH_MASK_ELT = 18,
    FOG_ENABLE_ELT = 19,
    POLY_MODE_ELT = 20,
    LINE_STIPPLE_PATTERN_ELT = 21,
    LINE_STIPPLE_FACTOR_ELT = 22,
    TEX_TRANSFORM_ELT = 23,
    MATERIAL_ELT = 24,
    BACK_MATERIAL_ELT = 25,
    DEPTH_ENABLE_ELT = 26,
    MATERIAL_MODE_ENABLE_ELT = 27,
    CULL_FACE_ELT = 29,
    LINE_WIDTH_ELT = 30,
    POINT_SIZE_ELT = 31,
    ELT_COUNT = 32
  };

  nrBitMask mask;
  float alphaRef = 0;
  nrContext::TexModeEnum texMode = nrContext::FAST_TEX;
  nrTexture* texture = nullptr;
  nrVec4f texBlendColor{0, 0, 0, 0};
  nrContext::TexEnvEnum texEnv = nrContext::MODULATE_TENV;
  nrTexGen* texGen = nullptr;
  nrMaterial* material = nullptr;
  nrContext::ShadeModelEnum shadeModel = nrContext::FLAT_SHADE;
  nrContext::TranspModeEnum transpMode = nrContext::FAST_TRANSP;
  nrContext::AlphaFuncEnum alphaFunc = nrContext::NEVER_AFUNC;
  nrVec4f blendColor{0, 0, 0, 0};
  nrContext::SrcBlendFuncEnum srcBlendFunc = nrContext::ZERO_SBLEND;
  nrContext::DstBlendFuncEnum dstBlendFunc = nrContext::ZERO_DBLEND;
  nrVec4ub colorMask{0, 0, 0, 0};
  nrContext::DepthFuncEnum depthFunc = nrContext::NEVER_DFUNC;
  unsigned char depthMask = 0;
  nrContext::PolyModeEnum polyMode = nrContext::POINT_PMODE;
  nrContext::CullFaceEnum cullFace = nrContext::NO_CULL;
  nrContext::MaterialModeEnum materialModeEnable = nrContext::NO_COLOR_MATERIAL;
  unsigned int lineStipplePattern = 0;
  unsigned int lineStippleFactor = 0;
  nrMatrix4f texTransform{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
  nrMaterial* backMaterial = nullptr;
  float lineWidth = 0;
  float pointSize = 0;
  unsigned char texEnable = 0;
  unsigned char texGenEnable = 0;
  unsigned char lightEnable = 0;
  unsigned char transpEnable = 0;
  unsigned char fogEnable = 0;
  unsigned char depthEnable = 0;

  // A record starts with an empty mask, an identity texture matrix and every
  // other value zero; setDefaults gives it the context's start-up state instead.
  void setDefaults();
};
