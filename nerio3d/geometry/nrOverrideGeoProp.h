// Forces the cull face, line width or point size of all geometry drawn while it
// is on top of the graphics context's override stack.
#pragma once

#include "nerio3d/core/nrObject.h"
#include "nerio3d/render/_nrGfx.h"

class nrOverrideGeoProp : public nrObject {
  NR_DECLARE_TYPE(nrOverrideGeoProp)

  nrOverrideGeoProp() : nrOverrideGeoProp(getClassType()) {}
  explicit nrOverrideGeoProp(nrType* typeOfClass) : nrObject(typeOfClass) {}

  // Each setter also sets the element's bit in the override mask.
  void setCullFace(nrContext::CullFaceEnum face);
  nrContext::CullFaceEnum getCullFace() const { return gfx.cullFace; }
  void setLineWidth(float width);
  float getLineWidth() const { return gfx.lineWidth; }
  void setPointSize(float size);
  float getPointSize() const { return gfx.pointSize; }

  // Replaces the whole mask, so bits can be cleared again.
  void setOverride(const nrBitMask& mask) { gfx.mask = mask; }
  void getOverride(nrBitMask& mask) const { mask = gfx.mask; }
  bool overrides(int elt) const { return gfx.mask.isBitSet(elt); }

 private:
  _nrGfx gfx;
};
