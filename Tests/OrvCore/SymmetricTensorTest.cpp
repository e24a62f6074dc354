#include "OrvCore/SymmetricTensor.h"

#include "OrvCore/Defines.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>
#include <random>

using orv::SymmetricTensor;
using orv::Vec3d;

namespace {

using Components = std::array<double, 6>;
using Values = std::array<double, 3>;

SymmetricTensor tensorOf(const Components& c) {
    SymmetricTensor tensor;
    tensor.set(c[0], c[1], c[2], c[3], c[4], c[5]);
    return tensor;
}

Values valuesOf(const SymmetricTensor& t) {
    return {t.firstPrincipalValue(), t.secondPrincipalValue(), t.thirdPrincipalValue()};
}

std::array<Vec3d, 3> vectorsOf(const SymmetricTensor& t) {
    return {t.firstPrincipalVector(), t.secondPrincipalVector(), t.thirdPrincipalVector()};
}

void expectValues(const Components& c, const Values& expected, double tolerance = 2e-5) {
    const Values values = valuesOf(tensorOf(c));
    for (int i = 0; i < 3; ++i) {
        EXPECT_NEAR(values[i], expected[i], tolerance) << testing::PrintToString(c) << ' ' << i;
    }
}

Vec3d times(const Components& c, const Vec3d& v) {
    return Vec3d(c[0] * v.x() + c[3] * v.y() + c[5] * v.z(), c[3] * v.x() + c[1] * v.y() + c[4] * v.z(),
                 c[5] * v.x() + c[4] * v.y() + c[2] * v.z());
}

TEST(SymmetricTensor, StartsAtZero) {
    const SymmetricTensor tensor;
    EXPECT_EQ(tensor.vonMises(), 0.0);
    EXPECT_EQ(valuesOf(tensor), (Values{0, 0, 0}));
    for (const Vec3d& vector : vectorsOf(tensor)) {
        EXPECT_EQ(vector, Vec3d());
    }
}

TEST(SymmetricTensor, Uniaxial) {
    for (int axis = 0; axis < 3; ++axis) {
        Components tension = {};
        tension[axis] = 100;
        EXPECT_DOUBLE_EQ(tensorOf(tension).vonMises(), 100);
        expectValues(tension, {100, 0, 0});
        EXPECT_NEAR(std::fabs(tensorOf(tension).firstPrincipalVector()[axis]), 1, 1e-6);
    }
    // Along x and y the state is one of plane stress, whose dropped zero comes last; along z it is not.
    expectValues({-100, 0, 0, 0, 0, 0}, {0, -100, 0});
    EXPECT_EQ(tensorOf({-100, 0, 0, 0, 0, 0}).thirdPrincipalValue(), 0.0);
    expectValues({0, 0, -100, 0, 0, 0}, {0, 0, -100});
    EXPECT_DOUBLE_EQ(tensorOf({0, 0, -100, 0, 0, 0}).vonMises(), 100);
}

TEST(SymmetricTensor, Hydrostatic) {
    for (double mean : {50.0, -50.0, 0.1, 1e-9, 1e12}) {
        const Components c = {mean, mean, mean, 0, 0, 0};
        EXPECT_EQ(tensorOf(c).vonMises(), 0.0);
        expectValues(c, {mean, mean, mean}, std::fabs(mean) * 1e-15);
    }
    EXPECT_EQ(tensorOf({50, 50, 50, 0, 0, 0}).firstPrincipalVector(), Vec3d()) << "no direction is special";
}

// A shear of 10 has the principal values 10 and -10 along the diagonals of its own plane.
TEST(SymmetricTensor, PureShear) {
    const double half = std::sqrt(0.5);
    const Vec3d diagonals[3][2] = {{Vec3d(half, half, 0), Vec3d(half, -half, 0)},
                                   {Vec3d(0, half, half), Vec3d(0, half, -half)},
                                   {Vec3d(half, 0, half), Vec3d(half, 0, -half)}};
    for (int shear = 0; shear < 3; ++shear) {
        Components c = {};
        c[3 + shear] = 10;
        const SymmetricTensor tensor = tensorOf(c);
        EXPECT_DOUBLE_EQ(tensor.vonMises(), 10 * std::sqrt(3.0));
        // XY alone is a plane stress.
        const bool plane = shear == 0;
        expectValues(c, plane ? Values{10, -10, 0} : Values{10, 0, -10});
        EXPECT_NEAR(std::fabs(tensor.firstPrincipalVector() * diagonals[shear][0]), 1, 1e-6);
        const Vec3d last = plane ? tensor.secondPrincipalVector() : tensor.thirdPrincipalVector();
        EXPECT_NEAR(std::fabs(last * diagonals[shear][1]), 1, 1e-6);
    }
}

TEST(SymmetricTensor, RepeatedRoots) {
    expectValues({2, 2, 2, 1, 1, 1}, {4, 1, 1});
    expectValues({0, 0, 0, -1, -1, -1}, {1, 1, -2});
    expectValues({5, 5, 1, 0, 0, 0}, {5, 5, 1});
    expectValues({5, 5, 0, 0, 0, 0}, {5, 5, 0});
    expectValues({-5, -5, 0, 0, 0, 0}, {-5, -5, 0});
    // The simple value has its direction all the same.
    const Vec3d space = Vec3d(1, 1, 1) / std::sqrt(3.0);
    EXPECT_NEAR(std::fabs(tensorOf({2, 2, 2, 1, 1, 1}).firstPrincipalVector() * space), 1, 1e-6);
    EXPECT_NEAR(std::fabs(tensorOf({0, 0, 0, -1, -1, -1}).thirdPrincipalVector() * space), 1, 1e-6);
}

TEST(SymmetricTensor, TakesItsComponentsInItemOrder) {
    // 1 + 4 + 9 - (2 + 6 + 3) + 3 (16 + 25 + 36)
    EXPECT_DOUBLE_EQ(tensorOf({1, 2, 3, 4, 5, 6}).vonMises(), std::sqrt(234.0));
    SymmetricTensor tensor = tensorOf({1, 2, 3, 4, 5, 6});
    tensor.set(7, 0, 0, 0, 0, 0);
    EXPECT_DOUBLE_EQ(tensor.vonMises(), 7) << "set replaces all";
}

TEST(SymmetricTensor, UndefinedComponentsMakeAllUndefined) {
    const double inf = std::numeric_limits<double>::infinity();
    for (double undefined : {orv::UNDEFINED_DOUBLE, 1e308, inf, std::nan("")}) {
        for (int i = 0; i < 6; ++i) {
            Components c = {1, 2, 3, 4, 5, 6};
            c[i] = undefined;
            const SymmetricTensor tensor = tensorOf(c);
            EXPECT_EQ(tensor.vonMises(), orv::UNDEFINED_DOUBLE);
            for (double value : valuesOf(tensor)) {
                EXPECT_EQ(value, orv::UNDEFINED_DOUBLE);
            }
            for (const Vec3d& vector : vectorsOf(tensor)) {
                EXPECT_EQ(vector, orv::UNDEFINED_VECTOR);
            }
        }
    }
}

// Each vector is stretched by its value, and the invariants are those of the components: trace, and sum of squares.
TEST(SymmetricTensor, RandomTensors) {
    std::mt19937 engine(7);
    const auto real = [&] { return static_cast<double>(engine()) / 4294967296.0 * 200 - 100; };
    for (int round = 0; round < 300; ++round) {
        Components c;
        for (double& component : c) {
            component = real();
        }
        const SymmetricTensor tensor = tensorOf(c);
        const Values values = valuesOf(tensor);
        const std::array<Vec3d, 3> vectors = vectorsOf(tensor);
        double trace = 0;
        double squares = 0;
        for (int i = 0; i < 3; ++i) {
            ASSERT_NEAR(vectors[i].length(), 1, 1e-14);
            ASSERT_NEAR((times(c, vectors[i]) - values[i] * vectors[i]).length(), 0, 1e-3);
            trace += values[i];
            squares += values[i] * values[i];
        }
        ASSERT_NEAR(trace, c[0] + c[1] + c[2], 1e-4);
        double expected = 0;
        for (int i = 0; i < 3; ++i) {
            expected += c[i] * c[i] + 2 * c[3 + i] * c[3 + i];
        }
        ASSERT_NEAR(squares, expected, 1e-2);
        const double a = values[0] - values[1];
        const double b = values[1] - values[2];
        const double d = values[2] - values[0];
        ASSERT_NEAR(tensor.vonMises(), std::sqrt((a * a + b * b + d * d) / 2), 1e-3);
    }
}

} // namespace
