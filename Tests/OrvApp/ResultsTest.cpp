#include "OrvApp/Results.h"

#include "OrvApp/Results_p.h"
#include "OrvApp/States.h"
#include "Tests/OrvApp/CatalogueTest.h"

#include <functional>
#include <utility>

using namespace orv;
using orv::app::Models;
using orv::app::Results;
using orv::app::ResultsPrivate;
using orv::app::States;
using orvtest::failed;
using orvtest::FailedAssert;
using ug::ResultInfo;

namespace {

const std::string inside = "OrvApp/Results_p";
const FailedAssert severalMatches =
    failed(inside, "foundCount < 2", "Found multiple results sharing the given pattern.");

FailedAssert noMatch(const std::string& pattern) {
    return failed(inside, "foundInfo.isValid()", "Wildcard " + pattern + " not found");
}

/// The two scalars, the vector, the tensor and two displacements of the directory, by state:
///
///     state 1: S T V W X Y    state 2: T V Y    state 3: none
class ResultsTest : public orvtest::CatalogueTest {
protected:
    ResultsTest() : source(orvtest::memorySource({{"part"}}, {{1, "one"}, {2, "two"}, {3, "three"}})) {
        // Not in the order of the types: that is the catalogue's affair.
        X = add(ug::DISPLACEMENT, "X", {1});
        Y = add(ug::DISPLACEMENT, "Y", {1, 2});
        W = add(ug::SYMMETRIC_TENSOR, "W", {1});
        S = add(ug::SCALAR, "S", {1});
        V = add(ug::VECTOR, "V", {1, 2});
        T = add(ug::SCALAR, "T", {1, 2});
        model = orvtest::modelOn(source.get(), 1);
        Models::instance()->add(model.get());
    }

    ResultInfo add(ug::ResultType type, const char* name, std::initializer_list<int> states) {
        const ResultInfo info = source->addResult(type, name, ug::PER_NODE);
        const std::vector<double> twoNodes(2 * ug::doublesPerItem(type), 0.5);
        for (int state : states) {
            EXPECT_TRUE(source->setValues(state, info, 0, 0, twoNodes, nullptr));
        }
        return info;
    }

    void setState(int id) {
        model->modelSpec().setStateId(id);
    }

    std::string names() const {
        std::string all;
        for (unsigned long i = 0; i < results->count(); ++i) {
            all += results->resultInfo(i).name().toStdString();
        }
        return all;
    }

    std::vector<unsigned long> counts() const {
        return {results->count(), results->scalarCount(), results->vectorCount(), results->displacementCount(),
                results->tensorCount()};
    }

    Results* results = Results::instance();
    PtrRef<ug::DataSourceMemory> source;
    PtrRef<ug::UnstructGridModel> model;
    ResultInfo S, T, V, W, X, Y;
};

TEST_F(ResultsTest, InstanceIsOneObject) {
    EXPECT_EQ(Results::instance(), results);
    EXPECT_EQ(results->refCount(), 1);
}

TEST_F(ResultsTest, ListsScalarsVectorsTensorsDisplacements) {
    EXPECT_EQ(names(), "STVWXY");
    EXPECT_EQ(counts(), (std::vector<unsigned long>{6, 2, 1, 2, 1}));
}

TEST_F(ResultsTest, ListsOnlyWhatTheCurrentStateHas) {
    setState(2);
    EXPECT_EQ(names(), "TVY");
    EXPECT_EQ(counts(), (std::vector<unsigned long>{3, 1, 1, 1, 0}));
    setState(3);
    EXPECT_EQ(names(), "");
    EXPECT_EQ(counts(), (std::vector<unsigned long>{0, 0, 0, 0, 0}));
}

TEST_F(ResultsTest, ListsTheWholeDirectoryWithoutACurrentState) {
    setState(2);
    setState(-1);
    EXPECT_EQ(names(), "STVWXY");
    EXPECT_EQ(counts(), (std::vector<unsigned long>{6, 2, 1, 2, 1}));
    EXPECT_EQ(results->indexOf(S), 0u);
    EXPECT_EQ(results->tensorIndexOf(W), 0u);
    EXPECT_EQ(results->displacementInfo("X"), X);
}

TEST_F(ResultsTest, IndexesDependOnTheState) {
    EXPECT_EQ(results->resultInfo(1), T);
    EXPECT_EQ(results->displacementInfo(0), X);
    States::instance()->setCurrentIndex(1);
    EXPECT_EQ(results->resultInfo(1), V);
    EXPECT_EQ(results->displacementInfo(0), Y);
}

TEST_F(ResultsTest, IndexOfAmongAllTypes) {
    const ResultInfo inOrder[] = {S, T, V, W, X, Y};
    for (unsigned long i = 0; i < 6; ++i) {
        EXPECT_EQ(results->indexOf(inOrder[i]), i);
    }
    EXPECT_EQ(results->indexOf(ResultInfo()), UNDEFINED_SIZE_T);
}

TEST_F(ResultsTest, IndexOfComparesByEquality) {
    // Type and id make a result; its name does not.
    EXPECT_EQ(results->indexOf(ResultInfo(ug::SCALAR, T.id(), "another name", ug::PER_ELEMENT)), 1u);
    EXPECT_EQ(results->indexOf(ResultInfo(ug::SCALAR, 99, "T", ug::PER_NODE)), UNDEFINED_SIZE_T);
}

TEST_F(ResultsTest, IndexOfAResultThatTheStateLacksIsUndefined) {
    setState(2);
    EXPECT_EQ(results->indexOf(S), UNDEFINED_SIZE_T);
    EXPECT_EQ(results->scalarIndexOf(S), UNDEFINED_SIZE_T);
    EXPECT_EQ(results->scalarIndexOf(T), 0u);
    EXPECT_EQ(results->displacementIndexOf(X), UNDEFINED_SIZE_T);
    EXPECT_EQ(results->displacementIndexOf(Y), 0u);
}

TEST_F(ResultsTest, TypedIndexOfCountsItsTypeAlone) {
    EXPECT_EQ(results->scalarIndexOf(T), 1u);
    EXPECT_EQ(results->vectorIndexOf(V), 0u);
    EXPECT_EQ(results->tensorIndexOf(W), 0u);
    EXPECT_EQ(results->displacementIndexOf(Y), 1u);
    EXPECT_EQ(ResultsPrivate().typedIndexOf(T), 1u);
    EXPECT_EQ(ResultsPrivate().typedIndexOf(Y), 1u);
    EXPECT_EQ(ResultsPrivate().typedIndexOf(ResultInfo()), UNDEFINED_SIZE_T);
}

TEST_F(ResultsTest, TypedIndexOfAnotherTypeAssertsAndGoesByTheInfosOwnType) {
    struct Case {
        unsigned long index;
        std::string expression, message;
    };
    // T and Y are number 1 of their types.
    const Case cases[] = {
        {results->scalarIndexOf(Y), "info.type() == SCALAR", "Given result is not a scalar, cannot return its index"},
        {results->vectorIndexOf(T), "info.type() == VECTOR", "Given result is not a vector, cannot return its index"},
        {results->displacementIndexOf(T), "info.type() == DISPLACEMENT",
         "Given result is not a displacement, cannot return its index"},
        {results->tensorIndexOf(Y), "info.type() == SYMMETRIC_TENSOR",
         "Given result is not a tensor, cannot return its index"},
    };
    std::vector<FailedAssert> expected;
    for (const Case& c : cases) {
        EXPECT_EQ(c.index, 1u);
        expected.push_back(failed(inside, c.expression, c.message));
    }
    EXPECT_EQ(asserts.take(), expected);
}

TEST_F(ResultsTest, LookUpByIndex) {
    EXPECT_EQ(results->resultInfo(3), W);
    EXPECT_EQ(results->scalarInfo(1), T);
    EXPECT_EQ(results->vectorInfo(0), V);
    EXPECT_EQ(results->tensorInfo(0), W);
    EXPECT_EQ(results->displacementInfo(1), Y);
    EXPECT_EQ(results->displacementInfo(0),
              results->resultInfo(results->scalarCount() + results->vectorCount() + results->tensorCount()));
}

TEST_F(ResultsTest, LookUpByIndexNeedsAnIndexBelowTheCount) {
    const std::pair<std::string, std::function<void()>> lookUps[] = {
        {"index < count()", [&] { results->resultInfo(6); }},
        {"index < scalarCount()", [&] { results->scalarInfo(2); }},
        {"index < vectorCount()", [&] { results->vectorInfo(1); }},
        {"index < displacementCount()", [&] { results->displacementInfo(2); }},
        {"index < tensorCount()", [&] { results->tensorInfo(1); }},
    };
    for (const auto& [expression, lookUp] : lookUps) {
        EXPECT_EQ(asserts.takeUntil(1, lookUp), (std::vector<FailedAssert>{failed(inside, expression)}));
    }
}

TEST_F(ResultsTest, LookUpByName) {
    EXPECT_EQ(results->resultInfo("W"), W);
    EXPECT_EQ(results->scalarInfo("T"), T);
    EXPECT_EQ(results->vectorInfo("*"), V);
    EXPECT_EQ(results->tensorInfo("?"), W);
    EXPECT_EQ(results->displacementInfo("[Y-Z]"), Y);
}

TEST_F(ResultsTest, LookUpByNameLooksAmongItsTypeOnly) {
    EXPECT_FALSE(results->scalarInfo("V").isValid());
    EXPECT_FALSE(results->vectorInfo("S").isValid());
    EXPECT_FALSE(results->displacementInfo("W").isValid());
    EXPECT_FALSE(results->tensorInfo("X").isValid());
    EXPECT_EQ(asserts.take(), (std::vector<FailedAssert>{noMatch("V"), noMatch("S"), noMatch("W"), noMatch("X")}));
}

TEST_F(ResultsTest, LookUpByNameWithoutAMatch) {
    EXPECT_FALSE(results->resultInfo("no *").isValid());
    EXPECT_EQ(asserts.take(), (std::vector<FailedAssert>{noMatch("no *")}));
    setState(2);
    EXPECT_FALSE(results->resultInfo("S").isValid());
    EXPECT_EQ(asserts.take(), (std::vector<FailedAssert>{noMatch("S")}));
}

TEST_F(ResultsTest, LookUpByNameWithSeveralMatchesGivesNone) {
    EXPECT_FALSE(results->scalarInfo("*").isValid());
    EXPECT_FALSE(results->displacementInfo("?").isValid());
    EXPECT_FALSE(results->resultInfo("[VW]").isValid());
    EXPECT_EQ(asserts.take(), (std::vector<FailedAssert>{severalMatches, severalMatches, severalMatches}));
}

TEST_F(ResultsTest, AnExactNameIsAPatternToo) {
    const ResultInfo pattern = add(ug::SCALAR, "?", {1});
    EXPECT_FALSE(results->scalarInfo("?").isValid()); // matches S and T as well
    EXPECT_EQ(asserts.take(), (std::vector<FailedAssert>{severalMatches}));
    EXPECT_EQ(results->scalarInfo("[?]"), pattern);
}

TEST_F(ResultsTest, LookUpByNameInAnEmptyListIsSilent) {
    setState(3);
    EXPECT_FALSE(results->resultInfo("S").isValid());
    EXPECT_FALSE(results->scalarInfo("S").isValid());
    EXPECT_FALSE(results->vectorInfo("*").isValid());
    EXPECT_FALSE(results->displacementInfo("X").isValid());
    EXPECT_FALSE(results->tensorInfo("W").isValid());
}

TEST_F(ResultsTest, AMatchWithoutAnIdDoesNotCountAsAFirstOne) {
    ResultInfo nameless;
    nameless.setName("S");
    ASSERT_EQ(nameless.id(), -1);
    EXPECT_EQ(ResultsPrivate().wildCardInfo({nameless, nameless, S}, "S"), S);
    EXPECT_FALSE(ResultsPrivate().wildCardInfo({nameless, nameless}, "S").isValid());
    EXPECT_EQ(asserts.take(), (std::vector<FailedAssert>{noMatch("S")}));
}

TEST_F(ResultsTest, EverythingThatGathersNeedsADirectory) {
    const FailedAssert noDirectory = failed(inside, "directory != __null", "There are no results, cannot return any.");
    const std::function<void()> operations[] = {
        [&] { results->count(); },
        [&] { results->scalarCount(); },
        [&] { results->vectorCount(); },
        [&] { results->displacementCount(); },
        [&] { results->tensorCount(); },
        [&] { results->indexOf(S); },
        [&] { results->scalarIndexOf(S); },
        [&] { results->vectorIndexOf(V); },
        [&] { results->displacementIndexOf(X); },
        [&] { results->tensorIndexOf(W); },
        [&] { results->resultInfo(0); },
        [&] { results->resultInfo("S"); },
        [&] { results->scalarInfo(0); },
        [&] { results->scalarInfo("S"); },
        [&] { results->vectorInfo(0); },
        [&] { results->vectorInfo("V"); },
        [&] { results->displacementInfo(0); },
        [&] { results->displacementInfo("X"); },
        [&] { results->tensorInfo(0); },
        [&] { results->tensorInfo("W"); },
    };
    PtrRef<ug::UnstructGridModel> withoutSource = orvtest::modelOn(nullptr, -1);
    Models::instance()->add(withoutSource.get());
    for (const auto& operation : operations) {
        EXPECT_EQ(asserts.takeUntil(1, operation), (std::vector<FailedAssert>{noDirectory}));
    }
    Models::instance()->setCurrent(nullptr);
    for (const auto& operation : operations) {
        EXPECT_EQ(asserts.takeUntil(1, operation), (std::vector<FailedAssert>{noDirectory}));
    }
}

TEST_F(ResultsTest, FollowsTheCurrentModel) {
    PtrRef<ug::DataSourceMemory> other = orvtest::memorySource({{"part"}}, {{1, "one"}});
    const ResultInfo info = other->addResult(ug::VECTOR, "Z", ug::PER_NODE);
    PtrRef<ug::UnstructGridModel> otherModel = orvtest::modelOn(other.get(), -1);
    Models::instance()->add(otherModel.get());
    EXPECT_EQ(names(), "Z");
    Models::instance()->setCurrent(model.get());
    EXPECT_EQ(names(), "STVWXY");
}

} // namespace
