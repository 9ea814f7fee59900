// Base of the transform engines: lists of vectors transformed by `matrix`.
#pragma once

#include "nerio3d/events/nrEngine.h"
#include "nerio3d/math/nrMatrix4f.h"

class nrTransformEng : public nrEngine {
  NR_DECLARE_TYPE(nrTransformEng)

  enum FieldEnum { MATRIX_FIELD = 3, INPUT_FIELD, VALUE_FIELD };

  nrTransformEng() : nrTransformEng(getClassType()) {}
  explicit nrTransformEng(nrType* type);
  ~nrTransformEng() override;

  void setMatrix(const nrMatrix4f& m);
  void getMatrix(nrMatrix4f& m) const;

 protected:
  nrMatrix4f matrix;
};
