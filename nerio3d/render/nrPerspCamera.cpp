#include "nerio3d/render/nrPerspCamera.h"

#include <cmath>

#include "nerio3d/fields/nrSField.h"

namespace {
// The tangent of half of the default 45 degree field of view.
const float halfFOVTangent = 0.41421356f;
}  // namespace

NR_DEFINE_TYPE(nrPerspCamera, nrCamera, "PerspCamera") {
  nrSFFloat::addTypeField(type, "horizFOV", HORIZ_FOV_FIELD, 0.7853982f, &nrPerspCamera::horizFOV);
  nrSFFloat::addTypeField(type, "vertFOV", VERT_FOV_FIELD, 0.7853982f, &nrPerspCamera::vertFOV);
  nrSFFloat::addTypeField(type, "horizFOVOff", HORIZ_FOV_OFF_FIELD, 0.0f, &nrPerspCamera::horizFOVOff);
  nrSFFloat::addTypeField(type, "vertFOVOff", VERT_FOV_OFF_FIELD, 0.0f, &nrPerspCamera::vertFOVOff);
  addClipAspectFields(type, NEAR_CLIP_FIELD, &nrPerspCamera::nearClip, &nrPerspCamera::farClip,
                      &nrPerspCamera::aspectMode, &nrPerspCamera::aspectRatio);
}

nrPerspCamera::nrPerspCamera(nrType* type) : nrCamera(type) {
  initFieldDefaults(classType);
  frustum.makePersp(-halfFOVTangent, halfFOVTangent, -halfFOVTangent, halfFOVTangent);
  frustum.setNearFar(1, 1000);
}

void nrPerspCamera::fieldChanged(short index) {
  float l, r, b, t, n, f;
  frustum.getDiagCorners(&l, &r, &b, &t, &n, &f);
  switch (index) {
    // The two offsets turn the window in opposite senses: a positive horizontal
    // offset moves it toward -x, a positive vertical one toward +y.
    case HORIZ_FOV_FIELD:
    case HORIZ_FOV_OFF_FIELD:
      frustum.makePersp(-n * std::tan(horizFOVOff + horizFOV / 2), -n * std::tan(horizFOVOff - horizFOV / 2), b, t);
      break;
    case VERT_FOV_FIELD:
    case VERT_FOV_OFF_FIELD:
      frustum.makePersp(l, r, n * std::tan(vertFOVOff - vertFOV / 2), n * std::tan(vertFOVOff + vertFOV / 2));
      break;
    default:
      if (!clipAspectChanged(index - NEAR_CLIP_FIELD, nearClip, farClip, aspectMode, aspectRatio)) {
        nrCamera::fieldChanged(index);
        return;
      }
  }
  touchField(index);
}
