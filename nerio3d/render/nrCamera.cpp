#include "nerio3d/render/nrCamera.h"

#include <cmath>

#include "nerio3d/actions/nrDrawAction.h"
#include "nerio3d/actions/nrIsectAction.h"
#include "nerio3d/fields/nrSField.h"
#include "nerio3d/nodes/nrNode.h"
#include "nerio3d/render/nrContext.h"
#include "nerio3d/render/nrGL.h"

namespace {
const float degreesPerRadian = 57.295776f;

// The viewport of the thread's current context; false without one.
bool currentViewport(int& vx, int& vy, int& vw, int& vh) {
  nrContext* context = nrContext::getCurrent();
  if (context) context->getViewport(vx, vy, vw, vh);
  return context != nullptr;
}
}  // namespace

nrIsectAction* nrCamera::sharedIsect = nullptr;

NR_DEFINE_TYPE(nrCamera, nrContainer, "Camera") {
  nrSFVec3f::addTypeField(type, "position", POSITION_FIELD, nrVec3f(0, 0, 0), &nrCamera::position);
  nrSFRotation::addTypeField(type, "orientation", ORIENTATION_FIELD, nrRotation(), &nrCamera::orientation);
}

nrCamera::nrCamera(nrType* type) : nrContainer(type) {
  initFieldDefaults(classType);
  viewMatrix.makeIdent();
}

void nrCamera::getPosition(float* x, float* y, float* z) const {
  const nrVec3f& p = getPosition();
  *x = p[0];
  *y = p[1];
  *z = p[2];
}

void nrCamera::getOrientation(float* x, float* y, float* z, float* angle) const {
  const nrRotation& r = getOrientation();
  *x = r.axis[0];
  *y = r.axis[1];
  *z = r.axis[2];
  *angle = r.angle;
}

// Bringing the fields up to date does not change what the camera stands for.
const nrMatrix4f& nrCamera::getViewMatrix() const {
  const_cast<nrCamera*>(this)->cleanPendingFields();
  return viewMatrix;
}

const nrFrustum& nrCamera::getFrustum() const {
  const_cast<nrCamera*>(this)->cleanPendingFields();
  return frustum;
}

void nrCamera::fieldChanged(short index) {
  if (index == POSITION_FIELD || index == ORIENTATION_FIELD) {
    const nrVec3f& a = orientation.axis;
    viewMatrix.makeRot(a[0], a[1], a[2], -orientation.angle);
    viewMatrix.preTrans(-position[0], -position[1], -position[2], viewMatrix);
  }
  touchField(index);
}

void nrCamera::copy(nrContainer* from, nrCloneTable* table) {
  nrContainer::copy(from, table);
  if (!from || !from->isOfType(getClassType())) return;
  nrCamera* source = static_cast<nrCamera*>(from);
  viewMatrix = source->viewMatrix;
  // A camera of another kind keeps the frustum its own fields give.
  if (from->getType() == getType()) frustum.copy(&source->frustum);
}

void nrCamera::addClipAspectFields(nrType* cameraType, short first, float nrContainer::*nearClip,
                                   float nrContainer::*farClip, int nrContainer::*aspectMode,
                                   float nrContainer::*aspectRatio) {
  nrSFFloat::addTypeField(cameraType, "nearClip", first, 1.0f, nearClip);
  nrSFFloat::addTypeField(cameraType, "farClip", first + 1, 1000.0f, farClip);
  nrSFEnum::addTypeField(cameraType, "aspectMode", first + 2, nrFrustum::FREE_ASPECT, aspectMode);
  nrSFFloat::addTypeField(cameraType, "aspectRatio", first + 3, 1.0f, aspectRatio);
  const char* names[] = {"FREE_ASPECT", "FIXED_HEIGHT_ASPECT", "FIXED_WIDTH_ASPECT"};
  const int values[] = {nrFrustum::FREE_ASPECT, nrFrustum::FIXED_HEIGHT_ASPECT, nrFrustum::FIXED_WIDTH_ASPECT};
  cameraType->defineEnums(first + 2, 3, names, values);
}

bool nrCamera::clipAspectChanged(int offset, float nearClip, float farClip, int aspectMode, float aspectRatio) {
  switch (offset) {
    case 0:
    case 1:
      frustum.setNearFar(nearClip, farClip);
      return true;
    case 2:
      frustum.setAspectMode(aspectMode);
      return true;
    case 3:
      frustum.setAspectRatio(aspectRatio);
      return true;
    default:
      return false;
  }
}

void nrCamera::draw(nrDrawAction* action) {
  cleanPendingFields();
  float l, r, b, t, n, f;
  frustum.getDiagCorners(&l, &r, &b, &t, &n, &f);
  nrContext* context = action ? action->getContext() : nullptr;
  if (context && context->getDrawable()) context->makeCurrent(context->getDrawable());
  nrgl::MatrixMode(GL_PROJECTION);
  nrgl::LoadIdentity();
  if (frustum.getKind() == nrFrustum::ORTHO_KIND)
    nrgl::Ortho(l, r, b, t, n, f);
  else
    nrgl::Frustum(l, r, b, t, n, f);
  nrgl::MatrixMode(GL_MODELVIEW);
  nrgl::LoadIdentity();
  const nrVec3f& a = orientation.axis;
  nrgl::Rotatef(-orientation.angle * degreesPerRadian, a[0], a[1], a[2]);
  nrgl::Translatef(-position[0], -position[1], -position[2]);
}

int nrCamera::pick(nrNode* root, int x, int y, nrHit& hit) {
  int vx, vy, vw, vh;
  return currentViewport(vx, vy, vw, vh) ? pick(root, x, y, hit, vx, vy, vw, vh) : 0;
}

int nrCamera::pick(nrNode* root, int x, int y, nrHit& hit, int vx, int vy, int vw, int vh) {
  cleanPendingFields();
  // Widened: a viewport reaching past the largest int still ends where it says.
  if (!root || x < vx || x >= static_cast<long long>(vx) + vw || y < vy || y >= static_cast<long long>(vy) + vh)
    return 0;
  if (!sharedIsect) {
    sharedIsect = new nrIsectAction;
    sharedIsect->ref();
  }
  // A pick made from inside another one (a node's isect that picks) gets an
  // action of its own: the shared one still carries the outer pick.
  static bool sharedBusy = false;
  nrIsectAction* action = sharedIsect;
  if (sharedBusy) {
    action = new nrIsectAction;
    action->ref();
  }
  bool shared = action == sharedIsect;
  if (shared) sharedBusy = true;
  nrSeg world;
  getPickRay(x, y, vx, vy, vw, vh, world);
  action->setSeg(world);
  action->apply(root);
  int found = action->getHit().getGeometry() != nullptr;
  if (found) hit = action->getHit();
  if (shared)
    sharedBusy = false;
  else
    action->unref();
  return found;
}

int nrCamera::getPickRay(int x, int y, nrSeg& ray) {
  int vx, vy, vw, vh;
  if (!currentViewport(vx, vy, vw, vh)) return 0;
  getPickRay(x, y, vx, vy, vw, vh, ray);
  return 1;
}

void nrCamera::getPickRay(int x, int y, int vx, int vy, int vw, int vh, nrSeg& ray) {
  cleanPendingFields();
  // The pixel centre on the near rectangle, in eye coordinates.
  float l, r, b, t, n, f;
  frustum.getDiagCorners(&l, &r, &b, &t, &n, &f);
  float u = static_cast<float>((static_cast<double>(x) - vx + 0.5) / vw);
  float v = static_cast<float>((static_cast<double>(y) - vy + 0.5) / vh);
  nrVec3f onNear(l + u * (r - l), b + v * (t - b), -n);
  nrSeg eye;
  if (frustum.getKind() == nrFrustum::ORTHO_KIND) {
    eye = nrSeg(onNear, nrVec3f(0, 0, -1), f - n);
  } else {
    // From the near plane to the far plane along the ray through the eye.
    nrVec3f dir = onNear;
    float toNear = dir.normalize();
    eye = nrSeg(onNear, dir, toNear * (f / n - 1));
  }

  nrMatrix4f placement;
  const nrVec3f& a = orientation.axis;
  placement.makeRot(a[0], a[1], a[2], orientation.angle);
  placement.postTrans(placement, position[0], position[1], position[2]);
  ray.pos.xformPt(eye.pos, placement);
  ray.dir.xformVec(eye.dir, placement);
  ray.length = eye.length;
}
