#include "Tools/ExpressionResult.h"

#include "OrvApp/OrvApp.h"
#include "Tests/OrvApp/CatalogueTest.h"
#include "Tests/Support/MemoryModels.h"
#include "Tests/Tools/Eigenvalues.h"
#include "Tools/Expression.h"
#include "Tools/ExpressionError.h"
#include "Tools/ExpressionFunctions.h"

#include <gmock/gmock.h>

#include <cmath>
#include <deque>
#include <functional>
#include <limits>
#include <random>
#include <set>

using namespace orv::ug;
using namespace orvapp;
using orvtest::modelValue;
using testing::DoubleNear;
using testing::Each;
using testing::Eq;

namespace {

constexpr int STATE = 2; // the one that has all results
constexpr double UNDEFINED = orv::UNDEFINED_DOUBLE;

/// Where a value stands: a part of MemoryModel, counted through all geometries, its cubes, and an item.
struct Place {
    std::size_t part;
    std::size_t cubes;
    std::size_t item;
};

class ExpressionResultTest : public orvtest::CatalogueTest {
protected:
    ExpressionResultTest() {
        orv::app::Models::instance()->add(orvtest::modelOn(m_model.source.get(), STATE).get());
    }

    DataSourceDirectory& directory() {
        return *m_model.source->directory();
    }

    std::vector<ResultInfo> results() {
        std::vector<ResultInfo> all;
        for (const auto type : {SCALAR, VECTOR, SYMMETRIC_TENSOR, DISPLACEMENT}) {
            const std::vector<ResultInfo> ofType = directory().resultInfos(type);
            all.insert(all.end(), ofType.begin(), ofType.end());
        }
        return all;
    }

    ResultInfo build(const std::string& text) {
        m_built.push_back(buildResult(parseExpression(text), results()));
        return m_built.back().info;
    }

    std::string refusalOf(const std::string& text) {
        try {
            build(text);
        } catch (const ExpressionError& error) {
            return error.what();
        }
        return "";
    }

    /// The values of a part; empty when they cannot be had.
    std::vector<double> load(const ResultInfo& info, std::size_t geometry, std::size_t part) {
        if (info.isCustom()) {
            orv::app::Results::instance()->add(info, "the result");
        }
        DataStateSpec spec;
        spec.setResultIds({info});
        Error error;
        EXPECT_TRUE(m_model.source->loadDataState(STATE, spec, &error)) << error.message();
        DataState* state = m_model.state(STATE);
        const DataResult* result = state->results(state->geometry(geometry))->find(info);
        const DataPartValues* values = result ? result->values(part) : nullptr;
        return values ? std::vector<double>(values->span().begin(), values->span().end()) : std::vector<double>();
    }

    std::vector<double> valuesOf(const std::string& text, std::size_t geometry = 0, std::size_t part = 0) {
        return load(build(text), geometry, part);
    }

    /// Takes the value of one item of the first part away.
    void makeMissing(const ResultInfo& info, std::size_t item, std::vector<std::size_t> components) {
        std::vector<double> values = load(info, 0, 0);
        for (const std::size_t component : components) {
            values[item * doublesPerItem(info.type()) + component] = UNDEFINED;
        }
        ASSERT_TRUE(m_model.source->setValues(STATE, info, 0, 0, values, nullptr));
    }

    double temperature(const Place& at) {
        return modelValue(STATE, m_model.temperature, at.part, at.item, 0);
    }

    double pressure(const Place& at) {
        return modelValue(STATE, m_model.pressure, at.part, at.item, 0);
    }

    double velocity(const Place& at, std::size_t c) {
        return modelValue(STATE, m_model.velocity, at.part, at.item, c);
    }

    double motion(const Place& at, std::size_t c) {
        return modelValue(STATE, m_model.displacement, at.part, at.item, c);
    }

    std::array<double, 6> stress(const Place& at) {
        std::array<double, 6> tensor;
        for (std::size_t c = 0; c < 6; ++c) {
            tensor[c] = modelValue(STATE, m_model.stress, at.part, at.item, c);
        }
        return tensor;
    }

    std::array<double, 3> principal(const Place& at) {
        return orvtest::eigenvalues(stress(at).data());
    }

    orvtest::MemoryModel m_model;

private:
    std::deque<ExpressionResult> m_built;
};

const std::vector<std::vector<std::size_t>> CUBES = {{1, 2, 1}, {1, 3}}; // of each part of each geometry

} // namespace

class ExpressionValuesTest : public ExpressionResultTest {
protected:
    using Expected = std::function<double(const Place&, std::size_t)>;

    /// Compares all items of all parts, to a relative precision.
    void expect(const std::string& text, ResultType type, ResultMapping mapping, const Expected& expected,
                double precision = 1e-13) {
        SCOPED_TRACE(text);
        m_functions.insert(text.substr(0, text.find('(')));
        const ResultInfo info = build(text);
        EXPECT_EQ(info.type(), type);
        EXPECT_EQ(info.resultMapping(), mapping);
        std::size_t partInModel = 0;
        for (std::size_t g = 0; g < CUBES.size(); ++g) {
            for (std::size_t p = 0; p < CUBES[g].size(); ++p, ++partInModel) {
                const std::vector<double> values = load(info, g, p);
                const std::size_t items = mapping == PER_NODE ? 4 * CUBES[g][p] + 4 : CUBES[g][p];
                ASSERT_EQ(values.size(), items * doublesPerItem(type));
                for (std::size_t i = 0; i < values.size(); ++i) {
                    const Place place{partInModel, CUBES[g][p], i / doublesPerItem(type)};
                    const double value = expected(place, i % doublesPerItem(type));
                    ASSERT_NEAR(values[i], value, precision * std::fabs(value)) << partInModel << ' ' << i;
                }
            }
        }
    }

    std::set<std::string> m_functions; ///< What stood in front of the first parenthesis.
};

TEST_F(ExpressionValuesTest, EachFunctionGivesWhatItSays) {
    const auto t = [this](const Place& at) { return temperature(at); };
    expect(
        "vonMises(Stress)", SCALAR, PER_ELEMENT,
        [&](const Place& at, std::size_t) { return orvtest::equivalentStress(principal(at)); }, 1e-7);
    for (std::size_t i = 0; i < 3; ++i) {
        // The tensors are nearly of rank one: only the first principal value is large. The others are exact to 1e-7 of
        // the tensor.
        expect(
            "principals(Stress)[" + std::to_string(3 + i) + "] + 50000", SCALAR, PER_ELEMENT,
            [&](const Place& at, std::size_t) { return principal(at)[i] + 50000; }, 1e-7);
    }
    expect("l2Norm(Velocity)", SCALAR, PER_NODE,
           [&](const Place& at, std::size_t) { return std::hypot(velocity(at, 0), velocity(at, 1), velocity(at, 2)); });
    expect("l2Norm(Motion)", SCALAR, PER_NODE,
           [&](const Place& at, std::size_t) { return std::hypot(motion(at, 0), motion(at, 1), motion(at, 2)); });
    expect("l1Norm(-Motion)", SCALAR, PER_NODE,
           [&](const Place& at, std::size_t) { return motion(at, 0) + motion(at, 1) + motion(at, 2); });
    for (std::size_t i = 0; i < 6; ++i) {
        expect("extractComponent(Stress, " + std::to_string(i) + ")", SCALAR, PER_ELEMENT,
               [&](const Place& at, std::size_t) { return stress(at)[i]; });
    }
    for (std::size_t i = 0; i < 3; ++i) {
        expect("extractComponent(Velocity, " + std::to_string(i) + ")", SCALAR, PER_NODE,
               [&](const Place& at, std::size_t) { return velocity(at, i); });
        expect("extractComponent(Motion, " + std::to_string(i) + ")", SCALAR, PER_NODE,
               [&](const Place& at, std::size_t) { return motion(at, i); });
    }
    // 12105.5 is in the midst of the first part's temperatures.
    expect("min(Temperature, 12105.5 + Temperature*0)", SCALAR, PER_NODE,
           [&](const Place& at, std::size_t) { return std::min(t(at), 12105.5); });
    expect("max(Temperature, 12105.5 + Temperature*0, 0*Temperature)", SCALAR, PER_NODE,
           [&](const Place& at, std::size_t) { return std::max(t(at), 12105.5); });
    expect("average(Motion, 2*Motion, 6*Motion)", DISPLACEMENT, PER_NODE,
           [&](const Place& at, std::size_t c) { return 3 * motion(at, c); });
    // By modelValue(): in the first part the first item is smallest and the last digit of 7 largest, in the last one
    // (part 4, with 16 nodes) digits go up to 9. Of 8 + 12 + 8 + 8 + 16 = 52 temperatures the last digits add up to
    // 3 * 28 + 46 + 60 = 190, and the parts' tens to 10 * (12 + 2*8 + 3*8 + 4*16) = 1160.
    expect("minValue(Temperature)", SCALAR, PER_NODE, [](const Place&, std::size_t) { return 12100; });
    expect("maxValue(Temperature, false)", SCALAR, PER_NODE, [](const Place&, std::size_t) { return 12149; });
    expect("averageValue(Temperature)", SCALAR, PER_NODE,
           [](const Place&, std::size_t) { return 12100 + (190 + 1160) / 52.0; });
    expect("minValue(Temperature, true)", SCALAR, PER_NODE,
           [](const Place& at, std::size_t) { return 12100 + 10.0 * double(at.part); });
    expect("maxValue(Temperature, true)", SCALAR, PER_NODE,
           [](const Place& at, std::size_t) { return 12100 + 10.0 * double(at.part) + (at.cubes == 1 ? 7 : 9); });
    expect("averageValue(Temperature, true)", SCALAR, PER_NODE, [](const Place& at, std::size_t) {
        return 12100 + 10.0 * double(at.part) + (at.cubes == 1 ? 3.5 : at.cubes == 2 ? 46 / 12.0 : 60 / 16.0);
    });
    // A cube has the eight nodes of the planes in front of and behind it, with four nodes each.
    expect("toElementsArithmetic(Temperature)", SCALAR, PER_ELEMENT, [&](const Place& at, std::size_t) {
        double sum = 0;
        for (std::size_t node = 4 * at.item; node < 4 * at.item + 8; ++node) {
            sum += t({at.part, at.cubes, node});
        }
        return sum / 8;
    });
    expect("toNodesArithmetic(Stress)", SYMMETRIC_TENSOR, PER_NODE, [&](const Place& at, std::size_t c) {
        const std::size_t plane = at.item / 4;
        const std::size_t before = plane == 0 ? 0 : plane - 1;
        const std::size_t behind = std::min(plane, at.cubes - 1);
        return (stress({at.part, at.cubes, before})[c] + stress({at.part, at.cubes, behind})[c]) / 2;
    });
    expect("abs(-Stress)", SYMMETRIC_TENSOR, PER_ELEMENT,
           [&](const Place& at, std::size_t c) { return stress(at)[c]; });
    expect("sqrt(Velocity)", VECTOR, PER_NODE,
           [&](const Place& at, std::size_t c) { return std::sqrt(velocity(at, c)); });
    expect("exp(Motion/1000)", DISPLACEMENT, PER_NODE,
           [&](const Place& at, std::size_t c) { return std::exp(motion(at, c) / 1000); });
    expect("log(Pressure)", SCALAR, PER_ELEMENT, [&](const Place& at, std::size_t) { return std::log(pressure(at)); });
    expect("log10(Pressure)", SCALAR, PER_ELEMENT,
           [&](const Place& at, std::size_t) { return std::log(pressure(at)) / std::log(10.0); });
    expect("sin(Temperature)", SCALAR, PER_NODE, [&](const Place& at, std::size_t) { return std::sin(t(at)); });
    expect("cos(Temperature)", SCALAR, PER_NODE, [&](const Place& at, std::size_t) { return std::cos(t(at)); });
    expect("tan(Temperature)", SCALAR, PER_NODE, [&](const Place& at, std::size_t) { return std::tan(t(at)); });
    expect("asin(Temperature/20000)", SCALAR, PER_NODE,
           [&](const Place& at, std::size_t) { return std::asin(t(at) / 20000); });
    expect("acos(Temperature/20000)", SCALAR, PER_NODE,
           [&](const Place& at, std::size_t) { return std::acos(t(at) / 20000); });
    expect("atan(Temperature/20000)", SCALAR, PER_NODE,
           [&](const Place& at, std::size_t) { return std::atan(t(at) / 20000); });
    expect("pow(Temperature, 1+0.5)", SCALAR, PER_NODE,
           [&](const Place& at, std::size_t) { return t(at) * std::sqrt(t(at)); });
    for (const ExpressionFunction& function : expressionFunctions()) {
        EXPECT_TRUE(m_functions.contains(function.name)) << function.name << " has no row here";
    }
}

TEST_F(ExpressionValuesTest, EachOperatorGivesWhatItSays) {
    const auto t = [this](const Place& at) { return temperature(at); };
    expect("Temperature + 2*Temperature", SCALAR, PER_NODE, [&](const Place& at, std::size_t) { return 3 * t(at); });
    expect("3*Stress - Stress", SYMMETRIC_TENSOR, PER_ELEMENT,
           [&](const Place& at, std::size_t c) { return 2 * stress(at)[c]; });
    expect("Temperature*Temperature", SCALAR, PER_NODE, [&](const Place& at, std::size_t) { return t(at) * t(at); });
    expect("Velocity*Velocity", SCALAR, PER_NODE, [&](const Place& at, std::size_t) {
        return velocity(at, 0) * velocity(at, 0) + velocity(at, 1) * velocity(at, 1) +
               velocity(at, 2) * velocity(at, 2);
    });
    expect("(Pressure*Pressure)/Pressure", SCALAR, PER_ELEMENT,
           [&](const Place& at, std::size_t) { return pressure(at); });
    // (v, v + 0.1, v + 0.2) and the same with 1 added to each component.
    expect(
        "Velocity^(Velocity + 1)", VECTOR, PER_NODE, [&](const Place&, std::size_t c) { return c == 1 ? 0.2 : -0.1; },
        1e-6);
    expect("Motion + 2.5", DISPLACEMENT, PER_NODE, [&](const Place& at, std::size_t c) { return motion(at, c) + 2.5; });
    expect("2.5 + Motion", DISPLACEMENT, PER_NODE, [&](const Place& at, std::size_t c) { return motion(at, c) + 2.5; });
    expect("Motion - 2.5", DISPLACEMENT, PER_NODE, [&](const Place& at, std::size_t c) { return motion(at, c) - 2.5; });
    expect("2.5 - Motion", DISPLACEMENT, PER_NODE, [&](const Place& at, std::size_t c) { return 2.5 - motion(at, c); });
    expect("Stress*2.5", SYMMETRIC_TENSOR, PER_ELEMENT,
           [&](const Place& at, std::size_t c) { return stress(at)[c] * 2.5; });
    expect("2.5*Stress", SYMMETRIC_TENSOR, PER_ELEMENT,
           [&](const Place& at, std::size_t c) { return stress(at)[c] * 2.5; });
    expect("Stress/2.5", SYMMETRIC_TENSOR, PER_ELEMENT,
           [&](const Place& at, std::size_t c) { return stress(at)[c] / 2.5; });
    expect("2.5/Temperature", SCALAR, PER_NODE, [&](const Place& at, std::size_t) { return 2.5 / t(at); });
    expect("-Velocity", VECTOR, PER_NODE, [&](const Place& at, std::size_t c) { return -velocity(at, c); });
    expect("+Velocity", VECTOR, PER_NODE, [&](const Place& at, std::size_t c) { return velocity(at, c); });
}

TEST_F(ExpressionValuesTest, DirectionsAreThoseOfThePrincipalValues) {
    for (std::size_t i = 0; i < 3; ++i) {
        const std::vector<double> direction = valuesOf("principals(Stress)[" + std::to_string(i) + "]");
        const Place first{0, 1, 0};
        const std::array<double, 6> s = stress(first);
        const double turned[] = {s[0] * direction[0] + s[3] * direction[1] + s[5] * direction[2],
                                 s[3] * direction[0] + s[1] * direction[1] + s[4] * direction[2],
                                 s[5] * direction[0] + s[4] * direction[1] + s[2] * direction[2]};
        for (std::size_t c = 0; c < 3; ++c) {
            EXPECT_NEAR(turned[c], principal(first)[i] * direction[c], 1e-6 * s[0]);
        }
    }
}

TEST_F(ExpressionResultTest, NumbersAreComputedAtOnce) {
    // 12100 is the first temperature.
    struct Row {
        const char* number;
        double value;
    };
    const Row rows[] = {{"1+2", 3},     {"1-2", -1},         {"2*3", 6},         {"7/2", 3.5},
                        {"-(2)", -2},   {"--2", 2},          {"2-3*4", -10},     {"(2-3)*4", -4},
                        {"sqrt(9)", 3}, {"pow(2,10)", 1024}, {"abs(-2)", 2},     {"exp(0)", 1},
                        {"8/4/2", 1},   {"10-4-3", 3},       {"log10(1000)", 3}, {"pow(4, 1/2)", 2}};
    for (const Row& row : rows) {
        EXPECT_EQ(valuesOf(std::string("Temperature*0 + (") + row.number + ")").front(), row.value) << row.number;
    }
}

TEST_F(ExpressionResultTest, JustANameIsThatResult) {
    EXPECT_EQ(build("Temperature"), m_model.temperature);
    EXPECT_EQ(build("'Temperature'"), m_model.temperature);
    EXPECT_EQ(build("((Motion))"), m_model.displacement);
    EXPECT_FALSE(build("Motion").isCustom());
}

TEST_F(ExpressionResultTest, StepsBearTheirTextShortened) {
    const ResultInfo info = build("vonMises( Stress ) / 2");
    EXPECT_EQ(info.name(), "vonMises( Stress ) / 2");
    EXPECT_EQ(info.customResultArguments()[0].name(), "vonMises( Stress )");
    EXPECT_EQ(info.customResultArguments()[0].customResultArguments()[0].name(), "Stress");
    const std::string sum = "Temperature + Temperature + Temperature + Temperature + Temperature";
    EXPECT_EQ(build(sum).name().toStdString(), sum.substr(0, 57) + "...");
    // 61 characters of four bytes.
    std::string name;
    for (int i = 0; i < 61; ++i) {
        name += "\xF0\x9F\x94\xA9";
    }
    m_model.source->addResult(SCALAR, name, PER_NODE);
    EXPECT_EQ(build('-' + name).name().toStdString(), '-' + name.substr(0, 4 * 56) + "...");
}

TEST_F(ExpressionResultTest, AThousandTermsAreASum) {
    std::string text = "Temperature";
    for (int i = 1; i < 1000; ++i) {
        text += " + Temperature";
    }
    EXPECT_EQ(valuesOf(text).front(), 12100000.0);
}

TEST_F(ExpressionResultTest, ALongSumTakesNoMoreThanItsLength) {
    // With the names that operators compose this would take gigabytes.
    std::string text = "Temperature";
    for (int i = 1; i < 30000; ++i) {
        text += "+1";
    }
    EXPECT_EQ(valuesOf(text).front(), 12100.0 + 29999);
}

TEST_F(ExpressionResultTest, NamesakesAreToldApart) {
    const ResultInfo perElement = m_model.source->addResult(SCALAR, "Temperature", PER_ELEMENT);
    const ResultInfo vector = m_model.source->addResult(VECTOR, "Temperature", PER_NODE);
    const std::string kinds = "Temperature:scalar:node, Temperature:scalar:element, Temperature:vector:node";
    EXPECT_EQ(refusalOf("1 + Temperature"),
              "column 5 of the expression: Temperature stands for 3 results, tell which by its kind: " + kinds);
    EXPECT_EQ(refusalOf("Temperature:scalar"),
              "column 1 of the expression: Temperature:scalar stands for 2 results, tell which by its kind: " + kinds);
    EXPECT_EQ(refusalOf("\"Temperature\":tensor"),
              "column 1 of the expression: there is no \"Temperature\":tensor, only " + kinds);
    EXPECT_EQ(build("Temperature:vector"), vector);
    EXPECT_EQ(build("Temperature:element"), perElement);
    EXPECT_EQ(build("Temperature:scalar:node"), m_model.temperature);
    EXPECT_EQ(build("Temperature:node:scalar"), m_model.temperature);
    EXPECT_EQ(build("Motion:displacement"), m_model.displacement);
    EXPECT_EQ(refusalOf("Motion:element"),
              "column 1 of the expression: there is no Motion:element, only Motion:displacement:node");
}

TEST_F(ExpressionResultTest, NamesAreNoPatterns) {
    const ResultInfo odd = m_model.source->addResult(SCALAR, "T*", PER_NODE);
    EXPECT_EQ(build("'T*'"), odd);
    EXPECT_EQ(refusalOf("'Temp*'"),
              R"(column 1 of the expression: there is no result "Temp*" (results: "Temperature", "Pressure", "T*", )"
              R"("Velocity", "Stress", "Motion"))");
}

TEST_F(ExpressionResultTest, WhatDoesNotFitIsRefused) {
    const std::string principals =
        "principals(...) gives six results, choose one by its index: [0], [1], [2] are the directions of the first, "
        "second and third principal value, [3], [4], [5] the values";
    const std::string names = R"( (results: "Temperature", "Pressure", "Velocity", "Stress", "Motion"))";
    struct Row {
        std::string text;
        int column;
        std::string message;
    };
    const Row rows[] = {
        {"Tempearture", 1, R"(there is no result "Tempearture"; did you mean "Temperature"?)" + names},
        {"2 * nothing", 5, "there is no result \"nothing\"" + names},
        {"true", 1, "there is no result \"true\"" + names},
        {"2 + 3*4", 1, "a result is wanted, and 2 + 3*4 is a number"},
        {"(1)", 1, "a result is wanted, and (1) is a number"},
        {"principals(Stress)", 1, principals},
        {"2 * principals(Stress)", 5, principals},
        {"principals(Stress) + Pressure", 1, principals},
        {"-principals(Stress)", 2, principals},
        {"abs(principals(Stress))", 5, principals},
        {"pow(Pressure, principals(Stress))", 15, principals},
        {"min(Pressure, principals(Stress))", 15, principals},
        {"principals(Stress)[6]", 19, "there is no [6]; " + principals},
        {"principals(Stress)[3][0]", 22, "an index chooses from principals(...), and from nothing else"},
        {"Stress[0]", 7, "an index chooses from principals(...), and from nothing else"},
        {"2[0]", 2, "an index chooses from principals(...), and from nothing else"},
        // Operators
        {"Temperature + Stress", 13,
         R"("+" takes results of one type: Temperature is a scalar, and Stress is a tensor)"},
        {"Velocity - Motion", 10,
         R"("-" takes results of one type: Velocity is a vector, and Motion is a displacement)"},
        {"Temperature + (2*Pressure)", 13,
         R"("+" takes results in the same places: Temperature is per node, and (2*Pressure) is per element)"},
        {"Pressure * Temperature", 10,
         R"("*" takes results in the same places: Pressure is per element, and Temperature is per node)"},
        {"Temperature * Velocity", 13,
         R"("*" takes results of one type: Temperature is a scalar, and Velocity is a vector)"},
        {"Stress * Stress", 8, R"("*" multiplies scalars, and vectors to their dot product, and Stress is a tensor)"},
        {"Velocity / Temperature", 10, R"("/" divides by numbers, and scalars by scalars, and Velocity is a vector)"},
        {"Pressure / Temperature", 10,
         R"("/" takes results in the same places: Pressure is per element, and Temperature is per node)"},
        {"Temperature / Velocity", 13,
         R"("/" takes results of one type: Temperature is a scalar, and Velocity is a vector)"},
        {"Motion ^ Motion", 8, R"("^" is the cross product of two vectors, and Motion is a displacement)"},
        {"Velocity ^ Motion", 10,
         R"("^" takes results of one type: Velocity is a vector, and Motion is a displacement)"},
        {"Pressure^2", 9, R"x("^" is the cross product of two vectors; a power is pow(A, 2))x"},
        {"2^Pressure", 2, R"x("^" is the cross product of two vectors; a power is pow(A, 2))x"},
        {"2^3", 2, R"x("^" is the cross product of two vectors; a power is pow(A, 2))x"},
        {"2 / Velocity", 3, "a number can be divided by a scalar only, and Velocity is a vector"},
        {"Pressure / 0", 10, "this divides by zero"},
        {"Pressure / (1-1)", 10, "this divides by zero"},
        {"2 * (3 / -0)", 8, "this divides by zero"},
        {"1e308 * 10", 7, "this gives inf, which is no number to go on with"},
        {"sqrt(-1) * Pressure", 1, "this gives nan, which is no number to go on with"},
        {"Pressure + log(0)", 12, "this gives -inf, which is no number to go on with"},
        // Functions
        {"vonMises(Motion)", 10, "vonMises takes a tensor, and Motion is a displacement"},
        {"vonMises( 3)", 11, "vonMises takes a tensor, and 3 is a number"},
        {"principals(Pressure)", 12, "principals takes a tensor, and Pressure is a scalar"},
        {"l1Norm(Stress)", 8, "l1Norm takes a vector or displacement, and Stress is a tensor"},
        {"l2Norm(2*Pressure)", 8, "l2Norm takes a vector or displacement, and 2*Pressure is a scalar"},
        {"extractComponent(Pressure, 0)", 18,
         "extractComponent takes a vector, displacement or tensor, and Pressure is a scalar"},
        {"extractComponent(Motion, 3)", 1, "a displacement has the components 0 to 2, and no 3"},
        {"extractComponent(Velocity, 1e300)", 1, "a vector has the components 0 to 2, and no 1e+300"},
        {"extractComponent(Stress, 6)", 1, "a tensor has the components 0 to 5, and no 6"},
        {"min(Pressure, 2)", 15, "min takes a result, and 2 is a number"},
        {"average(Pressure, Velocity)", 1,
         "average takes results of one type: Pressure is a scalar, and Velocity is a vector"},
        {"max(Pressure, Pressure, Temperature)", 1,
         "max takes results in the same places: Pressure is per element, and Temperature is per node"},
        {"minValue(2)", 10, "minValue takes a result, and 2 is a number"},
        {"toElementsArithmetic(Pressure)", 22,
         "toElementsArithmetic takes a result per node, and Pressure is per element"},
        {"toNodesArithmetic(Temperature)", 19,
         "toNodesArithmetic takes a result per element, and Temperature is per node"},
        {"pow(Pressure, Pressure)", 15, "pow(A, NUMBER) takes a number, and Pressure is a scalar"},
        {"pow(2, Pressure)", 8, "pow(A, NUMBER) takes a number, and Pressure is a scalar"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(refusalOf(row.text), "column " + std::to_string(row.column) + " of the expression: " + row.message)
            << row.text;
    }
}

TEST_F(ExpressionResultTest, WithoutResultsNothingIsListed) {
    try {
        buildResult(parseExpression("A"), {});
        FAIL();
    } catch (const ExpressionError& error) {
        EXPECT_STREQ(error.what(), "column 1 of the expression: there is no result \"A\"");
    }
}

TEST_F(ExpressionResultTest, MissingValuesStayMissing) {
    makeMissing(m_model.displacement, 3, {0, 1, 2});
    makeMissing(m_model.velocity, 3, {1});
    makeMissing(m_model.temperature, 3, {0});
    for (const std::string text : {"-Motion",
                                   "2-Motion",
                                   "l1Norm(Motion)",
                                   "l1Norm(Velocity)",
                                   "l2Norm(Motion)",
                                   "l2Norm(Velocity)",
                                   "Velocity^(2*Velocity)",
                                   "Motion*Motion",
                                   "Velocity*Velocity",
                                   "2/Temperature",
                                   "Temperature/2",
                                   "Temperature/Temperature",
                                   "average(Motion, Motion, Motion)",
                                   "average(Temperature, Temperature)",
                                   "max(Temperature, 0*Temperature)",
                                   "extractComponent(Velocity, 1)",
                                   "extractComponent(Motion, 2)",
                                   "sqrt(Temperature)",
                                   "pow(Motion, 2)",
                                   "min(Motion, Motion)",
                                   "-l2Norm(-Velocity)"}) {
        const ResultInfo info = build(text);
        const std::vector<double> values = load(info, 0, 0);
        const std::size_t dimension = doublesPerItem(info.type());
        ASSERT_EQ(values.size(), 8 * dimension);
        for (std::size_t i = 0; i < values.size(); ++i) {
            EXPECT_EQ(values[i] == UNDEFINED, i / dimension == 3) << text << ' ' << i;
            EXPECT_TRUE(std::isfinite(values[i]));
        }
    }
}

TEST_F(ExpressionResultTest, WhereComponentsStandForThemselvesOneMayBeMissing) {
    makeMissing(m_model.velocity, 3, {1});
    for (const std::string text : {"-Velocity", "average(Velocity, 2*Velocity)", "average(2*Velocity, Velocity)"}) {
        const std::vector<double> values = valuesOf(text);
        for (std::size_t i = 0; i < values.size(); ++i) {
            EXPECT_EQ(values[i] == UNDEFINED, i == 3 * 3 + 1) << text << ' ' << i;
        }
    }
}

TEST_F(ExpressionResultTest, AMeanOverTheMeshIsMissingWhereAnythingOfItIs) {
    // Node 9 of the second part is in the last plane: of its second cube alone.
    std::vector<double> values(12 * 3, 5.0);
    values[9 * 3 + 2] = UNDEFINED;
    ASSERT_TRUE(m_model.source->setValues(STATE, m_model.velocity, 0, 1, values, nullptr));
    EXPECT_THAT(valuesOf("toElementsArithmetic(Velocity)", 0, 1), testing::ElementsAre(5, 5, 5, 5, 5, UNDEFINED));
    // The first cube of two: the nodes of its two planes.
    const std::vector<double> pressures = {UNDEFINED, 5.0};
    ASSERT_TRUE(m_model.source->setValues(STATE, m_model.pressure, 0, 1, pressures, nullptr));
    EXPECT_THAT(valuesOf("toNodesArithmetic(Pressure)", 0, 1),
                testing::ElementsAre(UNDEFINED, UNDEFINED, UNDEFINED, UNDEFINED, UNDEFINED, UNDEFINED, UNDEFINED,
                                     UNDEFINED, 5, 5, 5, 5));
}

TEST_F(ExpressionResultTest, AMeanOfInfinityIsInfinite) {
    std::vector<double> values(8, 5.0);
    values[2] = std::numeric_limits<double>::infinity();
    ASSERT_TRUE(m_model.source->setValues(STATE, m_model.temperature, 0, 0, values, nullptr));
    EXPECT_THAT(valuesOf("toElementsArithmetic(Temperature)"),
                testing::ElementsAre(std::numeric_limits<double>::infinity()));
}

TEST_F(ExpressionResultTest, ANumberOverZeroIsMissing) {
    std::vector<double> values(8, 4.0);
    values[1] = 0.0;
    values[2] = -0.0;
    ASSERT_TRUE(m_model.source->setValues(STATE, m_model.temperature, 0, 0, values, nullptr));
    EXPECT_THAT(valuesOf("2/Temperature"), testing::ElementsAre(0.5, UNDEFINED, UNDEFINED, 0.5, 0.5, 0.5, 0.5, 0.5));
}

TEST_F(ExpressionResultTest, TheSmallestLeavesOutWhatIsMissing) {
    makeMissing(m_model.temperature, 0, {0});
    EXPECT_EQ(valuesOf("min(Temperature, 1 + 0*toNodesArithmetic(Pressure))").front(), 1);
    // Of the temperatures of all parts the smallest is now that of the second node.
    EXPECT_THAT(valuesOf("minValue(Temperature)"), Each(Eq(12101)));
}

namespace {

/// Expressions that are right by their syntax, most of them wrong by their types.
class AnyExpression {
public:
    explicit AnyExpression(unsigned seed) : m_random(seed) {}

    std::string make(std::size_t depth) {
        const char* names[] = {"Temperature", "Pressure", "Velocity", "Motion", "Stress"};
        const std::size_t choice = depth == 0 ? below(5) : below(12);
        if (choice < 4) {
            return names[below(5)];
        }
        if (choice == 4) {
            return std::to_string(below(4));
        }
        if (choice < 8) {
            return '(' + make(depth - 1) + "+-*/^"[below(5)] + make(depth - 1) + ')';
        }
        if (choice == 8) {
            return '-' + make(depth - 1);
        }
        return call(depth - 1);
    }

private:
    std::string call(std::size_t depth) {
        const ExpressionFunction& function = expressionFunctions()[below(expressionFunctions().size())];
        const std::string beginning = std::string(function.name) + '(' + make(depth);
        switch (function.arguments) {
        case ExpressionFunction::RESULT:
            return beginning +
                   (std::string(function.name) == "principals" ? ")[" + std::to_string(below(6)) + ']' : ")");
        case ExpressionFunction::RESULT_AND_INDEX:
            return beginning + ',' + std::to_string(below(7)) + ')';
        case ExpressionFunction::RESULT_AND_NUMBER:
            return beginning + ",2)";
        case ExpressionFunction::RESULT_AND_FLAG:
            return beginning + (below(2) == 0 ? ",true)" : ")");
        case ExpressionFunction::RESULTS:
            break;
        }
        return beginning + ',' + make(depth) + ')';
    }

    std::size_t below(std::size_t count) {
        return m_random() % count;
    }

    std::mt19937 m_random;
};

} // namespace

// The fixture fails the test when an operator has asserted anything.
TEST_F(ExpressionResultTest, WhatIsNotRefusedCanBeComputedAndNothingAsserts) {
    std::size_t accepted = 0;
    for (unsigned seed = 1; seed <= 3000; ++seed) {
        const std::string text = AnyExpression(seed).make(3);
        ResultInfo info;
        try {
            info = build(text);
        } catch (const ExpressionError&) {
            continue;
        }
        ++accepted;
        EXPECT_TRUE(info.isValid()) << text;
        EXPECT_FALSE(load(info, 1, 1).empty()) << text;
        if (info.isCustom()) {
            orv::app::Results::instance()->remove(info);
        }
    }
    EXPECT_GT(accepted, 1000u);
    EXPECT_LT(accepted, 2500u);
}
