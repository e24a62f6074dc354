#include "OrvApp/ResultFunctions_p.h"

#include "OrvApp/MathFunctionCallBack.h"
#include "OrvCore/Defines.h"
#include "OrvCore/PtrRef.h"
#include "OrvCore/SymmetricTensor.h"
#include "Tests/LibUnstructGrid/PortableRandom.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <functional>
#include <limits>
#include <stdexcept>
#include <string>
#include <vector>

using orv::PtrRef;
using orv::ug::CustomResultFunction;
using Numbers = std::vector<double>;

namespace {

constexpr double U = orv::UNDEFINED_DOUBLE;
constexpr double inf = std::numeric_limits<double>::infinity();
constexpr double nan_ = std::numeric_limits<double>::quiet_NaN();
/// What stands in the output before a call: a function that refuses leaves it there.
constexpr double untouched = -12345.0;

/// Equal as numbers are told apart in results: zeros by their sign, NaNs not at all.
bool isSame(double a, double b) {
    return std::isnan(a) ? std::isnan(b) : std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}

::testing::AssertionResult same(const Numbers& a, const Numbers& b) {
    if (std::equal(a.begin(), a.end(), b.begin(), b.end(), isSame)) {
        return ::testing::AssertionSuccess();
    }
    return ::testing::AssertionFailure() << ::testing::PrintToString(a) << " is not " << ::testing::PrintToString(b);
}

struct Outcome {
    bool served;
    Numbers output; ///< Eight doubles; those beyond the item are untouched.
};

Outcome run(CustomResultFunction* function, const std::vector<Numbers>& inputs) {
    std::vector<const double*> pointers;
    for (const Numbers& input : inputs) {
        pointers.push_back(input.data());
    }
    Outcome outcome = {false, Numbers(8, untouched)};
    outcome.served = function->computeItem(pointers, outcome.output.data());
    return outcome;
}

void expectRefused(CustomResultFunction* function, const std::vector<Numbers>& inputs) {
    const Outcome outcome = run(function, inputs);
    EXPECT_FALSE(outcome.served);
    EXPECT_TRUE(same(outcome.output, Numbers(8, untouched)));
}

void expectOutput(CustomResultFunction* function, const std::vector<Numbers>& inputs, Numbers expected) {
    const Outcome outcome = run(function, inputs);
    EXPECT_TRUE(outcome.served);
    expected.resize(8, untouched);
    EXPECT_TRUE(same(outcome.output, expected));
}

struct Row {
    CustomResultFunction* function;
    std::vector<Numbers> inputs;
    Numbers output;
};

void expectAll(const std::vector<Row>& rows) {
    for (std::size_t i = 0; i < rows.size(); ++i) {
        SCOPED_TRACE(i);
        const PtrRef<CustomResultFunction> function(rows[i].function);
        expectOutput(function.get(), rows[i].inputs, rows[i].output);
    }
}

/// Squares; throws for 13 and for 14.
class Square : public orv::app::MathFunctionCallBack {
public:
    Square() : MathFunctionCallBack("sq") {}

    double evaluate(double value) override {
        calls.push_back(value);
        if (value == 13) {
            throw std::runtime_error("unlucky");
        }
        if (value == 14) {
            throw 14;
        }
        return value * value;
    }

    Numbers calls;
};

TEST(ResultFunctions, SumOfComponents) {
    expectAll({
        {new SumFunction(1), {{2}, {0.5}}, {2.5}},
        // The large numbers would make the sum infinite.
        {new SumFunction(3), {{1, 1e300, 3}, {10, U, 30}}, {11, U, 33}},
        {new SumFunction(3), {{1, U, 3}, {10, 1e300, 30}}, {11, U, 33}},
        {new SumFunction(3), {{U, 2, U}, {U, 20, 3}}, {U, 22, U}},
        {new SumFunction(6), {{1, 2, 3, 4, 5, 6}, {6, 5, 4, 3, 2, 1}}, {7, 7, 7, 7, 7, 7}},
        {new SumFunction(3), {{nan_, inf, -0.0}, {1, -inf, -0.0}}, {nan_, nan_, -0.0}},
        // Only undefined itself is, not its negative nor an infinity.
        {new SumFunction(2), {{-U, inf}, {1, 1}}, {-U, inf}},
    });
}

TEST(ResultFunctions, DifferenceOfComponents) {
    expectAll({
        {new SubtractFunction(1), {{2}, {0.5}}, {1.5}},
        {new SubtractFunction(3), {{1, 2, 3}, {10, U, 30}}, {-9, U, -27}},
        {new SubtractFunction(3), {{1, U, 3}, {10, 20, 30}}, {-9, U, -27}},
        // Two undefined ones do not cancel.
        {new SubtractFunction(1), {{U}, {U}}, {U}},
        {new SubtractFunction(6), {{1, 2, 3, 4, 5, 6}, {1, 1, 1, 1, 1, nan_}}, {0, 1, 2, 3, 4, nan_}},
    });
}

TEST(ResultFunctions, OppositeDoesNotLookAtUndefinedValues) {
    expectAll({
        {new OppositeFunction(1), {{2}}, {-2}},
        {new OppositeFunction(3), {{U, -0.0, 0.0}}, {-1.7976931348623157e308, 0.0, -0.0}},
        {new OppositeFunction(6), {{1, -2, inf, -inf, nan_, -U}}, {-1, 2, -inf, inf, nan_, U}},
    });
}

TEST(ResultFunctions, OppositeFlipsTheSignOfANanToo) {
    const PtrRef<CustomResultFunction> opposite(new OppositeFunction(1));
    EXPECT_NE(std::signbit(run(opposite.get(), {{nan_}}).output[0]), std::signbit(nan_));
    EXPECT_NE(std::signbit(run(opposite.get(), {{-nan_}}).output[0]), std::signbit(-nan_));
}

TEST(ResultFunctions, QuotientOfScalars) {
    expectAll({
        {new DivisionOfScalars, {{1}, {4}}, {0.25}},
        {new DivisionOfScalars, {{U}, {4}}, {U}},
        {new DivisionOfScalars, {{1}, {U}}, {U}},
        {new DivisionOfScalars, {{1}, {0.0}}, {U}},
        {new DivisionOfScalars, {{1}, {-0.0}}, {U}},
        {new DivisionOfScalars, {{0.0}, {0.0}}, {U}},
        {new DivisionOfScalars, {{nan_}, {0.0}}, {U}},
        {new DivisionOfScalars, {{1}, {nan_}}, {nan_}},
        {new DivisionOfScalars, {{U}, {nan_}}, {U}},
        {new DivisionOfScalars, {{inf}, {2}}, {inf}},
        {new DivisionOfScalars, {{0.0}, {-2}}, {-0.0}},
    });
}

TEST(ResultFunctions, ProductOfItems) {
    const double tiny = std::numeric_limits<double>::epsilon() / 2;
    expectAll({
        {new PerItemProduct(1), {{3}, {-2}}, {-6}},
        {new PerItemProduct(1), {{U}, {0}}, {U}},
        {new PerItemProduct(1), {{0}, {U}}, {U}},
        {new PerItemProduct(1), {{nan_}, {2}}, {nan_}},
        // A scalar has no further components to look at.
        {new PerItemProduct(1), {{3, U, U}, {2, U, U}}, {6}},
        {new PerItemProduct(3), {{1, 2, 3}, {4, 5, 6}}, {32}},
        {new PerItemProduct(3), {{U, 2, 3}, {4, 5, 6}}, {U}},
        {new PerItemProduct(3), {{1, U, 3}, {4, 5, 6}}, {U}},
        {new PerItemProduct(3), {{1, 2, U}, {4, 5, 6}}, {U}},
        {new PerItemProduct(3), {{1, 2, 3}, {U, 5, 6}}, {U}},
        {new PerItemProduct(3), {{1, 2, 3}, {4, U, 6}}, {U}},
        {new PerItemProduct(3), {{1, 2, 3}, {4, 5, U}}, {U}},
        {new PerItemProduct(3), {{1, nan_, 3}, {4, 5, 6}}, {nan_}},
        // From the left: 1 + tiny rounds to 1, and so does the second sum. From the right it would be more than 1.
        {new PerItemProduct(3), {{1, tiny, tiny}, {1, 1, 1}}, {1}},
        // An undefined first component comes before the question for the dimension.
        {new PerItemProduct(6), {{U, 2, 3, 4, 5, 6}, {1, 2, 3, 4, 5, 6}}, {U}},
        {new PerItemProduct(6), {{1, 2, 3, 4, 5, 6}, {U, 2, 3, 4, 5, 6}}, {U}},
    });
}

TEST(ResultFunctions, ProductRefusesOtherDimensions) {
    for (unsigned long dimension : {0ul, 2ul, 4ul, 6ul, static_cast<unsigned long>(orv::UNDEFINED_SIZE_T)}) {
        const PtrRef<CustomResultFunction> product(new PerItemProduct(dimension));
        expectRefused(product.get(), {{1, 2, 3, 4, 5, 6}, {1, 2, 3, 4, 5, 6}});
        expectRefused(product.get(), {{1, U, 3, 4, 5, 6}, {1, 2, 3, 4, 5, 6}});
    }
}

TEST(ResultFunctions, CrossProductDoesNotLookAtUndefinedValues) {
    expectAll({
        {new CrossProduct, {{1, 0, 0}, {0, 1, 0}}, {0, 0, 1}},
        // By hand: (2*7 - 3*5, 3*4 - 1*7, 1*5 - 2*4).
        {new CrossProduct, {{1, 2, 3}, {4, 5, 7}}, {-1, 5, -3}},
        // (0.5*0 - 0*1, 0*1 - U*0, U*1 - 0.5*1): the half is lost beside the largest double.
        {new CrossProduct, {{U, 0.5, 0}, {1, 1, 0}}, {0, 0, U}},
        {new CrossProduct, {{U, 0, 0}, {0, 2, 0}}, {0, 0, inf}},
        {new CrossProduct, {{nan_, 0, 1}, {0, 1, 0}}, {-1, nan_, nan_}},
    });
}

TEST(ResultFunctions, ConstantsByComponent) {
    expectAll({
        {new MultiplyByConstantFunction(1, -2), {{3}}, {-6}},
        {new MultiplyByConstantFunction(3, 0), {{U, inf, -1}}, {U, nan_, -0.0}},
        {new MultiplyByConstantFunction(6, 2), {{1, 2, U, 4, nan_, 6}}, {2, 4, U, 8, nan_, 12}},
        {new AddConstantFunction(1, 2), {{3}}, {5}},
        {new AddConstantFunction(3, -1), {{U, inf, 4}}, {U, inf, 3}},
        {new AddConstantFunction(6, 2), {{1, 2, U, 4, nan_, 6}}, {3, 4, U, 6, nan_, 8}},
        {new SubtractConstantFunction(1, 2), {{3}}, {1}},
        {new SubtractConstantFunction(3, -1), {{U, inf, 4}}, {U, inf, 5}},
        {new SubtractConstantFunction(6, 2), {{1, 2, U, 4, nan_, 6}}, {-1, 0, U, 2, nan_, 4}},
        {new DivideByConstantFunction(1, 2), {{3}}, {1.5}},
        {new DivideByConstantFunction(3, -2), {{U, inf, 0}}, {U, -inf, -0.0}},
        {new DivideByConstantFunction(6, 2), {{1, 2, U, 4, nan_, 6}}, {0.5, 1, U, 2, nan_, 3}},
        // A constant is no item: undefined or NaN, it is a number like any other.
        {new MultiplyByConstantFunction(2, U), {{0.5, U}}, {U / 2, U}},
        {new AddConstantFunction(2, nan_), {{1, U}}, {nan_, U}},
        {new DivideByConstantFunction(2, nan_), {{1, U}}, {nan_, U}},
    });
}

TEST(ResultFunctions, DividingByAZeroConstantGivesUndefined) {
    for (double zero : {0.0, -0.0}) {
        expectAll({
            {new DivideByConstantFunction(1, zero), {{5}}, {U}},
            {new DivideByConstantFunction(3, zero), {{0, U, -1}}, {U, U, U}},
            {new DivideByConstantFunction(6, zero), {{1, nan_, inf, U, 0, -0.0}}, {U, U, U, U, U, U}},
        });
    }
}

TEST(ResultFunctions, ComponentIsACopy) {
    const Numbers item = {1, -0.0, U, nan_, -inf, 6};
    for (unsigned long k = 0; k < 6; ++k) {
        expectAll({{new ExtractComponentFunction(k), {item}, {item[k]}}});
    }
    // Whether there is such a component is not asked here.
    const Numbers longer = {1, 2, 3, 4, 5, 6, 7};
    expectAll({{new ExtractComponentFunction(6), {longer}, {7}}});
}

TEST(ResultFunctions, CallbackGetsEachDefinedComponentOnce) {
    Square square;
    expectAll({{new ApplyMathFunction(6, &square), {{3, U, nan_, -2, inf, U}}, {9, U, nan_, 4, inf, U}}});
    EXPECT_TRUE(same(square.calls, {3, nan_, -2, inf}));
    square.calls.clear();
    expectAll({{new ApplyMathFunction(1, &square), {{3, 4}}, {9}}});
    EXPECT_TRUE(same(square.calls, {3}));
}

TEST(ResultFunctions, ComponentForWhichTheCallbackThrowsIsUndefined) {
    Square square;
    expectAll({
        {new ApplyMathFunction(3, &square), {{2, 13, 4}}, {4, U, 16}},
        {new ApplyMathFunction(3, &square), {{14, 13, 4}}, {U, U, 16}},
    });
    EXPECT_TRUE(same(square.calls, {2, 13, 4, 14, 13, 4}));
}

TEST(ResultFunctions, NormsDoNotLookAtUndefinedValues) {
    expectAll({
        {new L1NormFunction, {{1, -2, 3}}, {6}},
        {new L1NormFunction, {{-1, 2, -3}}, {6}},
        {new L1NormFunction, {{-0.0, 0, -0.0}}, {0.0}},
        {new L1NormFunction, {{U, 1, -1}}, {U}},
        {new L1NormFunction, {{U, U, 0}}, {inf}},
        {new L1NormFunction, {{nan_, 1, 1}}, {nan_}},
        {new L2NormFunction, {{2, -3, 6}}, {7}},
        {new L2NormFunction, {{-0.0, -0.0, -0.0}}, {0.0}},
        {new L2NormFunction, {{0, U, 0}}, {inf}},
        {new L2NormFunction, {{1, nan_, 0}}, {nan_}},
        // The squares overflow although the length, 1.4e200, does not.
        {new L2NormFunction, {{1e200, 1e200, 0}}, {inf}},
    });
}

TEST(ResultFunctions, AverageDoesNotLookAtUndefinedValues) {
    expectAll({
        {new AverageFunction(1), {{5}}, {5}},
        {new AverageFunction(1), {{1}, {2}, {6}}, {3}},
        {new AverageFunction(3), {{1, 2, 3}, {3, 4, nan_}}, {2, 3, nan_}},
        {new AverageFunction(1), {{U}, {0}}, {U / 2}},
        {new AverageFunction(1), {{U}, {U}}, {inf}},
        // The sum begins with 0.0, and 0.0 plus -0.0 is 0.0.
        {new AverageFunction(1), {{-0.0}}, {0.0}},
        // In the order of the inputs: the one is lost beside the large number.
        {new AverageFunction(1), {{1}, {1e17}, {-1e17}, {4}}, {1}},
        {new AverageFunction(6), {{1, 2, 3, 4, 5, 6}, {3, 2, 1, 0, -1, -2}}, {2, 2, 2, 2, 2, 2}},
    });
}

TEST(ResultFunctions, SmallestOfTheInputs) {
    expectAll({
        {new MinFunction(1), {{5}}, {5}},
        {new MinFunction(3), {{1, 5, U}, {2, 4, U}}, {1, 4, U}},
        // The largest finite double loses to every defined one but infinity.
        {new MinFunction(2), {{U, 7}, {7, U}}, {7, 7}},
        {new MinFunction(2), {{U, inf}, {inf, U}}, {U, U}},
        // Replaced only by a strictly smaller one: a NaN is kept and never taken, and the first zero stays.
        {new MinFunction(2), {{nan_, 1}, {1, nan_}}, {nan_, 1}},
        {new MinFunction(2), {{0.0, -0.0}, {-0.0, 0.0}}, {0.0, -0.0}},
        {new MinFunction(1), {{3}, {1}, {2}}, {1}},
        {new MinFunction(6), {{1, 2, 3, 4, 5, 6}, {6, 5, 4, 3, 2, 1}}, {1, 2, 3, 3, 2, 1}},
    });
}

TEST(ResultFunctions, LargestOfTheInputs) {
    expectAll({
        {new MaxFunction(1), {{5}}, {5}},
        {new MaxFunction(3), {{1, 5, U}, {2, 4, U}}, {2, 5, U}},
        // The largest finite double wins over every defined one but infinity.
        {new MaxFunction(2), {{U, 7}, {7, U}}, {U, U}},
        {new MaxFunction(2), {{U, inf}, {inf, U}}, {inf, inf}},
        {new MaxFunction(2), {{nan_, 1}, {1, nan_}}, {nan_, 1}},
        {new MaxFunction(2), {{0.0, -0.0}, {-0.0, 0.0}}, {0.0, -0.0}},
        {new MaxFunction(1), {{3}, {1}, {4}, {2}}, {4}},
        {new MaxFunction(6), {{1, 2, 3, 4, 5, 6}, {6, 5, 4, 3, 2, 1}}, {6, 5, 4, 4, 5, 6}},
    });
}

TEST(ResultFunctions, EnvelopesWithoutInputsWriteAZeroAndRefuse) {
    for (CustomResultFunction* envelope :
         std::initializer_list<CustomResultFunction*>{new AverageFunction(3), new MinFunction(3), new MaxFunction(3)}) {
        const PtrRef<CustomResultFunction> function(envelope);
        const Outcome outcome = run(function.get(), {});
        EXPECT_FALSE(outcome.served);
        Numbers expected(8, untouched);
        expected[0] = 0.0;
        EXPECT_TRUE(same(outcome.output, expected));
    }
}

TEST(ResultFunctions, VonMisesOfTheSixComponentsInOrder) {
    expectAll({
        {new VonMisesFunction, {{100, 0, 0, 0, 0, 0}}, {100}},
        // Pure shear: the square root of 3 times the shear, and each shear counts alike.
        {new VonMisesFunction, {{0, 0, 0, 4, 0, 0}}, {std::sqrt(48.0)}},
        {new VonMisesFunction, {{U, 0, 0, 0, 0, 0}}, {U}},
        {new VonMisesFunction, {{0, 0, 0, 0, 0, nan_}}, {U}},
    });
}

TEST(ResultFunctions, PrincipalValuesAndDirections) {
    // A diagonal tensor: the values are its components and the directions the axes, of free sense.
    const Numbers item = {10, 30, 20, 0, 0, 0};
    const double values[] = {30, 20, 10};
    const std::size_t axes[] = {1, 2, 0};
    for (unsigned long i = 0; i < 3; ++i) {
        const PtrRef<CustomResultFunction> value(new PrincipalsFunction(false, i));
        value->setOutputDimension(1);
        const Outcome scalar = run(value.get(), {item});
        ASSERT_TRUE(scalar.served);
        EXPECT_NEAR(scalar.output[0], values[i], 1e-5);
        EXPECT_EQ(scalar.output[1], untouched);

        const PtrRef<CustomResultFunction> direction(new PrincipalsFunction(true, i));
        direction->setOutputDimension(3);
        const Outcome vector = run(direction.get(), {item});
        ASSERT_TRUE(vector.served);
        for (std::size_t c = 0; c < 3; ++c) {
            EXPECT_NEAR(std::fabs(vector.output[c]), c == axes[i] ? 1 : 0, 1e-5);
        }
        EXPECT_EQ(vector.output[3], untouched);
    }
}

TEST(ResultFunctions, PrincipalDirectionsLieInThePlaneOfTheShear) {
    // A shear between two axes, XY, YZ or ZX, has nothing along the third.
    const std::size_t axisWithout[] = {2, 0, 1};
    for (std::size_t shear = 0; shear < 3; ++shear) {
        Numbers item(6, 0.0);
        item[3 + shear] = 5;
        const PtrRef<CustomResultFunction> direction(new PrincipalsFunction(true, 0));
        direction->setOutputDimension(3);
        const Outcome outcome = run(direction.get(), {item});
        ASSERT_TRUE(outcome.served);
        for (std::size_t c = 0; c < 3; ++c) {
            EXPECT_NEAR(std::fabs(outcome.output[c]), c == axisWithout[shear] ? 0 : std::sqrt(0.5), 1e-5);
        }
    }
}

TEST(ResultFunctions, PrincipalsRefuseWhatTheyDoNotServe) {
    const Numbers item = {10, 30, 20, 0, 0, 0};
    for (bool isVector : {false, true}) {
        for (unsigned long index : {0ul, 1ul, 2ul, 3ul, 99ul}) {
            for (std::size_t dimension : {0u, 1u, 2u, 3u, 6u}) {
                SCOPED_TRACE(testing::Message() << isVector << ' ' << index << ' ' << dimension);
                const PtrRef<CustomResultFunction> function(new PrincipalsFunction(isVector, index));
                function->setOutputDimension(dimension);
                if (index < 3 && dimension == (isVector ? 3u : 1u)) {
                    EXPECT_TRUE(run(function.get(), {item}).served);
                } else {
                    expectRefused(function.get(), {item});
                }
                expectRefused(function.get(), {});
                expectRefused(function.get(), {item, item});
            }
        }
    }
}

/// One object of each class, for items of one dimension.
struct EachFunction {
    PtrRef<CustomResultFunction> function;
    std::size_t inputs;
    std::size_t inputDimension;
    std::size_t outputDimension;
    /// The independent reference: one component of the output.
    std::function<double(const std::vector<Numbers>&, std::size_t)> reference;
};

double referenceProduct(const std::vector<Numbers>& in) {
    double sum = 0;
    for (std::size_t c = 0; c < in[0].size(); ++c) {
        if (in[0][c] == U || in[1][c] == U) {
            return U;
        }
        // Not from 0.0: that would make a product of -0.0 positive.
        sum = c == 0 ? in[0][c] * in[1][c] : sum + in[0][c] * in[1][c];
    }
    return sum;
}

double sumOfSquares(const Numbers& item) {
    double sum = 0.0;
    for (double component : item) {
        sum += component * component;
    }
    return sum;
}

double referenceCross(const std::vector<Numbers>& in, std::size_t c) {
    const std::size_t next[] = {1, 2, 0};
    const std::size_t last[] = {2, 0, 1};
    return in[0][next[c]] * in[1][last[c]] - in[0][last[c]] * in[1][next[c]];
}

/// The first of those that no other one beats; the first input when it is a NaN.
double referenceEnvelope(const std::vector<Numbers>& in, std::size_t c, bool isSmallest) {
    std::size_t best = 0;
    for (std::size_t k = 1; k < in.size(); ++k) {
        if (isSmallest ? in[k][c] < in[best][c] : in[k][c] > in[best][c]) {
            best = k;
        }
    }
    return in[best][c];
}

orv::SymmetricTensor tensorOf(const Numbers& item) {
    orv::SymmetricTensor tensor;
    tensor.set(item[0], item[1], item[2], item[3], item[4], item[5]);
    return tensor;
}

std::vector<EachFunction> componentwise(std::size_t n) {
    auto keep = [](std::function<double(double)> f) {
        return [f](const std::vector<Numbers>& in, std::size_t c) { return in[0][c] == U ? U : f(in[0][c]); };
    };
    auto keepBoth = [](std::function<double(double, double)> f) {
        return [f](const std::vector<Numbers>& in, std::size_t c) {
            return in[0][c] == U || in[1][c] == U ? U : f(in[0][c], in[1][c]);
        };
    };
    auto average = [](const std::vector<Numbers>& in, std::size_t c) {
        double sum = 0.0;
        for (const Numbers& input : in) {
            sum += input[c];
        }
        return sum / static_cast<double>(in.size());
    };
    auto envelope = [](bool isSmallest) {
        return [=](const std::vector<Numbers>& in, std::size_t c) { return referenceEnvelope(in, c, isSmallest); };
    };
    static Square square;
    return {
        {new SumFunction(n), 2, n, n, keepBoth([](double a, double b) { return a + b; })},
        {new SubtractFunction(n), 2, n, n, keepBoth([](double a, double b) { return a - b; })},
        {new OppositeFunction(n), 1, n, n, [](const auto& in, std::size_t c) { return -in[0][c]; }},
        {new MultiplyByConstantFunction(n, -3), 1, n, n, keep([](double a) { return a * -3; })},
        {new AddConstantFunction(n, 3), 1, n, n, keep([](double a) { return a + 3; })},
        {new SubtractConstantFunction(n, 3), 1, n, n, keep([](double a) { return a - 3; })},
        {new DivideByConstantFunction(n, 3), 1, n, n, keep([](double a) { return a / 3; })},
        {new DivideByConstantFunction(n, 0), 1, n, n, keep([](double) { return U; })},
        {new ApplyMathFunction(n, &square), 1, n, n, keep([](double a) { return a * a; })},
        {new AverageFunction(n), 1, n, n, average},
        {new AverageFunction(n), 4, n, n, average},
        {new MinFunction(n), 1, n, n, envelope(true)},
        {new MinFunction(n), 4, n, n, envelope(true)},
        {new MaxFunction(n), 1, n, n, envelope(false)},
        {new MaxFunction(n), 4, n, n, envelope(false)},
    };
}

std::vector<EachFunction> ofWholeItems() {
    auto product = [](const auto& in, std::size_t) { return referenceProduct(in); };
    std::vector<EachFunction> list = {
        {new DivisionOfScalars, 2, 1, 1,
         [](const auto& in, std::size_t) {
             const double a = in[0][0];
             const double b = in[1][0];
             return a == U || b == U || std::fpclassify(b) == FP_ZERO ? U : a / b;
         }},
        {new PerItemProduct(1), 2, 1, 1, product},
        {new PerItemProduct(3), 2, 3, 1, product},
        {new CrossProduct, 2, 3, 3, referenceCross},
        {new L1NormFunction, 1, 3, 1,
         [](const auto& in, std::size_t) { return std::fabs(in[0][0]) + std::fabs(in[0][1]) + std::fabs(in[0][2]); }},
        {new L2NormFunction, 1, 3, 1, [](const auto& in, std::size_t) { return std::sqrt(sumOfSquares(in[0])); }},
        {new VonMisesFunction, 1, 6, 1, [](const auto& in, std::size_t) { return tensorOf(in[0]).vonMises(); }},
        {new PrincipalsFunction(false, 0), 1, 6, 1,
         [](const auto& in, std::size_t) { return tensorOf(in[0]).firstPrincipalValue(); }},
        {new PrincipalsFunction(false, 1), 1, 6, 1,
         [](const auto& in, std::size_t) { return tensorOf(in[0]).secondPrincipalValue(); }},
        {new PrincipalsFunction(false, 2), 1, 6, 1,
         [](const auto& in, std::size_t) { return tensorOf(in[0]).thirdPrincipalValue(); }},
    };
    auto direction = [](orv::Vec3d (orv::SymmetricTensor::*get)() const) {
        return [get](const std::vector<Numbers>& in, std::size_t c) {
            const orv::Vec3d vector = (tensorOf(in[0]).*get)();
            return c == 0 ? vector.x() : c == 1 ? vector.y() : vector.z();
        };
    };
    list.push_back({new PrincipalsFunction(true, 0), 1, 6, 3, direction(&orv::SymmetricTensor::firstPrincipalVector)});
    list.push_back({new PrincipalsFunction(true, 1), 1, 6, 3, direction(&orv::SymmetricTensor::secondPrincipalVector)});
    list.push_back({new PrincipalsFunction(true, 2), 1, 6, 3, direction(&orv::SymmetricTensor::thirdPrincipalVector)});
    for (unsigned long k = 0; k < 6; ++k) {
        list.push_back(
            {new ExtractComponentFunction(k), 1, 6, 1, [k](const auto& in, std::size_t) { return in[0][k]; }});
    }
    return list;
}

std::vector<EachFunction> eachFunction() {
    std::vector<EachFunction> list = ofWholeItems();
    for (std::size_t dimension : {1, 3, 6}) {
        const std::vector<EachFunction> more = componentwise(dimension);
        list.insert(list.end(), more.begin(), more.end());
    }
    for (EachFunction& each : list) {
        each.function->setOutputDimension(each.outputDimension);
    }
    return list;
}

/// Ordinary numbers, and often one of those at the edges.
double randomNumber(orvtest::PortableRandom& random) {
    static const double edges[] = {U, U, U, -U, nan_, inf, -inf, 0.0, -0.0, 1, 5e-324, 1e308};
    return random.integer(0, 2) == 0 ? edges[random.integer(0, std::size(edges) - 1)] : random.real(-100, 100);
}

std::vector<Numbers> randomItems(orvtest::PortableRandom& random, const EachFunction& each, std::size_t count) {
    std::vector<Numbers> inputs(each.inputs);
    for (Numbers& input : inputs) {
        for (std::size_t i = 0; i < count * each.inputDimension; ++i) {
            input.push_back(randomNumber(random));
        }
    }
    return inputs;
}

TEST(ResultFunctions, AgreeWithAnIndependentReferenceOnRandomItems) {
    orvtest::PortableRandom random(35);
    const std::vector<EachFunction> list = eachFunction();
    for (std::size_t f = 0; f < list.size(); ++f) {
        SCOPED_TRACE(f);
        const EachFunction& each = list[f];
        for (int round = 0; round < 2000 && !testing::Test::HasFailure(); ++round) {
            const std::vector<Numbers> inputs = randomItems(random, each, 1);
            Numbers expected;
            for (std::size_t c = 0; c < each.outputDimension; ++c) {
                expected.push_back(each.reference(inputs, c));
            }
            SCOPED_TRACE(testing::PrintToString(inputs));
            expectOutput(each.function.get(), inputs, expected);
        }
    }
}

TEST(ResultFunctions, RefuseAnotherNumberOfInputs) {
    const Numbers item = {U, 2, 3, 4, 5, 6};
    for (const EachFunction& each : eachFunction()) {
        const bool takesAny = dynamic_cast<AverageFunction*>(each.function.get()) ||
                              dynamic_cast<MinFunction*>(each.function.get()) ||
                              dynamic_cast<MaxFunction*>(each.function.get());
        for (std::size_t count = 0; count < 4 && !takesAny; ++count) {
            if (count != each.inputs) {
                expectRefused(each.function.get(), std::vector<Numbers>(count, item));
            }
        }
    }
}

/// What computeItems() makes of items in a row; their argument items may be wider than the function looks at.
Numbers runInARow(const EachFunction& each, const std::vector<Numbers>& inputs, std::size_t inputDimension,
                  std::size_t count) {
    CustomResultFunction::InputItems items;
    for (const Numbers& input : inputs) {
        items.values.push_back(input.data());
        items.dimensions.push_back(inputDimension);
    }
    Numbers output(count * each.function->outputDimension() + 1, untouched);
    each.function->computeItems(items, count, output.data());
    return output;
}

/// The same by computeItem().
Numbers runOneByOne(const EachFunction& each, const std::vector<Numbers>& inputs, std::size_t inputDimension,
                    std::size_t count) {
    const std::size_t outputDimension = each.function->outputDimension();
    Numbers output(count * outputDimension + 1, untouched);
    for (std::size_t i = 0; i < count; ++i) {
        std::vector<const double*> items;
        for (const Numbers& input : inputs) {
            items.push_back(input.data() + i * inputDimension);
        }
        EXPECT_TRUE(each.function->computeItem(items, output.data() + i * outputDimension));
    }
    return output;
}

TEST(ResultFunctions, ItemsInARowAreWhatTheyAreOneByOne) {
    orvtest::PortableRandom random(352);
    const std::vector<EachFunction> list = eachFunction();
    for (std::size_t f = 0; f < list.size(); ++f) {
        for (std::size_t count : {1u, 2u, 3u, 7u, 8u, 64u, 511u}) {
            SCOPED_TRACE(testing::Message() << f << ' ' << count);
            const std::size_t dimension = list[f].inputDimension;
            const std::vector<Numbers> inputs = randomItems(random, list[f], count);
            ASSERT_TRUE(
                same(runInARow(list[f], inputs, dimension, count), runOneByOne(list[f], inputs, dimension, count)));
        }
    }
}

TEST(ResultFunctions, ItemsInARowMayBeWiderThanTheFunctionIs) {
    orvtest::PortableRandom random(353);
    for (EachFunction each : eachFunction()) {
        const std::size_t dimension = each.inputDimension + 2;
        each.inputDimension = dimension;
        const std::vector<Numbers> inputs = randomItems(random, each, 20);
        ASSERT_TRUE(same(runInARow(each, inputs, dimension, 20), runOneByOne(each, inputs, dimension, 20)));
    }
}

TEST(ResultFunctions, OutputItemsMayBeWiderThanTheFunctionIs) {
    orvtest::PortableRandom random(354);
    for (const EachFunction& each : eachFunction()) {
        if (dynamic_cast<PrincipalsFunction*>(each.function.get())) {
            continue; // It refuses them.
        }
        each.function->setOutputDimension(each.outputDimension + 2);
        const std::vector<Numbers> inputs = randomItems(random, each, 20);
        ASSERT_TRUE(
            same(runInARow(each, inputs, each.inputDimension, 20), runOneByOne(each, inputs, each.inputDimension, 20)));
    }
}

TEST(ResultFunctions, ItemsInARowOfAnotherNumberOfInputsAreUndefined) {
    for (const EachFunction& each : eachFunction()) {
        const std::size_t count = 4;
        const Numbers output = runInARow(each, {}, each.inputDimension, count);
        Numbers expected(count * each.outputDimension, U);
        expected.push_back(untouched);
        EXPECT_TRUE(same(output, expected));
    }
}

} // namespace
