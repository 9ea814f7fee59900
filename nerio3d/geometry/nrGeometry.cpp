#include "nerio3d/geometry/nrGeometry.h"

#include "nerio3d/actions/nrDrawAction.h"
#include "nerio3d/fields/nrSField.h"
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
  fieldChanged(BOX_BOUND_FIELD);
}

void nrGeometry::getBoxBound(nrBoxBound& box) { box = getBoxBound(); }

const nrBoxBound& nrGeometry::getBoxBound() {
  validateField(BOX_BOUND_FIELD);
  return boxBound;
}

void nrGeometry::setBoundMode(BoundModeEnum mode) {
  boundMode = mode;
  fieldChanged(BOUND_MODE_FIELD);
}

nrGeometry::BoundModeEnum nrGeometry::getBoundMode() {
  validateField(BOUND_MODE_FIELD);
  return static_cast<BoundModeEnum>(boundMode);
}

void nrGeometry::fieldChanged(short index) {
  if (index == BOX_BOUND_FIELD) notifyParents(BOX_BOUND_FIELD);
  // Back to DYNAMIC: the box follows the contents again.
  if (index == BOUND_MODE_FIELD) boundChanged();
  touchField(index);
}

void nrGeometry::cleanSideEffect(short index) {
  if (index != BOX_BOUND_FIELD) return;
  calcBound(boxBound);
  touchField(BOX_BOUND_FIELD);
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
                               nrGeometry* const* parts, const unsigned char* on, int count) {
  nrContext* context = contextOf(action);
  if (!context) return;
  beginSolid(context);
  bool moved = center != nrVec3f(0, 0, 0), scaled = scale != nrVec3f(1, 1, 1);
  if (moved || scaled) {
    nrgl::PushMatrix();
    if (moved) nrgl::Translatef(center[0], center[1], center[2]);
    if (scaled) nrgl::Scalef(scale[0], scale[1], scale[2]);
  }
  unsigned char normalize = context->getNormalizeEnable();
  if (scaled) context->setNormalizeEnable(1);
  for (int i = 0; i < count; ++i)
    if (on[i]) parts[i]->draw(action);
  if (scaled) context->setNormalizeEnable(normalize);
  if (moved || scaled) nrgl::PopMatrix();
}
