// Fog node: the graphics context keeps a stack of them, scoped by environments.
#pragma once

#include "nerio3d/nodes/nrNode.h"

class nrContext;

class nrFog : public nrNode {
  NR_DECLARE_CONTAINER_TYPE(nrFog)

  enum { ON_FIELD = 2 };

  nrFog() : nrFog(getClassType()) {}
  explicit nrFog(nrType* type) : nrNode(type) { initFieldDefaults(classType); }

  unsigned char getOn() const { return on; }
  void setOn(unsigned char value) {
    on = value;
    fieldChanged(ON_FIELD);
  }

  // The context calls push when this fog becomes the top of its fog stack, and
  // pop on the fog that is the top again after dropped was popped.
  virtual void push(nrContext* context);
  virtual void pop(nrFog* dropped, nrContext* context);

 protected:
  unsigned char on;
};
