#include "nerio3d/geometry/nrShape.h"

#include "nerio3d/actions/nrDrawAction.h"
#include "nerio3d/actions/nrIsectAction.h"
#include "nerio3d/fields/nrMFRef.h"
#include "nerio3d/fields/nrSFRef.h"
#include "nerio3d/geometry/nrGeometry.h"
#include "nerio3d/render/nrAppearance.h"
#include "nerio3d/render/nrContext.h"

NR_DEFINE_TYPE(nrShape, nrNode, "Shape") {
  nrSFRef::addTypeField(type, "appearance", APPEARANCE_FIELD, nrAppearance::getClassType(), &nrShape::appearance);
  nrMFRef::addTypeField(type, "geometry", GEOMETRY_FIELD, nrGeometry::getClassType(), &nrShape::geometry);
}

nrShape::nrShape(nrType* type) : nrNode(type), geometry(2), paths(1), lastCullResult(0) {
  initFieldDefaults(getClassType());
}

nrShape::~nrShape() { destroyFieldContents(getClassType()); }

void nrShape::setAppearance(nrAppearance* app) {
  refer(appearance, app);
  appearance = app;
  fieldChanged(APPEARANCE_FIELD);
}

nrAppearance* nrShape::getAppearance() const {
  return static_cast<nrAppearance*>(getFieldValue(appearance, APPEARANCE_FIELD));
}

void nrShape::setGeometryCount(int n) {
  refListSetCount(geometry, n);
  fieldChanged(GEOMETRY_FIELD);
}

void nrShape::setGeometry(int index, nrGeometry* g) {
  refListSet(geometry, index, g);
  fieldChanged(GEOMETRY_FIELD);
}

void nrShape::addGeometry(nrGeometry* g) {
  refListAppend(geometry, g);
  fieldChanged(GEOMETRY_FIELD);
}

void nrShape::insertGeometry(int index, nrGeometry* g) {
  refListInsert(geometry, index, g);
  fieldChanged(GEOMETRY_FIELD);
}

void nrShape::removeGeometry(int index) {
  refListRemove(geometry, index);
  fieldChanged(GEOMETRY_FIELD);
}

int nrShape::removeGeometry(nrGeometry* g) {
  long i = refListRemove(geometry, g);
  fieldChanged(GEOMETRY_FIELD);
  return i >= 0;
}

int nrShape::replaceGeometry(nrGeometry* oldGeometry, nrGeometry* newGeometry) {
  long i = refListReplace(geometry, oldGeometry, newGeometry);
  fieldChanged(GEOMETRY_FIELD);
  return i >= 0;
}

int nrShape::findGeometry(nrGeometry* g) {
  validateField(GEOMETRY_FIELD);
  return static_cast<int>(geometry.find(g));
}

int nrShape::getGeometryCount() const { return static_cast<int>(getFieldValue(geometry, GEOMETRY_FIELD).getCount()); }

nrGeometry* nrShape::getGeometry(int index) const {
  const nrRefArray& list = getFieldValue(geometry, GEOMETRY_FIELD);
  if (index < 0 || static_cast<unsigned>(index) >= list.getCount()) return nullptr;
  return static_cast<nrGeometry*>(list[unsigned(index)]);
}

void nrShape::appendPath(nrPtrArray* path) { paths.append(path); }

nrPtrArray* nrShape::getPath(int index) const {
  if (index < 0 || static_cast<unsigned>(index) >= paths.getCount()) return nullptr;
  return static_cast<nrPtrArray*>(paths[unsigned(index)]);
}

void nrShape::setPathListCount(int n) { paths.setCount(n > 0 ? unsigned(n) : 0); }

void nrShape::fieldChanged(short index) {
  if (index == GEOMETRY_FIELD && boundMode == DYNAMIC) propagateSideEffect(SPHERE_BOUND_FIELD);
  if (index == GEOMETRY_FIELD || index == APPEARANCE_FIELD)
    touchField(index);
  else
    nrNode::fieldChanged(index);
}

void nrShape::childChanged(nrContainer* child, short index) {
  // A geometry's box changed: the sphere around the boxes follows.
  if (index == nrGeometry::BOX_BOUND_FIELD && child != appearance && boundMode == DYNAMIC)
    propagateSideEffect(SPHERE_BOUND_FIELD);
  else
    nrNode::childChanged(child, index);
}

// The sphere around the union of the geometries' boxes.
void nrShape::cleanSideEffect(short index) {
  if (index != SPHERE_BOUND_FIELD) {
    nrNode::cleanSideEffect(index);
    return;
  }
  takeRoutedInputs();
  nrBoxBound all;
  for (unsigned i = 0; i < geometry.getCount(); ++i)
    if (nrGeometry* g = static_cast<nrGeometry*>(geometry[i])) all.extendBy(&g->getBoxBound());
  const nrBoxBound* boxes[1] = {&all};
  sphereBound.around(boxes, 1);
  touchField(SPHERE_BOUND_FIELD);
}

void nrShape::draw(nrDrawAction* action) {
  cleanPendingFields();
  drawWithoutClean(action);
}

void nrShape::drawWithoutClean(nrDrawAction* action) {
  if (appearance) {
    static_cast<nrAppearance*>(appearance)->draw(action);
  } else {
    nrContext* context = action && action->getContext() ? action->getContext() : nrContext::getCurrent();
    if (context) context->drawApp(nullptr, 1);
  }
  for (unsigned i = 0; i < geometry.getCount(); ++i)
    if (nrGeometry* g = static_cast<nrGeometry*>(geometry[i])) g->draw(action);
}

nrTravDirective nrShape::drawVisit(nrDrawAction* action) {
  cleanPendingFields();
  nrTravDirective d = PRUNE_TRAV;
  lastCullResult = action->pushCull(sphereBound);
  if (lastCullResult) {
    d = action->preVisit(this);
    if (d == CONTINUE_TRAV) drawWithoutClean(action);
    d = nrTravCombine(d, action->postVisit(this));
  }
  action->popCull();
  return d;
}

nrTravDirective nrShape::vfCullVisit(nrVFCullAction* action) {
  cleanPendingFields();
  nrTravDirective d = PRUNE_TRAV;
  lastCullResult = action->pushCull(sphereBound);
  if (lastCullResult) d = nrTravCombine(action->preVisit(this), action->postVisit(this));
  action->popCull();
  return d;
}

nrTravDirective nrShape::transformVisit(nrTransformAction* action) {
  return nrTravCombine(action->preVisit(this), action->postVisit(this));
}

void nrShape::isect(nrIsectAction* action) {
  cleanPendingFields();
  if (!sphereBound.isect(&action->getSeg(), nullptr, nullptr)) return;
  nrPtrArray& path = action->getPath();
  nrHit& hit = action->getHit();
  for (unsigned i = 0; i < geometry.getCount(); ++i) {
    nrGeometry* g = static_cast<nrGeometry*>(geometry[i]);
    if (!g) continue;
    path.append(g);
    // A kept hit comes without a shape; this one names itself.
    if (g->isect(action)) hit.setShape(this);
    path.setCount(path.getCount() - 1);
  }
}
