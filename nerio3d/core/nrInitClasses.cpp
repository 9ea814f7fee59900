// The registration table: every built-in class, in the order initClasses
// registers them. New classes are added here, in their place, as they land.
#include "nerio3d/arrays/nrData.h"
#include "nerio3d/core/nrObject.h"

namespace {
template <typename Class>
void registerClass() {
  if (!Class::classType) Class::getClassType();
}
}  // namespace

void nrObject::initClasses() {
  static bool done = false;
  if (done) return;
  done = true;
  getClassType();
  registerClass<nrData>();
}
