#include "Tests/OrvUnstructGrid/CustomResults.h"

#include "OrvCore/Defines.h"
#include "OrvCore/PtrRef.h"

#include <gtest/gtest.h>

#include <vector>

using orv::UNDEFINED_DOUBLE;
using orv::ug::CustomResultFunction;
using InputItems = CustomResultFunction::InputItems;
using Numbers = std::vector<double>;

namespace {

TEST(CustomResultFunction, HasNoOutputDimensionUntilItsGeneratorTells) {
    orv::PtrRef<orvtest::SumOfInputs> function(new orvtest::SumOfInputs);
    EXPECT_EQ(function->outputDimension(), 0u);
    function->setOutputDimension(6);
    EXPECT_EQ(function->outputDimension(), 6u);
}

TEST(CustomResultFunction, ComputesItemsInARow) {
    orv::PtrRef<orvtest::SumOfInputs> function(new orvtest::SumOfInputs);
    function->setOutputDimension(2);
    // Only the first two of three components of the first argument count.
    const Numbers first = {1, 2, 99, 3, 4, 99, 5, 6, 99};
    const Numbers second = {10, 20, 30, 40, 50, 60};
    Numbers output(7, -1);
    function->computeItems({{first.data(), second.data()}, {3, 2}}, 3, output.data());
    EXPECT_EQ(output, (Numbers{11, 22, 33, 44, 55, 66, -1}));
    EXPECT_EQ(function->calls, 3);
}

TEST(CustomResultFunction, NoItemsAreNoWork) {
    orv::PtrRef<orvtest::SumOfInputs> function(new orvtest::SumOfInputs);
    function->computeItems({{nullptr}, {1}}, 0, nullptr);
    EXPECT_EQ(function->calls, 0);
}

TEST(CustomResultFunction, ItemThatIsRefusedIsUndefinedWhateverHasBeenWritten) {
    orv::PtrRef<orvtest::SumOfInputs> function(new orvtest::SumOfInputs);
    function->setOutputDimension(2);
    function->refusedCall = 2;
    const Numbers input = {1, 2, 3, 4, 5, 6};
    Numbers output(6, -1);
    function->computeItems({{input.data()}, {2}}, 3, output.data());
    EXPECT_EQ(output, (Numbers{1, 2, UNDEFINED_DOUBLE, UNDEFINED_DOUBLE, 5, 6}));
}

/// Doubles scalars; many of them by its form, which serves scalars only.
class Doubling : public CustomResultFunction {
public:
    Doubling() {
        setItemsForm([this](const InputItems& inputs, std::size_t count, double* output) {
            if (inputs.dimensions != std::vector<unsigned long>{1}) {
                return false;
            }
            rows.push_back(count);
            for (std::size_t i = 0; i < count; ++i) {
                output[i] = 2 * inputs.values[0][i];
            }
            return true;
        });
    }

    bool computeItem(const std::vector<const double*>& inputItems, double* outputItem) override {
        ++calls;
        *outputItem = 2 * *inputItems[0];
        return true;
    }

    int calls = 0;
    std::vector<std::size_t> rows;
};

TEST(CustomResultFunction, FormForItemsInARowTakesTheirPlace) {
    orv::PtrRef<Doubling> function(new Doubling);
    function->setOutputDimension(1);
    const Numbers input = {1, 2, 3};
    Numbers output(3);
    function->computeItems({{input.data()}, {1}}, 3, output.data());
    EXPECT_EQ(output, (Numbers{2, 4, 6}));
    EXPECT_EQ(function->rows, std::vector<std::size_t>{3});
    EXPECT_EQ(function->calls, 0);
}

TEST(CustomResultFunction, WhereTheFormDeclinesItemsAreComputedOneByOne) {
    orv::PtrRef<Doubling> function(new Doubling);
    function->setOutputDimension(1);
    const Numbers input = {1, 2, 3, 4};
    Numbers output(2);
    function->computeItems({{input.data()}, {2}}, 2, output.data());
    EXPECT_EQ(output, (Numbers{2, 6}));
    EXPECT_EQ(function->calls, 2);
}

} // namespace
