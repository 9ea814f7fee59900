// Base of the morph engines: value is the sum of k input lists of n vectors
// each, scaled by the k weights (weight i scales entries i*n to i*n + n - 1 of
// the input, n = input count / weight count). Routing a spline's weights into
// it morphs between key shapes. Without weights, or with fewer inputs than
// weights, it sets nothing.
#pragma once

#include "nerio3d/events/nrEngine.h"

class nrMorphEng : public nrEngine {
  NR_DECLARE_TYPE(nrMorphEng)

  enum FieldEnum { WEIGHT_FIELD = 3, INPUT_FIELD, VALUE_FIELD };

  nrMorphEng() : nrMorphEng(getClassType()) {}
  explicit nrMorphEng(nrType* type);
  ~nrMorphEng() override;

  void setWeight(const nrFloatArray& weights);

 protected:
  // Sets the weighted sum of input, vectors of N floats, into the output list field.
  template <int N, typename Field, typename Array>
  void morph(const Array& input, Field* value) {
    unsigned k = weight.getCount();
    unsigned n = k ? input.getCount() / k : 0;
    if (n == 0) return;
    Array result(n);
    result.setCount(n);
    for (unsigned j = 0; j < n; ++j) {
      typename Array::ElementType sum;
      for (int c = 0; c < N; ++c) sum[c] = 0;
      // Splines leave most weights at 0: those terms are skipped.
      for (unsigned i = 0; i < k; ++i)
        if (weight[i] != 0)
          for (int c = 0; c < N; ++c) sum[c] += weight[i] * input[i * n + j][c];
      result[j] = sum;
    }
    value->set(result);
  }

  nrFloatArray weight;
};
