// LU decomposition and back-substitution shared by the 3x3 and 4x4 inversions.
#pragma once

#include <algorithm>
#include <cmath>
#include <utility>

#include "nerio3d/math/nrTolerance.h"

namespace nrDetail {

// Crout's method with partial pivoting and implicit scaling of each row by its
// largest absolute element. a becomes L (unit diagonal, below) and U (on and
// above the diagonal) of the row-permuted matrix; index records the row
// swaps and sign their parity. Returns 0 when a row's largest element, or a
// pivot relative to its row's scale, is below nrEpsilon.
template <int N>
int luDecompose(float (*a)[N], int* index, float* sign) {
  float scale[N];
  *sign = 1.0f;
  for (int i = 0; i < N; ++i) {
    float big = 0.0f;
    for (int j = 0; j < N; ++j) big = std::max(big, std::fabs(a[i][j]));
    if (big < nrEpsilon) return 0;
    scale[i] = 1.0f / big;
  }
  for (int j = 0; j < N; ++j) {
    for (int i = 0; i < j; ++i) {
      double sum = a[i][j];
      for (int k = 0; k < i; ++k) sum -= double(a[i][k]) * a[k][j];
      a[i][j] = float(sum);
    }
    float big = 0.0f;
    int imax = j;
    for (int i = j; i < N; ++i) {
      double sum = a[i][j];
      for (int k = 0; k < j; ++k) sum -= double(a[i][k]) * a[k][j];
      a[i][j] = float(sum);
      float scaled = scale[i] * std::fabs(a[i][j]);
      if (scaled >= big) {
        big = scaled;
        imax = i;
      }
    }
    if (imax != j) {
      for (int k = 0; k < N; ++k) std::swap(a[imax][k], a[j][k]);
      *sign = -*sign;
      scale[imax] = scale[j];
    }
    index[j] = imax;
    if (big < nrEpsilon) return 0;
    for (int i = j + 1; i < N; ++i) a[i][j] /= a[j][j];
  }
  return 1;
}

// Solves A x = b in place in b, given the decomposition of A from luDecompose.
template <int N>
void luBackSubstitute(const float (*lu)[N], const int* index, float* b) {
  for (int i = 0; i < N; ++i) {
    int p = index[i];
    double sum = b[p];
    b[p] = b[i];
    for (int k = 0; k < i; ++k) sum -= double(lu[i][k]) * b[k];
    b[i] = float(sum);
  }
  for (int i = N - 1; i >= 0; --i) {
    double sum = b[i];
    for (int k = i + 1; k < N; ++k) sum -= double(lu[i][k]) * b[k];
    b[i] = float(sum / lu[i][i]);
  }
}

}  // namespace nrDetail
