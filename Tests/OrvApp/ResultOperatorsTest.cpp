#include "OrvApp/ResultOperators.h"

#include "OrvApp/MathFunctionCallBack.h"
#include "OrvApp/Results.h"
#include "OrvCore/SymmetricTensor.h"
#include "OrvUnstructGrid/CustomResultGenerator.h"
#include "Tests/OrvApp/CatalogueTest.h"
#include "Tests/Support/MemoryModels.h"

#include <cmath>
#include <functional>
#include <limits>
#include <string>
#include <utility>
#include <vector>

using namespace orv::ug;
using orv::app::Models;
using orv::app::Results;
using orvtest::failed;
using orvtest::FailedAssert;
using orvtest::MemoryModel;

namespace {

using Item = const double*;
using Asserts = std::vector<FailedAssert>;

class Halving : public orv::app::MathFunctionCallBack {
public:
    Halving() : MathFunctionCallBack("half") {}

    double evaluate(double value) override {
        return value / 2;
    }
};

class ResultOperatorsTest : public orvtest::CatalogueTest {
protected:
    ResultOperatorsTest() {
        Models::instance()->add(orvtest::modelOn(model.source.get(), 2).get());
    }

    bool compute(const ResultInfo& info) {
        return CustomResultGenerator::compute(model.source.get(), info, state);
    }

    DataResult* loaded(const ResultInfo& info, std::size_t geometry) {
        return state->results(state->geometry(geometry))->find(info);
    }

    MemoryModel model;
    DataState* state = model.state(2);
    Halving halving;

    const ResultInfo T = model.temperature;
    const ResultInfo P = model.pressure;
    const ResultInfo V = model.velocity;
    const ResultInfo D = model.displacement;
    const ResultInfo S = model.stress;
};

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

const std::string here = "OrvApp/ResultOperators";
const char* const fourTypes =
    "resultType == SCALAR || resultType == VECTOR || resultType == DISPLACEMENT || resultType == SYMMETRIC_TENSOR";
const char* const threeTypes = "resultType == SCALAR || resultType == VECTOR || resultType == DISPLACEMENT";
const char* const twoTypes = "resultType == VECTOR || resultType == DISPLACEMENT";
const char* const sameType = "resultType == second.type()";
const char* const sameMapping = "resultMapping == second.resultMapping()";
const char* const addMessage =
    "Cannot add results, only scalars, vectors, displacement or symmetric tensors are handled.";
const FailedAssert unknownType = failed(here, "0");

/// A wrong use of an operator, what it asserts, and what it describes nevertheless.
struct Misuse {
    std::function<ResultInfo()> call;
    Asserts checks; ///< Before the model is looked at.
    Asserts later;
    std::string name;
    ResultType type;
    ResultMapping mapping;
};

class ResultOperatorsMisuseTest : public ResultOperatorsTest {
protected:
    std::vector<Misuse> ofTwo() {
        const FailedAssert addType = failed(here, fourTypes, addMessage);
        const FailedAssert addTypes = failed(here, sameType, "Cannot add results when they are of different types");
        const FailedAssert addMappings =
            failed(here, sameMapping, "Cannot add results when they have different mappings");
        const FailedAssert subtractType =
            failed(here, fourTypes,
                   "Cannot subtract results, only scalars, vectors, displacement or symmetric tensors are handled.");
        const FailedAssert subtractTypes =
            failed(here, sameType, "Cannot subtract results when they are of different types");
        const FailedAssert subtractMappings =
            failed(here, sameMapping, "Cannot subtract results when they have different mappings");
        const FailedAssert divideType =
            failed(here, "resultType == SCALAR", "Cannot divide results, only scalars are handled.");
        const FailedAssert multiplyType =
            failed(here, threeTypes, "Cannot multiply results, only scalars, vectors, displacement are handled.");
        const FailedAssert multiplyTypes =
            failed(here, sameType, "Cannot multiply results when they are of different types");
        const FailedAssert multiplyMappings =
            failed(here, sameMapping, "Cannot multiply results when they have different mappings");
        const FailedAssert crossType =
            failed(here, "resultType == VECTOR",
                   "Cannot compute the cross-product of two result. The operator only applies to vectors.");
        const FailedAssert crossTypes =
            failed(here, sameType, "Cannot compute the cross-product of two results when they are of different types");
        return {
            {[this] { return T + V; }, {addTypes}, {}, "Temperature+Velocity", SCALAR, PER_NODE},
            {[this] { return V + T; }, {addTypes}, {}, "Velocity+Temperature", VECTOR, PER_NODE},
            {[this] { return T + P; }, {addMappings}, {}, "Temperature+Pressure", SCALAR, PER_NODE},
            {[this] { return P + T; }, {addMappings}, {}, "Pressure+Temperature", SCALAR, PER_ELEMENT},
            {[this] { return S + T; },
             {addTypes, addMappings},
             {},
             "Stress+Temperature",
             SYMMETRIC_TENSOR,
             PER_ELEMENT},
            {[this] { return N + N; }, {addType}, {unknownType}, "+", NO_RESULT_TYPE, UNKNOWN_MAPPING},
            {[this] { return N + T; },
             {addType, addTypes, addMappings},
             {unknownType},
             "+Temperature",
             NO_RESULT_TYPE,
             UNKNOWN_MAPPING},
            {[this] { return T - V; }, {subtractTypes}, {}, "Temperature-Velocity", SCALAR, PER_NODE},
            {[this] { return P - T; }, {subtractMappings}, {}, "Pressure-Temperature", SCALAR, PER_ELEMENT},
            {[this] { return N - T; },
             {subtractType, subtractTypes, subtractMappings},
             {unknownType},
             "-Temperature",
             NO_RESULT_TYPE,
             UNKNOWN_MAPPING},
            {[this] { return V / V; }, {divideType}, {}, "Velocity/Velocity", SCALAR, PER_NODE},
            {[this] { return T / V; }, {multiplyTypes}, {}, "Temperature/Velocity", SCALAR, PER_NODE},
            {[this] { return P / T; }, {multiplyMappings}, {}, "Pressure/Temperature", SCALAR, PER_ELEMENT},
            {[this] { return N / T; },
             {divideType, multiplyTypes, multiplyMappings},
             {},
             "/Temperature",
             SCALAR,
             UNKNOWN_MAPPING},
            {[this] { return S * S; }, {multiplyType}, {unknownType}, "Stress*Stress", SCALAR, PER_ELEMENT},
            {[this] { return V * D; }, {multiplyTypes}, {}, "Velocity*Motion", SCALAR, PER_NODE},
            {[this] { return P * T; }, {multiplyMappings}, {}, "Pressure*Temperature", SCALAR, PER_ELEMENT},
            {[this] { return N * T; },
             {multiplyType, multiplyTypes, multiplyMappings},
             {unknownType},
             "*Temperature",
             SCALAR,
             UNKNOWN_MAPPING},
            {[this] { return D ^ D; }, {crossType}, {}, "Motion^Motion", VECTOR, PER_NODE},
            {[this] { return V ^ D; }, {crossTypes}, {}, "Velocity^Motion", VECTOR, PER_NODE},
            {[this] { return P ^ V; },
             {crossType, crossTypes, multiplyMappings},
             {},
             "Pressure^Velocity",
             VECTOR,
             PER_ELEMENT},
        };
    }

    std::vector<Misuse> ofOne() {
        const FailedAssert addType = failed(here, fourTypes, addMessage);
        const FailedAssert mathType = failed(here, fourTypes,
                                             "Cannot apply math function to result, only scalars, vectors, "
                                             "displacement or symmetric tensors are handled.");
        const FailedAssert l1Type = failed(here, twoTypes, "L1 norm is only applicable to vectors and displacements.");
        const FailedAssert l2Type = failed(here, twoTypes, "L2 norm is only applicable to vectors and displacements.");
        const FailedAssert vonMisesType = failed(here, "resultType == SYMMETRIC_TENSOR",
                                                 "Cannot compute vonMises result, only symmetric tensors are handled.");
        return {
            {[this] { return -N; }, {addType}, {unknownType}, "-", NO_RESULT_TYPE, UNKNOWN_MAPPING},
            {[this] { return N * 2; }, {addType}, {unknownType}, "*2", NO_RESULT_TYPE, UNKNOWN_MAPPING},
            {[this] { return N + 2; }, {addType}, {unknownType}, "+2", NO_RESULT_TYPE, UNKNOWN_MAPPING},
            {[this] { return N - 2; }, {addType}, {unknownType}, "-2", NO_RESULT_TYPE, UNKNOWN_MAPPING},
            {[this] { return N / 2; }, {addType}, {unknownType}, "/2", NO_RESULT_TYPE, UNKNOWN_MAPPING},
            {[this] { return createMathFunctionResult(N, &halving); },
             {mathType},
             {unknownType},
             "half()",
             NO_RESULT_TYPE,
             UNKNOWN_MAPPING},
            {[this] { return l1Norm(T); }, {l1Type}, {}, "|Temperature|", SCALAR, PER_NODE},
            {[this] { return l1Norm(S); }, {l1Type}, {}, "|Stress|", SCALAR, PER_ELEMENT},
            {[this] { return l2Norm(T); }, {l2Type}, {}, "All Temperature", SCALAR, PER_NODE},
            {[this] { return l2Norm(N); }, {l2Type}, {}, "All ", SCALAR, UNKNOWN_MAPPING},
            {[this] { return vonMises(V); }, {vonMisesType}, {}, "vonMises Velocity", SCALAR, PER_NODE},
            {[this] { return vonMises(N); }, {vonMisesType}, {}, "vonMises ", SCALAR, UNKNOWN_MAPPING},
            // No type is checked before the model is looked at.
            {[this] { return average({N}); }, {}, {unknownType}, "Avg()", NO_RESULT_TYPE, UNKNOWN_MAPPING},
            {[this] {
                 return min({N, N});
             },
             {},
             {unknownType},
             "Min(,)",
             NO_RESULT_TYPE,
             UNKNOWN_MAPPING},
            {[this] { return max({N}); }, {}, {unknownType}, "Max()", NO_RESULT_TYPE, UNKNOWN_MAPPING},
        };
    }

    std::vector<Misuse> ofComponents() {
        const FailedAssert type =
            failed(here, "resultType == VECTOR || resultType == DISPLACEMENT || resultType == SYMMETRIC_TENSOR",
                   "Component extraction is only applicable to vectors, displacements and tensors.");
        const FailedAssert below3 = failed(here, "componentIndex < 3", "Components must be less or equal than 2");
        const FailedAssert below6 = failed(here, "componentIndex < 6", "Components must be less or equal than 6");
        return {
            {[this] { return extractComponent(V, 3); }, {}, {below3}, " Velocity", SCALAR, PER_NODE},
            {[this] { return extractComponent(S, 6); }, {}, {below6}, " Stress", SCALAR, PER_ELEMENT},
            // The names do not know displacements.
            {[this] { return extractComponent(D, 0); }, {}, {unknownType}, " Motion", SCALAR, PER_NODE},
            {[this] { return extractComponent(D, 2); }, {}, {unknownType}, " Motion", SCALAR, PER_NODE},
            {[this] { return extractComponent(D, 3); }, {}, {below3, unknownType}, " Motion", SCALAR, PER_NODE},
            {[this] { return extractComponent(T, 0); },
             {type},
             {unknownType, unknownType},
             " Temperature",
             SCALAR,
             PER_NODE},
            {[this] { return extractComponent(N, 9); },
             {type},
             {unknownType, unknownType},
             " ",
             SCALAR,
             UNKNOWN_MAPPING},
        };
    }

    std::vector<Misuse> all() {
        std::vector<Misuse> rows = ofTwo();
        for (const std::vector<Misuse>& more : {ofOne(), ofComponents()}) {
            rows.insert(rows.end(), more.begin(), more.end());
        }
        return rows;
    }

    void expectSilentlyInvalid(const ResultInfo& info) {
        EXPECT_FALSE(info.isValid());
        EXPECT_FALSE(info.isCustom());
        EXPECT_EQ(asserts.take(), Asserts());
    }

    /// Right and wrong uses alike check their arguments and then give up without a further word.
    void expectNothingToDescribe() {
        for (const Misuse& row : all()) {
            SCOPED_TRACE(row.name);
            EXPECT_FALSE(row.call().isValid());
            EXPECT_EQ(asserts.take(), row.checks);
        }
        for (const ResultInfo& info : {T + T, T - T, -T, T * 2, T + 2, T - 2, T / 2, T / T, T * T, V ^ V,
                                       extractComponent(V, 0), createMathFunctionResult(T, &halving), l1Norm(V),
                                       l2Norm(V), average({T}), min({T}), max({T}), vonMises(S)}) {
            expectSilentlyInvalid(info);
        }
        EXPECT_TRUE(principals(S).empty());
        EXPECT_EQ(asserts.take(), Asserts());
        EXPECT_TRUE(principals(V).empty());
        EXPECT_EQ(asserts.take().size(), 1u);
    }

    const ResultInfo N; ///< Invalid.
};

TEST_F(ResultOperatorsMisuseTest, DescribesAResultBehindFailedAssertions) {
    for (const Misuse& row : all()) {
        SCOPED_TRACE(row.name);
        const ResultInfo info = row.call();
        Asserts expected = row.checks;
        expected.insert(expected.end(), row.later.begin(), row.later.end());
        EXPECT_EQ(asserts.take(), expected);
        EXPECT_EQ(info.name(), row.name);
        EXPECT_EQ(info.type(), row.type);
        EXPECT_EQ(info.resultMapping(), row.mapping);
        EXPECT_TRUE(info.isValid());
        EXPECT_TRUE(info.isCustom());
    }
}

TEST_F(ResultOperatorsMisuseTest, WithoutACurrentModelThereIsNothing) {
    Models::instance()->setCurrentIndex(orv::UNDEFINED_SIZE_T);
    expectNothingToDescribe();
}

TEST_F(ResultOperatorsMisuseTest, WithoutADataSourceThereIsNothing) {
    Models::instance()->current()->setDataSource(nullptr);
    expectNothingToDescribe();
}

TEST_F(ResultOperatorsMisuseTest, AnyModelWillDo) {
    const auto other = orvtest::memorySource({{"part"}}, {{1, "one"}});
    Models::instance()->add(orvtest::modelOn(other.get(), -1).get());
    EXPECT_TRUE((T + T).isValid());
    EXPECT_EQ(principals(S).size(), 6u);
}

TEST_F(ResultOperatorsMisuseTest, EnvelopesOfMixedTypesAreInvalidWithoutAWord) {
    for (auto envelope : {&average, &min, &max}) {
        expectSilentlyInvalid(envelope({T, V}));
        expectSilentlyInvalid(envelope({T, T, V}));
        expectSilentlyInvalid(envelope({V, D}));
        expectSilentlyInvalid(envelope({T, N}));
    }
}

TEST_F(ResultOperatorsMisuseTest, EnvelopesTakeTheMappingOfTheFirstArgument) {
    for (auto envelope : {&average, &min, &max}) {
        EXPECT_EQ(envelope({T, P}).resultMapping(), PER_NODE);
        EXPECT_EQ(envelope({P, T, T}).resultMapping(), PER_ELEMENT);
        EXPECT_FALSE(compute(envelope({T, P})));
    }
}

TEST_F(ResultOperatorsMisuseTest, EnvelopesNeedAnArgument) {
    using Envelope = ResultInfo (*)(const std::vector<ResultInfo>&);
    const std::pair<Envelope, const char*> rows[] = {{&average, "No results provided to compute average"},
                                                     {&min, "No results provided to compute min"},
                                                     {&max, "No results provided to compute max"}};
    for (const auto& [envelope, message] : rows) {
        // Behind the assertion it reads an argument that is not there.
        EXPECT_EQ(asserts.takeUntil(1, [envelope = envelope] { envelope({}); }),
                  (Asserts{failed(here, "arguments.size() > 0", message)}));
    }
}

TEST_F(ResultOperatorsMisuseTest, PrincipalsOfAnotherTypeAreDescribed) {
    const std::vector<ResultInfo> results = principals(V);
    EXPECT_EQ(asserts.take(),
              (Asserts{failed(here, "resultType == SYMMETRIC_TENSOR",
                              "Cannot compute principals results, only symmetric tensors are handled.")}));
    ASSERT_EQ(results.size(), 6u);
    EXPECT_EQ(results[5].name(), "3rd Principal Velocity");
    EXPECT_EQ(results[5].resultMapping(), PER_NODE);
}

TEST_F(ResultOperatorsMisuseTest, ArgumentsThatDifferDoNotLoad) {
    for (const ResultInfo& info : {T + V, T + P, V - D, T / P, T * P, N + N}) {
        EXPECT_FALSE(compute(info));
    }
    asserts.take();
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
