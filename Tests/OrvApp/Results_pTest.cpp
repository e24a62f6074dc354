// Result loading: from an info or a name to the values of the current state and part.

#include "OrvApp/Results_p.h"

#include "OrvApp/Results.h"
#include "OrvUnstructGrid/CustomResultGenerator.h"
#include "OrvUnstructGrid/DataSourceLazy.h"
#include "OrvUnstructGrid/Error.h"
#include "Tests/OrvApp/CatalogueTest.h"

#include <algorithm>
#include <functional>

using namespace orv;
using orv::app::Models;
using orv::app::Parts;
using orv::app::Results;
using orv::app::ResultsPrivate;
using orvtest::failed;
using orvtest::FailedAssert;
using ug::ResultInfo;

namespace {

const std::string facade = "OrvApp/Results";
const std::string inside = "OrvApp/Results_p";

/// Two geometries of two parts and one part, two nodes each, and two states. Each double of a result on a part is
/// 100 * state id + 10 * geometry + part. Counts the reads, and refuses them when told.
class CountingSource : public ug::DataSourceLazy {
public:
    CountingSource() : DataSourceLazy(1) {
        std::vector<PtrRef<ug::DataGeometry>> geometries;
        int partId = 0;
        for (size_t partCount : {2, 1}) {
            geometries.push_back(new ug::DataGeometry);
            std::vector<ug::PartInfo> infos;
            for (size_t p = 0; p < partCount; ++p) {
                geometries.back()->addPart(++partId)->nodes()->set({0, 0, 0, 1, 0, 0}, {});
                infos.push_back(ug::PartInfo(partId, "part"));
            }
            directory()->addGeometryPartInfos(infos);
        }
        for (int id : {1, 2}) {
            addState(ug::StateInfo(id, "state", ug::StateInfo::TIME, id), geometries);
        }
    }

    /// Available in both states.
    ResultInfo add(ug::ResultType type, int id, const char* name) {
        const ResultInfo info(type, id, name, ug::PER_NODE);
        directory()->addResultInfo(info);
        directory()->setHasResult(1, info);
        directory()->setHasResult(2, info);
        return info;
    }

    int reads = 0;
    bool refuses = false;

protected:
    bool readResult(const ResultInfo& info, ug::DataState* state, ug::Error* error) override {
        ++reads;
        if (refuses) {
            return ug::fail(error, "refused");
        }
        for (size_t g = 0; g < state->geometryCount(); ++g) {
            ug::DataResult* result = state->results(state->geometry(g))->findOrAdd(info);
            for (size_t p = 0; p < result->partCount(); ++p) {
                ug::DataPartValues* part = result->values(p);
                part->allocate(2);
                std::fill_n(part->values(), 2 * part->dimension(), 100.0 * state->id() + 10.0 * g + p);
            }
        }
        return true;
    }
};

class ResultLoadingTest : public orvtest::CatalogueTest {
protected:
    ResultLoadingTest() {
        S = source->add(ug::SCALAR, 1, "S");
        V = source->add(ug::VECTOR, 1, "V");
        T = source->add(ug::SYMMETRIC_TENSOR, 2, "T");
        D = source->add(ug::DISPLACEMENT, 3, "D");
        model = orvtest::modelOn(source.get(), 1);
        Models::instance()->add(model.get());
    }

    Results* results = Results::instance();
    PtrRef<CountingSource> source = new CountingSource;
    PtrRef<ug::UnstructGridModel> model;
    ResultInfo S, V, T, D;
};

TEST_F(ResultLoadingTest, LoadsOnce) {
    ug::DataResultScalar* scalar = results->currentDataResultScalar(S);
    ASSERT_NE(scalar, nullptr);
    EXPECT_EQ(source->reads, 1);
    EXPECT_EQ(results->currentDataResultScalar(S), scalar);
    EXPECT_EQ(results->currentDataResultScalar("S"), scalar);
    EXPECT_EQ(results->currentDataPartScalar(S), scalar->part(0));
    EXPECT_EQ(source->reads, 1);
}

TEST_F(ResultLoadingTest, WhatIsLoadedAlreadyIsNotReadAgain) {
    ResultsPrivate().loadResult(V);
    EXPECT_EQ(source->reads, 1);
    EXPECT_NE(results->currentDataPartVector(V), nullptr);
    EXPECT_EQ(source->reads, 1);
}

TEST_F(ResultLoadingTest, EachKindGivesItsResultAndItsPart) {
    ASSERT_NE(results->currentDataResultScalar(S), nullptr);
    EXPECT_EQ(results->currentDataResultScalar(S)->resultId(), 1);
    EXPECT_EQ(results->currentDataResultScalar("S"), results->currentDataResultScalar(S));
    EXPECT_EQ(results->currentDataPartScalar(S), results->currentDataResultScalar(S)->part(0));
    EXPECT_EQ(results->currentDataPartScalar("S"), results->currentDataPartScalar(S));

    ASSERT_NE(results->currentDataResultVector(V), nullptr);
    EXPECT_EQ(results->currentDataResultVector(V)->resultId(), 1);
    EXPECT_EQ(results->currentDataResultVector("V"), results->currentDataResultVector(V));
    EXPECT_EQ(results->currentDataPartVector(V), results->currentDataResultVector(V)->part(0));
    EXPECT_EQ(results->currentDataPartVector("V"), results->currentDataPartVector(V));

    ASSERT_NE(results->currentDataResultTensor(T), nullptr);
    EXPECT_EQ(results->currentDataResultTensor(T)->resultId(), 2);
    EXPECT_EQ(results->currentDataResultTensor("T"), results->currentDataResultTensor(T));
    EXPECT_EQ(results->currentDataPartTensor(T), results->currentDataResultTensor(T)->part(0));
    EXPECT_EQ(results->currentDataPartTensor("T"), results->currentDataPartTensor(T));

    ASSERT_NE(results->currentDataResultDisplacement(D), nullptr);
    EXPECT_EQ(results->currentDataResultDisplacement(D)->resultId(), 3);
    EXPECT_EQ(results->currentDataResultDisplacement("D"), results->currentDataResultDisplacement(D));
    EXPECT_EQ(results->currentDataPartDisplacement(D), results->currentDataResultDisplacement(D)->part(0));
    EXPECT_EQ(results->currentDataPartDisplacement("D"), results->currentDataPartDisplacement(D));

    EXPECT_EQ(source->reads, 4);
}

TEST_F(ResultLoadingTest, ThePartIsTheCurrentOneOfItsGeometry) {
    // Parts 0 and 1 stand in the first geometry, part 2 is number 0 of the second.
    const double expected[] = {100, 101, 110};
    for (size_t i = 0; i < 3; ++i) {
        Parts::instance()->setCurrentIndex(i);
        EXPECT_EQ(results->currentDataPartScalar(S)->value(1), expected[i]);
        EXPECT_EQ(results->currentDataPartVector(V)->value(1).z(), expected[i]);
        EXPECT_EQ(results->currentDataPartTensor(T)->value(1)[5], expected[i]);
        EXPECT_EQ(results->currentDataPartDisplacement(D)->value(1).x(), expected[i]);
    }
}

TEST_F(ResultLoadingTest, AWholeResultCoversTheGeometryOfTheCurrentPart) {
    EXPECT_EQ(results->currentDataResultScalar(S)->partCount(), 2u);
    Parts::instance()->setCurrentIndex(2);
    EXPECT_EQ(results->currentDataResultScalar(S)->partCount(), 1u);
    EXPECT_EQ(results->currentDataResultScalar(S)->part(0)->value(0), 110);
}

TEST_F(ResultLoadingTest, TheStateIsTheCurrentOne) {
    EXPECT_EQ(results->currentDataPartScalar(S)->value(0), 100);
    model->modelSpec().setStateId(2);
    EXPECT_EQ(results->currentDataPartScalar(S)->value(0), 200);
    EXPECT_EQ(source->reads, 2);
}

/// All sixteen operations at once.
struct AllData {
    explicit AllData(Results* results, const ResultInfo& S, const ResultInfo& V, const ResultInfo& T,
                     const ResultInfo& D)
        : pointers{results->currentDataResultScalar(S),         results->currentDataPartScalar(S),
                   results->currentDataResultVector(V),         results->currentDataPartVector(V),
                   results->currentDataResultTensor(T),         results->currentDataPartTensor(T),
                   results->currentDataResultDisplacement(D),   results->currentDataPartDisplacement(D),
                   results->currentDataResultScalar("S"),       results->currentDataPartScalar("S"),
                   results->currentDataResultVector("V"),       results->currentDataPartVector("V"),
                   results->currentDataResultTensor("T"),       results->currentDataPartTensor("T"),
                   results->currentDataResultDisplacement("D"), results->currentDataPartDisplacement("D")} {}

    bool isNull() const {
        return std::all_of(pointers.begin(), pointers.end(), [](const void* p) { return !p; });
    }

    std::vector<const void*> pointers;
};

TEST_F(ResultLoadingTest, NullWithoutACurrentState) {
    model->modelSpec().setStateId(-1);
    EXPECT_TRUE(AllData(results, S, V, T, D).isNull());
    EXPECT_EQ(source->reads, 0);
}

TEST_F(ResultLoadingTest, NullWithoutACurrentModel) {
    Models::instance()->setCurrent(nullptr);
    EXPECT_EQ(results->currentDataResultScalar(S), nullptr);
    EXPECT_EQ(results->currentDataPartScalar(S), nullptr);
    EXPECT_EQ(results->currentDataResultVector(V), nullptr);
    EXPECT_EQ(results->currentDataPartVector(V), nullptr);
    EXPECT_EQ(results->currentDataResultTensor(T), nullptr);
    EXPECT_EQ(results->currentDataPartTensor(T), nullptr);
    EXPECT_EQ(results->currentDataResultDisplacement(D), nullptr);
    EXPECT_EQ(results->currentDataPartDisplacement(D), nullptr);
}

TEST_F(ResultLoadingTest, NullWithoutACurrentPartAlsoForAWholeResult) {
    Parts::instance()->setCurrentIndex(UNDEFINED_SIZE_T);
    EXPECT_TRUE(AllData(results, S, V, T, D).isNull());
    EXPECT_EQ(source->reads, 0);
    for (const FailedAssert& a : asserts.take()) {
        EXPECT_EQ(a.file, "OrvApp/Parts_p"); // Parts has its say about the missing part, Results has not
    }
}

TEST_F(ResultLoadingTest, NullWhenThereAreNoParts) {
    PtrRef<ug::DataSourceMemory> empty = orvtest::memorySource({{}}, {{1, "state"}});
    PtrRef<ug::UnstructGridModel> emptyModel = orvtest::modelOn(empty.get(), 1);
    Models::instance()->add(emptyModel.get());
    EXPECT_EQ(results->currentDataResultScalar(S), nullptr);
    EXPECT_EQ(results->currentDataPartScalar(S), nullptr);
}

TEST_F(ResultLoadingTest, NullWhenTheLoadFails) {
    source->refuses = true;
    EXPECT_TRUE(AllData(results, S, V, T, D).isNull());
    EXPECT_EQ(source->reads, 16); // each call tries anew
    EXPECT_FALSE(ResultsPrivate().loadResult(S));
}

TEST_F(ResultLoadingTest, NullWhenTheStateLacksTheResult) {
    const ResultInfo rare(ug::SCALAR, 8, "rare", ug::PER_NODE);
    source->directory()->addResultInfo(rare);
    source->directory()->setHasResult(2, rare);
    EXPECT_EQ(results->currentDataResultScalar(rare), nullptr);
    EXPECT_EQ(results->currentDataPartScalar(rare), nullptr);
    model->modelSpec().setStateId(2);
    EXPECT_NE(results->currentDataPartScalar(rare), nullptr);
}

/// Has what it has, and loads nothing on demand.
class SourceWithoutLoading : public ug::DataSource {
public:
    SourceWithoutLoading() : DataSource(1) {
        PtrRef<ug::DataGeometry> geometry = new ug::DataGeometry;
        geometry->addPart(1);
        addState(ug::StateInfo(1, "state", ug::StateInfo::TIME, 0), {geometry});
    }
};

TEST_F(ResultLoadingTest, ASourceThatDoesNotLoadIsNoFailure) {
    PtrRef<SourceWithoutLoading> fixed = new SourceWithoutLoading;
    PtrRef<ug::UnstructGridModel> fixedModel = orvtest::modelOn(fixed.get(), 1);
    Models::instance()->add(fixedModel.get());
    EXPECT_TRUE(ResultsPrivate().loadResult(S));
    EXPECT_EQ(results->currentDataResultScalar(S), nullptr);

    ug::DataState* state = fixed->state(0);
    ug::DataResult* present = state->results(state->geometry(0))->findOrAdd(S);
    EXPECT_EQ(results->currentDataResultScalar(S), present);
}

TEST_F(ResultLoadingTest, NamesAreLookedUpAmongAllTypes) {
    EXPECT_EQ(results->currentDataResultVector("[V]"), results->currentDataResultVector(V));

    EXPECT_EQ(results->currentDataPartScalar("nothing"), nullptr);
    EXPECT_EQ(asserts.take(),
              (std::vector<FailedAssert>{failed(inside, "foundInfo.isValid()", "Wildcard nothing not found")}));

    // One vector only, but four results.
    EXPECT_EQ(results->currentDataResultVector("*"), nullptr);
    EXPECT_EQ(asserts.take(), (std::vector<FailedAssert>{failed(inside, "foundCount < 2",
                                                                "Found multiple results sharing the given pattern.")}));
}

TEST_F(ResultLoadingTest, ANameOfAnotherKindIsAWrongKind) {
    EXPECT_EQ(results->currentDataResultVector("S"), nullptr);
    EXPECT_EQ(asserts.take(),
              (std::vector<FailedAssert>{
                  failed(inside, "vector.type() == VECTOR", "Cannot return vector result, given info is not a vector"),
                  failed(inside, "vector.type() == VECTOR",
                         "Cannot return vector result part, result loading failed - it may not be available in the "
                         "current state")}));
}

TEST_F(ResultLoadingTest, AWrongKindIsAssertedAtEachStep) {
    struct Kind {
        std::string name, type;
        std::string resultMessage; ///< of the private whole result; one of them is misspelt
        std::function<const void*()> result, part;
    };
    // The infos' ids are not those of any result of the kind that is asked for, so nothing is found.
    const Kind kinds[] = {
        {"scalar", "SCALAR", "Cannot return scalar result, given info is not a scalar",
         [&] { return results->currentDataResultScalar(D); }, [&] { return results->currentDataPartScalar(D); }},
        {"vector", "VECTOR", "Cannot return vector result, given info is not a vector",
         [&] { return results->currentDataResultVector(D); }, [&] { return results->currentDataPartVector(D); }},
        {"tensor", "SYMMETRIC_TENSOR", "Cannot return tesnor result, given info is not a tensor",
         [&] { return results->currentDataResultTensor(S); }, [&] { return results->currentDataPartTensor(S); }},
        {"displacement", "DISPLACEMENT", "Cannot return displacement result, given info is not a displacement",
         [&] { return results->currentDataResultDisplacement(S); },
         [&] { return results->currentDataPartDisplacement(S); }},
    };
    for (const Kind& kind : kinds) {
        SCOPED_TRACE(kind.name);
        const std::string test = kind.name + ".type() == " + kind.type;
        const std::string facadeTest = kind.name + ".type() == orv::ug::" + kind.type;
        const std::string tail = ", given info is not a " + kind.name;
        const FailedAssert resultFailure = failed(inside, test, kind.resultMessage);
        const FailedAssert loadFailure =
            failed(inside, test,
                   "Cannot return " + kind.name +
                       " result part, result loading failed - it may not be available in the current state");

        EXPECT_EQ(kind.result(), nullptr);
        EXPECT_EQ(asserts.take(), (std::vector<FailedAssert>{
                                      failed(facade, facadeTest, "Cannot return " + kind.name + " result" + tail),
                                      resultFailure, loadFailure}));

        EXPECT_EQ(kind.part(), nullptr);
        EXPECT_EQ(asserts.take(), (std::vector<FailedAssert>{
                                      failed(facade, facadeTest, "Cannot return " + kind.name + " object" + tail),
                                      failed(inside, test, "Cannot return " + kind.name + " result part" + tail),
                                      resultFailure, loadFailure}));
    }
}

TEST_F(ResultLoadingTest, AWrongKindIsSearchedByItsId) {
    // S and V share the id 1. V is there already, so nothing is loaded and the third check is not reached.
    ug::DataResultVector* vector = results->currentDataResultVector(V);
    ASSERT_NE(vector, nullptr);
    EXPECT_EQ(results->currentDataResultVector(S), vector);
    EXPECT_EQ(asserts.take().size(), 2u);
}

TEST_F(ResultLoadingTest, GroupAndPartIndexOfTheCurrentPart) {
    unsigned long partIndex = 77;
    Parts::instance()->setCurrentIndex(1);
    ug::DataResultGroup* group = ResultsPrivate().currentResultGroupAndPartIndex(&partIndex);
    EXPECT_EQ(partIndex, 1u);
    EXPECT_EQ(group, source->state(0)->results(source->state(0)->geometry(0)));

    Parts::instance()->setCurrentIndex(2);
    group = ResultsPrivate().currentResultGroupAndPartIndex(&partIndex);
    EXPECT_EQ(partIndex, 0u);
    EXPECT_EQ(group, source->state(0)->results(source->state(0)->geometry(1)));
}

TEST_F(ResultLoadingTest, PartIndexIsUntouchedWhenNothingIsCurrent) {
    unsigned long partIndex = 77;
    Models::instance()->setCurrent(nullptr);
    EXPECT_EQ(ResultsPrivate().currentResultGroupAndPartIndex(&partIndex), nullptr);
    EXPECT_EQ(partIndex, 77u);

    PtrRef<ug::UnstructGridModel> emptyModel = orvtest::modelOn(orvtest::memorySource({}, {{1, "state"}}).get(), 1);
    Models::instance()->add(emptyModel.get());
    EXPECT_EQ(ResultsPrivate().currentResultGroupAndPartIndex(&partIndex), nullptr);
    EXPECT_EQ(partIndex, 77u);
}

TEST_F(ResultLoadingTest, PartIndexMustNotBeNull) {
    EXPECT_EQ(asserts.takeUntil(1, [] { ResultsPrivate().currentResultGroupAndPartIndex(nullptr); }),
              (std::vector<FailedAssert>{failed(inside, "partIndex")}));
}

TEST_F(ResultLoadingTest, LoadingNeedsAState) {
    model->modelSpec().setStateId(-1);
    EXPECT_EQ(asserts.takeUntil(1, [&] { ResultsPrivate().loadResult(S); }),
              (std::vector<FailedAssert>{failed(inside, "state")}));
}

class Doubled : public ug::CustomResultFunction {
public:
    bool computeItem(const std::vector<const double*>& inputItems, double* outputItem) override {
        *outputItem = 2 * *inputItems[0];
        return true;
    }
};

TEST_F(ResultLoadingTest, LoadingACustomResultComputesIt) {
    PtrRef<ug::CustomResultGenerator> generator = new ug::CustomResultGenerator(1);
    generator->setFunction(new Doubled);
    generator->setArgumentType(0, ug::SCALAR);
    std::vector<ResultInfo> arguments = {S};
    const ResultInfo doubled(ug::SCALAR, "2S", ug::PER_NODE, arguments, generator.get());
    source->directory()->setCustomResultInfo(doubled);

    EXPECT_EQ(results->scalarIndexOf(doubled), 1u);
    ASSERT_NE(results->currentDataPartScalar("2S"), nullptr);
    EXPECT_EQ(results->currentDataPartScalar("2S")->value(0), 200);
    EXPECT_EQ(results->currentDataPartScalar(doubled)->value(1), 200);
    EXPECT_EQ(source->reads, 1);
}

} // namespace
