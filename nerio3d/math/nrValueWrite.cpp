// Text output of the math value types: components as space-separated numbers,
// in a form the scene reader reads back.
#include <cstdio>

#include "nerio3d/fields/nrOutput.h"
#include "nerio3d/math/nrMatrix4f.h"
#include "nerio3d/math/nrRotation.h"
#include "nerio3d/math/nrVec2f.h"
#include "nerio3d/math/nrVec3f.h"
#include "nerio3d/math/nrVec3s.h"
#include "nerio3d/math/nrVec4f.h"
#include "nerio3d/math/nrVec4ub.h"

void nrVec2f::write(nrOutput* out) const { fprintf(out->getStream(), "%g %g", vec[0], vec[1]); }

void nrVec3f::write(nrOutput* out) const {
  fprintf(out->getStream(), "%g %g %g", vec[0], vec[1], vec[2]);
}

void nrVec4f::write(nrOutput* out) const {
  fprintf(out->getStream(), "%g %g %g %g", vec[0], vec[1], vec[2], vec[3]);
}

void nrVec3s::write(nrOutput* out) const {
  fprintf(out->getStream(), "%d %d %d", vec[0], vec[1], vec[2]);
}

void nrVec4ub::write(nrOutput* out) const {
  fprintf(out->getStream(), "%u %u %u %u", vec[0], vec[1], vec[2], vec[3]);
}

void nrRotation::write(nrOutput* out) const {
  fprintf(out->getStream(), "%g %g %g %g", axis[0], axis[1], axis[2], angle);
}

void nrMatrix4f::write(nrOutput* out) const {
  FILE* f = out->getStream();
  for (int r = 0; r < 4; ++r)
    for (int c = 0; c < 4; ++c) fprintf(f, c == 0 && r == 0 ? "%g" : " %g", mat[r][c]);
}
