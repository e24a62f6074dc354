#pragma once

#include <array>

namespace orvtest {

/// The eigenvalues of a symmetric tensor XX, YY, ZZ, XY, YZ, ZX, the largest first, by cyclic Jacobi rotations: another
/// way than the library's.
std::array<double, 3> eigenvalues(const double* tensor);

/// The equivalent stress after von Mises from the principal stresses: sqrt(((s1-s2)^2 + (s2-s3)^2 + (s3-s1)^2) / 2).
double equivalentStress(const std::array<double, 3>& principal);

} // namespace orvtest
