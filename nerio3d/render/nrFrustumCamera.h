// Camera whose projection is a frustum the application gives as it is.
#pragma once

#include "nerio3d/render/nrCamera.h"

class nrFrustumCamera : public nrCamera {
  NR_DECLARE_CONTAINER_TYPE(nrFrustumCamera)

  nrFrustumCamera() : nrFrustumCamera(getClassType()) {}
  explicit nrFrustumCamera(nrType* typeOfClass) : nrCamera(typeOfClass) {}

  // Copies f (through its virtual copy) into the camera's own frustum.
  void setFrustum(nrFrustum* f) {
    if (f) frustum.copy(f);
  }
};
