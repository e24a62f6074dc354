#include "OrvUnstructGrid/ZTFWriter.h"

#include "OrvCore/Defines.h"
#include "OrvUnstructGrid/DataSourceMemory.h"
#include "OrvUnstructGrid/DataSourceZTF.h"
#include "OrvUnstructGrid/DataStateSpec.h"
#include "OrvUnstructGrid/Error.h"
#include "OrvUnstructGrid/Progress.h"
#include "Tests/OrvUnstructGrid/CustomResults.h"
#include "Tests/Support/AssertRecorder.h"
#include "Tests/Support/DescribeSource.h"
#include "Tests/Support/MemoryModels.h"
#include "Tests/Support/ScratchFolder.h"
#include "Tests/Support/TestPaths.h"

#include <gtest/gtest.h>

#include <bit>
#include <csignal>
#include <limits>
#include <map>

#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace orv::ug;
using orv::PtrRef;
using orv::Str;
using orv::UNDEFINED_DOUBLE;
using orvtest::described;
using orvtest::ScratchFolder;

namespace {

using Numbers = std::vector<double>;

const std::string OLD_CONTENT = "what was there before\n";

/// A source with whatever a file can hold, whose values come from a table as a file's would.
class AnySource : public DataSourceLazy {
public:
    AnySource() : DataSourceLazy(1) {
        directory()->setSimulationInfo(SimulationInfo("any", "A \"title\" \\ with all"));
    }

    using DataSourceLazy::addState;
    using DataSourceLazy::setResultByteBudget;

    ResultInfo add(const ResultInfo& info) {
        directory()->addResultInfo(info);
        return info;
    }

    /// The values of a part in geometry 0; parts without are undefined.
    void set(int stateId, const ResultInfo& info, std::size_t part, const Numbers& values) {
        directory()->setHasResult(stateId, info);
        m_values[{stateId, info.type(), info.id(), part}] = values;
    }

    bool isUnreadable = false;
    int reads = 0;

protected:
    bool readResult(const ResultInfo& info, DataState* state, Error* error) override {
        ++reads;
        completeParts(info, state);
        DataResult* result = state->results(state->geometry(0))->find(info);
        for (std::size_t p = 0; p < result->partCount(); ++p) {
            const Numbers& values = m_values[{state->id(), info.type(), info.id(), p}];
            std::copy(values.begin(), values.end(), result->values(p)->values());
            if (auto* scalar = dynamic_cast<DataResultScalar*>(result)) {
                scalar->part(p)->updateMinMax();
            }
        }
        return !isUnreadable || fail(error, "the disk is broken");
    }

private:
    std::map<std::tuple<int, ResultType, int, std::size_t>, Numbers> m_values;
};

/// Every element type once, in a row over the same 20 nodes, which have numbers when `hasIds`.
void fillWithAllTypes(DataPart* part, bool hasIds) {
    Numbers coordinates;
    std::vector<int> nodeIds, elementIds;
    std::vector<ElementType> types;
    std::vector<std::uint32_t> connectivity;
    for (int i = 0; i < 20; ++i) {
        coordinates.insert(coordinates.end(), {0.1 * i, -1e-300 / (i + 1), 1e22 * i});
        nodeIds.push_back(1000 - 7 * i);
    }
    for (int type = POINT; type < ELEMENT_TYPE_COUNT; ++type) {
        types.push_back(ElementType(type));
        elementIds.push_back(50 - type);
        for (std::uint32_t n = 0; n < elementTypeInfo(ElementType(type)).nodeCount; ++n) {
            connectivity.push_back((n + std::uint32_t(type)) % 20);
        }
    }
    part->nodes()->set(coordinates, hasIds ? nodeIds : std::vector<int>());
    part->elements()->set(types, connectivity, hasIds ? elementIds : std::vector<int>());
}

/// A result of each type and mapping in the second state, with values from a list of all kinds of numbers.
PtrRef<AnySource> makeAnySource() {
    constexpr double MAX = std::numeric_limits<double>::max();
    const Numbers all = {0.0,
                         -0.0,
                         0.1,
                         -1.0 / 3.0,
                         UNDEFINED_DOUBLE,
                         -MAX,
                         std::nextafter(MAX, 0.0),
                         std::numeric_limits<double>::min(),
                         std::numeric_limits<double>::denorm_min(),
                         -std::numeric_limits<double>::denorm_min(),
                         std::numeric_limits<double>::infinity(),
                         -std::numeric_limits<double>::infinity(),
                         std::bit_cast<double>(0x7FF8000000000000u),
                         std::bit_cast<double>(0xFFF8000000000000u),
                         std::bit_cast<double>(0x7FF8000000000123u),
                         std::bit_cast<double>(0xFFF0000000000001u),
                         123456789012345678.0};
    PtrRef<AnySource> source(new AnySource);
    std::vector<PtrRef<DataGeometry>> first = {PtrRef(new DataGeometry), PtrRef(new DataGeometry)};
    std::vector<PtrRef<DataGeometry>> second = {PtrRef(new DataGeometry), first[1]};
    for (const PtrRef<DataGeometry>& geometry : {first[0], second[0]}) {
        fillWithAllTypes(geometry->addPart(3), geometry == first[0]);
        geometry->addPart(-4);
        geometry->addPart(7)->nodes()->set({1, 2, 3}, {});
    }
    fillWithAllTypes(first[1]->addPart(3), true);
    // Greek, Han, an emoji, a line end, quotes and backslashes, an escape, half a pair, and no code point at all.
    const Str greek(L"\u03B1\u03B2\u03B3 \u6C34 \U0001F600");
    const Str odd(std::wstring(L"a\"b\\c\n\t\u0085#, {}\\u{41}") + wchar_t(0xD800) + wchar_t(0x7FFFFFFF) +
                  std::wstring(1, L'\0') + L"z");
    source->directory()->addGeometryPartInfos({PartInfo(3, greek), PartInfo(-4, ""), PartInfo(7, odd)});
    source->directory()->addGeometryPartInfos({PartInfo(3, " # no comment, ")});
    source->addState(StateInfo(5, "", StateInfo::FREQUENCY, UNDEFINED_DOUBLE), first);
    source->addState(StateInfo(2, odd, StateInfo::LOAD_CASE, -1.5), second);
    source->addState(StateInfo(9, greek, StateInfo::ReferenceType(3), std::nan("")), first);
    source->directory()->addStateGroupInfo(StateGroupInfo({9, 5}));
    source->directory()->addStateGroupInfo(StateGroupInfo(std::vector<int>()));
    for (const ResultType type : {SYMMETRIC_TENSOR, SCALAR, DISPLACEMENT, VECTOR}) {
        for (int mapping = PER_NODE; mapping <= PER_ELEMENT_SURFACE; ++mapping) {
            ResultInfo info(type, 10 * mapping, "r" + std::to_string(mapping), ResultMapping(mapping));
            if (type == SCALAR && mapping == PER_NODE) {
                info.setBaseResult(20, SYMMETRIC_TENSOR);
            }
            source->add(info);
            Numbers values(second[0]->part(0)->itemCount(ResultMapping(mapping)) * doublesPerItem(type));
            for (std::size_t i = 0; i < values.size(); ++i) {
                values[i] = all[i % all.size()];
            }
            source->set(2, info, 0, values);
        }
    }
    const ResultInfo lonely = source->add(ResultInfo(SCALAR, 0, odd, PER_NODE));
    source->set(5, lonely, 2, {42.0});
    source->add(ResultInfo(VECTOR, (1 << 30) - 1, "nowhere", PER_ELEMENT));
    // There in state 9, with no defined value.
    source->directory()->setHasResult(9, lonely);
    return source;
}

class ZTFWriterTest : public testing::Test {
protected:
    std::string path() const {
        return folder / "a.ztf";
    }

    std::string why(DataSource* source, const WriteSelection& selection = {}) {
        Error error;
        EXPECT_FALSE(ZTFWriter().write(source, selection, path(), nullptr, &error));
        EXPECT_FALSE(ZTFWriter().write(source, selection, path(), nullptr, nullptr));
        Str text = error.message();
        text.replace(folder.path() + "/", "");
        return text.toStdString();
    }

    PtrRef<DataSourceZTF> writeAndOpen(DataSource* source, const WriteSelection& selection = {}) {
        Error error;
        EXPECT_TRUE(ZTFWriter().write(source, selection, path(), nullptr, &error)) << error.message();
        PtrRef<DataSourceZTF> read(new DataSourceZTF(1));
        EXPECT_TRUE(read->openFile(path(), &error)) << error.message();
        return read;
    }

    ScratchFolder folder;
};

TEST_F(ZTFWriterTest, WhatIsReadBackIsTheSameBitByBit) {
    orvtest::AssertRecorder asserts;
    const PtrRef<AnySource> source = makeAnySource();
    const PtrRef<DataSourceZTF> read = writeAndOpen(source.get());
    EXPECT_EQ(described(read.get()), described(source.get()));
    EXPECT_EQ(read->directory()->simulationInfo().filename(), Str(path()));
    EXPECT_TRUE(asserts.take().empty());
    EXPECT_EQ(folder.names(), std::vector<std::string>{"a.ztf"});
}

// A file of every feature that version 1 of the format has, kept so that later versions of the library read it too.
TEST_F(ZTFWriterTest, AFileOfOldIsStillReadAndWritten) {
    const std::string sample = orvtest::testDataFolder() + "/ztf/everything.ztf";
    const PtrRef<AnySource> source = makeAnySource();
    writeAndOpen(source.get());
    EXPECT_EQ(folder.read("a.ztf"), orvtest::readWholeFile(sample));
    const PtrRef<DataSourceZTF> read(new DataSourceZTF(1));
    ASSERT_TRUE(read->openFile(sample, nullptr));
    EXPECT_EQ(described(read.get()), described(source.get()));
}

TEST_F(ZTFWriterTest, AFileWrittenFromAFileIsTheSameFile) {
    writeAndOpen(makeAnySource().get());
    const std::string first = folder.read("a.ztf");
    const PtrRef<DataSourceZTF> read(new DataSourceZTF(1));
    ASSERT_TRUE(read->openFile(path(), nullptr));
    // Also onto the file that is being read.
    writeAndOpen(read.get());
    EXPECT_EQ(folder.read("a.ztf"), first);
}

TEST_F(ZTFWriterTest, WritesTextThatPeopleCanRead) {
    const PtrRef<DataSourceMemory> source(new DataSourceMemory(1));
    source->addGeometry();
    DataPart* part = source->addPart(0, "Plate");
    part->nodes()->set({0, 0, 0, 1.5, 0, 0, 0, 1e-9, 0}, {10, 20, 30});
    part->elements()->set({TRIANGLE}, {0, 1, 2}, {7});
    source->addPart(0, "Empty");
    source->addState(StateInfo(1, "Load on", StateInfo::TIME, 0.5));
    source->addState(StateInfo(2, "Load off", StateInfo::TIME, UNDEFINED_DOUBLE));
    const ResultInfo t = source->addResult(SCALAR, "Temperature", PER_NODE);
    const ResultInfo u = source->addResult(DISPLACEMENT, "u", PER_ELEMENT);
    ASSERT_TRUE(source->setValues(1, t, 0, 0, Numbers{20, UNDEFINED_DOUBLE, 21.25}, nullptr));
    ASSERT_TRUE(source->setValues(2, u, 0, 0, Numbers{0, -1, 0.1}, nullptr));
    writeAndOpen(source.get());
    EXPECT_EQ(folder.read("a.ztf"), R"(ztf 1
result scalar 1 "Temperature" node
result displacement 1 "u" element

geometry 1
part 1 "Plate"
nodes 3 numbered
  10 0 0 0
  20 1.5 0 0
  30 0 1e-09 0
elements 1 numbered
  7 triangle 1 2 3
part 2 "Empty"
nodes 0
elements 0

state 1 "Load on" time 0.5
geometries 1
  1
field scalar 1
values 1 1
  20 undefined 21.25

state 2 "Load off" time undefined
geometries 1
  1
field displacement 1
values 1 1
  0 -1 0.1

end
)");
}

TEST_F(ZTFWriterTest, ASourceWithoutStatesKeepsItsRecords) {
    const PtrRef<DataSourceMemory> source(new DataSourceMemory(1));
    for (const std::size_t g : {0, 1}) {
        source->addGeometry();
        source->addPart(g, "Part");
    }
    source->addPart(1, "Other");
    source->addResult(SCALAR, "Temperature", PER_NODE);
    const PtrRef<DataSourceZTF> read = writeAndOpen(source.get());
    EXPECT_EQ(read->stateCount(), 0u);
    EXPECT_EQ(described(read.get()), described(source.get()));
}

TEST_F(ZTFWriterTest, AGeometryAtTwoPlacesMayBearTwoNames) {
    const PtrRef<AnySource> source(new AnySource);
    const PtrRef<DataGeometry> geometry(new DataGeometry);
    geometry->addPart(1)->nodes()->set({1, 2, 3}, {});
    source->directory()->addGeometryPartInfos({PartInfo(1, "left")});
    source->directory()->addGeometryPartInfos({PartInfo(1, "right")});
    source->addState(StateInfo(1, "", StateInfo::TIME, 0), {geometry, geometry});
    const PtrRef<DataSourceZTF> read = writeAndOpen(source.get());
    EXPECT_EQ(read->directory()->partInfos(0)[0].name(), "left");
    EXPECT_EQ(read->directory()->partInfos(1)[0].name(), "right");
}

TEST_F(ZTFWriterTest, WritesWhatIsSelected) {
    const PtrRef<AnySource> source = makeAnySource();
    WriteSelection selection;
    selection.stateIds = {9, 2};
    selection.results = {source->directory()->findScalarResultInfo(10), source->directory()->findScalarResultInfo(0)};
    selection.partIds = {7, 3};
    const PtrRef<DataSourceZTF> read = writeAndOpen(source.get(), selection);
    const DataSourceDirectory& directory = *read->directory();
    ASSERT_EQ(directory.stateCount(), 2u);
    EXPECT_EQ(directory.stateInfo(0).id(), 2);
    EXPECT_EQ(directory.stateInfo(1).id(), 9);
    ASSERT_EQ(directory.partInfos(0).size(), 2u);
    EXPECT_EQ(directory.partInfos(0)[0].id(), 3);
    EXPECT_EQ(directory.partInfos(0)[1].id(), 7);
    EXPECT_EQ(directory.partInfos(1).size(), 1u);
    ASSERT_EQ(directory.scalarResultInfos().size(), 2u);
    EXPECT_TRUE(directory.vectorResultInfos().empty());
    // The tensor that it was derived from has stayed behind.
    EXPECT_EQ(directory.findScalarResultInfo(10).baseResultId(), -1);
    ASSERT_EQ(directory.stateGroupInfos().size(), 2u);
    EXPECT_EQ(directory.stateGroupInfos()[0].stateCount(), 1u);
    EXPECT_EQ(directory.stateGroupInfos()[0].stateId(0), 9);
}

TEST_F(ZTFWriterTest, CustomResultsBecomeOrdinaryOnes) {
    const orvtest::MemoryModel model;
    const ResultInfo sum = orvtest::sumOf("sum", {model.temperature, model.temperature});
    const ResultInfo half = orvtest::sumOf("half", {model.pressure});
    model.source->directory()->setCustomResultInfo(sum);
    model.source->directory()->setCustomResultInfo(half);
    WriteSelection selection;
    selection.results = {model.pressure, sum, half};
    const PtrRef<DataSourceZTF> read = writeAndOpen(model.source.get(), selection);
    // 2 is pressure's, so the custom ones get 1 and 3.
    const std::vector<ResultInfo> infos = read->directory()->scalarResultInfos();
    ASSERT_EQ(infos.size(), 3u);
    EXPECT_EQ(infos[1].id(), 1);
    EXPECT_EQ(infos[1].name(), "sum");
    EXPECT_FALSE(infos[1].isCustom());
    EXPECT_EQ(infos[2].id(), 3);
    EXPECT_TRUE(read->directory()->hasResult(1, infos[1]));
    // Pressure is missing in state 3, and so is what rests on it.
    EXPECT_FALSE(read->directory()->hasResult(3, infos[2]));
    double value = 0;
    ASSERT_TRUE(read->copyScalars(2, infos[1], {0, 1, 3}, {&value, 1}, nullptr));
    EXPECT_EQ(value, 2 * orvtest::modelValue(2, model.temperature, 1, 3, 0));
}

TEST_F(ZTFWriterTest, LeavesLoadedWhatWasLoadedAndNothingElse) {
    const PtrRef<AnySource> source = makeAnySource();
    const ResultInfo kept = source->directory()->findScalarResultInfo(20);
    const ResultInfo custom = orvtest::sumOf("sum", {source->directory()->findScalarResultInfo(10)});
    source->directory()->setCustomResultInfo(custom);
    DataStateSpec spec;
    spec.setResultIds({kept});
    ASSERT_TRUE(source->loadDataState(2, spec, nullptr));
    const std::size_t before = source->state(1)->resultByteCount();
    writeAndOpen(source.get());
    EXPECT_TRUE(source->state(1)->hasLoaded(kept));
    EXPECT_EQ(source->state(1)->resultByteCount(), before);
    EXPECT_EQ(source->state(0)->resultByteCount(), 0u);
    EXPECT_EQ(source->state(2)->resultByteCount(), 0u);
}

struct RecordedProgress : Progress {
    void setPercent(int percent) override {
        percents.push_back(percent);
    }

    std::vector<int> percents;
};

TEST_F(ZTFWriterTest, TellsItsProgress) {
    const PtrRef<AnySource> source = makeAnySource();
    RecordedProgress progress;
    ASSERT_TRUE(ZTFWriter().write(source.get(), {}, path(), &progress, nullptr));
    ASSERT_GT(progress.percents.size(), 10u);
    EXPECT_TRUE(std::is_sorted(progress.percents.begin(), progress.percents.end()));
    EXPECT_GE(progress.percents.front(), 0);
    EXPECT_EQ(progress.percents.back(), 100);
    EXPECT_EQ(std::count(progress.percents.begin(), progress.percents.end(), 100), 1);
}

TEST_F(ZTFWriterTest, AFailureTellsWhyAndLeavesTheOldFile) {
    folder.write("a.ztf", OLD_CONTENT);
    const PtrRef<AnySource> source = makeAnySource();
    EXPECT_EQ(why(nullptr), "cannot write \"a.ztf\": there is no data source");
    WriteSelection selection;
    selection.stateIds = {77};
    EXPECT_EQ(why(source.get(), selection), "There is no state 77 in 'any': its states are 5, 2, 9");
    source->isUnreadable = true;
    EXPECT_EQ(why(source.get()), "the disk is broken");
    EXPECT_EQ(folder.read("a.ztf"), OLD_CONTENT);
    EXPECT_EQ(folder.names(), std::vector<std::string>{"a.ztf"});
}

TEST_F(ZTFWriterTest, RefusesElementsWithoutTheirNodes) {
    const PtrRef<DataSourceMemory> source(new DataSourceMemory(1));
    source->addGeometry();
    source->addPart(0, "Torn")->elements()->set({POINT}, {0}, {});
    source->addState(StateInfo(1, "", StateInfo::TIME, 0));
    EXPECT_EQ(why(source.get()), "Part 'Torn' cannot be written: its elements name nodes that it does not have");
    EXPECT_TRUE(folder.names().empty());
}

TEST_F(ZTFWriterTest, RefusesResultsWithoutAMapping) {
    const PtrRef<AnySource> source = makeAnySource();
    source->add(ResultInfo(SCALAR, 99, "lost", UNKNOWN_MAPPING));
    EXPECT_EQ(why(source.get()), "Result 'lost' cannot be written: its mapping is unknown");
}

/// Runs a function in a child process, and gives what waitpid() tells of its end.
template <class Function>
int runInChild(Function function) {
    const pid_t child = ::fork();
    if (child == 0) {
        function();
        ::_exit(0);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    return status;
}

struct KillingProgress : Progress {
    explicit KillingProgress(int at) : percentToDie(at) {}

    void setPercent(int percent) override {
        if (percent >= percentToDie) {
            ::raise(SIGKILL);
        }
    }

    int percentToDie;
};

// The last percent before 100 is told when everything but the end is in the temporary file.
TEST_F(ZTFWriterTest, AKilledProcessLeavesTheOldFile) {
    const PtrRef<AnySource> source = makeAnySource();
    for (const int percent : {0, 50, 99}) {
        folder.write("a.ztf", OLD_CONTENT);
        const int status = runInChild([&] {
            KillingProgress progress(percent);
            ZTFWriter().write(source.get(), {}, path(), &progress, nullptr);
        });
        ASSERT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL) << percent;
        EXPECT_EQ(folder.read("a.ztf"), OLD_CONTENT);
        // What a killed one leaves behind does not stand in the way.
        EXPECT_GE(folder.names().size(), 2u);
        writeAndOpen(source.get());
    }
}

TEST_F(ZTFWriterTest, AFullDiskLeavesTheOldFile) {
    folder.write("a.ztf", OLD_CONTENT);
    const PtrRef<AnySource> source = makeAnySource();
    ASSERT_TRUE(ZTFWriter().write(source.get(), {}, folder / "whole.ztf", nullptr, nullptr));
    const std::size_t size = folder.read("whole.ztf").size();
    for (const std::size_t limit : {std::size_t(0), std::size_t(1), size / 2, size - 1, size}) {
        const int status = runInChild([&] {
            ::signal(SIGXFSZ, SIG_IGN);
            const rlimit most = {limit, limit};
            ::setrlimit(RLIMIT_FSIZE, &most);
            Error error;
            const bool isWritten = ZTFWriter().write(source.get(), {}, path(), nullptr, &error);
            const Str expected = "cannot write \"" + path() + "\": File too large";
            ::_exit(isWritten ? 1 : error.message() == expected ? 2 : 3);
        });
        ASSERT_TRUE(WIFEXITED(status));
        EXPECT_EQ(WEXITSTATUS(status), limit == size ? 1 : 2) << limit;
        EXPECT_EQ(folder.read("a.ztf"), limit == size ? folder.read("whole.ztf") : OLD_CONTENT);
        EXPECT_EQ(folder.names(), (std::vector<std::string>{"a.ztf", "whole.ztf"}));
    }
}

} // namespace
