#include "Tests/OrvUnstructGrid/CustomResults.h"

#include "OrvCore/PtrRef.h"

#include <gtest/gtest.h>

namespace {

TEST(CustomResultFunction, HasNoOutputDimensionUntilItsGeneratorTells) {
    orv::PtrRef<orvtest::SumOfInputs> function(new orvtest::SumOfInputs);
    EXPECT_EQ(function->outputDimension(), 0u);
    function->setOutputDimension(6);
    EXPECT_EQ(function->outputDimension(), 6u);
}

} // namespace
