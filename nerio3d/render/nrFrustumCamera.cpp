#include "nerio3d/render/nrFrustumCamera.h"

NR_DEFINE_TYPE(nrFrustumCamera, nrCamera, "FrustumCamera") {}
