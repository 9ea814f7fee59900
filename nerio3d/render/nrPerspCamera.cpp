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
  nrSFFloat::addTypeField(type, "nearClip", NEAR_CLIP_FIELD, 1.0f, &nrPerspCamera::nearClip);
  nrSFFloat::addTypeField(type, "farClip", FAR_CLIP_FIELD, 1000.0f, &nrPerspCamera::farClip);
  nrSFEnum::addTypeField(type, "aspectMode", ASPECT_MODE_FIELD, nrFrustum::FREE_ASPECT, &nrPerspCamera::aspectMode);
  nrSFFloat::addTypeField(type, "aspectRatio", ASPECT_RATIO_FIELD, 1.0f, &nrPerspCamera::aspectRatio);
  const char* names[] = {"FREE_ASPECT", "FIXED_HEIGHT_ASPECT", "FIXED_WIDTH_ASPECT"};
  const int values[] = {nrFrustum::FREE_ASPECT, nrFrustum::FIXED_HEIGHT_ASPECT, nrFrustum::FIXED_WIDTH_ASPECT};
  type->defineEnums(ASPECT_MODE_FIELD, 3, names, values);
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
