// A two-dimensional texture that the graphics context sends to OpenGL when it becomes current.
#pragma once

#include "nerio3d/fields/nrContainer.h"

class nrContext;

class nrTexture : public nrContainer {
  NR_DECLARE_CONTAINER_TYPE(nrTexture)

  nrTexture() : nrTexture(getClassType()) {}
  explicit nrTexture(nrType* type) : nrContainer(type) {}

 protected:
  friend class nrContext;
  // Binds the texture in context, uploading it when the context lacks this version.
  virtual void draw(nrContext* context);
};
