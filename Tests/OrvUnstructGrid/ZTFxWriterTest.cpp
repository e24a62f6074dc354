// What is written is read back as it was, takes no more room than it needs, and is asked of its source piece by piece.

#include "OrvUnstructGrid/ZTFxWriter.h"

#include "OrvUnstructGrid/Progress.h"
#include "Tests/OrvUnstructGrid/CustomResults.h"
#include "Tests/OrvUnstructGrid/ZtfxFiles.h"
#include "Tests/Support/MemoryModels.h"
#include "Tests/Support/ScratchFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

using namespace orv::ug;
using orv::PtrRef;
using orv::UNDEFINED_DOUBLE;
using orvtest::MemoryModel;
using orvtest::openZtfx;
using orvtest::writeZtfx;
using orvtest::ZipEntries;

namespace {

class ZTFxWriterTest : public testing::Test {
protected:
    std::string failedCase(int id, DataSource* source, const WriteSelection& selection = {}) {
        EXPECT_FALSE(writer.addCase(id, "case", source, selection, &error));
        return error.message().toStdString();
    }

    std::string failedWrite(const std::string& target) {
        EXPECT_FALSE(writer.write(target, nullptr, &error));
        return error.message().toStdString();
    }

    /// The texts of the attribute in all elements of that name.
    std::vector<std::string> attributes(const std::string& element, const std::string& name) const {
        ZipEntries file = ZipEntries::read(path);
        const std::string& text = file.find("index.xml")->bytes;
        std::vector<std::string> found;
        for (std::size_t at = text.find("<" + element + " "); at != std::string::npos;
             at = text.find("<" + element + " ", at + 1)) {
            const std::size_t begin = text.find(" " + name + "=\"", at) + name.size() + 3;
            found.push_back(text.substr(begin, text.find('"', begin) - begin));
        }
        return found;
    }

    orvtest::ScratchFolder folder;
    const std::string path = folder / "a.ztfx";
    ZTFxWriter writer;
    Error error;
};

TEST_F(ZTFxWriterTest, EverythingComesBackBitByBit) {
    const PtrRef<DataSourceMemory> source = orvtest::richSource();
    for (const ZTFxWriter::Compression compression : {ZTFxWriter::STORED, ZTFxWriter::DEFLATED}) {
        for (const char* password : {"", "p\xc3\xa4ss word"}) {
            SCOPED_TRACE(std::to_string(compression) + password);
            writeZtfx(source.get(), path, password, compression);
            const PtrRef<DataSourceZTFx> read = openZtfx(path, password);
            ASSERT_TRUE(read);
            orvtest::expectSame(source.get(), read.get());
            EXPECT_EQ(read->cases()[0].simulation.filename(), "/data/../wing.frd");
            EXPECT_EQ(read->directory()->simulationInfo().filename(), path.c_str());
        }
    }
}

TEST_F(ZTFxWriterTest, AFileIsWrittenFromAFile) {
    const PtrRef<DataSourceMemory> source = orvtest::richSource();
    writeZtfx(source.get(), path);
    const PtrRef<DataSourceZTFx> read = openZtfx(path);
    ASSERT_TRUE(read);
    // In place of the very file that is being read.
    writeZtfx(read.get(), path);
    const PtrRef<DataSourceZTFx> again = openZtfx(path);
    ASSERT_TRUE(again);
    orvtest::expectSame(source.get(), again.get());
    orvtest::expectSame(source.get(), read.get());
}

TEST_F(ZTFxWriterTest, EntriesAreStoredOrDeflatedAndAllButTheHeaderEncrypted) {
    const MemoryModel model;
    for (const ZTFxWriter::Compression compression : {ZTFxWriter::STORED, ZTFxWriter::DEFLATED}) {
        for (const char* password : {"", "secret"}) {
            SCOPED_TRACE(std::to_string(compression) + password);
            writeZtfx(model.source.get(), path, password, compression);
            const ZipEntries file = ZipEntries::read(path, password);
            EXPECT_EQ(file.names().front(), "ztfx.xml");
            EXPECT_EQ(file.names().back(), "index.xml");
            for (const ZipEntries::Entry& entry : file.entries) {
                const bool isHeader = entry.name == "ztfx.xml";
                EXPECT_EQ(entry.isDeflated, compression == ZTFxWriter::DEFLATED && !isHeader) << entry.name;
                EXPECT_EQ(entry.isEncrypted, *password && !isHeader) << entry.name;
            }
            EXPECT_EQ(file.entries[0].bytes, std::string("<?xml version=\"1.0\"?>\n<ztfx format=\"1\" encryption=\"") +
                                                 (*password ? "aes256" : "none") + "\" />\n");
        }
    }
}

TEST_F(ZTFxWriterTest, ThePasswordShowsNowhere) {
    const MemoryModel model;
    writeZtfx(model.source.get(), path, "open sesame");
    const std::string bytes = folder.read("a.ztfx");
    EXPECT_EQ(bytes.find("sesame"), std::string::npos);
    EXPECT_EQ(bytes.find("Temperature"), std::string::npos);
}

/// Two nodes for each of `stateCount` states, all at the same places.
PtrRef<DataSourceMemory> twoNodes(int stateCount) {
    PtrRef<DataSourceMemory> source(new DataSourceMemory(1));
    source->addGeometry();
    source->addPart(0, "part")->nodes()->set({0.1, 0, 0, 1, 0, 0}, {});
    for (int id = 1; id <= stateCount; ++id) {
        source->addState(StateInfo(id, "", StateInfo::TIME, id));
    }
    return source;
}

void set(DataSourceMemory* source, int stateId, const ResultInfo& info, const std::vector<double>& values) {
    EXPECT_TRUE(source->setValues(stateId, info, 0, 0, values, nullptr));
}

TEST_F(ZTFxWriterTest, ValuesThatRepeatAreStoredOnce) {
    const PtrRef<DataSourceMemory> source = twoNodes(3);
    const ResultInfo t = source->addResult(SCALAR, "t", PER_NODE), u = source->addResult(SCALAR, "u", PER_NODE);
    const ResultInfo v = source->addResult(VECTOR, "v", PER_NODE);
    for (int id = 1; id <= 3; ++id) {
        set(source.get(), id, t, {0.1, 0.2});
        set(source.get(), id, u, {0.1, id == 2 ? 0.3 : 0.2});
    }
    set(source.get(), 1, v, {0.1, 0, 0, 1, 0, 0}); // the coordinates
    ASSERT_TRUE(writer.addCase(1, "one", source.get(), {}, &error));
    ASSERT_TRUE(writer.addCase(2, "two", source.get(), {}, &error));
    ASSERT_TRUE(writer.write(path, nullptr, &error)) << error.message();

    // Array 1 is the coordinates; entries 2 to 8 are the fields of the first case: t, u and v of state 1, t and u of
    // states 2 and 3.
    EXPECT_EQ(attributes("array", "id"), (std::vector<std::string>{"1", "2", "6"}));
    const std::vector<std::string> fields = {"2", "2", "1", "2", "6", "2", "2"};
    std::vector<std::string> ofBothCases = fields;
    ofBothCases.insert(ofBothCases.end(), fields.begin(), fields.end());
    EXPECT_EQ(attributes("field", "arrays"), ofBothCases);
    std::size_t bytes = 0;
    for (const ZipEntries::Entry& entry : ZipEntries::read(path).entries) {
        bytes += entry.name.starts_with("data/") ? entry.bytes.size() : 0;
    }
    EXPECT_EQ(bytes, 6u * 8 + 2 * 8 + 2 * 8);

    const PtrRef<DataSourceZTFx> read(new DataSourceZTFx(1));
    ASSERT_TRUE(read->openCaseById(path, 2, &error)) << error.message();
    orvtest::expectSame(source.get(), read.get());
}

/// Each state has a geometry of its own. Values are in the states from the start and nothing can be loaded.
class RemeshedSource : public DataSource {
public:
    RemeshedSource() : DataSource(1) {
        directory()->addGeometryPartInfos({PartInfo(1, "part")});
        directory()->addResultInfo(ResultInfo(SCALAR, 1, "t", PER_NODE));
    }

    void addRemeshed(int id, const std::vector<double>& coordinates) {
        PtrRef<DataGeometry> geometry(new DataGeometry);
        geometry->addPart(1)->nodes()->set(coordinates, {});
        geometry->part(0)->elements()->set({BEAM}, {0, 1}, {});
        addState(StateInfo(id, "", StateInfo::TIME, id), {geometry});
    }

    void setValues(int id, const std::vector<double>& values) {
        const ResultInfo info = directory()->findScalarResultInfo(1);
        directory()->setHasResult(id, info);
        DataState* of = state(stateIndex(id));
        DataPartValues* part = of->results(of->geometry(0))->findOrAdd(info)->values(0);
        part->allocate(values.size());
        std::copy(values.begin(), values.end(), part->values());
    }
};

TEST_F(ZTFxWriterTest, MeshesThatRepeatAreStoredOnceAndShared) {
    const PtrRef<RemeshedSource> source(new RemeshedSource);
    source->addRemeshed(1, {0.1, 0, 0, 1, 0, 0});
    source->addRemeshed(2, {0.1, 0, 0, 2, 0, 0});
    source->addRemeshed(3, {0.1, 0, 0, 1, 0, 0});
    source->setValues(2, {5, 6});
    writeZtfx(source.get(), path);
    EXPECT_EQ(attributes("state", "meshes"), (std::vector<std::string>{"0", "1", "0"}));
    EXPECT_EQ(attributes("array", "id"), (std::vector<std::string>{"1", "2", "3", "4", "5"}));
    const PtrRef<DataSourceZTFx> read = openZtfx(path);
    ASSERT_TRUE(read);
    orvtest::expectSame(source.get(), read.get());
    EXPECT_EQ(read->state(0)->geometry(0), read->state(2)->geometry(0));
    EXPECT_NE(read->state(0)->geometry(0), read->state(1)->geometry(0));
}

TEST_F(ZTFxWriterTest, EqualGeometriesOfOneStateAreSeparateObjects) {
    const PtrRef<DataSourceMemory> source(new DataSourceMemory(1));
    for (std::size_t g = 0; g < 2; ++g) {
        source->addGeometry();
        source->addPart(g, "part")->nodes()->set({1, 2, 3}, {});
    }
    source->addState(StateInfo(1, "", StateInfo::TIME, 0));
    const ResultInfo t = source->addResult(SCALAR, "t", PER_NODE);
    EXPECT_TRUE(source->setValues(1, t, 0, 0, std::vector<double>{7}, nullptr));
    EXPECT_TRUE(source->setValues(1, t, 1, 0, std::vector<double>{8}, nullptr));
    writeZtfx(source.get(), path);
    EXPECT_EQ(attributes("state", "meshes"), std::vector<std::string>{"0 0"});
    const PtrRef<DataSourceZTFx> read = openZtfx(path);
    ASSERT_TRUE(read);
    orvtest::expectSame(source.get(), read.get());
}

TEST_F(ZTFxWriterTest, ValuesThatFit32BitsTakeNoMore) {
    const PtrRef<DataSourceMemory> source = twoNodes(5);
    const ResultInfo t = source->addResult(SCALAR, "t", PER_NODE);
    const double largestFloat = std::numeric_limits<float>::max();
    set(source.get(), 1, t, {0.5, -0.0});
    set(source.get(), 2, t, {0.1, 0.5});
    set(source.get(), 3, t, {0.5, UNDEFINED_DOUBLE});
    set(source.get(), 4, t, {0.5, largestFloat}); // which stands for undefined
    set(source.get(), 5, t, {UNDEFINED_DOUBLE, UNDEFINED_DOUBLE});
    writeZtfx(source.get(), path);
    EXPECT_EQ(attributes("array", "type"),
              (std::vector<std::string>{"float64", "float32", "float64", "float32", "float64"}));
    EXPECT_EQ(attributes("field", "arrays"), (std::vector<std::string>{"2", "3", "4", "5", "0"}));
    // 0.5 and -0.0 as floats.
    EXPECT_EQ(ZipEntries::read(path).find("data/2")->bytes, std::string("\0\0\0\x3f\0\0\0\x80", 8));
    const PtrRef<DataSourceZTFx> read = openZtfx(path);
    ASSERT_TRUE(read);
    orvtest::expectSame(source.get(), read.get());
}

TEST_F(ZTFxWriterTest, OnlyWhatIsSelectedIsWritten) {
    const MemoryModel model;
    model.source->directory()->addStateGroupInfo(StateGroupInfo({1, 2, 3}));
    model.source->directory()->addStateGroupInfo(StateGroupInfo({1}));
    WriteSelection selection;
    selection.stateIds = {3, 2};
    selection.results = {model.velocity, model.pressure};
    selection.partIds = {2, 3};
    ASSERT_TRUE(writer.addCase(0, "", model.source.get(), selection, &error)) << error.message();
    ASSERT_TRUE(writer.write(path, nullptr, &error)) << error.message();
    const PtrRef<DataSourceZTFx> read = openZtfx(path);
    ASSERT_TRUE(read);
    EXPECT_EQ(read->stateCount(), 2u);
    EXPECT_EQ(read->directory()->stateInfo(0).id(), 2);
    ASSERT_EQ(read->directory()->stateGroupInfos().size(), 1u);
    EXPECT_EQ(read->directory()->stateGroupInfos()[0].stateCount(), 2u);
    ASSERT_EQ(read->directory()->partInfos(0).size(), 2u);
    EXPECT_EQ(read->directory()->partInfos(0)[1].name(), "Roof");
    ASSERT_EQ(read->directory()->partInfos(1).size(), 1u);
    EXPECT_EQ(read->directory()->scalarResultInfos(), std::vector<ResultInfo>{model.pressure});
    EXPECT_EQ(read->directory()->vectorResultInfos(), std::vector<ResultInfo>{model.velocity});
    EXPECT_TRUE(read->directory()->displacementResultInfos().empty());
    EXPECT_TRUE(read->directory()->hasResult(2, model.pressure));
    EXPECT_FALSE(read->directory()->hasResult(3, model.pressure));
    orvtest::load(read.get(), 2, model.velocity);
    const DataState* state = read->state(0);
    // "Nut", the second part of geometry 1, is the fifth of the model.
    EXPECT_EQ(state->geometry(1)->part(0)->partId(), 2);
    EXPECT_EQ(state->results(state->geometry(1))->find(model.velocity)->values(0)->values()[4],
              orvtest::modelValue(2, model.velocity, 4, 1, 1));
}

TEST_F(ZTFxWriterTest, CustomResultsBecomeOrdinaryOnes) {
    const PtrRef<DataSourceMemory> source = twoNodes(1);
    const ResultInfo t = source->addResult(SCALAR, "t", PER_NODE), u = source->addResult(SCALAR, "u", PER_NODE);
    set(source.get(), 1, t, {1, 2});
    set(source.get(), 1, u, {10, 20});
    const ResultInfo sum = orvtest::sumOf("sum", {t, u});
    source->directory()->setCustomResultInfo(sum);
    writeZtfx(source.get(), path);
    EXPECT_FALSE(source->state(0)->hasLoaded(sum));
    EXPECT_TRUE(source->state(0)->hasLoaded(t));

    const PtrRef<DataSourceZTFx> read = openZtfx(path);
    ASSERT_TRUE(read);
    const std::vector<ResultInfo> infos = read->directory()->scalarResultInfos();
    ASSERT_EQ(infos.size(), 3u);
    EXPECT_EQ(infos[2].id(), 3); // the first that is free
    EXPECT_EQ(infos[2].name(), "sum");
    EXPECT_FALSE(infos[2].isCustom());
    orvtest::load(read.get(), 1, infos[2]);
    const DataState* state = read->state(0);
    EXPECT_EQ(state->results(state->geometry(0))->find(infos[2])->values(0)->values()[1], 22);
}

/// Notes how many results are loaded when another one is read.
class CountingSource : public DataSourceLazy {
public:
    CountingSource() : DataSourceLazy(1) {
        std::vector<PtrRef<DataGeometry>> geometries;
        for (int g = 0; g < 2; ++g) {
            geometries.emplace_back(new DataGeometry)->addPart(1)->nodes()->set({0, 0, 0}, {});
            directory()->addGeometryPartInfos({PartInfo(1, "part")});
        }
        for (int id = 1; id <= 3; ++id) {
            directory()->addResultInfo(ResultInfo(SCALAR, id, "r", PER_NODE));
        }
        for (int state = 1; state <= 4; ++state) {
            addState(StateInfo(state, "", StateInfo::TIME, state), geometries);
            for (int id = 1; id <= 3; ++id) {
                directory()->setHasResult(state, directory()->findScalarResultInfo(id));
            }
        }
    }

    std::vector<std::size_t> loadedBytes;
    int failingState = -1;

protected:
    bool readResult(const ResultInfo& info, DataState* state, Error* error) override {
        std::size_t bytes = 0;
        for (std::size_t s = 0; s < stateCount(); ++s) {
            bytes += this->state(s)->resultByteCount();
        }
        loadedBytes.push_back(bytes);
        for (std::size_t g = 0; g < 2; ++g) {
            DataPartValues* values = state->results(state->geometry(g))->findOrAdd(info)->values(0);
            values->allocate(1);
            *values->values() = 0.1 * state->id() + info.id() + 100.0 * g;
        }
        return state->id() != failingState || fail(error, "beam.frd, line 7: no number");
    }
};

TEST_F(ZTFxWriterTest, OneResultOfOneStateIsInMemoryAtATime) {
    const PtrRef<CountingSource> source(new CountingSource);
    orvtest::load(source.get(), 2, source->directory()->findScalarResultInfo(3));
    source->loadedBytes.clear();
    writeZtfx(source.get(), path);
    // All are read but the one that was there, which stays.
    EXPECT_EQ(source->loadedBytes, std::vector<std::size_t>(11, 2 * sizeof(double)));
    EXPECT_EQ(source->state(1)->resultByteCount(), 2 * sizeof(double));
    EXPECT_TRUE(source->state(1)->hasLoaded(source->directory()->findScalarResultInfo(3)));
    const PtrRef<DataSourceZTFx> read = openZtfx(path);
    ASSERT_TRUE(read);
    orvtest::expectSame(source.get(), read.get());
}

TEST_F(ZTFxWriterTest, ASourceThatFailsLeavesTheOldFile) {
    const PtrRef<CountingSource> source(new CountingSource);
    folder.write("a.ztfx", "old");
    source->failingState = 3;
    ASSERT_TRUE(writer.addCase(0, "", source.get(), {}, &error));
    EXPECT_EQ(failedWrite(path), "beam.frd, line 7: no number");
    EXPECT_EQ(folder.read("a.ztfx"), "old");
    EXPECT_EQ(folder.names(), std::vector<std::string>{"a.ztfx"});
    EXPECT_EQ(source->state(2)->resultByteCount(), 0u);

    // And may be asked again.
    source->failingState = -1;
    ASSERT_TRUE(writer.write(path, nullptr, &error)) << error.message();
    orvtest::expectSame(source.get(), openZtfx(path).get());
}

TEST_F(ZTFxWriterTest, ASourceMustBeAsItsDirectorySays) {
    const PtrRef<RemeshedSource> source(new RemeshedSource);
    source->addRemeshed(1, {0, 0, 0, 1, 0, 0});
    source->setValues(1, {1});
    ASSERT_TRUE(writer.addCase(0, "", source.get(), {}, &error));
    EXPECT_EQ(failedWrite(path),
              "Result 't' has not one item for each that part 0 of state 1 of the data source needs");
    source->state(0)->removeResult(source->directory()->findScalarResultInfo(1));
    EXPECT_FALSE(writer.write(path, nullptr, &error));
    source->directory()->addPartInfo(0, PartInfo(2, "more"));
    EXPECT_EQ(failedWrite(path), "The parts of state 1 of the data source are not those of its directory");
    EXPECT_TRUE(folder.names().empty());
}

TEST_F(ZTFxWriterTest, ElementsMustHaveTheirNodes) {
    const PtrRef<DataSourceMemory> source(new DataSourceMemory(1));
    source->addGeometry();
    source->addPart(0, "part")->elements()->set({POINT}, {0}, {});
    source->addState(StateInfo(1, "", StateInfo::TIME, 0));
    ASSERT_TRUE(writer.addCase(0, "", source.get(), {}, &error));
    EXPECT_EQ(failedWrite(path), "Part 1 cannot be written: its elements name nodes that it does not have");
    source->directory()->addResultInfo(ResultInfo(SCALAR, 1, "t", UNKNOWN_MAPPING));
    EXPECT_EQ(failedCase(1, source.get()), "Result 't' cannot be written: its mapping is unknown");
}

TEST_F(ZTFxWriterTest, SaysWhatIsWrongWithACase) {
    const MemoryModel model;
    EXPECT_EQ(failedWrite(path), path + ": there is nothing to write, add a case first");
    EXPECT_EQ(failedCase(-1, model.source.get()), "A case cannot have the id -1, it must not be negative");
    ASSERT_TRUE(writer.addCase(0, "", model.source.get(), {}, &error));
    EXPECT_EQ(failedCase(0, model.source.get()), "There is a case with the id 0 already");
    WriteSelection selection;
    selection.stateIds = {9};
    EXPECT_EQ(failedCase(1, model.source.get(), selection),
              "There is no state 9 in 'memory.model': its states are 1, 2, 3");
    EXPECT_EQ(failedWrite("a|b.ztfx"),
              "a|b.ztfx: the name must not have a bar, behind which opening looks for the id of a case");
    EXPECT_EQ(failedWrite(folder / "none/a.ztfx"),
              "cannot write \"" + (folder / "none/a.ztfx") + "\": No such file or directory");
    EXPECT_FALSE(writer.write(folder / "none/a.ztfx", nullptr, nullptr));
}

class NotingProgress : public Progress {
public:
    void setPercent(int percent) override {
        percents.push_back(percent);
    }

    std::vector<int> percents;
};

TEST_F(ZTFxWriterTest, ProgressRisesToTheEnd) {
    const PtrRef<DataSourceMemory> source = twoNodes(2);
    const ResultInfo t = source->addResult(SCALAR, "t", PER_NODE);
    set(source.get(), 1, t, {1, 2});
    set(source.get(), 2, t, {1, 2});
    ASSERT_TRUE(writer.addCase(0, "", source.get(), {}, &error));
    NotingProgress progress;
    ASSERT_TRUE(writer.write(path, &progress, &error));
    // The header, the coordinates, two fields and the index.
    EXPECT_EQ(progress.percents, (std::vector<int>{20, 40, 60, 80, 100}));
}

} // namespace
