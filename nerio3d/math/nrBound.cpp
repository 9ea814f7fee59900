#include "nerio3d/math/nrBound.h"

#include "nerio3d/core/nrGlobal.h"

namespace {

void warn(const char* message) { nrGlobal::notify(nrGlobal::WARN, nrGlobal::USAGE, message); }

}  // namespace

void nrBound::around(const nrVec3f[], int) {
  warn("WARNING: Shouldn't be in pure virtual around(const nrVec3f pts[], int npt)");
}

void nrBound::around(const nrSphereBound*[], int) {
  warn("WARNING: Shouldn't be in pure virtual around(const nrSphereBound* sphs[], int nsph)");
}

void nrBound::around(const nrBoxBound*[], int) {
  warn("WARNING: Shouldn't be in pure virtual around(const nrBoxBound* boxes[], int nbox)");
}

void nrBound::around(const nrSphereBound*) {
  warn("WARNING: Shouldn't be in pure virtual around(const nrSphereBound* sph)");
}

void nrBound::around(const nrBoxBound*) {
  warn("WARNING: Shouldn't be in pure virtual around(const nrBoxBound* box)");
}

void nrBound::extendBy(const nrBoxBound*) {
  warn("WARNING: Shouldn't be in pure virtual extendBy(const nrBoxBound* box)");
}

void nrBound::extendBy(const nrSphereBound*) {
  warn("WARNING: Shouldn't be in pure virtual extendBy(const nrSphereBound* sph)");
}

int nrBound::contains(const nrBoxBound*) const {
  warn("WARNING: Shouldn't be in pure virtual contains(const nrBoxBound* box)");
  return 0;
}

int nrBound::contains(const nrSphereBound*) const {
  warn("WARNING: Shouldn't be in pure virtual contains(const nrSphereBound* sph)");
  return 0;
}
