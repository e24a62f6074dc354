#include "OrvUnstructGrid/DataResult.h"

#include "OrvCore/Defines.h"
#include "Tests/Support/AssertRecorder.h"

#include <gtest/gtest.h>

using namespace orv::ug;
using orvtest::AssertRecorder;
using orvtest::FailedAssert;

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

TEST(DataResult, SwapsPartsWithAResultOfItsType) {
    DataResultVector first(1, PER_NODE, 2);
    DataResultVector second(7, PER_NODE, 1);
    second.part(0)->allocate(4);
    const double* values = second.part(0)->values();
    first.swapPart(1, &second, 0);
    EXPECT_EQ(first.part(1)->values(), values);
    EXPECT_EQ(first.part(1)->itemCount(), 4u);
    EXPECT_EQ(second.part(0)->itemCount(), 0u);
}

TEST(DataResult, SwapsNothingThatIsNotThereOrOfAnotherType) {
    AssertRecorder asserts;
    DataResultVector first(1, PER_NODE, 2);
    DataResultVector second(1, PER_NODE, 1);
    DataResultScalar scalar(1, PER_NODE, 1);
    first.swapPart(0, &scalar, 0);
    first.swapPart(2, &second, 0);
    first.swapPart(0, &second, 1);
    const std::vector<FailedAssert> failed = asserts.take();
    ASSERT_EQ(failed.size(), 3u);
    EXPECT_EQ(failed[0].expression, "other->type() == type()");
    EXPECT_EQ(failed[1].expression, "partIndex < partCount()");
    EXPECT_EQ(failed[2].expression, "otherIndex < other->partCount()");
    EXPECT_EQ(failed[0].file, "OrvUnstructGrid/DataResult");
}

TEST(DataResult, CountsTheBytesOfItsParts) {
    DataResultVector result(1, PER_NODE, 2);
    result.part(0)->allocate(2);
    result.part(1)->allocate(1);
    EXPECT_EQ(result.byteCount(), 9 * sizeof(double));
}

} // namespace
