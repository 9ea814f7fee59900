#include "nerio3d/geometry/nrOverrideGeoProp.h"

NR_DEFINE_TYPE(nrOverrideGeoProp, nrObject, "OverrideGeoProp") {}

void nrOverrideGeoProp::setCullFace(nrContext::CullFaceEnum face) {
  if (face < nrContext::NO_CULL || face > nrContext::BOTH_CULL) return;
  gfx.cullFace = face;
  gfx.mask.setBit(_nrGfx::CULL_FACE_ELT);
}

void nrOverrideGeoProp::setLineWidth(float width) {
  gfx.lineWidth = width;
  gfx.mask.setBit(_nrGfx::LINE_WIDTH_ELT);
}

void nrOverrideGeoProp::setPointSize(float size) {
  gfx.pointSize = size;
  gfx.mask.setBit(_nrGfx::POINT_SIZE_ELT);
}
