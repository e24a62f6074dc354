#include "OrvUnstructGrid/DataResult.h"

#include "OrvCore/Defines.h"

#include <gtest/gtest.h>

using namespace orv::ug;

namespace {

TEST(DataResult, KnowsItsIdTypeAndMapping) {
    const DataResultScalar scalar(4, PER_ELEMENT, 0);
    EXPECT_EQ(scalar.resultId(), 4);
    EXPECT_EQ(scalar.type(), SCALAR);
    EXPECT_EQ(scalar.resultMapping(), PER_ELEMENT);
    EXPECT_EQ(DataResultVector(1, PER_NODE, 0).type(), VECTOR);
    EXPECT_EQ(DataResultDisplacement(1, PER_NODE, 0).type(), DISPLACEMENT);
    EXPECT_EQ(DataResultSymmetricTensor(1, PER_NODE, 0).type(), SYMMETRIC_TENSOR);
}

TEST(DataResult, HasEmptyPartsAtFirst) {
    DataResultVector result(1, PER_NODE, 2);
    EXPECT_EQ(result.partCount(), 2u);
    ASSERT_NE(result.part(1), nullptr);
    EXPECT_EQ(result.part(1)->itemCount(), 0u);
    EXPECT_EQ(result.byteCount(), 0u);
}

TEST(DataResult, PartBeyondTheEndIsNull) {
    DataResultVector result(1, PER_NODE, 2);
    const DataResultVector& unchanging = result;
    EXPECT_EQ(result.part(2), nullptr);
    EXPECT_EQ(unchanging.part(2), nullptr);
    EXPECT_EQ(result.part(orv::UNDEFINED_SIZE_T), nullptr);
    EXPECT_EQ(result.values(2), nullptr);
}

TEST(DataResult, GivesPartsByWhateverKind) {
    DataResultVector result(1, PER_NODE, 2);
    DataResult* any = &result;
    const DataResult* unchanging = &result;
    EXPECT_EQ(any->values(1), result.part(1));
    EXPECT_EQ(unchanging->values(0), result.part(0));
}

TEST(DataResult, CountsTheBytesOfItsParts) {
    DataResultVector result(1, PER_NODE, 2);
    result.part(0)->allocate(2);
    result.part(1)->allocate(1);
    EXPECT_EQ(result.byteCount(), 9 * sizeof(double));
}

} // namespace
