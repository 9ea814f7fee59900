#include "nrNodeTestTypes.h"

#include <cmath>

#include "nerio3d/actions/nrIsectAction.h"
#include "nerio3d/render/nrContext.h"
#include "nerio3d/render/nrGL.h"

int tstLeaf::live = 0;

NR_DEFINE_TYPE(tstLeaf, nrNode, "tstLeaf") {}
NR_DEFINE_TYPE(tstGroup, nrGroup, "tstGroup") {}
NR_DEFINE_TYPE(tstHolder, nrContainer, "tstHolder") {
  nrSFRef::addTypeField(type, "node", 0, nrNode::getClassType(), &tstHolder::node);
}

std::string tstDrawn;

NR_DEFINE_TYPE(tstQuad, nrNode, "tstQuad") {}

nrTravDirective tstQuad::drawVisit(nrDrawAction* action) {
  tstDrawn += std::string(getName()) + " ";
  if (!action->getContext()) return CONTINUE_TRAV;
  action->getContext()->setCullFace(nrContext::BACK_CULL);
  nrgl::Begin(GL_QUADS);
  for (int half = 0; half < 2; ++half) {
    const nrVec3f& c = half ? color : nrVec3f(1, 1, 1);
    nrgl::Color3f(c[0], c[1], c[2]);
    float x0 = half - 1.0f, x1 = half;
    nrgl::Vertex3f(x0, -1, 0);
    nrgl::Vertex3f(x1, -1, 0);
    nrgl::Vertex3f(x1, 1, 0);
    nrgl::Vertex3f(x0, 1, 0);
  }
  nrgl::End();
  return CONTINUE_TRAV;
}

void tstQuad::isect(nrIsectAction* action) {
  const nrSeg& seg = action->getSeg();
  if (seg.dir[2] == 0) return;
  float t = -seg.pos[2] / seg.dir[2];
  nrVec3f at;
  seg.getPoint(t, at);
  if (std::fabs(at[0]) <= 1 && std::fabs(at[1]) <= 1) action->hitGeometry(asGeometry(), t, 0, nrVec3f(0, 0, 1));
}
