// The four attribute streams of one geometry draw, filled by beginDraw and
// walked by the draw routines.
#pragma once

#include "nerio3d/geometry/nrGLAttr.h"

class nrContext;

struct nrGLAttrSet {
  nrGLAttr color;
  nrGLAttr normal;
  nrGLAttr texCoord;
  nrGLAttr coord;
  // The context drawn into; it keeps which client arrays are enabled.
  nrContext* context = nullptr;
};
