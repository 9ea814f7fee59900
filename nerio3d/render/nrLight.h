// Base of the light nodes; the graphics context assigns each light an OpenGL light slot.
#pragma once

#include "nerio3d/math/nrMatrix4f.h"
#include "nerio3d/nodes/nrNode.h"

class nrLight : public nrNode {
  NR_DECLARE_TYPE(nrLight)

  enum { ON_FIELD = 2 };

  explicit nrLight(nrType* type) : nrNode(type) { initFieldDefaults(classType); }

  unsigned char getOn() const { return on; }
  void setOn(unsigned char value) {
    on = value;
    fieldChanged(ON_FIELD);
  }

  // Called by the context when a light level is left and this light is back in
  // slot, placed with matrix: each kind of light reloads its parameters there.
  virtual void pop(int slot, const nrMatrix4f& matrix);

 protected:
  unsigned char on;
};
