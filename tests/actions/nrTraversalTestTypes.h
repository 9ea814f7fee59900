// A recording action and leaf for the traversal tests: both append what they
// are called with to one trace.
#pragma once

#include <initializer_list>
#include <map>
#include <string>

#include "nerio3d/actions/nrDrawAction.h"
#include "nerio3d/actions/nrIsectAction.h"
#include "nerio3d/actions/nrSoundAction.h"
#include "nerio3d/nodes/nrGroup.h"
#include "nerio3d/nodes/nrTransform.h"

extern std::string tstTrace;

inline std::string tstName(nrNode* n) { return n && n->getName() ? n->getName() : "null"; }

// Records the hooks; preVisit and postVisit answer what the maps say for a node name.
class tstRecorder : public nrDrawAction {
  NR_DECLARE_ACTION_TYPE(tstRecorder)
  tstRecorder() : nrDrawAction(getClassType()) {}

  void begin(nrNode* root) override { tstTrace += "begin(" + tstName(root) + ") "; }
  nrTravDirective preVisit(nrNode* n) override {
    tstTrace += "pre(" + tstName(n) + ") ";
    return pre[tstName(n)];
  }
  nrTravDirective postVisit(nrNode* n) override {
    tstTrace += "post(" + tstName(n) + ") ";
    return post[tstName(n)];
  }
  void end(nrNode* root) override { tstTrace += "end(" + tstName(root) + ") "; }

  std::map<std::string, nrTravDirective> pre, post;
};

// A leaf that records each visit as "kind(name)" and answers `result`.
class tstVisited : public nrNode {
  NR_DECLARE_CONTAINER_TYPE(tstVisited)
  tstVisited() : nrNode(getClassType()) {}

  nrTravDirective visit(nrAction*) override { return record("visit"); }
  nrTravDirective transformVisit(nrTransformAction*) override { return record("transform"); }
  nrTravDirective vfCullVisit(nrVFCullAction*) override { return record("cull"); }
  nrTravDirective drawVisit(nrDrawAction*) override { return record("draw"); }
  void sound(nrSoundAction*) override {
    record("sound");
    dropSiblings();
  }
  // Records the last node of the path and its length as well: "isect(name<last/length)".
  void isect(nrIsectAction* action) override {
    nrPtrArray& path = action->getPath();
    tstTrace += "isect(" + tstName(this) + "<" + tstName(static_cast<nrNode*>(path[path.getCount() - 1])) + "/" +
                std::to_string(path.getCount()) + ") ";
    dropSiblings();
  }

  nrTravDirective result = 0;
  // Set, the leaf empties its parent group (itself included) in isect and sound.
  bool dropsGroup = false;

 private:
  nrTravDirective record(const char* kind) {
    tstTrace += std::string(kind) + "(" + tstName(this) + ") ";
    return result;
  }
  void dropSiblings() {
    if (dropsGroup && getParentCount() > 0) static_cast<nrGroup*>(getParent(0))->setChildCount(0);
  }
};

// A solid ball that picking hits exactly: it reports where the segment enters
// its sphere, with the outward normal, as primitive 7. It stands in for a
// geometry, whose pointer the hit record only keeps.
class tstBall : public nrNode {
  NR_DECLARE_CONTAINER_TYPE(tstBall)
  tstBall() : nrNode(getClassType()) {}

  nrGeometry* asGeometry() { return reinterpret_cast<nrGeometry*>(this); }
  void isect(nrIsectAction* action) override {
    const nrSeg& seg = action->getSeg();
    float t;
    if (!sphereBound.isect(&seg, &t, nullptr)) return;
    nrVec3f at, normal;
    seg.getPoint(t, at);
    normal.sub(at, sphereBound.center);
    action->hitGeometry(asGeometry(), t, 7, normal);
  }
};

// A ball at (x, y, z) with radius r, unreferenced.
inline tstBall* tstMakeBall(float x, float y, float z, float r) {
  tstBall* ball = new tstBall;
  ball->setSphereBound(nrSphereBound(nrVec3f(x, y, z), r));
  return ball;
}
// A transform around child, unreferenced.
inline nrTransform* tstPlace(nrNode* child, const nrVec3f& translation, float scale = 1) {
  nrTransform* t = new nrTransform;
  t->setTranslation(translation[0], translation[1], translation[2]);
  if (scale != 1) t->setScale(scale, scale, scale);
  t->addChild(child);
  return t;
}
// A group named name (or unnamed) around children, unreferenced.
inline nrGroup* group(const char* name, std::initializer_list<nrNode*> children) {
  nrGroup* g = new nrGroup;
  if (name) g->setName(name);
  for (nrNode* c : children) g->addChild(c);
  return g;
}
