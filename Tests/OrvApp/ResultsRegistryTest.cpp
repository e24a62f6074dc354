// The custom results of the catalogue: what add(), remove() and removeAll() do to the directory, and what they say.

#include "OrvApp/NodeToElementResultGenerator.h"
#include "OrvApp/ResultOperators.h"
#include "OrvApp/Results.h"
#include "Tests/OrvApp/CatalogueTest.h"
#include "Tests/OrvApp/GeneratorModel.h"
#include "Tests/Support/MemoryModels.h"

using namespace orv::ug;
using orv::Str;
using orv::app::Models;
using orv::app::Parts;
using orv::app::Results;
using orvtest::customResult;
using orvtest::failed;
using orvtest::FailedAssert;
using orvtest::MemoryModel;

namespace {

using Asserts = std::vector<FailedAssert>;
using Names = std::vector<std::string>;

const std::string here = "OrvApp/Results";
const std::string notOfThisSource =
    "Base argument not found in the data source directory. Maybe it was retrieved from another data source.";
const FailedAssert notToAdd = failed(
    here, "info.isCustom()", "Cannot add this result as custom result, there is no function to compute its values");
const FailedAssert baseMissing = failed(here, "testInfo.isValid()", notOfThisSource);
const FailedAssert baseNamedOtherwise = failed(here, "testInfo.name() == baseArgs[i].name()", notOfThisSource);
const FailedAssert notToRemove =
    failed(here, "info.isCustom()", "Only custom results can be removed and this isn't one of them.");
const FailedAssert notFound =
    failed(here, "testInfo.isValid()", "This custom result cannot be found. Nothing has been done.");

/// Notes the ids of the results that leave the directory, in order.
class WatchedSource : public DataSourceMemory {
public:
    using DataSourceMemory::DataSourceMemory;

    void dropResult(const ResultInfo& info) override {
        removed.push_back(info.name().toStdString());
        DataSourceMemory::dropResult(info);
    }

    Names removed;
};

class ResultsRegistryTest : public orvtest::CatalogueTest {
protected:
    ResultsRegistryTest() {
        Models::instance()->add(orvtest::modelOn(model.source.get(), 2).get());
        Parts::instance()->setCurrentIndex(0);
    }

    /// The names of all that is in the directory, in the order of the types.
    Names names() const {
        Names list;
        for (ResultType type : {SCALAR, VECTOR, DISPLACEMENT, SYMMETRIC_TENSOR}) {
            for (const ResultInfo& info : directory->resultInfos(type)) {
                list.push_back(info.name().toStdString());
            }
        }
        return list;
    }

    /// Those of the file, with custom scalars behind the file's.
    static Names namesWith(Names customScalars) {
        customScalars.insert(customScalars.begin(), {"Temperature", "Pressure"});
        customScalars.insert(customScalars.end(), {"Velocity", "Motion", "Stress"});
        return customScalars;
    }

    bool isRegistered(const ResultInfo& info) const {
        return directory->findResultInfo(info.type(), info.id()).isValid();
    }

    /// A custom result that nothing can compute.
    static ResultInfo made(ResultType type, const char* name, std::vector<ResultInfo> arguments) {
        ResultInfo info = customResult(type, PER_NODE, std::move(arguments), nullptr);
        info.setName(name);
        return info;
    }

    MemoryModel model;
    DataSourceDirectory* directory = model.source->directory();
    Results* results = Results::instance();
    const ResultInfo T = model.temperature;
};

TEST_F(ResultsRegistryTest, AddsUnderAName) {
    const ResultInfo sum = T + T;
    results->add(sum, "Sum");
    EXPECT_EQ(results->resultInfo("Sum"), sum);
    EXPECT_EQ(results->scalarCount(), 3u);
    EXPECT_EQ(names(), namesWith({"Sum"}));
    EXPECT_EQ(sum.name(), "Temperature+Temperature") << "The caller's copy keeps its name.";
}

TEST_F(ResultsRegistryTest, AddsUnderTheNameThatTheResultHas) {
    const ResultInfo sum = T + T;
    const ResultInfo difference = T - T;
    results->add(sum);
    results->add(difference, "");
    EXPECT_EQ(results->resultInfo("Temperature+Temperature"), sum);
    EXPECT_EQ(results->resultInfo("Temperature-Temperature"), difference);
}

TEST_F(ResultsRegistryTest, AddingAgainRenames) {
    const ResultInfo sum = T + T;
    results->add(sum, "first");
    results->add(T + 1.0, "other");
    results->add(sum, "second");
    EXPECT_EQ(names(), namesWith({"second", "other"}));
}

TEST_F(ResultsRegistryTest, WhatIsAddedCanBeLoaded) {
    results->add(T + T, "Sum");
    results->add(customResult(SCALAR, PER_ELEMENT, {T}, new orv::app::NodeToElementResultGenerator(1)), "Averages");
    ASSERT_NE(results->currentDataPartScalar("Sum"), nullptr);
    EXPECT_EQ(results->currentDataPartScalar("Sum")->value(3), 2 * orvtest::modelValue(2, T, 0, 3, 0));
    // The one cube of the part has the nodes 0 to 7, whose values differ in the ones only.
    ASSERT_NE(results->currentDataPartScalar("Averages"), nullptr);
    EXPECT_EQ(results->currentDataPartScalar("Averages")->value(0), orvtest::modelValue(2, T, 0, 0, 0) + 3.5);
}

TEST_F(ResultsRegistryTest, AddRefusesAResultOfTheFile) {
    results->add(T);
    EXPECT_EQ(asserts.take(), (Asserts{notToAdd}));
    results->add(T, "another name");
    EXPECT_EQ(asserts.take(), (Asserts{notToAdd, notToAdd}));
    EXPECT_EQ(names(), namesWith({}));
}

TEST_F(ResultsRegistryTest, NothingHappensWithoutAModel) {
    const ResultInfo sum = T + T;
    results->add(sum);
    Models::instance()->closeAll();
    results->add(made(SCALAR, "x", {T}));
    results->add(made(SCALAR, "x", {T}), "name");
    results->remove(sum);
    results->removeAll();
    EXPECT_EQ(asserts.take(), Asserts());
    EXPECT_EQ(names(), namesWith({"Temperature+Temperature"}));
    results->add(T);
    results->remove(T);
    EXPECT_EQ(asserts.take(), (Asserts{notToAdd, notToRemove})) << "This is looked at first.";
}

TEST_F(ResultsRegistryTest, NothingHappensWithoutADataSource) {
    const ResultInfo sum = T + T;
    results->add(sum);
    Models::instance()->closeAll();
    Models::instance()->add(orvtest::modelOn(nullptr, -1).get());
    results->add(made(SCALAR, "x", {T}));
    results->remove(sum);
    results->removeAll();
    EXPECT_EQ(names(), namesWith({"Temperature+Temperature"}));
}

TEST_F(ResultsRegistryTest, AddTellsOfArgumentsFromAnotherSource) {
    // Id 1 is Temperature here, and id 3 nothing.
    const ResultInfo namesake(SCALAR, 1, "Density", PER_NODE);
    const ResultInfo stranger(SCALAR, 3, "Energy", PER_NODE);
    struct Case {
        std::vector<ResultInfo> arguments;
        Asserts failed;
    };
    const Case cases[] = {
        {{T}, {}},
        {{namesake}, {baseNamedOtherwise}},
        {{stranger}, {baseMissing, baseNamedOtherwise}},
        {{T, stranger, namesake}, {baseMissing, baseNamedOtherwise, baseNamedOtherwise}},
        {{namesake, stranger}, {baseNamedOtherwise, baseMissing, baseNamedOtherwise}},
    };
    for (const Case& c : cases) {
        const ResultInfo info = made(SCALAR, "x", c.arguments);
        results->add(info);
        EXPECT_EQ(asserts.take(), c.failed);
        EXPECT_TRUE(isRegistered(info)) << "Execution goes on behind a failed check.";
    }
}

TEST_F(ResultsRegistryTest, AddDoesNotMissUnregisteredPartsOfAnExpression) {
    const ResultInfo product = (T + T) * 2.0;
    results->add(product, "Product");
    EXPECT_EQ(results->resultInfo("Product"), product);
}

TEST_F(ResultsRegistryTest, AddKnowsARenamedArgument) {
    const ResultInfo sum = T + T;
    results->add(sum, "Sum");
    results->add(sum + 1.0, "More");
    EXPECT_EQ(names(), namesWith({"Sum", "More"}));
}

TEST_F(ResultsRegistryTest, ResultsStayWithTheirSource) {
    results->add(T + T, "Sum");
    MemoryModel other;
    Models::instance()->add(orvtest::modelOn(other.source.get(), 2).get());
    EXPECT_EQ(results->scalarCount(), 2u);
    results->add(other.pressure + 1.0, "Other");
    Models::instance()->setCurrentIndex(0);
    EXPECT_EQ(names(), namesWith({"Sum"}));
    EXPECT_TRUE(results->resultInfo("Sum").isValid());
}

TEST_F(ResultsRegistryTest, RemovesAResultAndItsValues) {
    const ResultInfo sum = T + T;
    results->add(sum);
    ASSERT_NE(results->currentDataResultScalar(sum), nullptr);
    results->remove(sum);
    EXPECT_EQ(names(), namesWith({}));
    EXPECT_EQ(results->indexOf(sum), orv::UNDEFINED_SIZE_T);
    EXPECT_EQ(results->currentDataResultScalar(sum), nullptr);
    EXPECT_TRUE(sum.isValid());
}

TEST_F(ResultsRegistryTest, RemovingTwiceIsToldTheSecondTime) {
    const ResultInfo sum = T + T;
    results->add(sum);
    results->remove(sum);
    EXPECT_EQ(asserts.take(), Asserts());
    results->remove(sum);
    EXPECT_EQ(asserts.take(), (Asserts{notFound}));
}

TEST_F(ResultsRegistryTest, RemovingWhatWasNeverAddedStillTakesItsDependants) {
    const ResultInfo sum = T + T;
    results->add(sum + 1.0, "More");
    results->remove(sum);
    EXPECT_EQ(asserts.take(), (Asserts{notFound}));
    EXPECT_EQ(names(), namesWith({}));
}

TEST_F(ResultsRegistryTest, RemovingAResultOfTheFileTakesItsDependantsOnly) {
    results->add(T + 1.0, "More");
    results->add(model.pressure + 1.0, "Apart");
    results->remove(T);
    EXPECT_EQ(asserts.take(), (Asserts{notToRemove}));
    EXPECT_EQ(names(), namesWith({"Apart"}));
}

TEST_F(ResultsRegistryTest, RemovingAnInvalidInfoRemovesNothing) {
    results->add(T + 1.0, "More");
    results->remove(ResultInfo());
    EXPECT_EQ(asserts.take(), (Asserts{notToRemove, notFound}));
    EXPECT_EQ(names(), namesWith({"More"}));
}

TEST_F(ResultsRegistryTest, RemovesChainsOfAnyLength) {
    const ResultInfo first = T + 1.0;
    results->add(first, "x");
    ResultInfo last = first;
    for (int i = 0; i < 1500; ++i) {
        last = made(SCALAR, "x", {last});
        results->add(last);
    }
    results->remove(first);
    EXPECT_EQ(names(), namesWith({}));
}

TEST_F(ResultsRegistryTest, RemovesADiamondAndTellsWhereItsPathsMeet) {
    const ResultInfo x = T + 1.0;
    const ResultInfo a = x + 1.0;
    const ResultInfo e = x + a;
    for (const ResultInfo& info : {x, a, e}) {
        results->add(info);
    }
    results->remove(x);
    EXPECT_EQ(asserts.take(), (Asserts{notFound}));
    EXPECT_EQ(names(), namesWith({}));
    // Added in another order, each is gone before another could take it along.
    for (const ResultInfo& info : {x, e, a}) {
        results->add(info);
    }
    results->remove(x);
    EXPECT_EQ(asserts.take(), Asserts());
    EXPECT_EQ(names(), namesWith({}));
}

TEST_F(ResultsRegistryTest, RemovesADependantOnceHoweverOftenItNamesTheResult) {
    const ResultInfo x = T + 1.0;
    ResultInfo twice = x + x;
    twice.setBaseResult(x.id(), x.type());
    results->add(x);
    results->add(twice);
    results->remove(x);
    EXPECT_EQ(names(), namesWith({}));
}

TEST_F(ResultsRegistryTest, RemovesDirectDependantsAlone) {
    const ResultInfo x = T + 1.0;
    results->add(x, "x");
    results->add(made(SCALAR, "through y", {made(SCALAR, "y", {x})}));
    results->add(made(SCALAR, "apart", {T}));
    results->remove(x);
    EXPECT_EQ(names(), namesWith({"through y", "apart"})) << "y, which is not registered, hides x.";
}

TEST_F(ResultsRegistryTest, RemovesWhatNamesTheResultAsItsBase) {
    const ResultInfo x = T + 1.0;
    ResultInfo derived = made(SCALAR, "derived", {T});
    derived.setBaseResult(x.id(), SCALAR);
    ResultInfo otherType = made(SCALAR, "other type", {T});
    otherType.setBaseResult(x.id(), VECTOR);
    ResultInfo otherId = made(SCALAR, "other id", {T});
    otherId.setBaseResult(T.id(), SCALAR);
    for (const ResultInfo& info : {x, derived, otherType, otherId}) {
        results->add(info);
    }
    results->remove(x);
    EXPECT_EQ(names(), namesWith({"other type", "other id"}));
}

TEST_F(ResultsRegistryTest, AResultThatIsItsOwnBaseIsRemovedOnce) {
    ResultInfo x = T + 1.0;
    x.setBaseResult(x.id(), x.type());
    results->add(x);
    results->remove(x);
    EXPECT_EQ(names(), namesWith({}));
}

TEST_F(ResultsRegistryTest, AResultOfTheFileWithARemovedBaseStaysAndIsTold) {
    const ResultInfo x = T + 1.0;
    ResultInfo stored(SCALAR, 7, "stored", PER_NODE);
    stored.setBaseResult(x.id(), SCALAR);
    directory->addResultInfo(stored);
    results->add(x);
    results->add(stored + 1.0);
    results->remove(x);
    EXPECT_EQ(asserts.take(), (Asserts{notToRemove}));
    EXPECT_EQ(names(), namesWith({"stored"})) << "What is computed from it goes.";
}

TEST_F(ResultsRegistryTest, RemovesEachDependantWithItsOwnBeforeTheNextAndTypeByType) {
    Models::instance()->closeAll();
    orv::PtrRef<WatchedSource> source = new WatchedSource(1);
    Models::instance()->add(orvtest::modelOn(source.get(), -1).get());
    const ResultInfo x = made(VECTOR, "x", {});
    const ResultInfo s = made(SCALAR, "s", {x});
    const ResultInfo v = made(VECTOR, "v", {x});
    const std::vector<ResultInfo> inOrderOfAdding = {made(SYMMETRIC_TENSOR, "of s", {s}),
                                                     made(SYMMETRIC_TENSOR, "t", {x}),
                                                     made(DISPLACEMENT, "d", {x}),
                                                     v,
                                                     x,
                                                     made(VECTOR, "v2", {x}),
                                                     s,
                                                     made(SCALAR, "of v", {v})};
    for (const ResultInfo& info : inOrderOfAdding) {
        results->add(info);
    }
    results->remove(x);
    EXPECT_EQ(source->removed, (Names{"x", "s", "of s", "v", "of v", "v2", "d", "t"}));
}

TEST_F(ResultsRegistryTest, RemovesAllCustomResults) {
    results->add(T + 1.0);
    results->add(model.stress + 1.0);
    results->add(model.velocity + 1.0);
    results->add(model.displacement + 1.0);
    results->removeAll();
    EXPECT_EQ(names(), namesWith({}));
    results->removeAll();
    EXPECT_EQ(names(), namesWith({}));
}

TEST_F(ResultsRegistryTest, RemovingAllTellsOfWhatHasGoneAlong) {
    const ResultInfo x = T + 1.0;
    const ResultInfo a = x + 1.0;
    const ResultInfo e = x + a;
    for (const ResultInfo& info : {x, a, e}) {
        results->add(info);
    }
    results->removeAll();
    // Where the paths from x meet, then at a, then at e.
    EXPECT_EQ(asserts.take(), (Asserts{notFound, notFound, notFound}));
    EXPECT_EQ(names(), namesWith({}));
    // Dependants in front of what they rest on are gone when that comes.
    for (const ResultInfo& info : {e, a, x}) {
        results->add(info);
    }
    results->removeAll();
    EXPECT_EQ(asserts.take(), Asserts());
    EXPECT_EQ(names(), namesWith({}));
}

TEST_F(ResultsRegistryTest, RemovesAllTypeByType) {
    Models::instance()->closeAll();
    orv::PtrRef<WatchedSource> source = new WatchedSource(1);
    Models::instance()->add(orvtest::modelOn(source.get(), -1).get());
    for (ResultType type : {SYMMETRIC_TENSOR, DISPLACEMENT, VECTOR, SCALAR}) {
        results->add(made(type, std::to_string(type).c_str(), {}));
    }
    results->removeAll();
    EXPECT_EQ(source->removed, (Names{"1", "2", "3", "4"}));
}

} // namespace
