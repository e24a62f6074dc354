#include "OrvUnstructGrid/ResultsQuery.h"

#include "OrvCore/Defines.h"
#include "OrvUnstructGrid/DataSourceMemory.h"
#include "Tests/OrvUnstructGrid/CustomResults.h"
#include "Tests/Support/AssertRecorder.h"

#include <gtest/gtest.h>

using namespace orv::ug;
using orv::UNDEFINED_DOUBLE;
using orv::UNDEFINED_SIZE_T;
using Averages = std::vector<double>;
using Items = std::vector<ResultsQueryItem>;

namespace {

constexpr double U = UNDEFINED_DOUBLE;

/// Two geometries. The second has two parts: part 0 is a point, and part 1 has six nodes and a triangle 0 1 2, a beam
/// 3 4 and a tetrahedron 0 1 2 5, whose surfaces are 1, none and 4. States 7 and 8; state 8 has the results `node` and
/// `never` alone, and `never` has no defined value there.
class ResultsQueryTest : public testing::Test {
protected:
    ResultsQueryTest() : source(new DataSourceMemory(1)) {
        source->addGeometry();
        source->addGeometry();
        source->addPart(0, "other")->nodes()->set({0, 0, 0}, {});
        source->addPart(1, "point")->nodes()->set({0, 0, 0}, {});
        DataPart* part = source->addPart(1, "solid");
        part->nodes()->set(std::vector<double>(18), {});
        part->elements()->set({TRIANGLE, BEAM, TETRAHEDRON}, {0, 1, 2, 3, 4, 0, 1, 2, 5}, {});
        source->addState(StateInfo(7, "Step 7", StateInfo::TIME, 0.5));
        source->addState(StateInfo(8, "Step 8", StateInfo::TIME, 1.0));
        node = add("node", PER_NODE, {0, 1, 2, 3, 4, U});
        element = add("element", PER_ELEMENT, {10, 20, 30});
        elementNode = add("element node", PER_ELEMENT_NODE, {1, 2, 6, 10, U, 5, 6, 7, 8});
        surface = add("surface", PER_ELEMENT_SURFACE, {100, 1, 2, 3, 6});
        never = source->addResult(SCALAR, "never", PER_NODE);
        EXPECT_TRUE(source->setValues(8, node, 1, 1, Averages{8, 8, 8, 8, 8, 8}, nullptr));
        EXPECT_TRUE(source->setValues(8, never, 1, 1, Averages(6, U), nullptr));
    }

    ResultInfo add(const orv::Str& name, ResultMapping mapping, const Averages& values) {
        const ResultInfo info = source->addResult(SCALAR, name, mapping);
        EXPECT_TRUE(source->setValues(7, info, 1, 1, values, nullptr));
        return info;
    }

    /// Empty when the query fails.
    Averages averages(const ResultInfo& info, const Items& items, int stateId = 7, std::size_t geometry = 1) {
        std::vector<ResultsQueryResult> results(3, ResultsQueryResult({1.0}));
        ResultsQuery query(source.get());
        const bool isAnswered = query.scalars(info.id(), stateId, geometry, &items, &results);
        EXPECT_EQ(isAnswered, !results.empty());
        Averages values;
        for (const ResultsQueryResult& result : results) {
            values.push_back(result.averageSubItemScalar());
        }
        return values;
    }

    orv::PtrRef<DataSourceMemory> source;
    ResultInfo node, element, elementNode, surface, never;
};

TEST_F(ResultsQueryTest, GivesOneResultForEachItem) {
    EXPECT_EQ(averages(node, {{1, 4}, {1, 0}, {1, 4}}), (Averages{4, 0, 4}));
    EXPECT_EQ(averages(element, {{1, 2}}), (Averages{30}));
    EXPECT_EQ(averages(node, {{1, 2}}, 8), (Averages{8}));
}

TEST_F(ResultsQueryTest, AveragesAnElementsOwnValues) {
    // (1 + 2 + 6) / 3; 10 and an undefined one; (5 + 6 + 7 + 8) / 4
    EXPECT_EQ(averages(elementNode, {{1, 0}, {1, 1}, {1, 2}}), (Averages{3, 10, 6.5}));
    // The triangle's surface, none of the beam, (1 + 2 + 3 + 6) / 4 of the tetrahedron.
    EXPECT_EQ(averages(surface, {{1, 0}, {1, 1}, {1, 2}}), (Averages{100, U, 3}));
}

TEST_F(ResultsQueryTest, AnUndefinedValueBesideDefinedOnesIsGiven) {
    EXPECT_EQ(averages(node, {{1, 5}, {1, 1}}), (Averages{U, 1}));
}

TEST_F(ResultsQueryTest, AStateWithoutADefinedValueHasNone) {
    EXPECT_EQ(averages(node, {{1, 5}}), Averages());
    EXPECT_EQ(averages(node, {{0, 0}}), Averages());
    EXPECT_EQ(averages(never, {{1, 0}, {1, 1}}, 8), Averages());
    EXPECT_EQ(averages(surface, {{1, 1}}), Averages());
}

TEST_F(ResultsQueryTest, AStateWithoutTheResultHasNone) {
    EXPECT_EQ(averages(element, {{1, 0}}, 8), Averages());
    EXPECT_EQ(averages(never, {{1, 0}}, 7), Averages());
}

TEST_F(ResultsQueryTest, RefusesWhatDoesNotExist) {
    orvtest::AssertRecorder asserts;
    EXPECT_EQ(averages(node, {}), Averages());
    EXPECT_EQ(averages(node, {{1, 0}}, 9), Averages());
    EXPECT_EQ(averages(node, {{1, 0}}, -1), Averages());
    EXPECT_EQ(averages(ResultInfo(), {{1, 0}}), Averages());
    EXPECT_EQ(averages(ResultInfo(SCALAR, 99, "", PER_NODE), {{1, 0}}), Averages());
    for (const std::size_t index : {std::size_t(2), UNDEFINED_SIZE_T}) {
        EXPECT_EQ(averages(node, {{1, 0}}, 7, index), Averages());
        EXPECT_EQ(averages(node, {{index, 0}}), Averages());
    }
    for (const std::size_t index : {std::size_t(6), UNDEFINED_SIZE_T, UNDEFINED_SIZE_T - 1}) {
        EXPECT_EQ(averages(node, {{1, 0}, {1, index}}), Averages());
    }
    for (const ResultInfo& info : {element, elementNode, surface}) {
        for (const std::size_t index : {std::size_t(3), UNDEFINED_SIZE_T}) {
            EXPECT_EQ(averages(info, {{1, index}}), Averages()) << info.name();
        }
    }
    EXPECT_TRUE(asserts.take().empty());
}

TEST_F(ResultsQueryTest, RefusesNull) {
    const Items items = {{1, 0}};
    std::vector<ResultsQueryResult> results(1, ResultsQueryResult({1.0}));
    EXPECT_FALSE(ResultsQuery(source.get()).scalars(node.id(), 7, 1, &items, nullptr));
    EXPECT_FALSE(ResultsQuery(source.get()).scalars(node.id(), 7, 1, nullptr, &results));
    EXPECT_TRUE(results.empty());
    results.emplace_back(Averages{1.0});
    EXPECT_FALSE(ResultsQuery(nullptr).scalars(node.id(), 7, 1, &items, &results));
    EXPECT_TRUE(results.empty());
}

TEST_F(ResultsQueryTest, ComputesCustomResults) {
    const ResultInfo sum = orvtest::sumOf("sum", {node, node});
    EXPECT_EQ(averages(sum, {{1, 3}}), Averages());
    source->directory()->setCustomResultInfo(sum);
    EXPECT_EQ(averages(sum, {{1, 3}}), Averages{6});
    EXPECT_EQ(averages(sum, {{1, 3}}, 8), Averages{16});
}

} // namespace
