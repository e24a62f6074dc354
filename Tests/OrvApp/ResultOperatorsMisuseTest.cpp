#include "OrvApp/ResultOperators.h"

#include "Tests/OrvApp/ResultOperatorsFixture.h"

#include <functional>
#include <string>
#include <utility>
#include <vector>

using namespace orv::ug;
using orv::app::Models;
using orvtest::failed;
using orvtest::FailedAssert;
using orvtest::ResultOperatorsTest;

namespace {

using Asserts = std::vector<FailedAssert>;

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
            {[this] { return toElementsArithmetic(P); },
             {failed(here, "resultMapping == PER_NODE",
                     "Conversion to elements is only applicable to node-mapped results.")},
             {},
             "Pressure[Elts]",
             SCALAR,
             PER_ELEMENT},
            {[this] { return toNodesArithmetic(V); },
             {failed(here, "resultMapping == PER_ELEMENT",
                     "Conversion to nodes is only applicable to element-mapped results.")},
             {},
             "Velocity[Nodes]",
             VECTOR,
             PER_NODE},
            // These have no preconditions.
            {[this] { return minValue(N, false); }, {}, {}, "minValue()", NO_RESULT_TYPE, UNKNOWN_MAPPING},
            {[this] { return maxValue(N, false); }, {}, {}, "maxValue()", NO_RESULT_TYPE, UNKNOWN_MAPPING},
            {[this] { return averageValue(N, true); }, {}, {}, "avgValuePerPart()", NO_RESULT_TYPE, UNKNOWN_MAPPING},
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
        for (const ResultInfo& info : {T + T,
                                       T - T,
                                       -T,
                                       T * 2,
                                       T + 2,
                                       T - 2,
                                       T / 2,
                                       T / T,
                                       T * T,
                                       V ^ V,
                                       extractComponent(V, 0),
                                       createMathFunctionResult(T, &halving),
                                       l1Norm(V),
                                       l2Norm(V),
                                       average({T}),
                                       min({T}),
                                       max({T}),
                                       vonMises(S),
                                       toElementsArithmetic(T),
                                       toNodesArithmetic(P),
                                       minValue(T, false),
                                       maxValue(T, false),
                                       averageValue(T, true)}) {
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

TEST_F(ResultOperatorsMisuseTest, ProductsOfTensorsAreUndefined) {
    const ResultInfo product = S * S;
    ASSERT_TRUE(compute(product));
    for (double value : loaded(product, 0)->values(1)->span()) {
        EXPECT_EQ(value, orv::UNDEFINED_DOUBLE);
    }
    asserts.take();
}

TEST_F(ResultOperatorsMisuseTest, ArgumentsThatDifferDoNotLoad) {
    for (const ResultInfo& info : {T + V, T + P, V - D, T / P, T * P, N + N}) {
        EXPECT_FALSE(compute(info));
    }
    asserts.take();
}

} // namespace
