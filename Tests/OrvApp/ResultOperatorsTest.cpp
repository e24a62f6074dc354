#include "OrvApp/ResultOperators.h"

#include "OrvApp/Results.h"
#include "OrvCore/SymmetricTensor.h"
#include "Tests/OrvApp/ResultOperatorsFixture.h"

#include <cmath>
#include <functional>
#include <string>
#include <utility>
#include <vector>

using namespace orv::ug;
using orv::app::Results;
using orvtest::failed;
using orvtest::FailedAssert;
using orvtest::ResultOperatorsTest;

namespace {

using Item = const double*;
using Asserts = std::vector<FailedAssert>;

/// One use of an operator, and what it describes.
struct Description {
    std::function<ResultInfo()> make;
    std::string name;
    ResultType type;
    std::vector<ResultInfo> arguments;
    /// One component of the result from the items of the arguments.
    std::function<double(const std::vector<Item>&, std::size_t)> value;
};

double dot(Item a, Item b) {
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

double cross(Item a, Item b, std::size_t c) {
    const std::size_t next = (c + 1) % 3;
    const std::size_t last = (c + 2) % 3;
    return a[next] * b[last] - a[last] * b[next];
}

orv::SymmetricTensor tensorOf(Item a) {
    orv::SymmetricTensor tensor;
    tensor.set(a[0], a[1], a[2], a[3], a[4], a[5]);
    return tensor;
}

double component(const orv::Vec3d& vector, std::size_t c) {
    const double components[] = {vector.x(), vector.y(), vector.z()};
    return components[c];
}

class ResultOperatorsTableTest : public ResultOperatorsTest {
protected:
    using Items = const std::vector<Item>&;

    std::vector<Description> arithmetic() {
        auto sum = [](Items in, std::size_t c) { return in[0][c] + in[1][c]; };
        auto difference = [](Items in, std::size_t c) { return in[0][c] - in[1][c]; };
        auto opposite = [](Items in, std::size_t c) { return -in[0][c]; };
        std::vector<Description> rows;
        for (const ResultInfo& a : {T, P, V, D, S}) {
            const std::string name = a.name().toStdString();
            const ResultType type = a.type();
            rows.push_back({[=] { return a + a; }, name + "+" + name, type, {a, a}, sum});
            rows.push_back({[=] { return a - a; }, name + "-" + name, type, {a, a}, difference});
            rows.push_back({[=] { return -a; }, "-" + name, type, {a}, opposite});
            rows.push_back({[=] { return a * 2.5; },
                            name + "*2.5",
                            type,
                            {a},
                            [](Items in, std::size_t c) { return in[0][c] * 2.5; }});
            rows.push_back({[=] { return a + 2.5; },
                            name + "+2.5",
                            type,
                            {a},
                            [](Items in, std::size_t c) { return in[0][c] + 2.5; }});
            rows.push_back({[=] { return a - 2.5; },
                            name + "-2.5",
                            type,
                            {a},
                            [](Items in, std::size_t c) { return in[0][c] - 2.5; }});
            rows.push_back({[=] { return a / 2.5; },
                            name + "/2.5",
                            type,
                            {a},
                            [](Items in, std::size_t c) { return in[0][c] / 2.5; }});
            rows.push_back({[=, this] { return createMathFunctionResult(a, &halving); },
                            "half(" + name + ")",
                            type,
                            {a},
                            [](Items in, std::size_t c) { return in[0][c] / 2; }});
        }
        return rows;
    }

    std::vector<Description> products() {
        auto product = [](Items in, std::size_t) { return in[0][0] * in[1][0]; };
        auto quotient = [](Items in, std::size_t) { return in[0][0] / in[1][0]; };
        auto dotProduct = [](Items in, std::size_t) { return dot(in[0], in[1]); };
        auto crossProduct = [](Items in, std::size_t c) { return cross(in[0], in[1], c); };
        // A result that differs from the first argument tells the order of the arguments.
        const ResultInfo T2 = T * 0.5;
        const ResultInfo V2 = crooked(V);
        return {
            {[=, this] { return T * T2; }, "Temperature*Temperature*0.5", SCALAR, {T, T2}, product},
            {[=, this] { return P * P; }, "Pressure*Pressure", SCALAR, {P, P}, product},
            {[=, this] { return V * V2; }, "Velocity*crooked", SCALAR, {V, V2}, dotProduct},
            {[=, this] { return D * D; }, "Motion*Motion", SCALAR, {D, D}, dotProduct},
            {[=, this] { return T2 / T; }, "Temperature*0.5/Temperature", SCALAR, {T2, T}, quotient},
            {[=, this] { return V ^ V2; }, "Velocity^crooked", VECTOR, {V, V2}, crossProduct},
            {[=, this] { return T2 - T; },
             "Temperature*0.5-Temperature",
             SCALAR,
             {T2, T},
             [](Items in, std::size_t) { return in[0][0] - in[1][0]; }},
        };
    }

    std::vector<Description> ofOne() {
        std::vector<Description> rows;
        const char* vectorNames[] = {"X Velocity", "Y Velocity", "Z Velocity"};
        const char* tensorNames[] = {"XX Stress", "YY Stress", "ZZ Stress", "XY Stress", "YZ Stress", "ZX Stress"};
        for (unsigned long k = 0; k < 6; ++k) {
            auto extracted = [k](Items in, std::size_t) { return in[0][k]; };
            rows.push_back({[=, this] { return extractComponent(S, k); }, tensorNames[k], SCALAR, {S}, extracted});
            if (k < 3) {
                rows.push_back({[=, this] { return extractComponent(V, k); }, vectorNames[k], SCALAR, {V}, extracted});
            }
        }
        for (const ResultInfo& a : {V, D}) {
            const std::string name = a.name().toStdString();
            rows.push_back({[=] { return l1Norm(a); },
                            "|" + name + "|",
                            SCALAR,
                            {a},
                            [](Items in, std::size_t) {
                                return std::fabs(in[0][0]) + std::fabs(in[0][1]) + std::fabs(in[0][2]);
                            }});
            rows.push_back({[=] { return l2Norm(a); },
                            "All " + name,
                            SCALAR,
                            {a},
                            [](Items in, std::size_t) { return std::sqrt(dot(in[0], in[0])); }});
        }
        rows.push_back({[this] { return vonMises(S); },
                        "vonMises Stress",
                        SCALAR,
                        {S},
                        [](Items in, std::size_t) { return tensorOf(in[0]).vonMises(); }});
        return rows;
    }

    std::vector<Description> envelopes() {
        std::vector<Description> rows;
        for (const ResultInfo& a : {T, P, V, D, S}) {
            const std::string name = a.name().toStdString();
            const ResultInfo b = a - 1.0;
            const ResultInfo c = a + 4.0;
            const std::string bName = name + "-1";
            const std::string cName = name + "+4";
            rows.push_back({[=] {
                                return average({a, b, c});
                            },
                            "Avg(" + name + "," + bName + "," + cName + ")",
                            a.type(),
                            {a, b, c},
                            [](Items in, std::size_t k) { return (in[0][k] + in[1][k] + in[2][k]) / 3; }});
            rows.push_back({[=] {
                                return min({a, b});
                            },
                            "Min(" + name + "," + bName + ")",
                            a.type(),
                            {a, b},
                            [](Items in, std::size_t k) { return in[1][k]; }});
            rows.push_back({[=] {
                                return max({b, a});
                            },
                            "Max(" + bName + "," + name + ")",
                            a.type(),
                            {b, a},
                            [](Items in, std::size_t k) { return in[1][k]; }});
            rows.push_back({[=] { return max({a}); },
                            "Max(" + name + ")",
                            a.type(),
                            {a},
                            [](Items in, std::size_t k) { return in[0][k]; }});
        }
        return rows;
    }

    std::vector<Description> ofPrincipals() {
        using Tensor = orv::SymmetricTensor;
        using Value = double (Tensor::*)() const;
        using Vector = orv::Vec3d (Tensor::*)() const;
        const Value values[] = {&Tensor::firstPrincipalValue, &Tensor::secondPrincipalValue,
                                &Tensor::thirdPrincipalValue};
        const Vector vectors[] = {&Tensor::firstPrincipalVector, &Tensor::secondPrincipalVector,
                                  &Tensor::thirdPrincipalVector};
        const char* names[] = {"1st Principal Stress", "2nd Principal Stress", "3rd Principal Stress"};
        std::vector<Description> rows;
        for (std::size_t i = 0; i < 3; ++i) {
            rows.push_back({[=, this] { return principals(S)[i]; },
                            names[i],
                            VECTOR,
                            {S},
                            [=](Items in, std::size_t c) { return component((tensorOf(in[0]).*vectors[i])(), c); }});
            rows.push_back({[=, this] { return principals(S)[3 + i]; },
                            names[i],
                            SCALAR,
                            {S},
                            [=](Items in, std::size_t) { return (tensorOf(in[0]).*values[i])(); }});
        }
        return rows;
    }

    /// Turned in space by an amount that differs from item to item, so no product with `vector` vanishes.
    ResultInfo crooked(const ResultInfo& vector) {
        class Turning : public CustomResultFunction {
            bool computeItem(const std::vector<Item>& in, double* out) override {
                out[0] = in[0][1] + 3;
                out[1] = in[0][2] - 7;
                out[2] = 2 * in[0][0];
                return true;
            }
        };
        std::vector<ResultInfo> arguments = {vector};
        orv::PtrRef<CustomResultGenerator> generator(new CustomResultGenerator(1));
        generator->setFunction(new Turning);
        return ResultInfo(vector.type(), "crooked", vector.resultMapping(), arguments, generator.get());
    }

    void expectDescription(const Description& row, const ResultInfo& info) {
        EXPECT_EQ(info.name(), row.name);
        EXPECT_EQ(info.type(), row.type);
        EXPECT_EQ(info.resultMapping(), row.arguments[0].resultMapping());
        EXPECT_TRUE(info.isValid());
        EXPECT_TRUE(info.isCustom());
        EXPECT_EQ(info.customResultArguments(), row.arguments);
        ASSERT_NE(info.customResultGenerator(), nullptr);
        EXPECT_EQ(info.customResultGenerator()->argumentCount(), row.arguments.size());
        EXPECT_EQ(info.customResultGenerator()->refCount(), 1) << "more than the result holds its generator";
    }

    void expectValues(const Description& row, const ResultInfo& info) {
        ASSERT_TRUE(compute(info));
        for (std::size_t g = 0; g < state->geometryCount(); ++g) {
            for (std::size_t p = 0; p < state->geometry(g)->partCount(); ++p) {
                expectPart(row, *loaded(info, g)->values(p), g, p);
            }
        }
    }

    void expectPart(const Description& row, const DataPartValues& values, std::size_t g, std::size_t p) {
        for (std::size_t i = 0; i < values.itemCount(); ++i) {
            std::vector<Item> items;
            for (const ResultInfo& argument : row.arguments) {
                items.push_back(loaded(argument, g)->values(p)->values() + i * doublesPerItem(argument.type()));
            }
            for (std::size_t c = 0; c < values.dimension(); ++c) {
                EXPECT_DOUBLE_EQ(values.values()[i * values.dimension() + c], row.value(items, c));
            }
        }
    }

    /// Each argument is declared by its type: one of another type, with as many items, is refused.
    void expectArgumentTypes(const Description& row, const ResultInfo& info) {
        const bool isPerNode = info.resultMapping() == PER_NODE;
        for (std::size_t i = 0; i < row.arguments.size(); ++i) {
            std::vector<ResultInfo> arguments = row.arguments;
            const bool isScalar = arguments[i].type() == SCALAR;
            arguments[i] = isPerNode ? (isScalar ? V : T) : (isScalar ? S : P);
            EXPECT_FALSE(
                compute(ResultInfo(info.type(), "x", info.resultMapping(), arguments, info.customResultGenerator())));
        }
    }

    void expectAll(const std::vector<Description>& rows) {
        for (const Description& row : rows) {
            SCOPED_TRACE(row.name);
            const ResultInfo info = row.make();
            expectDescription(row, info);
            expectArgumentTypes(row, info);
            expectValues(row, info);
        }
    }
};

TEST_F(ResultOperatorsTableTest, ArithmeticOfEachType) {
    expectAll(arithmetic());
}

TEST_F(ResultOperatorsTableTest, Products) {
    expectAll(products());
}

TEST_F(ResultOperatorsTableTest, ComponentsAndSizes) {
    expectAll(ofOne());
}

TEST_F(ResultOperatorsTableTest, Envelopes) {
    expectAll(envelopes());
}

TEST_F(ResultOperatorsTableTest, Principals) {
    expectAll(ofPrincipals());
}

TEST_F(ResultOperatorsTest, NamesHaveNoParenthesesAndNoBlanks) {
    EXPECT_EQ(((T + T) * T).name(), "Temperature+Temperature*Temperature");
    EXPECT_EQ((T + (T * T)).name(), "Temperature+Temperature*Temperature");
    EXPECT_EQ((-(-T)).name(), "--Temperature");
}

TEST_F(ResultOperatorsTest, NumbersInNamesHaveSixDigitsAtMost) {
    const std::pair<double, const char*> rows[] = {
        {2, "Temperature*2"},
        {-2, "Temperature*-2"},
        {1e10, "Temperature*1e+10"},
        {0.1, "Temperature*0.1"},
        {1.0 / 3, "Temperature*0.333333"},
        {1234567, "Temperature*1.23457e+06"},
        {1e-5, "Temperature*1e-05"},
        {0, "Temperature*0"},
        {-0.0, "Temperature*-0"},
    };
    for (const auto& [value, name] : rows) {
        EXPECT_EQ((T * value).name(), name);
    }
}

TEST_F(ResultOperatorsTest, APercentSignInANameIsNoPlaceholder) {
    ResultInfo share = T;
    share.setName("%1");
    EXPECT_EQ((share * 2.5).name(), "%1*2.5");
    EXPECT_EQ((share + share).name(), "%1+%1");
}

TEST_F(ResultOperatorsTest, NothingIsRegisteredAndNothingIsComputed) {
    const unsigned long count = Results::instance()->count();
    const std::size_t bytes = state->resultByteCount();
    const ResultInfo info = vonMises(S) / 250.0;
    EXPECT_EQ(Results::instance()->count(), count);
    EXPECT_EQ(Results::instance()->indexOf(info), orv::UNDEFINED_SIZE_T);
    EXPECT_EQ(state->resultByteCount(), bytes);
}

TEST_F(ResultOperatorsTest, ConvertsToTheOtherMapping) {
    const ResultInfo perElement = toElementsArithmetic(V);
    EXPECT_EQ(perElement.name(), "Velocity[Elts]");
    EXPECT_EQ(perElement.type(), VECTOR);
    EXPECT_EQ(perElement.resultMapping(), PER_ELEMENT);
    EXPECT_EQ(perElement.customResultArguments(), std::vector<ResultInfo>{V});
    ASSERT_TRUE(compute(perElement));
    // The nodes 0 to 7 of the first part.
    const double ofNodeZero = orvtest::modelValue(2, V, 0, 0, 1);
    EXPECT_DOUBLE_EQ(loaded(perElement, 0)->values(0)->values()[1], ofNodeZero + 3.5);

    const ResultInfo perNode = toNodesArithmetic(P);
    EXPECT_EQ(perNode.name(), "Pressure[Nodes]");
    EXPECT_EQ(perNode.type(), SCALAR);
    EXPECT_EQ(perNode.resultMapping(), PER_NODE);
    EXPECT_EQ(perNode.customResultArguments(), std::vector<ResultInfo>{P});
    ASSERT_TRUE(compute(perNode));
    // "Column": node 4 belongs to both cubes.
    EXPECT_DOUBLE_EQ(loaded(perNode, 0)->values(1)->values()[4], orvtest::modelValue(2, P, 1, 0, 0) + 0.5);
}

TEST_F(ResultOperatorsTest, ConversionKeepsTheTypeOfItsArgument) {
    for (const ResultInfo& info : {T, V, D}) {
        EXPECT_EQ(toElementsArithmetic(info).type(), info.type());
    }
    EXPECT_EQ(toNodesArithmetic(S).type(), SYMMETRIC_TENSOR);
}

TEST_F(ResultOperatorsTest, ConstantResultsHoldOneNumber) {
    using Operator = ResultInfo (*)(const ResultInfo&, bool);
    struct Row {
        Operator make;
        bool perPart;
        const char* name;
        double base, column; ///< What the first two parts hold, beyond the first element's number there.
    };
    // "Column" has two elements, "Base" one, and the last part, "Nut", three: ones tell the element, tens the part.
    const Row rows[] = {
        {minValue, false, "minValue(Pressure)", 0, -10},
        {minValue, true, "minValuePerPart(Pressure)", 0, 0},
        {maxValue, false, "maxValue(Pressure)", 42, 32},
        {maxValue, true, "maxValuePerPart(Pressure)", 0, 1},
        // (0 + 10 + 11 + 20 + 30 + 40 + 41 + 42) / 8
        {averageValue, false, "avgValue(Pressure)", 24.25, 14.25},
        {averageValue, true, "avgValuePerPart(Pressure)", 0, 0.5},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const ResultInfo info = row.make(P, row.perPart);
        EXPECT_EQ(info.name(), row.name);
        EXPECT_EQ(info.customResultArguments(), std::vector<ResultInfo>{P});
        EXPECT_EQ(row.make(V, row.perPart).type(), VECTOR);
        EXPECT_EQ(row.make(V, row.perPart).resultMapping(), PER_NODE);
        ASSERT_TRUE(compute(info));
        EXPECT_DOUBLE_EQ(loaded(info, 0)->values(0)->values()[0], orvtest::modelValue(2, P, 0, 0, 0) + row.base);
        EXPECT_DOUBLE_EQ(loaded(info, 0)->values(1)->values()[1], orvtest::modelValue(2, P, 1, 0, 0) + row.column);
    }
}

TEST_F(ResultOperatorsTest, ArgumentsOfWholeResultsAreDeclaredByTheirType) {
    for (const ResultInfo& info : {toElementsArithmetic(T), toNodesArithmetic(P), minValue(T, true), maxValue(P, false),
                                   averageValue(T, false)}) {
        std::vector<ResultInfo> vector = {info.customResultArguments()[0].resultMapping() == PER_NODE ? V : S};
        EXPECT_FALSE(
            compute(ResultInfo(vector[0].type(), "x", info.resultMapping(), vector, info.customResultGenerator())));
    }
}

TEST_F(ResultOperatorsTest, EachResultIsItsOwn) {
    EXPECT_FALSE(T + T == T + T);
    const std::vector<ResultInfo> results = principals(S);
    for (std::size_t i = 0; i < results.size(); ++i) {
        for (std::size_t k = 0; k < i; ++k) {
            EXPECT_FALSE(results[i] == results[k]);
            EXPECT_NE(results[i].customResultGenerator(), results[k].customResultGenerator());
        }
    }
}

TEST_F(ResultOperatorsTest, DirectionAndValueOfAPrincipalShareAName) {
    for (const ResultInfo& info : principals(S)) {
        model.source->directory()->setCustomResultInfo(info);
    }
    Results* results = Results::instance();
    EXPECT_FALSE(results->resultInfo("2nd Principal Stress").isValid());
    EXPECT_EQ(asserts.take(), (Asserts{failed("OrvApp/Results_p", "foundCount < 2",
                                              "Found multiple results sharing the given pattern.")}));
    EXPECT_EQ(results->scalarInfo("2nd Principal Stress").type(), SCALAR);
    EXPECT_EQ(results->vectorInfo("2nd Principal Stress").type(), VECTOR);
}

TEST_F(ResultOperatorsTest, RegisteredResultsLoadWhatTheyRestOn) {
    // Intermediate results need no registration.
    const ResultInfo info = (V * V + T) / 2.0 - T;
    model.source->directory()->setCustomResultInfo(info);
    const DataPartScalar* values = Results::instance()->currentDataPartScalar(info);
    ASSERT_NE(values, nullptr);
    for (std::size_t i = 0; i < values->itemCount(); ++i) {
        const double t = orvtest::modelValue(2, T, 0, i, 0);
        const double v[] = {orvtest::modelValue(2, V, 0, i, 0), orvtest::modelValue(2, V, 0, i, 1),
                            orvtest::modelValue(2, V, 0, i, 2)};
        EXPECT_DOUBLE_EQ(values->value(i), (dot(v, v) + t) / 2 - t);
    }
}

TEST_F(ResultOperatorsTest, ExpressionsMayBeAThousandOperatorsDeep) {
    ResultInfo chain = T;
    double expected = orvtest::modelValue(2, T, 0, 0, 0);
    for (int i = 0; i < 1000; ++i) {
        chain = chain + 1.0;
        expected += 1.0;
    }
    EXPECT_EQ(chain.name().size(), 11u + 2 * 1000);
    model.source->directory()->setCustomResultInfo(chain);
    const DataPartScalar* values = Results::instance()->currentDataPartScalar(chain);
    ASSERT_NE(values, nullptr);
    EXPECT_EQ(values->value(0), expected);
}

} // namespace
