#include "nerio3d/events/nrTransformEng.h"

#include "nerio3d/fields/nrSField.h"

NR_DEFINE_TYPE(nrTransformEng, nrEngine, "TransformEng") {
  nrMatrix4f identity;
  identity.makeIdent();
  nrSFMatrix4f::addTypeField(type, "matrix", MATRIX_FIELD, identity, &nrTransformEng::matrix);
  short in[] = {MATRIX_FIELD};
  type->setEngineIO(1, in, 0, nullptr);
}

nrTransformEng::nrTransformEng(nrType* type) : nrEngine(type) {
  initFieldDefaults(getClassType());
  if (type == classType) initEngine();
}

nrTransformEng::~nrTransformEng() { destroyFieldContents(getClassType()); }

void nrTransformEng::setMatrix(const nrMatrix4f& m) { static_cast<nrSFMatrix4f*>(getField(MATRIX_FIELD))->set(m); }

void nrTransformEng::getMatrix(nrMatrix4f& m) const { m = getFieldValue(matrix, MATRIX_FIELD); }
