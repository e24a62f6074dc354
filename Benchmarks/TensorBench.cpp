// Stress tensors by the two million: von Mises beside a loop written for it, principal values beside a general
// symmetric eigenvalue solver.

#include "LibUnstructGrid/VTOMathTensor.h"

#include "Benchmarks/Claims.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <random>
#include <vector>

namespace {

constexpr std::size_t tensorCount = 2'000'000;

std::vector<double> tensors;
std::vector<double> results(3 * tensorCount);

void makeTensors() {
    std::mt19937 engine(3);
    tensors.resize(6 * tensorCount);
    for (double& component : tensors) {
        component = static_cast<double>(engine()) / 4294967296.0 * 200 - 100;
    }
}

/// The loop that a caller would write, missing values included.
void handWrittenVonMises() {
    const double* d = tensors.data();
    for (std::size_t i = 0; i < tensorCount; ++i, d += 6) {
        bool undefined = false;
        for (int k = 0; k < 6; ++k) {
            undefined = undefined || !(d[k] < 1e308);
        }
        results[i] =
            undefined ? 1.7976931348623157e308
                      : std::sqrt(d[0] * d[0] + d[1] * d[1] + d[2] * d[2] - (d[0] * d[1] + d[1] * d[2] + d[0] * d[2]) +
                                  3 * (d[3] * d[3] + d[4] * d[4] + d[5] * d[5]));
    }
}

/// Cyclic Jacobi rotations until nothing is left off the diagonal: the usual iterative solver for small symmetric
/// matrices.
void jacobi(const double* d, double* values) {
    double a[3][3] = {{d[0], d[3], d[5]}, {d[3], d[1], d[4]}, {d[5], d[4], d[2]}};
    constexpr int pairs[3][2] = {{0, 1}, {0, 2}, {1, 2}};
    const double scale = d[0] * d[0] + d[1] * d[1] + d[2] * d[2];
    for (int sweep = 0; sweep < 30; ++sweep) {
        const double off = a[0][1] * a[0][1] + a[0][2] * a[0][2] + a[1][2] * a[1][2];
        if (off <= 1e-30 * scale) {
            break;
        }
        for (const auto& [p, q] : pairs) {
            if (a[p][q] == 0) {
                continue;
            }
            const double theta = (a[q][q] - a[p][p]) / (2 * a[p][q]);
            const double t = (theta < 0 ? -1 : 1) / (std::fabs(theta) + std::sqrt(theta * theta + 1));
            const double c = 1 / std::sqrt(t * t + 1);
            const double s = t * c;
            const int r = 3 - p - q;
            const double pq = a[p][q];
            const double rp = a[r][p];
            const double rq = a[r][q];
            a[p][p] -= t * pq;
            a[q][q] += t * pq;
            a[p][q] = a[q][p] = 0;
            a[r][p] = a[p][r] = c * rp - s * rq;
            a[r][q] = a[q][r] = s * rp + c * rq;
        }
    }
    values[0] = a[0][0];
    values[1] = a[1][1];
    values[2] = a[2][2];
    std::sort(values, values + 3, std::greater<double>());
}

} // namespace

int main(int argc, char** argv) {
    orvbench::Claims claims(15);
    claims.add("VTComputeVonMises(2M)", 1.2,
               {makeTensors,
                [] {
                    for (std::size_t i = 0; i < tensorCount; ++i) {
                        results[i] = VTComputeVonMises(tensors.data() + 6 * i, 6);
                    }
                }},
               {makeTensors, handWrittenVonMises});
    claims.add("VTComputePrincipals3D(2M)", 0.25,
               {makeTensors,
                [] {
                    for (std::size_t i = 0; i < tensorCount; ++i) {
                        VTComputePrincipals3D(tensors.data() + 6 * i, results.data() + 3 * i, nullptr);
                    }
                }},
               {makeTensors, [] {
                    for (std::size_t i = 0; i < tensorCount; ++i) {
                        jacobi(tensors.data() + 6 * i, results.data() + 3 * i);
                    }
                }});
    return claims.run(argc, argv);
}
