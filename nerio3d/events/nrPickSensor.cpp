#include "nerio3d/events/nrPickSensor.h"

#include <deque>

#include "nerio3d/arrays/nrTypedArray.h"
#include "nerio3d/core/nrKeepAlive.h"
#include "nerio3d/fields/nrSField.h"
#include "nerio3d/nodes/nrGroup.h"
#include "nerio3d/nodes/nrTransform.h"
#include "nerio3d/render/nrCamera.h"

NR_DEFINE_TYPE(nrPickSensor, nrNode, "PickSensor") {
  nrSFUByte::addTypeField(type, "enabled", ENABLED_FIELD, 1, &nrPickSensor::enabled);
  nrSFUByte::addTypeField(type, "isActive", IS_ACTIVE_FIELD, 0, &nrPickSensor::isActive);
}

namespace {
// Never destroyed: sensors that outlive the library's statics still leave them.
nrPtrArray& picked = *new nrPtrArray(4);
nrPtrArray& over = *new nrPtrArray(4);
nrPtrArray& grabbed = *new nrPtrArray(4);

// Calls fn on each sensor listed when it starts. A sensor may release other
// sensors, or itself, from its functions: those released before their turn
// leave the list in their destructor and are passed over without skipping the
// others; the one called is held until fn is done.
template <typename Fn>
void forEachListed(const nrPtrArray& list, Fn fn) {
  const nrPtrArray listed = list;
  for (unsigned i = 0; i < listed.getCount(); ++i) {
    if (list.find(listed[i]) < 0) continue;
    nrPickSensor* s = static_cast<nrPickSensor*>(listed[i]);
    const nrKeepAlive hold(s);
    fn(s);
  }
}
}  // namespace

int nrPickSensor::currentFrame = 0;
bool nrPickSensor::grabbing = false;
int nrPickSensor::pickedDepth = 0;
nrSeg nrPickSensor::pickRay;
bool nrPickSensor::havePickRay = false;

nrPickSensor::nrPickSensor(nrType* type) : nrNode(type), frame(-1) { initFieldDefaults(getClassType()); }

nrPickSensor::~nrPickSensor() {
  picked.remove(this);
  over.remove(this);
  grabbed.remove(this);
  destroyFieldContents(getClassType());
}

void nrPickSensor::copy(nrContainer* from, nrCloneTable* table) {
  nrNode::copy(from, table);
  if (!from || from == this || !from->isOfType(getClassType())) return;
  frame = static_cast<nrPickSensor*>(from)->frame;
  for (nrPtrArray* list : {&picked, &over, &grabbed})
    if (list->find(from) >= 0 && list->find(this) < 0) list->append(this);
}

void nrPickSensor::beginGrab(const nrHit&) {}
void nrPickSensor::motion(const nrHit&) {}
void nrPickSensor::endGrab(const nrHit&) {}

const nrPtrArray& nrPickSensor::getPicked() { return picked; }
const nrPtrArray& nrPickSensor::getGrabbed() { return grabbed; }

bool nrPickSensor::getPickRay(nrSeg& ray) {
  if (havePickRay) ray = pickRay;
  return havePickRay;
}

void nrPickSensor::updateSensors(nrNode* root, nrCamera* camera, int x, int y, int buttonDown) {
  if (!root || !camera) return;
  picked.setCount(0);
  havePickRay = camera->getPickRay(x, y, pickRay) != 0;
  nrHit hit;
  if (camera->pick(root, x, y, hit)) collect(hit);
  // The sensors' functions may release part of the scene, or all of it,
  // which the hit's path and the sensors' working spaces still lead through:
  // its nodes are held until the update ends.
  std::deque<nrKeepAlive> pathHold;
  for (unsigned i = 0; i < hit.getPath().getCount(); ++i)
    pathHold.emplace_back(static_cast<nrContainer*>(hit.getPath()[i]));

  if (!grabbing && !buttonDown) {
    updatePickedSensors(hit);
  } else if (!grabbing) {
    grabbing = true;
    grabbed = picked;
    forEachListed(grabbed, [&](nrPickSensor* s) { s->beginGrab(hit); });
  } else if (buttonDown) {
    forEachListed(grabbed, [&](nrPickSensor* s) { s->motion(hit); });
  } else {
    grabbing = false;
    forEachListed(grabbed, [&](nrPickSensor* s) { s->endGrab(hit); });
    grabbed.setCount(0);
    updatePickedSensors(hit);
  }
  ++currentFrame;
}

void nrPickSensor::updatePickedSensors(const nrHit& hit) {
  // A sensor that left the pointer leaves the list, the last entry moving into
  // its place, and that place is looked at again: with several leaving, their
  // last motions come in that order. One released by a motion leaves the list
  // in its destructor; the one called is held until its motion is done.
  for (unsigned i = 0; i < over.getCount();) {
    nrPickSensor* s = static_cast<nrPickSensor*>(over[i]);
    if (s->isPicked()) {
      ++i;
      continue;
    }
    over.fastRemoveIndex(i);
    const nrKeepAlive hold(s);
    s->motion(hit);
  }
  forEachListed(picked, [&](nrPickSensor* s) { s->motion(hit); });
  over = picked;
}

// Walks from the geometry towards the root. A shape that names itself in the
// hit is the first level, whether or not the path shows it.
void nrPickSensor::collect(const nrHit& hit) {
  const nrPtrArray& path = hit.getPath();
  int depth = static_cast<int>(path.getCount());
  if (nrNode* shape = hit.getShape()) {
    const int aboveShape = depth && path[depth - 1] == static_cast<void*>(hit.getGeometry()) ? depth - 1 : depth;
    if (collectAround(shape, aboveShape)) return;
  }
  while (depth-- > 0)
    if (collectAround(static_cast<nrContainer*>(path[depth]), depth)) return;
}

bool nrPickSensor::collectAround(nrContainer* node, int depth) {
  bool found = false;
  for (int p = 0; p < node->getParentCount(); ++p) {
    nrContainer* parent = node->getParent(p);
    if (!parent->isOfType(nrGroup::getClassType())) continue;
    nrGroup* group = static_cast<nrGroup*>(parent);
    for (int c = 0; c < group->getNumChildren(); ++c) {
      nrNode* child = group->getChild(c);
      if (!child || !child->isOfType(getClassType())) continue;
      nrPickSensor* s = static_cast<nrPickSensor*>(child);
      // The stamp also keeps a sensor reached twice from being listed twice.
      if (s->isPicked() || !s->getEnabled()) continue;
      s->frame = currentFrame;
      picked.append(s);
      found = true;
    }
  }
  if (found) pickedDepth = depth;
  return found;
}

void nrPickSensor::calcWorkingSpace(const nrHit& hit, nrMatrix4f& toWorld) const {
  const nrPtrArray& path = hit.getPath();
  toWorld.makeIdent();
  // Nearest transform first, so that points go through the deepest one first;
  // the root stands on the path twice and counts once.
  const int count = static_cast<int>(path.getCount());
  for (int i = (pickedDepth < count ? pickedDepth : count) - 1; i >= 0; --i) {
    nrContainer* node = static_cast<nrContainer*>(path[i]);
    if ((i > 0 && path[i - 1] == node) || !node->isOfType(nrTransform::getClassType())) continue;
    nrMatrix4f m;
    static_cast<nrTransform*>(node)->getMatrix(m);
    toWorld.postMult(m);
  }
}

void nrPickSensor::calcLocalHit(const nrHit& hit, nrMatrix4f& toLocal, nrVec3f& point) const {
  nrMatrix4f toWorld;
  calcWorkingSpace(hit, toWorld);
  toLocal.invertAffine(toWorld);
  point.xformPt(hit.getWorldPoint(), toLocal);
}

bool nrPickSensor::getLocalPickRay(const nrMatrix4f& toLocal, nrSeg& ray) {
  if (!havePickRay) return false;
  ray.pos.xformPt(pickRay.pos, toLocal);
  ray.dir.xformVec(pickRay.dir, toLocal);
  ray.length = pickRay.length * ray.dir.normalize();
  return true;
}
