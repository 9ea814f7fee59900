#include "nerio3d/events/nrInterpolator.h"

#include "nerio3d/fields/nrMField.h"
#include "nerio3d/fields/nrSField.h"

NR_DEFINE_TYPE(nrInterpolator, nrEngine, "Interpolator") {
  nrSFFloat::addTypeField(type, "fraction", FRACTION_FIELD, 0.0f, &nrInterpolator::fraction);
  nrMFFloat::addTypeField(type, "key", KEY_FIELD, &nrInterpolator::key);
  short in[] = {FRACTION_FIELD, KEY_FIELD};
  type->setEngineIO(2, in, 0, nullptr);
}

nrInterpolator::nrInterpolator(nrType* type) : nrEngine(type) {
  initFieldDefaults(getClassType());
  if (type == classType) initEngine();
}

nrInterpolator::~nrInterpolator() { destroyFieldContents(getClassType()); }

void nrInterpolator::setFraction(float f) { static_cast<nrSFFloat*>(getField(FRACTION_FIELD))->set(f); }

float nrInterpolator::getFraction() const { return getFieldValue(fraction, FRACTION_FIELD); }

void nrInterpolator::setKey(const nrFloatArray& keys) { static_cast<nrMFFloat*>(getField(KEY_FIELD))->set(keys); }

int nrInterpolator::getParam(float& t) {
  unsigned n = key.getCount();
  t = 1;
  if (n == 0) return -1;
  float f = fraction;
  // A NaN fraction or first key compares false both ways: it takes the first value.
  if (!(key[0] < f)) return 0;
  if (key[n - 1] <= f) return static_cast<int>(n - 1);
  unsigned i = 1;
  for (; i < n - 1 && key[i] <= f; ++i)
    if (key[i] == f) return static_cast<int>(i);
  t = (f - key[i - 1]) / (key[i] - key[i - 1]);
  return static_cast<int>(i);
}

void nrInterpolator::interpolateVectors(const nrVec3fArray& keyValue, nrMFVec3f* value, bool normalise) {
  unsigned keys = key.getCount();
  unsigned n = keys ? keyValue.getCount() / keys : 0;
  if (n == 0) return;
  float t;
  unsigned i = static_cast<unsigned>(getParam(t));
  // A shorter key value list than last time leaves no stale entries behind.
  if (value->getStorage()->getCount() > n) value->setCount(n);
  if (t == 1) {
    value->setRange(0, n, &keyValue[i * n]);
    return;
  }
  for (unsigned j = 0; j < n; ++j) {
    nrVec3f v = lerp(keyValue[(i - 1) * n + j], keyValue[i * n + j], t);
    if (normalise) v.normalize();
    value->set(j, v);
  }
}
