#include "OrvImportCae/FrdResults.h"

#include "OrvCore/Defines.h"
#include "Tests/OrvImportCae/FrdSamples.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <tuple>
#include <vector>

using namespace orv;
using namespace orv::imp::cae;

namespace {

FrdResults make(const FrdIndex& index, std::vector<std::string>* warnings = nullptr) {
    CaeFile file;
    std::vector<std::string> ignored;
    return makeFrdResults(file, index, warnings ? warnings : &ignored);
}

FrdLayout layout(const std::string& name, int entity, const std::vector<std::string>& components) {
    FrdLayout result{name, {}};
    for (std::size_t i = 0; i < components.size(); ++i) {
        result.components.push_back({components[i], entity, int(i) + 1});
    }
    return result;
}

/// What a layout becomes: type, id, name and columns of each result.
using Mapped = std::vector<std::tuple<ug::ResultType, int, std::string, std::vector<std::uint32_t>>>;

Mapped mapped(const FrdResults& results, std::size_t layoutNumber) {
    Mapped list;
    for (const FrdColumns& columns : results.layouts.at(layoutNumber)) {
        const ug::ResultInfo& info = results.infos.at(columns.result);
        EXPECT_EQ(info.resultMapping(), ug::PER_NODE);
        list.emplace_back(info.type(), info.id(), info.name().toStdString(), columns.columns);
    }
    return list;
}

Mapped mapped(const FrdLayout& single) {
    FrdIndex index;
    index.layouts.push_back(single);
    return mapped(make(index), 0);
}

TEST(FrdResults, OneColumnIsAScalar) {
    EXPECT_EQ(mapped(layout("NDTEMP", 1, {"T"})), (Mapped{{ug::SCALAR, 1, "NDTEMP", {0}}}));
    EXPECT_EQ(mapped(layout("SDV", 1, {"SDV1"})), (Mapped{{ug::SCALAR, 1, "SDV", {0}}}));
}

TEST(FrdResults, ThreeOfAVectorAreAVector) {
    EXPECT_EQ(mapped(layout("FORC", 2, {"F1", "F2", "F3"})), (Mapped{{ug::VECTOR, 1, "FORC", {0, 1, 2}}}));
    EXPECT_EQ(mapped(layout("DISPI", 2, {"D1", "D2", "D3"})), (Mapped{{ug::VECTOR, 1, "DISPI", {0, 1, 2}}}));
    EXPECT_EQ(mapped(layout("DISP", 2, {"D1", "D2", "D3"})), (Mapped{{ug::DISPLACEMENT, 1, "DISP", {0, 1, 2}}}));
}

TEST(FrdResults, AVectorsColumnsGoByTheirIndexes) {
    FrdLayout turned = layout("FORC", 2, {"F3", "F1", "F2"});
    turned.components[0].index = 3;
    turned.components[1].index = 1;
    turned.components[2].index = 2;
    EXPECT_EQ(mapped(turned), (Mapped{{ug::VECTOR, 1, "FORC", {1, 2, 0}}}));
    turned.components[1].index = 3;
    EXPECT_EQ(
        mapped(turned),
        (Mapped{{ug::SCALAR, 1, "FORC.F3", {0}}, {ug::SCALAR, 2, "FORC.F1", {1}}, {ug::SCALAR, 3, "FORC.F2", {2}}}));
    turned.components[1].index = 0;
    EXPECT_EQ(mapped(turned).size(), 3u);
}

TEST(FrdResults, SixOfATensorAreASymmetricTensor) {
    EXPECT_EQ(mapped(layout("STRESS", 4, {"SXX", "SYY", "SZZ", "SXY", "SYZ", "SZX"})),
              (Mapped{{ug::SYMMETRIC_TENSOR, 1, "STRESS", {0, 1, 2, 3, 4, 5}}}));
    // The order of the solver's print-outs: XZ ahead of YZ.
    EXPECT_EQ(mapped(layout("STRESS", 4, {"SXX", "SYY", "SZZ", "SXY", "SXZ", "SYZ"})),
              (Mapped{{ug::SYMMETRIC_TENSOR, 1, "STRESS", {0, 1, 2, 3, 5, 4}}}));
    EXPECT_EQ(mapped(layout("E", 4, {"EZX", "EZY", "EYX", "EZZ", "EYY", "EXX"})),
              (Mapped{{ug::SYMMETRIC_TENSOR, 1, "E", {5, 4, 3, 2, 1, 0}}}));
}

TEST(FrdResults, EverythingElseIsScalars) {
    EXPECT_EQ(mapped(layout("CONTACT", 4, {"COPEN", "CSLIP1", "CSLIP2", "CPRESS", "CSHEAR1", "CSHEAR2"})),
              (Mapped{{ug::SCALAR, 1, "CONTACT.COPEN", {0}},
                      {ug::SCALAR, 2, "CONTACT.CSLIP1", {1}},
                      {ug::SCALAR, 3, "CONTACT.CSLIP2", {2}},
                      {ug::SCALAR, 4, "CONTACT.CPRESS", {3}},
                      {ug::SCALAR, 5, "CONTACT.CSHEAR1", {4}},
                      {ug::SCALAR, 6, "CONTACT.CSHEAR2", {5}}}));
    EXPECT_EQ(mapped(layout("SDV", 1, {"SDV1", "SDV2", "SDV3"})).size(), 3u);
    EXPECT_EQ(mapped(layout("DISP", 2, {"D1", "D2", "D3", "D4"})).size(), 4u);
    EXPECT_EQ(mapped(layout("PDISP", 12, {"MAG1", "MAG2", "MAG3", "PHA1", "PHA2", "PHA3"})).size(), 6u);
    EXPECT_EQ(mapped(layout("STRESS", 4, {"SXX", "SYY", "SZZ", "SXY", "SYZ", "SXX"})).size(), 6u);
    EXPECT_EQ(mapped(layout("MSTRESS", 4, {"SXX", "SYY", "SZZ", "SXY", "SYZ", "SZX", "MAG"})).size(), 7u);
    EXPECT_TRUE(mapped(layout("NOTHING", 1, {})).empty());
}

TEST(FrdResults, ComponentsWithoutANameOfTheirOwnGoByNumber) {
    EXPECT_EQ(mapped(layout("X", 1, {"A", "", "A", "B"})), (Mapped{{ug::SCALAR, 1, "X.A", {0}},
                                                                   {ug::SCALAR, 2, "X.2", {1}},
                                                                   {ug::SCALAR, 3, "X.3", {2}},
                                                                   {ug::SCALAR, 4, "X.B", {3}}}));
}

TEST(FrdResults, ANameMayStandForOtherColumnsElsewhere) {
    FrdIndex index;
    index.layouts = {layout("SDV", 1, {"SDV1", "SDV2"}), layout("SDV", 1, {"SDV2", "SDV1"}),
                     layout("DISP", 2, {"D1", "D2", "D3"}), layout("DISP", 2, {"D1", "D2", "D3", "D4"}),
                     layout("SDV", 1, {"SDV1"})};
    const FrdResults results = make(index);
    EXPECT_EQ(mapped(results, 0), (Mapped{{ug::SCALAR, 1, "SDV.SDV1", {0}}, {ug::SCALAR, 2, "SDV.SDV2", {1}}}));
    EXPECT_EQ(mapped(results, 1), (Mapped{{ug::SCALAR, 2, "SDV.SDV2", {0}}, {ug::SCALAR, 1, "SDV.SDV1", {1}}}));
    EXPECT_EQ(mapped(results, 2), (Mapped{{ug::DISPLACEMENT, 1, "DISP", {0, 1, 2}}}));
    EXPECT_EQ(std::get<2>(mapped(results, 3).at(3)), "DISP.D4");
    EXPECT_EQ(mapped(results, 4), (Mapped{{ug::SCALAR, 7, "SDV", {0}}}));
    EXPECT_EQ(results.infos.size(), 8u);
}

FrdResultBlock block(int number, double value, int kind = 0, std::uint32_t layoutNumber = 0) {
    FrdResultBlock result;
    result.stateNumber = number;
    result.value = value;
    result.kind = kind;
    result.layout = layoutNumber;
    return result;
}

FrdIndex indexOf(const std::vector<FrdResultBlock>& blocks) {
    FrdIndex index;
    index.layouts = {layout("A", 1, {"A"}), layout("B", 1, {"B"})};
    index.blocks = blocks;
    return index;
}

std::vector<std::string> names(const FrdResults& results) {
    std::vector<std::string> list;
    for (const FrdState& state : results.states) {
        list.push_back(state.info.name().toStdString());
    }
    return list;
}

std::vector<int> ids(const FrdResults& results) {
    std::vector<int> list;
    for (const FrdState& state : results.states) {
        list.push_back(state.info.id());
    }
    return list;
}

TEST(FrdResults, BlocksOfOneNumberAreAState) {
    std::vector<std::string> warnings;
    const FrdResults results =
        make(indexOf({block(5, 0.5), block(3, 0.25), block(5, 0.5, 0, 1), block(4, 0.5)}), &warnings);
    EXPECT_EQ(ids(results), (std::vector<int>{5, 3, 4}));
    EXPECT_EQ(results.states[0].blocks, (std::vector<std::uint32_t>{0, 2}));
    EXPECT_EQ(results.states[1].blocks, (std::vector<std::uint32_t>{1}));
    EXPECT_EQ(results.states[0].info.referenceValue(), 0.5);
    EXPECT_TRUE(warnings.empty());
}

TEST(FrdResults, NoIncrementIsLostWhereNumbersComeTwice) {
    // Another value, another kind, and a result that is there already.
    std::vector<std::string> warnings;
    const FrdResults results = make(indexOf({block(1, 0.5), block(2, 0.7), block(1, 0.6), block(1, 0.6, 2),
                                             block(2, 0.7), block(2, 0.7, 0, 1), block(1, 0.6, 2, 1)}),
                                    &warnings);
    EXPECT_EQ(ids(results), (std::vector<int>{1, 2, 3, 4, 5}));
    EXPECT_EQ(results.states[3].blocks, (std::vector<std::uint32_t>{3, 6}));
    EXPECT_EQ(results.states[4].blocks, (std::vector<std::uint32_t>{4, 5}));
    EXPECT_EQ(results.states[2].info.referenceValue(), 0.6);
    EXPECT_EQ(warnings, (std::vector<std::string>{
                            ", line 1: 3 states bear numbers that other states have; they are numbered from 3 on, the "
                            "first one here"}));
}

TEST(FrdResults, NotANumberIsAValueToo) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(ids(make(indexOf({block(1, nan), block(1, nan, 0, 1)}))), (std::vector<int>{1}));
}

TEST(FrdResults, KindsAreTypesOfReferenceValues) {
    const FrdResults results =
        make(indexOf({block(1, 1, 0), block(2, 1, 1), block(3, 1, 2), block(4, 1, 3), block(5, 1, 4), block(6, 1, 7)}));
    const ug::StateInfo::ReferenceType expected[] = {ug::StateInfo::TIME,      ug::StateInfo::TIME,
                                                     ug::StateInfo::FREQUENCY, ug::StateInfo::LOAD_CASE,
                                                     ug::StateInfo::LOAD_CASE, ug::StateInfo::LOAD_CASE};
    for (std::size_t i = 0; i < 6; ++i) {
        EXPECT_EQ(results.states.at(i).info.referenceType(), expected[i]) << i;
    }
    ASSERT_EQ(results.stateGroups.size(), 3u);
}

TEST(FrdResults, MixedTypesAreGroupsInTheOrderOfAppearance) {
    const FrdResults results =
        make(indexOf({block(7, 1, 2), block(8, 1, 0), block(9, 2, 2), block(2, 1, 4), block(1, 2, 1)}));
    ASSERT_EQ(results.stateGroups.size(), 3u);
    const auto members = [&](std::size_t group) {
        std::vector<int> list;
        for (std::size_t i = 0; i < results.stateGroups[group].stateCount(); ++i) {
            list.push_back(results.stateGroups[group].stateId(i));
        }
        return list;
    };
    EXPECT_EQ(members(0), (std::vector<int>{7, 9}));
    EXPECT_EQ(members(1), (std::vector<int>{8, 1}));
    EXPECT_EQ(members(2), (std::vector<int>{2}));
}

TEST(FrdResults, OneTypeHasNoGroups) {
    EXPECT_TRUE(make(indexOf({block(1, 1, 0), block(2, 2, 1)})).stateGroups.empty());
    EXPECT_TRUE(make(indexOf({})).stateGroups.empty());
    EXPECT_TRUE(make(indexOf({})).states.empty());
}

struct Named {
    int kind;
    double value;
    int step;
    int increment;
    int mode;
    int nodalDiameter;
    const char* name;
};

TEST(FrdResults, StatesAreNamedAfterWhatTheFileTells) {
    for (const Named& test : {
             Named{0, 0.3, 1, 3, 0, -1, "Step 1, increment 3, time 0.3"},
             Named{1, 1.0, 2, 1, 0, -1, "Step 2, increment 1, time 1"},
             Named{1, 20000.0, 2, 0, 0, -1, "Step 2, time 20000"},
             Named{2, 13096.03106, 1, 1, 2, -1, "Mode 2, frequency 13096.03"},
             Named{2, 51.4, 1, 1, 1, 2, "Mode 1, nodal diameter 2, frequency 51.4"},
             Named{2, 51.4, 1, 1, 1, 0, "Mode 1, nodal diameter 0, frequency 51.4"},
             Named{2, 100.0, 3, 4, 0, -1, "Step 3, increment 4, frequency 100"},
             Named{3, 0.5, 1, 2, 0, -1, "Step 1, increment 2, load 0.5"},
             Named{4, 314.3603091, 1, 1, 0, -1, "Step 1, increment 1, buckling factor 314.3603"},
             Named{0, 1.5e-7, 0, 0, 0, -1, "State 12, time 1.5e-07"},
             Named{0, UNDEFINED_DOUBLE, 0, 0, 0, -1, "State 12"},
             Named{9, 2.0, 0, 0, 0, -1, "State 12, load 2"},
         }) {
        FrdResultBlock named = block(12, test.value, test.kind);
        named.step = test.step;
        named.increment = test.increment;
        named.mode = test.mode;
        named.nodalDiameter = test.nodalDiameter;
        EXPECT_EQ(names(make(indexOf({named}))), (std::vector<std::string>{test.name}));
    }
}

TEST(FrdResults, EqualNamesGetTheStatesNumber) {
    FrdResultBlock first = block(2, 314.36030, 4);
    FrdResultBlock second = block(3, 314.36031, 4);
    FrdResultBlock third = block(4, 500.0, 4);
    first.step = second.step = third.step = 1;
    EXPECT_EQ(names(make(indexOf({first, second, third}))),
              (std::vector<std::string>{"Step 1, buckling factor 314.3603 (state 2)",
                                        "Step 1, buckling factor 314.3603 (state 3)", "Step 1, buckling factor 500"}));
}

} // namespace
