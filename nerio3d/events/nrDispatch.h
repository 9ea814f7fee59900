// Calls the free function bound to the pair (dispatcher type, object type);
// bindings are inherited along both type hierarchies, object hierarchy first.
#pragma once

#include "nerio3d/core/nrObject.h"

class nrDispatch : public nrObject {
  NR_DECLARE_TYPE(nrDispatch)

  typedef void (*Function)(nrDispatch*, nrObject*);

  nrDispatch() : nrDispatch(getClassType()) {}
  explicit nrDispatch(nrType* typeOfClass) : nrObject(typeOfClass) {}

  static void bindFunction(nrType* dispatchType, nrType* objectType, Function fn);
  // Calls the function resolved for this dispatcher's type and object's type;
  // nothing happens when no binding applies.
  void apply(nrObject* object);

 private:
  // Give a type its row and column, or its column, in the process-wide
  // function table (made on first use) unless it has them already.
  static void registerAsDispatch(nrType* type);
  static void registerAsObject(nrType* type);
};
