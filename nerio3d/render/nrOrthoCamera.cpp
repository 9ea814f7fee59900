#include "nerio3d/render/nrOrthoCamera.h"

#include "nerio3d/fields/nrSField.h"

NR_DEFINE_TYPE(nrOrthoCamera, nrCamera, "OrthoCamera") {
  nrSFFloat::addTypeField(type, "width", WIDTH_FIELD, 1.0f, &nrOrthoCamera::width);
  nrSFFloat::addTypeField(type, "height", HEIGHT_FIELD, 1.0f, &nrOrthoCamera::height);
  nrSFVec2f::addTypeField(type, "center", CENTER_FIELD, nrVec2f(0, 0), &nrOrthoCamera::center);
  addClipAspectFields(type, NEAR_CLIP_FIELD, &nrOrthoCamera::nearClip, &nrOrthoCamera::farClip,
                      &nrOrthoCamera::aspectMode, &nrOrthoCamera::aspectRatio);
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

void nrOrthoCamera::getCenter(float* x, float* y) const {
  const nrVec2f& c = getFieldValue(center, CENTER_FIELD);
  *x = c[0];
  *y = c[1];
}

void nrOrthoCamera::fieldChanged(short index) {
  switch (index) {
    case WIDTH_FIELD:
    case HEIGHT_FIELD:
    case CENTER_FIELD:
      makeRect();
      break;
    default:
      if (!clipAspectChanged(index - NEAR_CLIP_FIELD, nearClip, farClip, aspectMode, aspectRatio)) {
        nrCamera::fieldChanged(index);
        return;
      }
  }
  touchField(index);
}
