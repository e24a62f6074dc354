#include "LibUnstructGrid/VTOMathShepard.h"

#include "Tests/LibUnstructGrid/VectorSupport.h"

#include <numeric>
#include <vector>

using orvtest::near;
using orvtest::PortableRandom;
using orvtest::randomVector;

namespace {

/// The interpolation over both kinds of node, which have to agree: the coordinates below are exact in float.
class Shepard : public testing::TestWithParam<bool> {
protected:
    void run(const std::vector<VTVector>& nodes, std::vector<int> indexes, int power, const VTVector& point) {
        const double* values = m_values.empty() ? nullptr : m_values.data();
        const VTVector* vectors = m_vectors.empty() ? nullptr : m_vectors.data();
        const int count = static_cast<int>(indexes.size());
        indexes.push_back(0); // an empty list has no address
        if (!GetParam()) {
            VTShepard3D(nodes.data(), indexes.data(), count, values, vectors, power, &point, &m_result,
                        &m_vectorResult);
            return;
        }
        rvf::Array<rvf::Vector3<float>> floats(nodes.size());
        for (std::size_t i = 0; i < nodes.size(); ++i) {
            floats[i].set(static_cast<float>(nodes[i].x), static_cast<float>(nodes[i].y),
                          static_cast<float>(nodes[i].z));
        }
        const std::vector<unsigned int> unsignedIndexes(indexes.begin(), indexes.end());
        VTShepard3D(&floats, unsignedIndexes.data(), count, values, vectors, power, &point, &m_result, &m_vectorResult);
    }

    std::vector<double> m_values;
    std::vector<VTVector> m_vectors;
    double m_result = 77;
    VTVector m_vectorResult{7, 7, 7};
};

INSTANTIATE_TEST_SUITE_P(Nodes, Shepard, testing::Values(false, true),
                         [](const auto& test) { return test.param ? "Float" : "Double"; });

const std::vector<VTVector> corners = {{1, 0, 0}, {0, 2, 0}, {0, 0, 4}, {-8, 0, 0}};

// Distances 1, 2 and 4: weights 1, 1/4 and 1/16 with the power 1, whose sum is 21/16.
TEST_P(Shepard, PowerOneWeighsByTheSquaredDistance) {
    m_values = {16, 32, 64, 999};
    m_vectors = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {9, 9, 9}};
    run(corners, {0, 1, 2}, 1, VT_ZERO_VEC);
    EXPECT_NEAR(m_result, (16 + 32 / 4. + 64 / 16.) * 16 / 21, 1e-14);
    EXPECT_TRUE(near(m_vectorResult, VTVector(16 / 21., 4 / 21., 1 / 21.), 1e-15));
}

// With any other power 1, 1/16 and 1/256: the sum is 273/256.
TEST_P(Shepard, OtherPowersWeighByTheFourthPower) {
    m_values = {16, 32, 64, 999};
    for (int power : {2, 3, 0, -1}) {
        run(corners, {0, 1, 2}, power, VT_ZERO_VEC);
        EXPECT_NEAR(m_result, (16 + 32 / 16. + 64 / 256.) * 256 / 273, 1e-14);
    }
}

TEST_P(Shepard, ReadsValuesByNode) {
    m_values = {16, 32, 64, 128};
    run(corners, {3}, 1, VT_ZERO_VEC);
    EXPECT_EQ(m_result, 128);
    run(corners, {2, 1}, 1, VT_ZERO_VEC);
    EXPECT_NEAR(m_result, (64 / 16. + 32 / 4.) * 16 / 5, 1e-14);
}

TEST_P(Shepard, ExactHitIsThatNodesValue) {
    m_values = {16, 32, 64, 128};
    m_vectors = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {9, 9, 9}};
    run(corners, {0, 1, 2, 3}, 1, corners[2]);
    EXPECT_EQ(m_result, 64) << "whatever the first two are";
    EXPECT_EQ(m_vectorResult, VTVector(0, 0, 1));
    m_vectors.clear();
    run(corners, {0, 1, 2, 3}, 1, corners[2]);
    EXPECT_EQ(m_result, 64);
    EXPECT_EQ(m_vectorResult, VT_ZERO_VEC) << "no input: zeroed";
}

// A difference of less than 1e-18 counts as none, and so does, squared again, a squared distance of less than 1e-18.
TEST_P(Shepard, NearEnoughIsAHit) {
    m_values = {16, 32, 64, 128};
    const std::vector<VTVector> nodes = {{0, 0, 0}, {1, 0, 0}};
    run(nodes, {1, 0}, 1, VTVector(0.9e-18, -0.9e-18, 0.9e-18));
    EXPECT_EQ(m_result, 16);
    run(nodes, {1, 0}, 1, VTVector(1.1e-18, 0, 0));
    EXPECT_NEAR(m_result, 16, 1e-10) << "by its weight, then";
    run(nodes, {1, 0}, 2, VTVector(0.9e-9, 0, 0));
    EXPECT_EQ(m_result, 16);
    // At 2e-3 the fourth power has a weight of 6e10, no more.
    run(nodes, {1, 0}, 2, VTVector(2e-3, 0, 0));
    EXPECT_NE(m_result, 16);
    run(nodes, {1, 0}, 1, VTVector(0.9e-3, 0, 0));
    EXPECT_NE(m_result, 16) << "the wider hit is not for the power 1";
}

TEST_P(Shepard, SixteenNeighboursTakePart) {
    std::vector<VTVector> nodes;
    std::vector<int> indexes(20);
    std::iota(indexes.begin(), indexes.end(), 0);
    for (int i = 0; i < 20; ++i) {
        nodes.push_back(VTVector(i, 0, 0));
        m_values.push_back(i < 16 ? 5 : 1000);
    }
    run(nodes, indexes, 1, VTVector(0, 3, 0));
    EXPECT_NEAR(m_result, 5, 1e-13);
    run(nodes, indexes, 1, nodes[16]);
    EXPECT_NEAR(m_result, 5, 1e-13) << "a hit on the 17th is none";
    run(nodes, indexes, 1, nodes[15]);
    EXPECT_EQ(m_result, 5);
    m_values[15] = 6;
    run(nodes, indexes, 1, nodes[15]);
    EXPECT_EQ(m_result, 6) << "the 16th is the last";
}

TEST_P(Shepard, NoNeighboursGiveZero) {
    m_values = {16, 32, 64, 128};
    run(corners, {}, 1, VT_ZERO_VEC);
    EXPECT_EQ(m_result, 0);
    EXPECT_EQ(m_vectorResult, VT_ZERO_VEC);
}

TEST_P(Shepard, MissingInputsGiveZero) {
    run(corners, {0, 1}, 1, VT_ZERO_VEC);
    EXPECT_EQ(m_result, 0);
    EXPECT_EQ(m_vectorResult, VT_ZERO_VEC);
}

TEST(ShepardPointers, OutputsAreOptional) {
    const int indexes[] = {0, 1};
    const double values[] = {4, 4, 4, 4};
    const VTVector vectors[] = {{2, 0, 0}, {2, 0, 0}, {2, 0, 0}, {2, 0, 0}};
    double result = 77;
    VTVector vectorResult(7, 7, 7);
    VTShepard3D(corners.data(), indexes, 2, values, vectors, 1, &VT_ZERO_VEC, &result, nullptr);
    EXPECT_NEAR(result, 4, 1e-15);
    VTShepard3D(corners.data(), indexes, 2, values, vectors, 1, &VT_ZERO_VEC, nullptr, &vectorResult);
    EXPECT_TRUE(near(vectorResult, VTVector(2, 0, 0), 1e-15));
    VTShepard3D(corners.data(), indexes, 2, values, vectors, 1, &corners[1], nullptr, nullptr);
}

TEST(ShepardPointers, WithoutNodesIndexesOrPointNothingIsWritten) {
    const int indexes[] = {0};
    const unsigned int unsignedIndexes[] = {0};
    rvf::Array<rvf::Vector3<float>> floats(1);
    double result = 77;
    VTVector v(7, 7, 7);
    const VTVector* noNodes = nullptr;
    const rvf::Array<rvf::Vector3<float>>* noFloats = nullptr;
    VTShepard3D(noNodes, indexes, 1, nullptr, nullptr, 1, &v, &result, &v);
    VTShepard3D(corners.data(), nullptr, 1, nullptr, nullptr, 1, &v, &result, &v);
    VTShepard3D(corners.data(), indexes, 1, nullptr, nullptr, 1, nullptr, &result, &v);
    VTShepard3D(noFloats, unsignedIndexes, 1, nullptr, nullptr, 1, &v, &result, &v);
    VTShepard3D(&floats, nullptr, 1, nullptr, nullptr, 1, &v, &result, &v);
    VTShepard3D(&floats, unsignedIndexes, 1, nullptr, nullptr, 1, nullptr, &result, &v);
    EXPECT_EQ(result, 77);
    EXPECT_EQ(v, VTVector(7, 7, 7));
}

// 0.1f is widened, not the point narrowed: at the double 0.1 the node is 1.49e-9 away, and no hit.
TEST(ShepardPointers, FloatNodesAreWidened) {
    rvf::Array<rvf::Vector3<float>> floats(2);
    floats[0].set(0.1f, 0, 0);
    floats[1].set(0.1f, 1e-9f, 0);
    const unsigned int indexes[] = {0, 1};
    const double values[] = {1, 2};
    double result = 77;
    const VTVector point(0.1, 0, 0);
    VTShepard3D(&floats, indexes, 2, values, nullptr, 1, &point, &result, nullptr);
    const double x = static_cast<double>(0.1f) - 0.1;
    const double y = static_cast<double>(1e-9f);
    const double near = 1 / (x * x);
    const double far = 1 / (x * x + y * y);
    EXPECT_NEAR(result, (near + 2 * far) / (near + far), 1e-12);
    const VTVector widened(static_cast<double>(0.1f), 0, 0);
    VTShepard3D(&floats, indexes, 2, values, nullptr, 1, &widened, &result, nullptr);
    EXPECT_EQ(result, 1);
}

TEST(ShepardPointers, ValuesStayBetweenThoseOfTheNeighbours) {
    PortableRandom random(111);
    for (int round = 0; round < 100; ++round) {
        std::vector<VTVector> nodes;
        std::vector<double> values;
        std::vector<int> indexes;
        for (int i = 0; i < 10; ++i) {
            nodes.push_back(randomVector(random, 3));
            values.push_back(random.real(2, 5));
            indexes.push_back(i);
        }
        double result = 77;
        const VTVector point = randomVector(random, 3);
        VTShepard3D(nodes.data(), indexes.data(), 10, values.data(), nullptr, 2, &point, &result, nullptr);
        ASSERT_GE(result, 2);
        ASSERT_LE(result, 5);
    }
}

} // namespace
