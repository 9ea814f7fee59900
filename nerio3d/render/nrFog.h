// Fog node: the graphics context keeps a stack of them, scoped by environments.
#pragma once

#include "nerio3d/core/nrObject.h"

class nrContext;

class nrFog : public nrObject {
 public:
  nrFog() = default;

  unsigned char getOn() const { return on; }
  void setOn(unsigned char value) { on = value; }

  // The context calls push when this fog becomes the top of its fog stack, and
  // pop on the fog that is the top again after dropped was popped.
  virtual void push(nrContext* context);
  virtual void pop(nrFog* dropped, nrContext* context);

 protected:
  unsigned char on = 1;
};
