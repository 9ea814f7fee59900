// Library-wide numeric tolerances, writable so an application can tune them.
#pragma once

// Pivot threshold of LU decomposition, closeness of a homogeneous w to 1,
// degenerate-axis test of quaternions.
extern float nrEpsilon;
// Determinant threshold of the 3x3 inversions, floor of a homogeneous w.
extern float nrEta;
