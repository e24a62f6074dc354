#include "LibUnstructGrid/VTOMathTensor.h"

#include "Tests/LibUnstructGrid/VectorSupport.h"
#include "Tests/Support/AssertStopper.h"

#include <algorithm>
#include <array>
#include <limits>
#include <vector>

using orvtest::AssertRecorder;
using orvtest::assertsUntil;
using orvtest::FailedAssert;
using orvtest::failedIn;
using orvtest::near;
using orvtest::PortableRandom;

namespace {

const std::string source = "LibUnstructGrid/VTOMathTensor";
constexpr double inf = std::numeric_limits<double>::infinity();
const double nan = std::nan("");

using Tensor = std::array<double, 6>;
using Values = std::array<double, 3>;

Tensor randomTensor(PortableRandom& random, double size) {
    Tensor t;
    for (double& component : t) {
        component = random.real(-size, size);
    }
    return t;
}

VTVector times(const Tensor& t, const VTVector& v) {
    return VTVector(t[0] * v.x + t[3] * v.y + t[5] * v.z, t[3] * v.x + t[1] * v.y + t[4] * v.z,
                    t[5] * v.x + t[4] * v.y + t[2] * v.z);
}

// Eigenvalues by Jacobi rotations, which have nothing in common with the roots of a cubic.
Values jacobi(const Tensor& t) {
    double a[3][3] = {{t[0], t[3], t[5]}, {t[3], t[1], t[4]}, {t[5], t[4], t[2]}};
    for (int sweep = 0; sweep < 50; ++sweep) {
        for (const auto& [p, q] : {std::pair(0, 1), {0, 2}, {1, 2}}) {
            if (a[p][q] == 0) {
                continue;
            }
            const double theta = (a[q][q] - a[p][p]) / (2 * a[p][q]);
            const double tangent = (theta < 0 ? -1 : 1) / (std::fabs(theta) + std::sqrt(theta * theta + 1));
            const double c = 1 / std::sqrt(tangent * tangent + 1);
            const double s = tangent * c;
            for (int k = 0; k < 3; ++k) {
                const double kp = a[k][p];
                const double kq = a[k][q];
                a[k][p] = c * kp - s * kq;
                a[k][q] = s * kp + c * kq;
            }
            for (int k = 0; k < 3; ++k) {
                const double pk = a[p][k];
                const double qk = a[q][k];
                a[p][k] = c * pk - s * qk;
                a[q][k] = s * pk + c * qk;
            }
        }
    }
    Values values = {a[0][0], a[1][1], a[2][2]};
    std::sort(values.rbegin(), values.rend());
    return values;
}

double vonMises(const std::vector<double>& data) {
    return VTComputeVonMises(data.data(), static_cast<int>(data.size()));
}

struct Principals {
    double returned = 0;
    std::array<double, 4> values = {77, 77, 77, 77};
    std::array<VTVector, 4> vectors = {VTVector(7, 7, 7), VTVector(7, 7, 7), VTVector(7, 7, 7), VTVector(7, 7, 7)};
};

Principals principals(const std::vector<double>& data, int which = 0) {
    Principals p;
    p.returned = VTComputePrincipalsPrivate(data.data(), static_cast<int>(data.size()), which, p.values.data(),
                                            p.vectors.data());
    return p;
}

TEST(VonMises, ClosedForms) {
    EXPECT_EQ(vonMises({100, 0, 0}), 100);
    EXPECT_EQ(vonMises({-100, 0, 0}), 100);
    EXPECT_EQ(vonMises({0, 100, 0}), 100);
    EXPECT_EQ(vonMises({100, 100, 0}), 100);
    EXPECT_DOUBLE_EQ(vonMises({100, -100, 0}), 100 * std::sqrt(3.0));
    EXPECT_DOUBLE_EQ(vonMises({0, 0, 10}), 10 * std::sqrt(3.0));
    EXPECT_EQ(vonMises({0, 0, 100, 0, 0, 0}), 100);
    EXPECT_EQ(vonMises({50, 50, 50, 0, 0, 0}), 0);
    for (int shear = 3; shear < 6; ++shear) {
        std::vector<double> data(6, 0.0);
        data[shear] = -10;
        EXPECT_DOUBLE_EQ(vonMises(data), 10 * std::sqrt(3.0));
    }
    // 1 + 4 + 9 - (2 + 6 + 3) + 3 (16 + 25 + 36)
    EXPECT_DOUBLE_EQ(vonMises({1, 2, 3, 4, 5, 6}), std::sqrt(234.0));
    // 1 + 4 - 2 + 27
    EXPECT_DOUBLE_EQ(vonMises({1, 2, 3}), std::sqrt(30.0));
}

TEST(VonMises, IsTheNormOfTheDeviator) {
    PortableRandom random(101);
    for (int i = 0; i < 200; ++i) {
        const Tensor t = randomTensor(random, 100);
        const double mean = (t[0] + t[1] + t[2]) / 3;
        double sum = 0;
        for (int k = 0; k < 3; ++k) {
            sum += (t[k] - mean) * (t[k] - mean) + 2 * t[3 + k] * t[3 + k];
        }
        ASSERT_NEAR(VTComputeVonMises(t.data(), 6), std::sqrt(1.5 * sum), 1e-10);
        const double plane[] = {t[0], t[1], t[3]};
        const double full[] = {t[0], t[1], 0, t[3], 0, 0};
        ASSERT_NEAR(VTComputeVonMises(plane, 3), VTComputeVonMises(full, 6), 1e-11);
    }
}

// Components that differ in the last digits: the radicand is a difference of equal numbers, and rounding makes it
// negative for some. A NaN would pass for a defined value.
TEST(VonMises, NearlyHydrostaticIsNeverNotANumber) {
    PortableRandom random(102);
    for (int i = 0; i < 2000; ++i) {
        const double mean = random.real(0.1, 1000);
        std::vector<double> data(6, 0.0);
        for (int k = 0; k < 3; ++k) {
            data[k] = mean * (1 + 1e-16 * random.integer(-8, 8));
        }
        const double value = vonMises(data);
        ASSERT_GE(value, 0.0);
        ASSERT_LT(value, 1e-5 * mean);
    }
}

TEST(VonMises, UndefinedComponentsMakeItUndefined) {
    for (int dim : {3, 6}) {
        for (int i = 0; i < dim; ++i) {
            for (double value : {VT_UNDEFINED_DOUBLE, 1e308, inf, nan}) {
                std::vector<double> data(dim, 1.0);
                data[i] = value;
                EXPECT_EQ(vonMises(data), VT_UNDEFINED_DOUBLE);
            }
            std::vector<double> data(dim, 0.0);
            data[i] = std::nextafter(1e308, 0.0);
            EXPECT_EQ(vonMises(data), inf) << "defined, and its square is too large";
        }
    }
}

TEST(VonMises, AssertsDataAndDimension) {
    AssertRecorder recorder;
    const double data[] = {1, 2, 3, 4, 5, 6};
    EXPECT_DOUBLE_EQ(VTComputeVonMises(data, 4), std::sqrt(234.0)) << "any other dimension is taken for 6";
    EXPECT_EQ(recorder.take(), failedIn(source, {"(iDim == 3) || (iDim == 6)"}));
    VTComputeVonMises(data, 3);
    VTComputeVonMises(data, 6);
    EXPECT_TRUE(recorder.take().empty());
    EXPECT_EQ(assertsUntil(2, [] { VTComputeVonMises(nullptr, 4); }),
              failedIn(source, {"pfData", "(iDim == 3) || (iDim == 6)"}));
}

TEST(Principals, PlaneClosedForms) {
    struct Row {
        std::vector<double> data;
        double first, second;
    };
    const Row rows[] = {{{100, 0, 0}, 100, 0},   {{0, 100, 0}, 100, 0},     {{-100, 0, 0}, 0, -100},
                        {{0, 0, 50}, 50, -50},   {{80, 30, 0}, 80, 30},     {{-30, -80, 0}, -30, -80},
                        {{30, -80, 0}, 30, -80}, {{50, 50, 0}, 50, 50},     {{-50, -50, 0}, -50, -50},
                        {{60, 20, 15}, 65, 15},  {{-60, -20, 15}, -15, -65}};
    for (const Row& row : rows) {
        const Principals p = principals(row.data);
        EXPECT_NEAR(p.values[0], row.first, 2e-5) << testing::PrintToString(row.data);
        EXPECT_NEAR(p.values[1], row.second, 2e-5) << testing::PrintToString(row.data);
        EXPECT_EQ(p.values[2], 77) << "two values are written";
        EXPECT_EQ(p.vectors[2], VTVector(7, 7, 7));
        EXPECT_EQ(p.returned, p.values[0]);
        EXPECT_EQ(principals(row.data, 1).returned, p.values[1]);
        EXPECT_GE(p.values[0], p.values[1]);
    }
}

// Uniaxial 100: p = 100^2 / 3, r = 200 / 3, u = 1 and phi = 0, so the smaller roots are r (cos(4.188790321350098) +
// 1/2) and r (cos(2.094395160675049) + 1/2). The first angle is 1.166e-7 above 4 pi / 3, where the cosine rises with
// slope sqrt(3) / 2; the second 5.83e-8 above 2 pi / 3, where it falls as fast. The larger error is kept as in plane,
// and the smaller one dropped.
TEST(Principals, AnglesHaveFloatPrecision) {
    const double slope = std::sqrt(3.0) / 2;
    const double fourThirds = 4.188790321350098 - 4 * std::acos(-1.0) / 3;
    const double twoThirds = 2.094395160675049 - 2 * std::acos(-1.0) / 3;
    EXPECT_NEAR(principals({100, 0, 0}).values[1], 200.0 / 3 * slope * fourThirds, 1e-11);
    EXPECT_GT(200.0 / 3 * slope * fourThirds, 6.7e-6);
    // In three dimensions, with the axis along z so that nothing is dropped, all roots are there.
    const Principals p = principals({0, 0, 100, 0, 0, 0});
    EXPECT_NEAR(p.values[0], 100, 1e-12);
    EXPECT_NEAR(p.values[1], 200.0 / 3 * slope * fourThirds, 1e-11);
    EXPECT_NEAR(p.values[2], -200.0 / 3 * slope * twoThirds, 1e-11);
}

TEST(Principals, ThreeDimensionalClosedForms) {
    struct Row {
        std::vector<double> data;
        Values values;
    };
    const Row rows[] = {
        {{1, 2, 3, 0, 0, 0}, {3, 2, 1}},       {{-1, -2, -3, 0, 0, 0}, {-1, -2, -3}},
        {{0, 0, 100, 0, 0, 0}, {100, 0, 0}},   {{0, 0, -100, 0, 0, 0}, {0, 0, -100}},
        {{50, 50, 50, 0, 0, 0}, {50, 50, 50}}, {{0, 0, 0, 0, 10, 0}, {10, 0, -10}},
        {{0, 0, 0, 0, 0, 10}, {10, 0, -10}},   {{2, 2, 2, 1, 1, 1}, {4, 1, 1}}, // ones everywhere plus the identity
        {{0, 0, 0, -1, -1, -1}, {1, 1, -2}},                                    // the identity less ones everywhere
        {{5, 5, 1, 0, 0, 0}, {5, 5, 1}},
    };
    for (const Row& row : rows) {
        const Principals p = principals(row.data);
        for (int i = 0; i < 3; ++i) {
            EXPECT_NEAR(p.values[i], row.values[i], 2e-5) << testing::PrintToString(row.data) << ' ' << i;
            EXPECT_EQ(principals(row.data, i).returned, p.values[i]);
        }
        EXPECT_EQ(p.values[3], 77);
        EXPECT_EQ(p.vectors[3], VTVector(7, 7, 7));
    }
}

// zz, yz and zx exactly 0: as in plane the root of the smallest magnitude becomes an exact 0 and comes last, whatever
// the signs of the others.
TEST(Principals, PlaneStressInThreeDimensionsPutsTheDroppedRootLast) {
    struct Row {
        std::vector<double> data;
        Values values;
    };
    const Row rows[] = {
        {{80, 30, 0, 0, 0, 0}, {80, 30, 0}},     {{80, -30, 0, 0, 0, 0}, {80, -30, 0}},
        {{-30, -80, 0, 0, 0, 0}, {-30, -80, 0}}, {{0, 0, 0, 50, 0, 0}, {50, -50, 0}},
        {{60, 20, 0, 15, 0, 0}, {65, 15, 0}},
    };
    for (const Row& row : rows) {
        const Principals p = principals(row.data);
        EXPECT_NEAR(p.values[0], row.values[0], 2e-5) << testing::PrintToString(row.data);
        EXPECT_NEAR(p.values[1], row.values[1], 2e-5) << testing::PrintToString(row.data);
        EXPECT_EQ(p.values[2], 0.0);
        EXPECT_EQ(principals(row.data, 2).returned, 0.0);
    }
    // One of the three that is not exactly 0, and all roots are in plain order.
    for (int component : {2, 4, 5}) {
        std::vector<double> data = {-30, -80, 0, 0, 0, 0};
        data[component] = 1e-30;
        const Principals p = principals(data);
        EXPECT_NEAR(p.values[0], 0, 1e-5);
        EXPECT_NEAR(p.values[1], -30, 1e-5);
        EXPECT_NEAR(p.values[2], -80, 1e-5);
    }
}

// The out-of-plane zero is known by its magnitude alone. In-plane values of 100 and 1e-6 lose the 1e-6 to the errors
// of the angles (6.7e-6 and -3.4e-6): what is left is one of these, not the true second value.
TEST(Principals, SmallInPlaneValueIsTakenForTheZero) {
    EXPECT_GT(std::fabs(principals({100, 1e-6, 0}).values[1] - 1e-6), 1e-6);
}

TEST(Principals, HydrostaticIsItsMean) {
    // 0.1 has no exact mean: the deviator is (r, r, r) with r = -1.4e-17, and the square of the root's radius, which is
    // -3 r^2, is negative and yet not below 1e-60.
    for (double mean : {0.1, 0.7, -0.1, 1e-3, 123.456, 1e10}) {
        const Principals p = principals({mean, mean, mean, 0, 0, 0});
        for (int i = 0; i < 3; ++i) {
            EXPECT_NEAR(p.values[i], mean, std::fabs(mean) * 1e-15) << mean;
        }
    }
}

TEST(Principals, AgreeWithJacobiRotations) {
    PortableRandom random(103);
    for (int i = 0; i < 500; ++i) {
        const Tensor t = randomTensor(random, 100);
        const Values expected = jacobi(t);
        double values[3];
        VTVector vectors[3];
        const double first = VTComputePrincipals3D(t.data(), values, vectors);
        ASSERT_EQ(first, values[0]);
        for (int k = 0; k < 3; ++k) {
            ASSERT_NEAR(values[k], expected[k], 5e-5);
            ASSERT_NEAR(vectors[k].Length(), 1, 1e-14);
            ASSERT_TRUE(near(times(t, vectors[k]), values[k] * vectors[k], 1e-3));
            ASSERT_EQ(VTComputePrincipal(t.data(), 6, k), values[k]);
        }
        ASSERT_GE(values[0], values[1]);
        ASSERT_GE(values[1], values[2]);
        ASSERT_NEAR(vectors[0] * vectors[1], 0, 1e-2);
    }
}

TEST(Principals, PlaneAgreesWithMohrsCircle) {
    PortableRandom random(104);
    for (int i = 0; i < 500; ++i) {
        const Tensor t = randomTensor(random, 100);
        const double shear = t[2] + (t[2] < 0 ? -1 : 1);
        const double data[] = {t[0], t[1], shear};
        const double centre = (t[0] + t[1]) / 2;
        const double radius = std::hypot((t[0] - t[1]) / 2, shear);
        double values[3] = {77, 77, 77};
        VTVector vectors[3];
        const double first = VTComputePrincipals2D(data, values, vectors);
        ASSERT_NEAR(values[0], centre + radius, 5e-5);
        ASSERT_NEAR(values[1], centre - radius, 5e-5);
        ASSERT_EQ(first, values[0]);
        ASSERT_EQ(VTComputePrincipal(data, 3, 1), values[1]);
        // With a shear the directions are those of the values.
        const Tensor full = {t[0], t[1], 0, shear, 0, 0};
        ASSERT_TRUE(near(times(full, vectors[0]), (centre + radius) * vectors[0], 1e-9));
        ASSERT_TRUE(near(times(full, vectors[1]), (centre - radius) * vectors[1], 1e-9));
    }
}

TEST(Principals, PlaneDirectionsAreInTheOrderOfTheTwoByTwoSolver) {
    const Principals p = principals({80, 30, 0});
    EXPECT_NEAR(p.values[0], 80, 1e-4);
    EXPECT_EQ(p.vectors[0], VT_YAXIS_VEC) << "though 80 lies along x";
    EXPECT_EQ(p.vectors[1], VT_XAXIS_VEC);
}

TEST(Principals, DirectionsOfADiagonalTensor) {
    const Principals p = principals({1, 2, 3, 0, 0, 0});
    EXPECT_TRUE(near(p.vectors[0], VT_ZAXIS_VEC, 1e-6));
    EXPECT_TRUE(near(p.vectors[1], VT_YAXIS_VEC, 1e-6));
    EXPECT_TRUE(near(p.vectors[2], VT_XAXIS_VEC, 1e-6));
}

// Rows (xx xy zx)(xy yy yz)(zx yz zz). A shear yz alone turns in the y, z plane, zx in the x, z plane.
TEST(Principals, ShearsTurnInTheirOwnPlanes) {
    const double half = std::sqrt(0.5);
    Principals p = principals({0, 0, 0, 0, 10, 0});
    EXPECT_NEAR(std::fabs(p.vectors[0] * VTVector(0, half, half)), 1, 1e-6);
    p = principals({0, 0, 0, 0, 0, 10});
    EXPECT_NEAR(std::fabs(p.vectors[0] * VTVector(half, 0, half)), 1, 1e-6);
    p = principals({0, 0, 0, 10, 0, 0});
    EXPECT_NEAR(std::fabs(p.vectors[0] * VTVector(half, half, 0)), 1, 1e-6);
    EXPECT_NEAR(std::fabs(p.vectors[1] * VTVector(half, -half, 0)), 1, 1e-6);
    EXPECT_NEAR(std::fabs(p.vectors[2].z), 1, 1e-6) << "the direction of the dropped root comes last with it";
}

TEST(Principals, FailedDirectionIsZero) {
    const Principals p = principals({50, 50, 50, 0, 0, 0});
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(p.vectors[i], VT_ZERO_VEC);
    }
}

TEST(Principals, ZeroTensorHasZeroValues) {
    AssertRecorder recorder;
    for (double tiny : {0.0, 9e-61, -9e-61}) {
        Principals p = principals({tiny, tiny, tiny, tiny, tiny, tiny}, 1);
        EXPECT_EQ(p.returned, 0.0);
        for (int i = 0; i < 3; ++i) {
            EXPECT_EQ(p.values[i], 0.0);
            EXPECT_EQ(p.vectors[i], VT_ZERO_VEC);
        }
        p = principals({tiny, tiny, tiny}, 1);
        EXPECT_EQ(p.returned, 0.0);
        EXPECT_EQ(p.values[1], 0.0);
        EXPECT_EQ(p.values[2], 77) << "two values and two vectors of a plane state";
        EXPECT_EQ(p.vectors[1], VT_ZERO_VEC);
        EXPECT_EQ(p.vectors[2], VTVector(7, 7, 7));
    }
    const double zero[6] = {};
    EXPECT_EQ(VTComputePrincipal(zero, 6, 2), 0.0);
    EXPECT_TRUE(recorder.take().empty());
    // One component of 1e-60 is enough to go on, here to a shear whose square vanishes.
    EXPECT_EQ(principals({0, 0, 0, 1e-60, 0, 0}).returned, 0.0);
    EXPECT_DOUBLE_EQ(principals({0, 0, 1e-25, 0, 0, 0}).returned, 1e-25);
}

// p of a shear s alone is s^2: 1e-60 and more is solved, less is three times the mean.
TEST(Principals, DeviatorLimit) {
    EXPECT_NEAR(principals({0, 0, 0, 0, 1.1e-30, 0}).values[0], 1.1e-30, 1e-36);
    EXPECT_EQ(principals({0, 0, 0, 0, 0.9e-30, 0}).values[0], 0.0);
    EXPECT_DOUBLE_EQ(principals({1, 1, 1, 0, 0.9e-30, 0}).values[0], 1.0);
}

TEST(Principals, UndefinedComponentsFillThreeOfEach) {
    for (int dim : {3, 6}) {
        for (int i = 0; i < dim; ++i) {
            for (double value : {VT_UNDEFINED_DOUBLE, 1e308, inf, nan}) {
                std::vector<double> data(dim, 1.0);
                data[i] = value;
                const Principals p = principals(data);
                EXPECT_EQ(p.returned, VT_UNDEFINED_DOUBLE);
                for (int k = 0; k < 3; ++k) {
                    EXPECT_EQ(p.values[k], VT_UNDEFINED_DOUBLE);
                    EXPECT_EQ(p.vectors[k], VT_UNDEFINED_VECTOR);
                }
                EXPECT_EQ(p.values[3], 77);
                EXPECT_EQ(VTComputePrincipal(data.data(), dim, 0), VT_UNDEFINED_DOUBLE) << "without outputs";
            }
        }
    }
}

TEST(Principals, OutputsAreOptional) {
    const double data[] = {1, 2, 3, 0, 0, 0};
    double values[3] = {77, 77, 77};
    EXPECT_NEAR(VTComputePrincipals3D(data, values, nullptr), 3, 1e-6);
    EXPECT_NEAR(values[2], 1, 1e-6);
    VTVector vectors[3];
    EXPECT_NEAR(VTComputePrincipals3D(data, nullptr, vectors), 3, 1e-6);
    EXPECT_TRUE(near(vectors[0], VT_ZAXIS_VEC, 1e-6));
    EXPECT_NEAR(VTComputePrincipals2D(data, nullptr, nullptr), 1.5 + std::hypot(0.5, 3), 1e-5);
}

TEST(Principals, AssertDataDimensionAndNumber) {
    const std::vector<std::string> texts = {"pfData", "(iDim == 3) || (iDim == 6)",
                                            "(iPrinc >= 0) && (iPrinc < ((iDim == 6) ? 3 : 2))"};
    EXPECT_EQ(assertsUntil(3, [] { VTComputePrincipalsPrivate(nullptr, 4, 2, nullptr, nullptr); }),
              failedIn(source, texts));
    EXPECT_EQ(assertsUntil(3, [] { VTComputePrincipalsPrivate(nullptr, 4, 3, nullptr, nullptr); }),
              failedIn(source, texts));
}

TEST(Principals, UnhandledNumberIsToldAndUndefined) {
    AssertRecorder recorder;
    const double data[] = {3, 2, 1, 0, 0, 0};
    const std::string number = "(iPrinc >= 0) && (iPrinc < ((iDim == 6) ? 3 : 2))";
    std::vector<FailedAssert> expected = failedIn(source, {number});
    expected.push_back({source, std::nullopt, "Unhandled case"});
    for (const auto& [dim, which] : {std::pair(3, 2), {3, -1}, {6, 3}, {6, -1}}) {
        double values[3] = {77, 77, 77};
        EXPECT_EQ(VTComputePrincipalsPrivate(data, dim, which, values, nullptr), VT_UNDEFINED_DOUBLE);
        EXPECT_EQ(recorder.take(), expected);
        EXPECT_NE(values[1], 77) << "the values are written all the same";
    }
    // Zero and undefined tensors answer before that.
    const double zero[6] = {};
    EXPECT_EQ(VTComputePrincipal(zero, 6, 3), 0.0);
    EXPECT_EQ(recorder.take(), failedIn(source, {number}));
}

TEST(Principals, OtherDimensionsAreReadAsSix) {
    AssertRecorder recorder;
    const double data[] = {3, 2, 1, 0, 0, 0};
    double values[3] = {77, 77, 77};
    EXPECT_NEAR(VTComputePrincipalsPrivate(data, 4, 1, values, nullptr), 2, 1e-6);
    EXPECT_EQ(recorder.take(), failedIn(source, {"(iDim == 3) || (iDim == 6)"}));
    EXPECT_EQ(values[2], 77) << "but only six components have a third value";
}

} // namespace
