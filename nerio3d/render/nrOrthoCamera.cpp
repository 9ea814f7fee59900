#include "nerio3d/render/nrOrthoCamera.h"

#include "nerio3d/fields/nrSField.h"

NR_DEFINE_TYPE(nrOrthoCamera, nrCamera, "OrthoCamera") {
  nrSFFloat::addTypeField(type, "width", WIDTH_FIELD, 1.0f, &nrOrthoCamera::width);
  nrSFFloat::addTypeField(type, "height", HEIGHT_FIELD, 1.0f, &nrOrthoCamera::height);
  nrSFVec2f::addTypeField(type, "center", CENTER_FIELD, nrVec2f(0, 0), &nrOrthoCamera::center);
  nrSFFloat::addTypeField(type, "nearClip", NEAR_CLIP_FIELD, 1.0f, &nrOrthoCamera::nearClip);
  nrSFFloat::addTypeField(type, "farClip", FAR_CLIP_FIELD, 1000.0f, &nrOrthoCamera::farClip);
  nrSFEnum::addTypeField(type, "aspectMode", ASPECT_MODE_FIELD, nrFrustum::FREE_ASPECT, &nrOrthoCamera::aspectMode);
  nrSFFloat::addTypeField(type, "aspectRatio", ASPECT_RATIO_FIELD, 1.0f, &nrOrthoCamera::aspectRatio);
  const char* names[] = {"FREE_ASPECT", "FIXED_HEIGHT_ASPECT", "FIXED_WIDTH_ASPECT"};
  const int values[] = {nrFrustum::FREE_ASPECT, nrFrustum::FIXED_HEIGHT_ASPECT, nrFrustum::FIXED_WIDTH_ASPECT};
  type->defineEnums(ASPECT_MODE_FIELD, 3, names, values);
}

// The frustum starts as the default fields describe it, a unit square at the
// default clip distances, so that a new camera is orthographic at once.
nrOrthoCamera::nrOrthoCamera(nrType* type) : nrCamera(type) {
  initFieldDefaults(classType);
  makeRect();
  frustum.setNearFar(nearClip, farClip);
}

void nrOrthoCamera::makeRect() {
  frustum.makeOrtho(center[0] - width / 2, center[0] + width / 2, center[1] - height / 2, center[1] + height / 2);
}

void nrOrthoCamera::getCenter(float* x, float* y) {
  validateField(CENTER_FIELD);
  *x = center[0];
  *y = center[1];
}

void nrOrthoCamera::fieldChanged(short index) {
  switch (index) {
    case WIDTH_FIELD:
    case HEIGHT_FIELD:
    case CENTER_FIELD:
      makeRect();
      break;
    case NEAR_CLIP_FIELD:
    case FAR_CLIP_FIELD:
      frustum.setNearFar(nearClip, farClip);
      break;
    case ASPECT_MODE_FIELD:
      frustum.setAspectMode(aspectMode);
      break;
    case ASPECT_RATIO_FIELD:
      frustum.setAspectRatio(aspectRatio);
      break;
    default:
      nrCamera::fieldChanged(index);
      return;
  }
  touchField(index);
}
