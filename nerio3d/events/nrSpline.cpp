#include "nerio3d/events/nrSpline.h"

#include <cmath>

#include "nerio3d/fields/nrMField.h"
#include "nerio3d/fields/nrSField.h"

NR_DEFINE_TYPE(nrSpline, nrEngine, "Spline") {
  nrMFFloat::addTypeField(type, "key", KEY_FIELD, &nrSpline::key);
  nrSFFloat::addTypeField(type, "fraction", FRACTION_FIELD, 0.0f, &nrSpline::fraction);
  nrSFMatrix4f::addTypeField(type, "basis", BASIS_FIELD, nrMatrix4f(0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0),
                             &nrSpline::basis);
  nrMFFloat::addTypeField(type, "weight", WEIGHT_FIELD, &nrSpline::weight);
  short in[] = {KEY_FIELD, FRACTION_FIELD, BASIS_FIELD}, out[] = {WEIGHT_FIELD};
  type->setEngineIO(3, in, 1, out);
}

nrSpline::nrSpline(nrType* type) : nrEngine(type) {
  initFieldDefaults(getClassType());
  if (type == classType) initEngine();
}

nrSpline::~nrSpline() { destroyFieldContents(getClassType()); }

void nrSpline::setFraction(float f) { static_cast<nrSFFloat*>(getField(FRACTION_FIELD))->set(f); }

float nrSpline::getFraction() const { return getFieldValue(fraction, FRACTION_FIELD); }

void nrSpline::setBasis(const nrMatrix4f& m) { static_cast<nrSFMatrix4f*>(getField(BASIS_FIELD))->set(m); }

void nrSpline::getBasis(nrMatrix4f& m) const { m = getFieldValue(basis, BASIS_FIELD); }

void nrSpline::setKey(const nrFloatArray& keys) { static_cast<nrMFFloat*>(getField(KEY_FIELD))->set(keys); }

void nrSpline::setWeightCount(int n) {
  static_cast<nrMFFloat*>(getField(WEIGHT_FIELD))->setCount(n > 0 ? static_cast<unsigned>(n) : 0);
  // The new weights are computed on the next read.
  dirtyFieldOutputs(getField(TRIGGER_FIELD));
}

const nrFloatArray& nrSpline::getWeight() const { return getFieldValue(weight, WEIGHT_FIELD); }

void nrSpline::eval() {
  unsigned count = weight.getCount();
  if (count == 0) return;
  nrMFFloat* out = static_cast<nrMFFloat*>(getField(WEIGHT_FIELD));
  unsigned n = key.getCount(), i = 0;
  while (i < n && key[i] <= fraction) ++i;
  out->fillRange(0, count, 0.0f);
  if (i == 0 || i == n) return;
  float d = key[i] - key[i - 1];
  if (std::fabs(d) >= nrEta) {
    float t = (fraction - key[i - 1]) / d;
    if (i - 1 < count) out->set(i - 1, 1 - t);
    if (i < count) out->set(i, t);
  } else if (i < count) {
    out->set(i, 1.0f);
  }
}
