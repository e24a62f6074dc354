#include "OrvUnstructGrid/DataPartValues.h"

#include "Tests/Support/AssertRecorder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>

using namespace orv::ug;
using orv::UNDEFINED_DOUBLE;
using orv::UNDEFINED_VECTOR;
using orv::Vec3d;
using orvtest::AssertRecorder;
using orvtest::FailedAssert;

namespace {

const std::vector<FailedAssert> beyond = {{"OrvUnstructGrid/DataPartValues", "index < itemCount()", {}}};
const double nan = std::numeric_limits<double>::quiet_NaN();
const double infinity = std::numeric_limits<double>::infinity();

void fill(DataPartValues* part, const std::vector<double>& values) {
    part->allocate(values.size() / part->dimension());
    std::copy(values.begin(), values.end(), part->values());
}

TEST(DataPartValues, IsEmptyAtFirst) {
    DataPartScalar part;
    EXPECT_EQ(part.itemCount(), 0u);
    EXPECT_EQ(part.values(), nullptr);
    EXPECT_TRUE(part.span().empty());
    EXPECT_EQ(part.byteCount(), 0u);
    part.fillUndefined();
}

TEST(DataPartValues, HasTheDimensionOfItsKind) {
    EXPECT_EQ(DataPartScalar().dimension(), 1u);
    EXPECT_EQ(DataPartVector().dimension(), 3u);
    EXPECT_EQ(DataPartDisplacement().dimension(), 3u);
    EXPECT_EQ(DataPartSymmetricTensor().dimension(), 6u);
}

TEST(DataPartValues, AllocatingTheSameCountKeepsTheValues) {
    DataPartVector part;
    fill(&part, {1, 2, 3, 4, 5, 6});
    const double* before = part.values();
    part.allocate(2);
    EXPECT_EQ(part.values(), before);
    EXPECT_EQ(part.span().size(), 6u);
    EXPECT_EQ(part.span()[5], 6.0);
    EXPECT_EQ(part.byteCount(), 6 * sizeof(double));
}

TEST(DataPartValues, AllocatingNoItemsLeavesNull) {
    DataPartVector part;
    part.allocate(2);
    part.allocate(0);
    EXPECT_EQ(part.itemCount(), 0u);
    EXPECT_EQ(part.values(), nullptr);
}

TEST(DataPartValues, FillsAllComponentsUndefined) {
    DataPartVector part;
    part.allocate(2);
    part.fillUndefined();
    EXPECT_EQ(std::count(part.span().begin(), part.span().end(), UNDEFINED_DOUBLE), 6);
}

TEST(DataPartValues, GivesOneItem) {
    DataPartScalar scalar;
    fill(&scalar, {7, 8});
    EXPECT_EQ(scalar.value(1), 8.0);
    DataPartVector vector;
    fill(&vector, {1, 2, 3, 4, 5, 6});
    EXPECT_EQ(vector.value(1), Vec3d(4, 5, 6));
    DataPartDisplacement displacement;
    fill(&displacement, {1, 2, 3, 4, 5, 6});
    EXPECT_EQ(displacement.value(0), Vec3d(1, 2, 3));
    DataPartSymmetricTensor tensor;
    fill(&tensor, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12});
    EXPECT_EQ(tensor.value(1), tensor.values() + 6);
}

TEST(DataPartValues, ItemBeyondTheEndIsUndefined) {
    AssertRecorder recorder;
    EXPECT_EQ(DataPartScalar().value(0), UNDEFINED_DOUBLE);
    EXPECT_EQ(recorder.take(), beyond);
    EXPECT_EQ(DataPartVector().value(0), UNDEFINED_VECTOR);
    EXPECT_EQ(recorder.take(), beyond);
    EXPECT_EQ(DataPartDisplacement().value(0), UNDEFINED_VECTOR);
    EXPECT_EQ(recorder.take(), beyond);
    EXPECT_EQ(DataPartSymmetricTensor().value(0), nullptr);
    EXPECT_EQ(recorder.take(), beyond);
}

TEST(DataPartScalar, RangeIsUndefinedUntilAskedFor) {
    DataPartScalar part;
    fill(&part, {1, 2});
    EXPECT_EQ(part.minimum(), UNDEFINED_DOUBLE);
    EXPECT_EQ(part.maximum(), UNDEFINED_DOUBLE);
}

TEST(DataPartScalar, RangeLeavesOutUndefinedValuesAndNaNs) {
    struct Row {
        std::vector<double> values;
        double minimum;
        double maximum;
    };
    const Row rows[] = {
        {{3, -1, 2}, -1, 3},
        {{UNDEFINED_DOUBLE, 5, nan, 4}, 4, 5},
        {{nan, UNDEFINED_DOUBLE}, UNDEFINED_DOUBLE, UNDEFINED_DOUBLE},
        {{}, UNDEFINED_DOUBLE, UNDEFINED_DOUBLE},
        {{-3, -1}, -3, -1},
        {{-UNDEFINED_DOUBLE, 0}, -UNDEFINED_DOUBLE, 0},
        {{infinity, 1}, 1, infinity},
        {{infinity, infinity}, infinity, infinity},
        {{-infinity, nan}, -infinity, -infinity},
    };
    for (const Row& row : rows) {
        DataPartScalar part;
        fill(&part, row.values);
        part.updateMinMax();
        EXPECT_EQ(part.minimum(), row.minimum) << testing::PrintToString(row.values);
        EXPECT_EQ(part.maximum(), row.maximum) << testing::PrintToString(row.values);
    }
}

TEST(DataPartScalar, RangeFollowsNewValues) {
    DataPartScalar part;
    fill(&part, {1, 2});
    part.updateMinMax();
    part.fillUndefined();
    part.updateMinMax();
    EXPECT_EQ(part.minimum(), UNDEFINED_DOUBLE);
    EXPECT_EQ(part.maximum(), UNDEFINED_DOUBLE);
}

TEST(DataPartScalar, RangeCanWaitUntilItIsAskedFor) {
    DataPartScalar part;
    fill(&part, {1, UNDEFINED_DOUBLE, 2});
    part.updateMinMaxWhenAsked();
    // What is written until then counts.
    part.values()[0] = 3;
    EXPECT_EQ(part.minimum(), 2);
    EXPECT_EQ(part.maximum(), 3);
    // And nothing that is written later.
    part.values()[0] = 9;
    EXPECT_EQ(part.maximum(), 3);

    part.updateMinMaxWhenAsked();
    EXPECT_EQ(part.maximum(), 9);
    EXPECT_EQ(part.minimum(), 2);

    const double more[] = {10};
    part.updateMinMaxWhenAsked();
    part.values()[0] = 5;
    part.extendMinMax(more);
    EXPECT_EQ(part.minimum(), 2);
    EXPECT_EQ(part.maximum(), 10);

    part.updateMinMaxWhenAsked();
    part.clearMinMax();
    EXPECT_EQ(part.minimum(), UNDEFINED_DOUBLE);
    part.updateMinMaxWhenAsked();
    part.updateMinMax();
    EXPECT_EQ(part.maximum(), 5);
}

TEST(DataPartScalar, RangeGrowsPieceByPiece) {
    DataPartScalar part;
    const double first[] = {3, UNDEFINED_DOUBLE, 4};
    const double second[] = {nan, 7, 3.5};
    part.extendMinMax(first);
    EXPECT_EQ(part.minimum(), 3);
    EXPECT_EQ(part.maximum(), 4);
    part.extendMinMax(second);
    EXPECT_EQ(part.minimum(), 3);
    EXPECT_EQ(part.maximum(), 7);
    part.extendMinMax({});
    EXPECT_EQ(part.minimum(), 3);
    EXPECT_EQ(part.maximum(), 7);
    part.clearMinMax();
    EXPECT_EQ(part.minimum(), UNDEFINED_DOUBLE);
    EXPECT_EQ(part.maximum(), UNDEFINED_DOUBLE);
    part.extendMinMax(std::span(second, 1));
    EXPECT_EQ(part.maximum(), UNDEFINED_DOUBLE);
}

TEST(DataPartScalar, RangeSeesEveryPosition) {
    // Several numbers are looked at side by side, and a rest one by one.
    for (std::size_t count = 1; count <= 40; ++count) {
        for (std::size_t at = 0; at < count; ++at) {
            for (double odd : {-1.0, 1.0}) {
                std::vector<double> values(count, 0.0);
                values[at] = odd;
                DataPartScalar part;
                fill(&part, values);
                part.updateMinMax();
                EXPECT_EQ(part.minimum(), odd < 0 || count == 1 ? odd : 0.0);
                EXPECT_EQ(part.maximum(), odd > 0 || count == 1 ? odd : 0.0);
            }
        }
    }
}

TEST(DataPartValues, DroppedMemoryServesTheNextValuesOfItsSize) {
    constexpr std::size_t itemCount = 100'000;
    const double* dropped = nullptr;
    {
        DataPartVector part;
        part.allocate(itemCount);
        dropped = part.values();
    }
    DataPartScalar three;
    three.allocate(3 * itemCount);
    EXPECT_EQ(three.values(), dropped);
    DataPartVector other;
    other.allocate(itemCount);
    EXPECT_NE(other.values(), dropped);
}

} // namespace
