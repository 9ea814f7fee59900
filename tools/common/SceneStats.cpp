#include "SceneStats.h"

#include "nerio3d/fields/nrFieldInfo.h"
#include "nerio3d/fields/nrMFRef.h"
#include "nerio3d/fields/nrSFRef.h"
#include "nerio3d/geometry/nrBox.h"
#include "nerio3d/geometry/nrCone.h"
#include "nerio3d/geometry/nrCylinder.h"
#include "nerio3d/geometry/nrGeoSet.h"
#include "nerio3d/geometry/nrShape.h"
#include "nerio3d/geometry/nrSphere.h"
#include "nerio3d/geometry/nrTriStripSet.h"
#include "nerio3d/nodes/nrGroup.h"
#include "nerio3d/nodes/nrTransform.h"
#include "nerio3d/render/nrLight.h"

SceneStats::SceneStats(nrNode* root) {
  std::map<nrContainer*, bool> seen;
  visit(root, seen);
  root->getSphereBound(bound);
  nrMatrix4f identity;
  identity.makeIdent();
  extendBox(root, identity);
}

void SceneStats::extendBox(nrNode* node, const nrMatrix4f& toWorld) {
  if (!node) return;
  if (node->isOfType(nrShape::getClassType())) {
    nrShape* shape = static_cast<nrShape*>(node);
    for (int i = 0; i < shape->getGeometryCount(); ++i) {
      nrBoxBound local, placed;
      if (!shape->getGeometry(i)) continue;
      shape->getGeometry(i)->calcBound(local);
      if (local.isEmpty()) continue;
      placed.xform(&local, toWorld);
      box.extendBy(&placed);
    }
  }
  if (!node->isOfType(nrGroup::getClassType())) return;
  nrMatrix4f m = toWorld;
  if (node->isOfType(nrTransform::getClassType())) {
    nrMatrix4f local;
    static_cast<nrTransform*>(node)->getMatrix(local);
    m.mult(local, toWorld);
  }
  nrGroup* group = static_cast<nrGroup*>(node);
  for (int i = 0; i < group->getNumChildren(); ++i) extendBox(group->getChild(i), m);
}

void SceneStats::visit(nrContainer* container, std::map<nrContainer*, bool>& seen) {
  if (!container || seen[container]) return;
  seen[container] = true;
  containers.push_back(container);
  nrType* type = container->getType();
  ++byType[type->getName()];
  if (container->isOfType(nrNode::getClassType())) ++nodes;
  if (container->isOfType(nrLight::getClassType())) ++lights;
  if (container->isOfType(nrShape::getClassType())) {
    ++shapes;
    nrShape* shape = static_cast<nrShape*>(container);
    for (int i = 0; i < shape->getGeometryCount(); ++i) triangles += trianglesOf(shape->getGeometry(i));
  }
  // Only reference fields are asked for their field objects: the others
  // would be created just to be looked at.
  for (int i = 0; i < type->getNumFields(); ++i) {
    nrType* kind = type->getFieldInfo(i)->getFieldType();
    if (kind->isDerivedFrom(nrSFRef::getClassType())) {
      visit(static_cast<nrSFRef*>(container->getField(i))->get(), seen);
    } else if (kind->isDerivedFrom(nrMFRef::getClassType())) {
      nrMFRef* list = static_cast<nrMFRef*>(container->getField(i));
      for (unsigned j = 0; j < list->getCount(); ++j) visit(list->get(j), seen);
    }
  }
}

int SceneStats::trianglesOf(nrGeometry* geometry) {
  if (!geometry) return 0;
  if (geometry->isOfType(nrGeoSet::getClassType())) {
    nrGeoSet* set = static_cast<nrGeoSet*>(geometry);
    // Splitting a primitive into triangles may look at its coordinates.
    if (!set->getCoordSet()) return 0;
    int count = 0, first = 0, v[3];
    for (int p = 0, n = set->getPrimCount(); p < n; ++p) {
      int length = set->getPrimLen(p);
      if (length < 0) break;
      for (int t = 0; set->getPrimTri(first, length, t, v); ++t) ++count;
      first += length;
    }
    return count;
  }
  if (geometry->isOfType(nrBox::getClassType())) return 12;
  if (geometry->isOfType(nrSphere::getClassType())) return trianglesOf(nrSphere::getUnitSphere());
  if (geometry->isOfType(nrCone::getClassType())) {
    nrCone* cone = static_cast<nrCone*>(geometry);
    return (cone->getSide() ? trianglesOf(nrCone::getUnitSide()) : 0) +
           (cone->getBottom() ? trianglesOf(nrCone::getUnitBottom()) : 0);
  }
  if (geometry->isOfType(nrCylinder::getClassType())) {
    nrCylinder* cylinder = static_cast<nrCylinder*>(geometry);
    return (cylinder->getSide() ? trianglesOf(nrCylinder::getUnitSide()) : 0) +
           (cylinder->getTop() ? trianglesOf(nrCylinder::getUnitTop()) : 0) +
           (cylinder->getBottom() ? trianglesOf(nrCylinder::getUnitBottom()) : 0);
  }
  return 0;
}
