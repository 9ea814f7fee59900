#include "nerio3d/actions/nrIsectAction.h"

#include <cstdio>

#include "nerio3d/core/nrKeepAlive.h"
#include "nerio3d/nodes/nrNode.h"

NR_DEFINE_TYPE(nrIsectAction, nrTransformAction, "IsectAction") {}

// The matrix stack holds one level more than a stack of 256 takes, so that it
// enters a level with every segment level and the two stay in step.
nrIsectAction::nrIsectAction(nrType* type)
    : nrTransformAction(type, MAX_SEG_DEPTH + 1), path(8), segDepth(0), refusedSegs(0), seg(segs), nearest(1) {}

nrTravDirective nrIsectAction::apply(nrNode* root) {
  nrKeepAlive keepRoot(root);
  reset();
  if (!root) return CONTINUE_TRAV;
  path.append(root);
  root->isect(this);
  path.setCount(path.getCount() - 1);
  return CONTINUE_TRAV;
}

void nrIsectAction::reset() {
  nrTransformAction::reset();
  setSeg(pickSeg);
  hit.clear();
  nearest = 1;
}

void nrIsectAction::setSeg(const nrSeg& s) {
  pickSeg = s;
  // Intersections take the direction as a unit vector: another length is
  // folded into the segment's, as pushSeg does, so the far end stays put.
  pickSeg.length *= pickSeg.dir.normalize();
  segs[0] = pickSeg;
  segDepth = 0;
  refusedSegs = 0;
  seg = segs;
}

int nrIsectAction::pushSeg(const nrMatrix4f& toLocal) {
  if (segDepth >= MAX_SEG_DEPTH - 1) {
    fprintf(stderr, "nrIsectAction::pushSeg() Scene graph is too deep (%d)\n", MAX_SEG_DEPTH);
    ++refusedSegs;
    return 0;
  }
  nrSeg& next = segs[segDepth + 1];
  next.pos.xformPt(seg->pos, toLocal);
  next.dir.xformVec(seg->dir, toLocal);
  next.length = seg->length * next.dir.normalize();
  seg = &segs[++segDepth];
  return 1;
}

void nrIsectAction::popSeg(const nrMatrix4f&) { popSeg(); }

void nrIsectAction::popSeg() {
  if (refusedSegs > 0) {
    --refusedSegs;
    return;
  }
  if (segDepth > 0) seg = &segs[--segDepth];
}

int nrIsectAction::pushXform(const nrMatrix4f& toParent) {
  nrMatrix4f toLocal;
  if (!toLocal.invertFull(toParent)) return 0;
  if (pushSeg(toLocal)) {
    pushMatrix();
    matStack.getTop()->preMult(toParent);
  }
  return 1;
}

void nrIsectAction::popXform() {
  bool pushed = refusedSegs == 0;
  popSeg();
  if (pushed) popMatrix();
}

int nrIsectAction::hitGeometry(nrGeometry* g, float t, int primitive, const nrVec3f& localNormal,
                               const nrVec2f* texCoord) {
  float length = seg->length;
  if (!(t >= 0) || !(length > 0)) return 0;
  if (hit.geometry ? !(t < length) : t > length) return 0;
  // Every level's segment ends at the same point, so all shrink by one factor.
  float f = t / length;
  for (int i = 0; i <= segDepth; ++i) segs[i].length *= f;
  seg->length = t;
  nearest *= f;
  record(g, primitive, localNormal, texCoord);
  return 1;
}

void nrIsectAction::hitGeometry(nrGeometry* g) { record(g, -1, nrVec3f(0, 0, 0), nullptr); }

void nrIsectAction::record(nrGeometry* g, int primitive, const nrVec3f& localNormal, const nrVec2f* texCoord) {
  hit.geometry = g;
  hit.shape = nullptr;
  hit.primitive = primitive;
  hit.segLength = seg->length;
  hit.fraction = nearest;
  hit.localPoint.addScaled(seg->pos, seg->length, seg->dir);
  hit.matrix = *matStack.getTop();
  hit.worldPoint.xformPt(hit.localPoint, hit.matrix);
  hit.localNormal = localNormal;
  // Normals go through the inverse transpose, so that they stay
  // perpendicular to the surface under any scaling.
  nrMatrix4f inverse;
  inverse.invertFull(hit.matrix);
  for (int j = 0; j < 3; ++j)
    hit.worldNormal[j] =
        inverse[j][0] * localNormal[0] + inverse[j][1] * localNormal[1] + inverse[j][2] * localNormal[2];
  hit.worldNormal.normalize();
  hit.hasTexCoord = texCoord != nullptr;
  if (texCoord) hit.texCoord = *texCoord;
  hit.path = path;
}
