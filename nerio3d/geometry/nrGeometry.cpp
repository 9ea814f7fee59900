#include "nerio3d/geometry/nrGeometry.h"

#include <cmath>
#include <utility>

#include "nerio3d/actions/nrCompileAction.h"
#include "nerio3d/actions/nrDrawAction.h"
#include "nerio3d/actions/nrIsectAction.h"
#include "nerio3d/fields/nrSField.h"
#include "nerio3d/geometry/nrGeoSet.h"
#include "nerio3d/render/_nrGfx.h"
#include "nerio3d/render/nrContext.h"
#include "nerio3d/render/nrGL.h"

NR_DEFINE_TYPE(nrGeometry, nrContainer, "Geometry") {
  nrSFBoxBound::addTypeField(type, "boxBound", BOX_BOUND_FIELD, nrBoxBound(), &nrGeometry::boxBound);
  nrSFEnum::addTypeField(type, "boundMode", BOUND_MODE_FIELD, DYNAMIC, &nrGeometry::boundMode);
  const char* names[] = {"STATIC", "DYNAMIC"};
  const int values[] = {STATIC, DYNAMIC};
  type->defineEnums(BOUND_MODE_FIELD, 2, names, values);
}

nrGeometry::nrGeometry(nrType* type) : nrContainer(type) { initFieldDefaults(getClassType()); }

nrGeometry::~nrGeometry() { destroyFieldContents(getClassType()); }

void nrGeometry::setBoxBound(const nrBoxBound& box) {
  boxBound = box;
  // Through the field object, as setting the field by name does: touching an
  // existing field drops a recomputation still pending, so the set box holds.
  getField(BOX_BOUND_FIELD);
  fieldChanged(BOX_BOUND_FIELD);
}

void nrGeometry::getBoxBound(nrBoxBound& box) const { box = getBoxBound(); }

const nrBoxBound& nrGeometry::getBoxBound() const { return getFieldValue(boxBound, BOX_BOUND_FIELD); }

void nrGeometry::setBoundMode(BoundModeEnum mode) {
  boundMode = mode;
  fieldChanged(BOUND_MODE_FIELD);
}

nrGeometry::BoundModeEnum nrGeometry::getBoundMode() const {
  return static_cast<BoundModeEnum>(getFieldValue(boundMode, BOUND_MODE_FIELD));
}

void nrGeometry::fieldChanged(short index) {
  if (index == BOX_BOUND_FIELD) notifyParents(BOX_BOUND_FIELD);
  // Back to DYNAMIC: the box follows the contents again.
  if (index == BOUND_MODE_FIELD) boundChanged();
  touchField(index);
}

void nrGeometry::copy(nrContainer* from, nrCloneTable* table) {
  nrContainer::copy(from, table);
  if (from && from != this && from->getType() != getType()) boundChanged();
}

void nrGeometry::cleanSideEffect(short index) {
  if (index != BOX_BOUND_FIELD) return;
  calcBound(boxBound);
  touchField(BOX_BOUND_FIELD);
}

int nrGeometry::isect(nrIsectAction* action) {
  cleanPendingFields();
  float t = 0;
  if (!isectBox(action, &t)) return 0;
  nrVec3f facing;
  facing.negate(action->getSeg().dir);
  return action->hitGeometry(this, t, -1, facing);
}

int nrGeometry::isectBox(nrIsectAction* action, float* t) { return boxBound.isect(&action->getSeg(), t, nullptr); }

int nrGeometry::isectTri(nrIsectAction* action, const nrVec3f& a, const nrVec3f& b, const nrVec3f& c, int cullFace,
                         int primIndex) {
  const nrSeg& seg = action->getSeg();
  float t = 0;
  nrVec3f normal;
  if (!hitTri(seg, seg.length, a, b, c, cullFace, t, normal)) return 0;
  return action->hitGeometry(this, t, primIndex, normal);
}

bool nrGeometry::hitTri(const nrSeg& seg, float maxT, const nrVec3f& a, const nrVec3f& b, const nrVec3f& c,
                        int cullFace, float& t, nrVec3f& normal) {
  nrVec3f ab, ac;
  ab.sub(b, a);
  ac.sub(c, a);
  normal.cross(ab, ac);
  float facing = seg.dir.dot(normal);
  if ((cullFace == nrContext::BACK_CULL && facing > 0) || (cullFace == nrContext::FRONT_CULL && facing < 0) ||
      cullFace == nrContext::BOTH_CULL)
    return false;
  if (std::fabs(facing) < 1e-15f) return false;
  nrVec3f toA;
  toA.sub(a, seg.pos);
  t = toA.dot(normal) / facing;
  if (t < 0 || t > maxT) return false;
  // Barycentric coordinates of the point in the triangle's plane.
  nrVec3f p, ap;
  seg.getPoint(t, p);
  ap.sub(p, a);
  float d00 = ab.dot(ab), d01 = ab.dot(ac), d11 = ac.dot(ac), d20 = ap.dot(ab), d21 = ap.dot(ac);
  float det = d00 * d11 - d01 * d01;
  if (det == 0) return false;
  float u = (d11 * d20 - d01 * d21) / det, v = (d00 * d21 - d01 * d20) / det;
  if (u < 0 || v < 0 || u + v > 1) return false;
  normal.normalize();
  return true;
}

void nrGeometry::SolidHit::offer(float at, int which, const nrVec3f& n) {
  if (at < 0 || (t >= 0 && at >= t)) return;
  t = at;
  part = which;
  normal = n;
}

void nrGeometry::SolidHit::offerCap(const nrVec3f& o, const nrVec3f& d, float y, float radius, int which, float ny) {
  if (d[1] == 0) return;
  float at = (y - o[1]) / d[1];
  float x = o[0] + at * d[0], z = o[2] + at * d[2];
  if (x * x + z * z <= radius * radius) offer(at, which, nrVec3f(0, ny, 0));
}

int nrGeometry::reportHit(nrIsectAction* action, const SolidHit& hit) {
  return hit.t >= 0 ? action->hitGeometry(this, hit.t, hit.part, hit.normal) : 0;
}

bool nrGeometry::solveQuadratic(float a, float b, float c, float& t0, float& t1) {
  if (std::fabs(a) < 1e-12f) {
    if (b == 0) return false;
    t0 = t1 = -c / b;
    return true;
  }
  float disc = b * b - 4 * a * c;
  if (disc < 0) return false;
  float root = std::sqrt(disc);
  t0 = (-b - root) / (2 * a);
  t1 = (-b + root) / (2 * a);
  if (t0 > t1) std::swap(t0, t1);
  return true;
}

nrContext* nrGeometry::contextOf(nrDrawAction* action) {
  nrContext* context = action ? action->getContext() : nullptr;
  return context ? context : nrContext::getCurrent();
}

void nrGeometry::beginSolid(nrContext* context) {
  unsigned char recording = context->getRecordEnable();
  context->setRecordEnable(0);
  context->setMaterialModeEnable(nrContext::NO_COLOR_MATERIAL);
  context->setCullFace(context->getGlobalState().cullFace);
  context->setRecordEnable(recording);
}

void nrGeometry::drawUnitParts(nrDrawAction* action, const nrVec3f& center, const nrVec3f& scale,
                               nrGeoSet* const* parts, const unsigned char* on, int count) {
  nrContext* context = contextOf(action);
  if (!context) return;
  // A list recorded once serves every context: each records its own copy
  // when it first calls the list (the set compares versions per context).
  for (int i = 0; i < count; ++i)
    if (on[i] && parts[i]->getDisplayListId() < 1 && context == nrContext::getCurrent()) {
      nrCompileAction compile;
      parts[i]->compile(&compile);
    }
  beginSolid(context);
  bool moved = center != nrVec3f(0, 0, 0), scaled = scale != nrVec3f(1, 1, 1);
  if (moved || scaled) {
    nrgl::PushMatrix();
    if (moved) nrgl::Translatef(center[0], center[1], center[2]);
    if (scaled) nrgl::Scalef(scale[0], scale[1], scale[2]);
  }
  // Normalization stays on after a scaled solid: the draw action switches it
  // off at the start of each traversal, and switching it back after every
  // scaled solid changes OpenGL's vertex pipeline twice per solid.
  if (scaled) context->setNormalizeEnable(1);
  for (int i = 0; i < count; ++i)
    if (on[i]) parts[i]->draw(action);
  if (moved || scaled) nrgl::PopMatrix();
}
