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

} // namespace
