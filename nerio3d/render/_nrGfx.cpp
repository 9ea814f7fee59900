#include "nerio3d/render/_nrGfx.h"

void _nrGfx::setDefaults() {
  *this = _nrGfx();
  texMode = nrContext::FAST_TEX;
  texEnv = nrContext::MODULATE_TENV;
  shadeModel = nrContext::SMOOTH_SHADE;
  transpMode = nrContext::BLEND_TRANSP;
  alphaFunc = nrContext::ALWAYS_AFUNC;
  srcBlendFunc = nrContext::ONE_SBLEND;
  dstBlendFunc = nrContext::ZERO_DBLEND;
  colorMask = nrVec4ub(255, 255, 255, 255);
  depthFunc = nrContext::LESS_DFUNC;
  depthMask = 1;
  polyMode = nrContext::FILL_PMODE;
  lineStipplePattern = 0xFFFF;
  lineStippleFactor = 1;
  lineWidth = 1;
  pointSize = 1;
}
