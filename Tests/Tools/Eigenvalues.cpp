#include "Tests/Tools/Eigenvalues.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <utility>

namespace orvtest {

namespace {

using Matrix = std::array<std::array<double, 3>, 3>;

/// Turns the axes p and q until a[p][q] is zero.
void rotate(Matrix& a, std::size_t p, std::size_t q) {
    if (a[p][q] == 0) {
        return;
    }
    const double angle = std::atan2(2 * a[p][q], a[q][q] - a[p][p]) / 2;
    const double c = std::cos(angle);
    const double s = std::sin(angle);
    for (std::size_t k = 0; k < 3; ++k) {
        const double kp = a[k][p];
        const double kq = a[k][q];
        a[k][p] = c * kp - s * kq;
        a[k][q] = s * kp + c * kq;
    }
    for (std::size_t k = 0; k < 3; ++k) {
        const double pk = a[p][k];
        const double qk = a[q][k];
        a[p][k] = c * pk - s * qk;
        a[q][k] = s * pk + c * qk;
    }
}

} // namespace

std::array<double, 3> eigenvalues(const double* tensor) {
    Matrix a = {
        {{tensor[0], tensor[3], tensor[5]}, {tensor[3], tensor[1], tensor[4]}, {tensor[5], tensor[4], tensor[2]}}};
    for (int sweep = 0; sweep < 20; ++sweep) {
        rotate(a, 0, 1);
        rotate(a, 1, 2);
        rotate(a, 0, 2);
    }
    std::array<double, 3> values = {a[0][0], a[1][1], a[2][2]};
    std::sort(values.begin(), values.end(), std::greater<>());
    return values;
}

double equivalentStress(const std::array<double, 3>& principal) {
    const auto [s1, s2, s3] = principal;
    return std::sqrt(((s1 - s2) * (s1 - s2) + (s2 - s3) * (s2 - s3) + (s3 - s1) * (s3 - s1)) / 2);
}

} // namespace orvtest
