// Base of the light nodes; the graphics context assigns each light an OpenGL light slot.
#pragma once

#include "nerio3d/core/nrObject.h"
#include "nerio3d/math/nrMatrix4f.h"

class nrLight : public nrObject {
 public:
  nrLight() = default;

  unsigned char getOn() const { return on; }
  void setOn(unsigned char value) { on = value; }

  // Called by the context when a light level is left and this light is back in
  // slot, placed with matrix: each kind of light reloads its parameters there.
  virtual void pop(int slot, const nrMatrix4f& matrix);

 protected:
  unsigned char on = 1;
};
