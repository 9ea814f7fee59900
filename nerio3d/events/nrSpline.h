// Weights of the keys around a fraction, one per key: the two keys that
// bracket the fraction share 1 linearly, every other weight is 0. Unlike the
// interpolators it does not clamp: before the first key, and at or after the
// last, every weight is 0. The application sizes the weight list; an empty one
// is left alone. The basis matrix is kept for the application.
#pragma once

#include "nerio3d/events/nrEngine.h"
#include "nerio3d/math/nrMatrix4f.h"

class nrSpline : public nrEngine {
  NR_DECLARE_CONTAINER_TYPE(nrSpline)

  enum FieldEnum { KEY_FIELD = 3, FRACTION_FIELD, BASIS_FIELD, WEIGHT_FIELD };

  nrSpline() : nrSpline(getClassType()) {}
  explicit nrSpline(nrType* type);
  ~nrSpline() override;

  void setFraction(float f);
  float getFraction() const;
  void setBasis(const nrMatrix4f& m);
  void getBasis(nrMatrix4f& m) const;
  void setKey(const nrFloatArray& keys);
  // Sizes the weight list (and the lists it is routed to); the weights are
  // computed on the next read.
  void setWeightCount(int n);
  const nrFloatArray& getWeight() const;

  void eval() override;

 protected:
  nrFloatArray key;
  float fraction;
  nrMatrix4f basis;
  nrFloatArray weight;
};
