#include "nerio3d/geometry/nrPolySet.h"

#include "nerio3d/fields/nrMField.h"
#include "nerio3d/render/nrGL.h"

NR_DEFINE_TYPE(nrPolySet, nrGeoSet, "PolySet") {
  nrMFInt::addTypeField(type, "polyLength", POLY_LENGTH_FIELD, &nrPolySet::lengths);
}

nrPolySet::nrPolySet(nrType* type) : nrLengthGeoSet(type) { initFieldDefaults(classType); }

nrPolySet::~nrPolySet() { destroyFieldContents(classType); }

void nrPolySet::drawGeometry(nrGLAttrSet& attrs, nrDrawAction* bpcAction) {
  if (getStrategy() != IMMEDIATE_STRATEGY) {
    drawLengths(attrs, GL_POLYGON, lengths, bpcAction);
    return;
  }
  startPrims(attrs);
  int n = getDrawablePrimCount();
  bool open = false;
  GLenum openMode = GL_POLYGON;
  for (int p = 0; p < n; ++p) {
    int len = lengths[unsigned(p)];
    if (bpcAction && !isPrimBpcFrontFacing(p, bpcAction)) {
      skipPrim(attrs, len);
      continue;
    }
    GLenum mode = len == 3 ? GL_TRIANGLES : len == 4 ? GL_QUADS : GL_POLYGON;
    if (open && (mode != openMode || mode == GL_POLYGON)) {
      nrgl::End();
      open = false;
    }
    if (!open) {
      nrgl::Begin(mode);
      open = true;
      openMode = mode;
    }
    if (perPrimDraw) perPrimDraw(attrs);
    for (int v = 0; v < len; ++v) perVertDraw(attrs);
  }
  if (open) nrgl::End();
}
