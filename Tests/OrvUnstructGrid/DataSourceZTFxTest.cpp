// Opening: which case, which password, what is loaded when, and what is told when it fails.

#include "OrvUnstructGrid/DataSourceZTFx.h"

#include "OrvUnstructGrid/ResultsQuery.h"
#include "Tests/OrvUnstructGrid/ZtfxFiles.h"
#include "Tests/Support/MemoryModels.h"
#include "Tests/Support/ScratchFolder.h"
#include "Tests/Support/TestPaths.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>

#include <sys/stat.h>

using namespace orv::ug;
using orv::PtrRef;
using orv::Str;
using orv::UNDEFINED_DOUBLE;
using orvtest::MemoryModel;
using orvtest::openZtfx;
using orvtest::refusal;
using orvtest::writeZtfx;
using orvtest::ZipEntries;

namespace {

/// A source with one state of that id, by which its case is told apart.
PtrRef<DataSourceMemory> oneState(int stateId) {
    PtrRef<DataSourceMemory> source(new DataSourceMemory(1));
    source->addState(StateInfo(stateId, "", StateInfo::TIME, 0));
    return source;
}

class DataSourceZTFxTest : public testing::Test {
protected:
    DataSourceZTFxTest() : source(new DataSourceZTFx(1)) {}

    /// Cases 7 "tail" with state 70, 3 "wing" with state 30 and 0 without a name with state 10.
    void writeCases(const char* password = "") {
        ZTFxWriter writer;
        writer.setPassword(password);
        EXPECT_TRUE(writer.addCase(7, "tail", oneState(70).get(), {}, &error));
        EXPECT_TRUE(writer.addCase(3, "wing", oneState(30).get(), {}, &error));
        EXPECT_TRUE(writer.addCase(0, "", oneState(10).get(), {}, &error));
        EXPECT_TRUE(writer.write(path, nullptr, &error)) << error.message();
    }

    /// The only state's id of what opens; -1 when it does not.
    int stateAt(const std::string& name, std::size_t caseIndex) {
        const PtrRef<DataSourceZTFx> opened(new DataSourceZTFx(1));
        return opened->openCase(name, caseIndex, &error) ? opened->directory()->stateInfo(0).id() : -1;
    }

    int stateOf(const std::string& name, int caseId) {
        const PtrRef<DataSourceZTFx> opened(new DataSourceZTFx(1));
        return opened->openCaseById(name, caseId, &error) ? opened->directory()->stateInfo(0).id() : -1;
    }

    orvtest::ScratchFolder folder;
    const std::string path = folder / "a.ztfx";
    PtrRef<DataSourceZTFx> source;
    Error error;
};

TEST_F(DataSourceZTFxTest, OpensCasesByIndexAndById) {
    writeCases();
    EXPECT_EQ(stateAt(path, 0), 70);
    EXPECT_EQ(stateAt(path, 2), 10);
    EXPECT_EQ(stateOf(path, 7), 70);
    EXPECT_EQ(stateOf(path, 0), 10);

    // Whatever stands behind a bar is not part of the path, and only the number counts.
    EXPECT_EQ(stateOf(path + "|3", 3), 30);
    EXPECT_EQ(stateOf(path + "|x", 0), 10);
    EXPECT_EQ(stateOf(path + "|3", 7), 70);
    EXPECT_EQ(stateAt(path + "|1|2", 0), 70);
    EXPECT_EQ(stateAt(path + "|", 1), 30);
}

TEST_F(DataSourceZTFxTest, SaysWhichCasesThereAre) {
    writeCases();
    const std::string there = ": the file has 7 (tail), 3 (wing), 0";
    EXPECT_EQ(stateAt(path, 3), -1);
    EXPECT_EQ(error.message(), (path + ": there is no case at index 3" + there).c_str());
    EXPECT_EQ(stateOf(path + "|5", 5), -1);
    EXPECT_EQ(error.message(), (path + ": there is no case with id 5" + there).c_str());
    EXPECT_EQ(stateOf(path + "|-3", -3), -1);
    EXPECT_EQ(error.message(), (path + ": there is no case with id -3" + there).c_str());
    EXPECT_FALSE(source->openCase(path, 3, nullptr));
    EXPECT_FALSE(source->openCaseById(path, 5, nullptr));
}

TEST_F(DataSourceZTFxTest, AListOfManyCasesIsCutShort) {
    ZTFxWriter writer;
    for (int id = 0; id < 52; ++id) {
        ASSERT_TRUE(writer.addCase(id, "", oneState(1).get(), {}, &error));
    }
    ASSERT_TRUE(writer.write(path, nullptr, &error));
    EXPECT_EQ(stateOf(path, 52), -1);
    const std::string text = error.message().toStdString();
    EXPECT_TRUE(text.ends_with(", 48, 49 and 2 more")) << text;
}

TEST_F(DataSourceZTFxTest, ListsTheCasesOfAnOpenFile) {
    writeCases();
    EXPECT_TRUE(source->cases().empty());
    ASSERT_TRUE(source->openCaseById(path + "|3", 3, &error));
    ASSERT_EQ(source->cases().size(), 3u);
    EXPECT_EQ(source->cases()[0].id, 7);
    EXPECT_EQ(source->cases()[1].name, "wing");
    // As it was named, so that this text opens the same case again.
    EXPECT_EQ(source->directory()->simulationInfo().filename(), (path + "|3").c_str());
}

TEST_F(DataSourceZTFxTest, APasswordIsNeededWhereThereIsOne) {
    writeCases("open sesame");
    EXPECT_EQ(refusal(path), path + ": the file is protected: a password is needed");
    EXPECT_EQ(refusal(path, "open  sesame"), path + ": the password is wrong");
    EXPECT_TRUE(openZtfx(path, "open sesame"));
    writeCases();
    EXPECT_TRUE(openZtfx(path, "open sesame"));
}

// The short check of a password lets one wrong one in 65536 pass; the bytes then look as damaged as these.
TEST_F(DataSourceZTFxTest, DamageUnderAPasswordMayBeAWrongPassword) {
    writeCases("open sesame");
    std::string bytes = folder.read("a.ztfx");
    const std::size_t name = bytes.find("index.xml");
    ASSERT_NE(name, std::string::npos);
    // Behind the name, the 11 bytes about the encryption, salt and check: in the encrypted text.
    bytes[name + 9 + 11 + 18 + 40] ^= 1;
    folder.write("a.ztfx", bytes);
    const std::string text = refusal(path, "open sesame");
    EXPECT_TRUE(text.starts_with(path + ", entry 'index.xml': damaged: ")) << text;
    EXPECT_TRUE(text.ends_with(", or the password is wrong")) << text;
    EXPECT_EQ(text.find("sesame"), std::string::npos);
}

TEST_F(DataSourceZTFxTest, AnObjectOpensOneCase) {
    writeCases();
    ASSERT_FALSE(source->openCase(folder / "missing.ztfx", 0, &error));
    ASSERT_FALSE(source->openCase(path, 9, &error));
    EXPECT_TRUE(source->cases().empty());
    ASSERT_TRUE(source->openCase(path, 0, &error)) << error.message();
    ASSERT_FALSE(source->openCase(path, 1, &error));
    EXPECT_EQ(error.message(), (path + ": this data source has a file open already, use another one").c_str());
    EXPECT_EQ(source->stateCount(), 1u);
}

TEST_F(DataSourceZTFxTest, SaysWhyAFileCannotBeRead) {
    EXPECT_EQ(refusal(folder / "b.ztfx"), "cannot open \"" + (folder / "b.ztfx") + "\": No such file or directory");
    EXPECT_EQ(refusal(folder.path()), "cannot open \"" + folder.path() + "\": Is a directory");
    ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
    EXPECT_EQ(refusal(folder / "pipe"), "cannot open \"" + (folder / "pipe") + "\": Not a regular file");
    EXPECT_EQ(refusal(folder.write("text.ztfx", "no zip")),
              folder / "text.ztfx" + ": cannot be read as a zip container: Not a zip archive");
    // No bytes at all are a container without entries.
    EXPECT_EQ(refusal(folder.write("empty.ztfx", "")),
              folder / "empty.ztfx" + ", entry 'ztfx.xml': the entry is missing");
    ZipEntries other;
    other.entries = {{"readme.txt", "hello"}};
    other.write(path);
    EXPECT_EQ(refusal(path), path + ", entry 'ztfx.xml': the entry is missing");
}

// Written by the first version of format 1, which all later ones must read.
TEST_F(DataSourceZTFxTest, FilesThatWereWrittenStayReadable) {
    const std::string data = orvtest::testDataFolder() + "/ztfx/";
    const PtrRef<DataSourceMemory> expected = orvtest::smallModel();
    for (const char* name : {"stored.ztfx", "deflated.ztfx", "encrypted.ztfx"}) {
        SCOPED_TRACE(name);
        const PtrRef<DataSourceZTFx> read = openZtfx(data + name, "secret");
        ASSERT_TRUE(read);
        orvtest::expectSame(expected.get(), read.get());
    }
}

TEST_F(DataSourceZTFxTest, AFileWithoutStatesOpens) {
    PtrRef<DataSourceMemory> empty(new DataSourceMemory(1));
    empty->addGeometry();
    empty->addPart(0, "part");
    empty->addResult(SCALAR, "t", PER_NODE);
    writeZtfx(empty.get(), path);
    const PtrRef<DataSourceZTFx> read = openZtfx(path);
    ASSERT_TRUE(read);
    EXPECT_EQ(read->stateCount(), 0u);
    EXPECT_EQ(read->directory()->partInfos(0).size(), 1u);
    EXPECT_EQ(read->directory()->scalarResultInfos().size(), 1u);
}

TEST_F(DataSourceZTFxTest, OpeningReadsNoValues) {
    const MemoryModel model;
    writeZtfx(model.source.get(), path);
    const PtrRef<DataSourceZTFx> read = openZtfx(path);
    ASSERT_TRUE(read);
    for (std::size_t s = 0; s < read->stateCount(); ++s) {
        EXPECT_EQ(read->state(s)->resultByteCount(), 0u);
    }
    orvtest::load(read.get(), 2, model.temperature);
    EXPECT_TRUE(read->state(1)->hasLoaded(model.temperature));
    EXPECT_FALSE(read->state(1)->hasLoaded(model.stress));
    // The range of "Column", whose values are 12110 to 12119: 12 nodes with last digits 0 to 9, then 0 and 1.
    const DataResultScalar* temperatures = read->state(1)->results(read->state(1)->geometry(0))->scalar(0);
    EXPECT_EQ(temperatures->part(1)->minimum(), 12110);
    EXPECT_EQ(temperatures->part(1)->maximum(), 12119);
    // "Base" has 8 nodes.
    EXPECT_EQ(temperatures->part(0)->minimum(), 12100);
    EXPECT_EQ(temperatures->part(0)->maximum(), 12107);
}

/// Parts that were not read have room for the end of the last element.
std::size_t bytesOfUnread(const DataGeometry& geometry) {
    return geometry.partCount() * DataPart(1).byteCount();
}

TEST_F(DataSourceZTFxTest, OpeningReadsNoMesh) {
    const MemoryModel model;
    writeZtfx(model.source.get(), path);
    const PtrRef<DataSourceZTFx> read = openZtfx(path);
    ASSERT_TRUE(read);
    const DataGeometry* geometry = read->state(0)->geometry(0);
    // A single value needs no mesh, nor does a count. "Column" has 12 nodes and 2 elements with 8 nodes each.
    double value = 0;
    EXPECT_TRUE(read->copyScalars(1, model.temperature, {0, 1, 11}, {&value, 1}, &error)) << error.message();
    EXPECT_EQ(value, orvtest::modelValue(1, model.temperature, 1, 11, 0));
    EXPECT_EQ(geometry->part(1)->itemCount(PER_NODE), 12u);
    EXPECT_EQ(geometry->part(1)->itemCount(PER_ELEMENT), 2u);
    EXPECT_EQ(geometry->part(1)->itemCount(PER_ELEMENT_NODE), 16u);
    EXPECT_EQ(geometry->byteCount(), bytesOfUnread(*geometry));

    EXPECT_EQ(geometry->part(1)->elements()->connectivity().size(), 16u);
    EXPECT_EQ(geometry->part(0)->byteCount(), DataPart(1).byteCount());
    orvtest::load(read.get(), 1, model.temperature);
    EXPECT_EQ(geometry->byteCount(), model.source->state(0)->geometry(0)->byteCount());
}

TEST_F(DataSourceZTFxTest, AMeshCanBeReadWhenItsSourceHasGone) {
    const MemoryModel model;
    writeZtfx(model.source.get(), path);
    PtrRef<DataSourceZTFx> read = openZtfx(path);
    ASSERT_TRUE(read);
    const PtrRef<DataGeometry> geometry(read->state(0)->geometry(0));
    read = nullptr;
    for (std::size_t p = 0; p < geometry->partCount(); ++p) {
        orvtest::expectSamePart(*model.source->state(0)->geometry(0)->part(p), *geometry->part(p));
    }
}

TEST_F(DataSourceZTFxTest, AFileThatIsReplacedStaysReadable) {
    const MemoryModel model;
    writeZtfx(model.source.get(), path);
    const PtrRef<DataSourceZTFx> read = openZtfx(path);
    ASSERT_TRUE(read);
    writeCases();
    orvtest::expectSame(model.source.get(), read.get());
}

TEST_F(DataSourceZTFxTest, ValuesThatWereDroppedAreReadAgain) {
    const MemoryModel model;
    writeZtfx(model.source.get(), path);
    const PtrRef<DataSourceZTFx> read = openZtfx(path);
    ASSERT_TRUE(read);
    read->setResultByteBudget(1);
    orvtest::expectSame(model.source.get(), read.get());
    EXPECT_EQ(read->state(0)->resultByteCount(), 0u);
    orvtest::expectSame(model.source.get(), read.get());
}

class SingleValuesTest : public DataSourceZTFxTest {
protected:
    /// Two parts with 2 and 3 nodes; `t` exact in 32 bits, `u` not, and `v` without a value in the file.
    SingleValuesTest() : memory(new DataSourceMemory(1)) {
        memory->addGeometry();
        memory->addPart(0, "a")->nodes()->set(std::vector<double>(6), {});
        memory->addPart(0, "b")->nodes()->set(std::vector<double>(9), {});
        memory->addState(StateInfo(1, "", StateInfo::TIME, 0));
        for (const char* name : {"t", "u", "v"}) {
            memory->addResult(SCALAR, name, PER_NODE);
        }
        set(1, {1, 2}, {3, UNDEFINED_DOUBLE, 5});
        set(2, {0.1, 0.2}, {0.3, UNDEFINED_DOUBLE, 0.5});
        set(3, {UNDEFINED_DOUBLE, UNDEFINED_DOUBLE}, {UNDEFINED_DOUBLE, UNDEFINED_DOUBLE, UNDEFINED_DOUBLE});
    }

    void set(int id, const std::vector<double>& a, const std::vector<double>& b) {
        const ResultInfo info = memory->directory()->findScalarResultInfo(id);
        EXPECT_TRUE(memory->setValues(1, info, 0, 0, a, nullptr));
        EXPECT_TRUE(memory->setValues(1, info, 0, 1, b, nullptr));
    }

    std::vector<double> copied(DataSourceZTFx* from, int id, std::size_t part, std::size_t first, std::size_t count) {
        std::vector<double> values(count, -1.0);
        EXPECT_TRUE(from->copyScalars(1, from->directory()->findScalarResultInfo(id), {0, part, first}, values, &error))
            << error.message();
        return values;
    }

    PtrRef<DataSourceMemory> memory;
};

TEST_F(SingleValuesTest, AreReadAloneFromAStoredFile) {
    writeZtfx(memory.get(), path);
    const PtrRef<DataSourceZTFx> read = openZtfx(path);
    ASSERT_TRUE(read);
    // Twice, as the place in the file is looked up once.
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(copied(read.get(), 1, 0, 1, 1), std::vector<double>{2});
        EXPECT_EQ(copied(read.get(), 1, 1, 0, 3), (std::vector<double>{3, UNDEFINED_DOUBLE, 5}));
        EXPECT_EQ(copied(read.get(), 2, 0, 0, 2), (std::vector<double>{0.1, 0.2}));
        EXPECT_EQ(copied(read.get(), 2, 1, 1, 2), (std::vector<double>{UNDEFINED_DOUBLE, 0.5}));
        EXPECT_EQ(copied(read.get(), 3, 1, 1, 1), std::vector<double>{UNDEFINED_DOUBLE});
    }
    EXPECT_EQ(read->state(0)->resultByteCount(), 0u);
}

TEST_F(SingleValuesTest, ComeWithTheWholeFieldOtherwise) {
    for (const char* password : {"", "secret"}) {
        writeZtfx(memory.get(), path, password, *password ? ZTFxWriter::STORED : ZTFxWriter::DEFLATED);
        const PtrRef<DataSourceZTFx> read = openZtfx(path, password);
        ASSERT_TRUE(read);
        EXPECT_EQ(copied(read.get(), 2, 1, 1, 2), (std::vector<double>{UNDEFINED_DOUBLE, 0.5}));
        EXPECT_EQ(read->state(0)->resultByteCount(), 5 * sizeof(double));
    }
}

// One hexahedron: a value for each of its nodes, and for each of its surfaces.
TEST_F(SingleValuesTest, OfSurfacesNeedTheElements) {
    PtrRef<DataSourceMemory> cube(new DataSourceMemory(1));
    cube->addGeometry();
    orvtest::fillWithCubes(cube->addPart(0, "cube"), 1, 0);
    cube->addState(StateInfo(1, "", StateInfo::TIME, 0));
    const ResultInfo nodal = cube->addResult(SCALAR, "n", PER_ELEMENT_NODE);
    const ResultInfo facial = cube->addResult(SCALAR, "f", PER_ELEMENT_SURFACE);
    ASSERT_TRUE(cube->setValues(1, nodal, 0, 0, std::vector<double>{1, 2, 3, 4, 5, 6, 7, 8}, nullptr));
    ASSERT_TRUE(cube->setValues(1, facial, 0, 0, std::vector<double>{1, 2, 3, 4, 5, 6}, nullptr));
    writeZtfx(cube.get(), path);
    const PtrRef<DataSourceZTFx> read = openZtfx(path);
    ASSERT_TRUE(read);
    const DataGeometry* geometry = read->state(0)->geometry(0);
    EXPECT_EQ(copied(read.get(), nodal.id(), 0, 7, 1), std::vector<double>{8});
    EXPECT_EQ(geometry->byteCount(), bytesOfUnread(*geometry));
    EXPECT_EQ(copied(read.get(), facial.id(), 0, 5, 1), std::vector<double>{6});
    EXPECT_EQ(geometry->byteCount(), cube->state(0)->geometry(0)->byteCount());
    EXPECT_EQ(read->state(0)->resultByteCount(), 0u);
}

TEST_F(SingleValuesTest, AnswerQueries) {
    writeZtfx(memory.get(), path);
    const PtrRef<DataSourceZTFx> read = openZtfx(path);
    ASSERT_TRUE(read);
    const std::vector<ResultsQueryItem> items = {ResultsQueryItem(1, 2), ResultsQueryItem(0, 0)};
    std::vector<ResultsQueryResult> results;
    ASSERT_TRUE(ResultsQuery(read.get()).scalars(2, 1, 0, &items, &results));
    ASSERT_EQ(results.size(), 2u);
    EXPECT_EQ(results[0].averageSubItemScalar(), 0.5);
    EXPECT_EQ(results[1].averageSubItemScalar(), 0.1);
    EXPECT_FALSE(ResultsQuery(read.get()).scalars(3, 1, 0, &items, &results));
    EXPECT_EQ(read->state(0)->resultByteCount(), 0u);
    EXPECT_EQ(read->state(0)->geometry(0)->byteCount(), bytesOfUnread(*read->state(0)->geometry(0)));
}

} // namespace
