#include "nerio3d/render/nrTexture.h"

NR_DEFINE_TYPE(nrTexture, nrContainer, "Texture") {}

void nrTexture::draw(nrContext*) {}
