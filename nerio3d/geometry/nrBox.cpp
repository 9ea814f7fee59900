#include "nerio3d/geometry/nrBox.h"

#include <cmath>

#include "nerio3d/actions/nrIsectAction.h"
#include "nerio3d/fields/nrSField.h"
#include "nerio3d/render/nrContext.h"
#include "nerio3d/render/nrGL.h"

namespace {

// Each face: its normal and the right and up directions of its texture seen
// from outside (VRML's mapping: the sides upright, the top's texture top
// toward -z, the bottom's toward +z). Back, right, left, top, bottom, front:
// the front face comes last so that, with depth testing off (the context's
// default), a box seen from +z shows its front face over the others.
const float faces[6][3][3] = {
    {{0, 0, -1}, {-1, 0, 0}, {0, 1, 0}}, {{1, 0, 0}, {0, 0, -1}, {0, 1, 0}}, {{-1, 0, 0}, {0, 0, 1}, {0, 1, 0}},
    {{0, 1, 0}, {1, 0, 0}, {0, 0, -1}},  {{0, -1, 0}, {1, 0, 0}, {0, 0, 1}}, {{0, 0, 1}, {1, 0, 0}, {0, 1, 0}}};
// Corners counter-clockwise from the texture's lower left.
const float corners[4][2] = {{-1, -1}, {1, -1}, {1, 1}, {-1, 1}};

}  // namespace

NR_DEFINE_TYPE(nrBox, nrGeometry, "Box") {
  nrSFVec3f::addTypeField(type, "size", SIZE_FIELD, nrVec3f(2, 2, 2), &nrBox::size);
  nrSFVec3f::addTypeField(type, "center", CENTER_FIELD, nrVec3f(0, 0, 0), &nrBox::center);
}

nrBox::nrBox(nrType* type) : nrGeometry(type) {
  initFieldDefaults(classType);
  boundChanged();
}

nrBox::~nrBox() { destroyFieldContents(classType); }

void nrBox::fieldChanged(short index) {
  if (index >= SIZE_FIELD) boundChanged();
  nrGeometry::fieldChanged(index);
}

void nrBox::calcBound(nrBoxBound& box) {
  nrVec3f half;
  half.scale(0.5f, size);
  boxAround(box, center, half);
}

void nrBox::draw(nrDrawAction* action) {
  cleanPendingFields();
  nrContext* context = contextOf(action);
  if (!context) return;
  beginSolid(context);
  nrgl::Begin(GL_QUADS);
  for (const auto& face : faces) {
    const float* n = face[0];
    nrgl::Normal3f(n[0], n[1], n[2]);
    for (const auto& corner : corners) {
      float v[3];
      for (int i = 0; i < 3; ++i)
        v[i] = center[i] + size[i] * 0.5f * (n[i] + corner[0] * face[1][i] + corner[1] * face[2][i]);
      nrgl::TexCoord2f((corner[0] + 1) / 2, (corner[1] + 1) / 2);
      nrgl::Vertex3f(v[0], v[1], v[2]);
    }
  }
  nrgl::End();
}

int nrBox::isect(nrIsectAction* action) {
  cleanPendingFields();
  const nrSeg& seg = action->getSeg();
  nrBoxBound box;
  calcBound(box);
  float tNear, tFar;
  if (!box.isect(&seg, &tNear, &tFar)) return 0;
  float t = tNear > 0 ? tNear : tFar;
  // The face is the one whose plane the point lies on, relative to the size.
  nrVec3f p;
  seg.getPoint(t, p);
  int face = 0;
  float best = -1;
  for (int f = 0; f < 6; ++f) {
    const float* n = faces[f][0];
    float reach = 0;
    for (int i = 0; i < 3; ++i)
      if (n[i] != 0 && size[i] != 0) reach = (p[i] - center[i]) * n[i] / (std::fabs(size[i]) * 0.5f);
    if (reach > best) {
      best = reach;
      face = f;
    }
  }
  SolidHit hit;
  hit.offer(t, face, nrVec3f(faces[face][0][0], faces[face][0][1], faces[face][0][2]));
  return reportHit(action, hit);
}
