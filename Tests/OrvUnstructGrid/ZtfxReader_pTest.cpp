// Damaged and hostile files: an error, no crash, no wrong value, nothing left behind.

#include "OrvUnstructGrid/ZtfxReader_p.h"

#include "OrvUnstructGrid/HitItem.h"
#include "OrvUnstructGrid/UnstructGridModel.h"
#include "OrvUnstructGrid/ZTFWriter.h"
#include "Tests/OrvUnstructGrid/ZtfxFiles.h"
#include "Tests/Support/AssertRecorder.h"
#include "Tests/Support/LogRecorder.h"
#include "Tests/Support/ScratchFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

using namespace orv::ug;
using orv::PtrRef;
using orvtest::refusal;
using orvtest::ZipEntries;

namespace {

/// Opens a file and loads everything. Empty when that went well, and then `opened` has it all.
std::string openAndLoad(const std::string& path, const char* password, PtrRef<DataSourceZTFx>* opened) {
    *opened = new DataSourceZTFx(1);
    (*opened)->setPassword(password);
    Error error;
    if (!(*opened)->openCase(path, 0, &error)) {
        EXPECT_FALSE(error.isEmpty());
        EXPECT_EQ((*opened)->stateCount(), 0u);
        return error.message().toStdString();
    }
    for (const StateInfo& state : (*opened)->directory()->stateInfos()) {
        if (!(*opened)->state((*opened)->stateIndex(state.id()))->readGeometries(&error)) {
            EXPECT_FALSE(error.isEmpty());
            return error.message().toStdString();
        }
        for (const ResultType type : {SCALAR, VECTOR, DISPLACEMENT, SYMMETRIC_TENSOR}) {
            for (const ResultInfo& info : (*opened)->directory()->resultInfos(type)) {
                DataStateSpec spec;
                spec.setResultIds({info});
                if ((*opened)->directory()->hasResult(state.id(), info) &&
                    !(*opened)->loadDataState(state.id(), spec, &error)) {
                    EXPECT_FALSE(error.isEmpty());
                    EXPECT_FALSE((*opened)->state((*opened)->stateIndex(state.id()))->hasLoaded(info));
                    return error.message().toStdString();
                }
            }
        }
    }
    return {};
}

class DamageTest : public testing::Test {
protected:
    DamageTest() : source(orvtest::smallModel()) {}

    void write(const char* password, ZTFxWriter::Compression compression) {
        orvtest::writeZtfx(source.get(), path, password, compression);
        entries = ZipEntries::read(path, password);
    }

    /// What is told about the file with one change to it.
    template <class Change>
    std::string damaged(const char* password, Change change) {
        ZipEntries changed = entries;
        change(&changed);
        changed.write(path, password);
        PtrRef<DataSourceZTFx> opened;
        return openAndLoad(path, password, &opened);
    }

    orvtest::AssertRecorder asserts;
    orvtest::ScratchFolder folder;
    const std::string path = folder / "a.ztfx";
    PtrRef<DataSourceMemory> source;
    ZipEntries entries;
};

struct Layout {
    const char* password;
    ZTFxWriter::Compression compression;
};

const Layout layouts[] = {{"", ZTFxWriter::STORED}, {"secret", ZTFxWriter::DEFLATED}};

TEST_F(DamageTest, EveryEntryIsNeededAsItWas) {
    for (const Layout& layout : layouts) {
        write(layout.password, layout.compression);
        // Coordinates, ids, types, connectivity, ids; t and v in two states.
        ASSERT_EQ(entries.entries.size(), 1u + 5 + 4 + 1);
        for (std::size_t i = 0; i < entries.entries.size(); ++i) {
            const std::string name = entries.entries[i].name;
            SCOPED_TRACE(name);
            const std::string start = path + ", entry '" + name + "': ";
            const auto bytes = [i](ZipEntries* changed) -> std::string& { return changed->entries[i].bytes; };
            using Change = ZipEntries*;
            EXPECT_EQ(damaged(layout.password, [i](Change c) { c->entries.erase(c->entries.begin() + i); }),
                      start + "the entry is missing");
            EXPECT_EQ(damaged(layout.password, [i](Change c) { c->entries[i].name = "../" + c->entries[i].name; }),
                      start + "the entry is missing");
            const std::string none = damaged(layout.password, [&](Change c) { bytes(c).clear(); });
            if (!name.starts_with("data/")) {
                EXPECT_TRUE(none.starts_with(path + ", entry '" + name + "', byte 0: not well-formed XML: ")) << none;
                continue;
            }
            const std::size_t size = entries.entries[i].bytes.size();
            const std::string expected = " bytes, expected " + std::to_string(size) + " by the index";
            EXPECT_EQ(none, start + "has 0" + expected);
            EXPECT_EQ(damaged(layout.password, [&](Change c) { bytes(c).front() ^= 1; }),
                      start + "damaged: the bytes do not give the checksum of the index");
            EXPECT_EQ(damaged(layout.password, [&](Change c) { bytes(c).pop_back(); }),
                      start + "has " + std::to_string(size - 1) + expected);
            EXPECT_EQ(damaged(layout.password, [&](Change c) { bytes(c) += '<'; }),
                      start + "has " + std::to_string(size + 1) + expected);
        }
    }
    EXPECT_TRUE(asserts.take().empty());
}

TEST_F(DamageTest, EntriesDoNotTakeEachOthersPlace) {
    for (const Layout& layout : layouts) {
        write(layout.password, layout.compression);
        for (std::size_t i = 0; i < entries.entries.size(); ++i) {
            for (std::size_t k = i + 1; k < entries.entries.size(); ++k) {
                SCOPED_TRACE(entries.entries[i].name + " and " + entries.entries[k].name);
                EXPECT_NE(damaged(layout.password,
                                  [&](ZipEntries* c) { std::swap(c->entries[i].bytes, c->entries[k].bytes); }),
                          "");
            }
        }
    }
    EXPECT_TRUE(asserts.take().empty());
}

TEST_F(DamageTest, EncryptedAndPlainEntriesDoNotMix) {
    write("secret", ZTFxWriter::STORED);
    EXPECT_EQ(damaged("secret", [](ZipEntries* c) { c->find("data/6")->isEncrypted = false; }),
              path + ", entry 'data/6': not encrypted by AES-256, as the file is");
    EXPECT_EQ(damaged("secret", [](ZipEntries* c) { c->find("index.xml")->isEncrypted = false; }),
              path + ", entry 'index.xml': not encrypted by AES-256, as the file is");
    EXPECT_EQ(damaged("secret", [](ZipEntries* c) { c->find("ztfx.xml")->isEncrypted = true; }),
              path + ", entry 'ztfx.xml': encrypted, in a file that is not");
    write("", ZTFxWriter::STORED);
    EXPECT_EQ(damaged("secret", [](ZipEntries* c) { c->find("data/6")->isEncrypted = true; }),
              path + ", entry 'data/6': encrypted, in a file that is not");
}

/// Adds to a number of four bytes in the record that the container's directory has of an entry.
void addInDirectory(std::string* bytes, const std::string& name, std::size_t offset, std::uint32_t value) {
    std::size_t record = bytes->find("PK\x01\x02");
    while (record != std::string::npos && bytes->substr(record + 46, name.size()) != name) {
        record = bytes->find("PK\x01\x02", record + 4);
    }
    ASSERT_NE(record, std::string::npos);
    std::uint32_t number = 0;
    std::memcpy(&number, bytes->data() + record + offset, 4);
    number += value;
    std::memcpy(bytes->data() + record + offset, &number, 4);
}

TEST_F(DamageTest, SizesMustBePossible) {
    constexpr std::size_t PACKED_SIZE = 20, SIZE = 24;
    const auto withNumbers = [&](std::uint32_t packed, std::uint32_t size) {
        std::string bytes = folder.read("a.ztfx");
        addInDirectory(&bytes, "data/1", PACKED_SIZE, packed);
        addInDirectory(&bytes, "data/1", SIZE, size);
        return refusal(folder.write("b.ztfx", bytes));
    };
    const auto expected = [&](std::size_t size, std::size_t packed) {
        return folder / "b.ztfx" + ", entry 'data/1': cannot have " + std::to_string(size) + " bytes, packed to " +
               std::to_string(packed) + " in a file of " + std::to_string(folder.read("a.ztfx").size());
    };
    write("", ZTFxWriter::STORED);
    EXPECT_EQ(withNumbers(0, 1), expected(289, 288));
    EXPECT_EQ(withNumbers(1, 0), expected(288, 289));
    EXPECT_EQ(withNumbers(1000000, 1000000), expected(1000288, 1000288));
    write("", ZTFxWriter::DEFLATED);
    const std::size_t packed = entries.find("data/1")->packedSize;
    EXPECT_EQ(withNumbers(0, 2000000), expected(2000288, packed));
    // What deflate can do is left to the index to judge.
    EXPECT_EQ(withNumbers(0, 10000),
              folder / "b.ztfx" + ", entry 'data/1': has 10288 bytes, expected 288 by the index");
}

TEST_F(DamageTest, OnlyStoredAndDeflatedEntriesAreRead) {
    write("", ZTFxWriter::DEFLATED);
    std::string bytes = folder.read("a.ztfx");
    addInDirectory(&bytes, "data/1", 10, 4); // 8, deflated, becomes 12, by bzip2
    folder.write("a.ztfx", bytes);
    EXPECT_EQ(refusal(path), path + ", entry 'data/1': compressed by method 12, expected stored or deflated");
}

TEST_F(DamageTest, AShorterFileIsRefused) {
    write("", ZTFxWriter::STORED);
    const std::string bytes = folder.read("a.ztfx");
    for (std::size_t size = 0; size < bytes.size(); size += 13) {
        PtrRef<DataSourceZTFx> opened;
        EXPECT_NE(openAndLoad(folder.write("a.ztfx", bytes.substr(0, size)), "", &opened), "") << size;
    }
}

// Some bits of a container mean nothing, such as the time of an entry. All others are noticed.
TEST_F(DamageTest, NoFlippedBitGivesWrongValues) {
    for (const Layout& layout : layouts) {
        write(layout.password, layout.compression);
        const std::string bytes = folder.read("a.ztfx");
        const std::size_t step = *layout.password ? 101 : 5;
        for (std::size_t i = 0; i < bytes.size(); i += step) {
            std::string changed = bytes;
            changed[i] ^= static_cast<char>(1 << i % 8);
            folder.write("a.ztfx", changed);
            PtrRef<DataSourceZTFx> opened;
            if (openAndLoad(path, layout.password, &opened).empty()) {
                SCOPED_TRACE("byte " + std::to_string(i));
                orvtest::expectSame(source.get(), opened.get());
            }
        }
    }
    EXPECT_TRUE(asserts.take().empty());
}

TEST_F(DamageTest, AFileThatShrinksLaterEndsInAnError) {
    write("", ZTFxWriter::STORED);
    PtrRef<DataSourceZTFx> opened = orvtest::openZtfx(path);
    ASSERT_TRUE(opened);
    const std::string bytes = folder.read("a.ztfx");
    Error error;
    DataStateSpec spec;
    spec.setResultIds({opened->directory()->findScalarResultInfo(1)});
    folder.write("a.ztfx", "");
    EXPECT_FALSE(opened->loadDataState(1, spec, &error));
    EXPECT_TRUE(error.message().toStdString().starts_with(path + ", entry 'data/1': ")) << error.message();

    // The same with the mesh in memory.
    folder.write("a.ztfx", bytes);
    opened = orvtest::openZtfx(path);
    ASSERT_TRUE(opened);
    EXPECT_TRUE(opened->state(0)->readGeometries(&error));
    folder.write("a.ztfx", "");
    EXPECT_FALSE(opened->loadDataState(1, spec, &error));
    EXPECT_TRUE(error.message().toStdString().starts_with(path + ", entry 'data/6': ")) << error.message();
}

/// A file whose index and entries are as they should be, but for one byte of the coordinates.
class DamagedMeshTest : public DamageTest {
protected:
    DamagedMeshTest() {
        write("", ZTFxWriter::STORED);
        entries.find("data/1")->bytes.front() ^= 1;
        entries.write(path);
        opened = orvtest::openZtfx(path);
    }

    const std::string expected = path + ", entry 'data/1': damaged: the bytes do not give the checksum of the index";
    orvtest::LogRecorder logs;
    PtrRef<DataSourceZTFx> opened;
    Error error;
};

TEST_F(DamagedMeshTest, NothingIsLoadedOnIt) {
    ASSERT_TRUE(opened);
    DataState* state = opened->state(0);
    const ResultInfo info = opened->directory()->findScalarResultInfo(1);
    DataStateSpec spec;
    spec.setResultIds({info});
    for (int i = 0; i < 2; ++i) {
        error.clear();
        EXPECT_FALSE(opened->loadDataState(1, spec, &error));
        EXPECT_EQ(error.message(), expected.c_str());
        EXPECT_FALSE(state->hasLoaded(info));
    }
    EXPECT_TRUE(logs.take().empty());
    double value = 0;
    EXPECT_FALSE(opened->copyScalars(1, info, {0, 0, 0}, {&value, 1}, &error));
    EXPECT_EQ(error.message(), expected.c_str());
    EXPECT_TRUE(asserts.take().empty());
}

TEST_F(DamagedMeshTest, AnEmptyPartIsWhatWhoeverDoesNotAskWhyGets) {
    ASSERT_TRUE(opened);
    const DataPart* part = opened->state(0)->geometry(0)->part(0);
    EXPECT_EQ(part->itemCount(PER_NODE), 12u);
    EXPECT_EQ(part->nodes()->nodeCount(), 0u);
    EXPECT_EQ(part->elements()->elementCount(), 0u);
    EXPECT_EQ(part->itemCount(PER_NODE), 0u);
    const std::vector<orvtest::LogMessage> messages = logs.take();
    ASSERT_EQ(messages.size(), 1u);
    EXPECT_EQ(messages[0].message, expected);
}

TEST_F(DamagedMeshTest, IsNotWritten) {
    ASSERT_TRUE(opened);
    ZTFxWriter binary;
    EXPECT_FALSE(binary.addCase(1, "", opened.get(), {}, &error) && binary.write(folder / "b.ztfx", nullptr, &error));
    EXPECT_EQ(error.message(), expected.c_str());
    error.clear();
    EXPECT_FALSE(ZTFWriter().write(opened.get(), {}, folder / "b.ztf", nullptr, &error));
    EXPECT_EQ(error.message(), expected.c_str());
    EXPECT_FALSE(std::filesystem::exists(folder / "b.ztfx"));
    EXPECT_FALSE(std::filesystem::exists(folder / "b.ztf"));
}

TEST_F(DamagedMeshTest, IsNotShown) {
    ASSERT_TRUE(opened);
    const PtrRef<UnstructGridModel> model(new UnstructGridModel);
    model->setDataSource(opened.get());
    model->modelSpec().setStateId(1);
    orv::Str reason;
    EXPECT_FALSE(model->updateShapes(&reason));
    EXPECT_EQ(reason, expected.c_str());
    EXPECT_TRUE(model->shapes().empty());
    HitItem hit;
    EXPECT_FALSE(model->rayIntersect(orv::Ray(), &hit));
}

class LyingIndexTest : public DamageTest {
protected:
    LyingIndexTest() {
        write("", ZTFxWriter::STORED);
    }

    /// What is told when a text of the index is another one.
    std::string lie(const std::string& before, const std::string& after) {
        return damaged("", [&](ZipEntries* c) { c->replace("index.xml", before, after); });
    }

    /// The same behind the place in the index.
    std::string told(const std::string& before, const std::string& after) {
        const std::string text = lie(before, after), start = path + ", entry 'index.xml', byte ";
        EXPECT_TRUE(text.starts_with(start)) << text;
        const std::size_t end = text.find(": ", start.size());
        return end == std::string::npos ? text : text.substr(end + 2);
    }
};

TEST_F(LyingIndexTest, ArraysAreWhatTheirEntriesAre) {
    EXPECT_EQ(lie("items=\"12\" components=\"3\"", "items=\"13\" components=\"3\""),
              path + ", entry 'data/1': has 288 bytes, expected 312 by the index");
    EXPECT_EQ(lie("items=\"12\" components=\"3\"", "items=\"281474976710656\" components=\"3\""),
              path + ": its meshes need more memory than a file of its size ever should");
    EXPECT_EQ(lie("items=\"12\" components=\"3\"", "items=\"36\" components=\"1\""),
              path + ", entry 'data/1': holds float64 values, 1 to an item, expected float64, 3 to an item");
    EXPECT_EQ(lie("id=\"3\" type=\"uint8\" items=\"2\"", "id=\"3\" type=\"uint8\" items=\"3\""),
              path + ", entry 'data/3': has 2 bytes, expected 3 by the index");
    EXPECT_EQ(lie("id=\"2\" type=\"int32\"", "id=\"2\" type=\"uint32\""),
              path + ", entry 'data/2': holds uint32 values, 1 to an item, expected int32, 1 to an item");
    EXPECT_EQ(lie("type=\"float32\" items=\"12\" components=\"1\"", "type=\"float64\" items=\"6\" components=\"1\""),
              path + ", entry 'data/6': has 6 items, expected 12 for result 't'");
    EXPECT_EQ(lie("mapping=\"node\"", "mapping=\"element\""),
              path + ", entry 'data/6': has 12 items, expected 2 for result 't'");
    EXPECT_EQ(lie("arrays=\"6\"", "arrays=\"7\""),
              path + ", entry 'data/7': holds float64 values, 3 to an item, expected float64, 1 to an item");
    EXPECT_EQ(lie("arrays=\"6\"", "arrays=\"99\""), path + ", entry 'data/99': not among the arrays of the index");
    EXPECT_EQ(lie("nodeIds=\"2\"", "nodeIds=\"5\""), path + ", entry 'data/5': has 2 ids for 12 nodes");
    EXPECT_EQ(lie("elementIds=\"5\"", "elementIds=\"2\""), path + ", entry 'data/2': has 12 ids for 2 elements");
    EXPECT_EQ(lie(" connectivity=\"4\"", ""), path + ", entry 'data/3': 0 nodes are named, the elements need 16");
    EXPECT_EQ(lie(" elementTypes=\"3\"", ""), path + ", entry 'data/5': has 2 ids for 0 elements");
    EXPECT_EQ(lie(" elementTypes=\"3\" connectivity=\"4\" elementIds=\"5\"", " connectivity=\"4\""),
              path + ", entry 'data/7': has 2 items, expected 0 for result 'v'");
    EXPECT_EQ(lie(" coordinates=\"1\" nodeIds=\"2\"", ""),
              path + ", entry 'data/6': has 12 items, expected 0 for result 't'");
    EXPECT_TRUE(asserts.take().empty());
}

TEST_F(LyingIndexTest, MeshesWithoutResultsAreWhatTheirEntriesAre) {
    PtrRef<DataSourceMemory> cube(new DataSourceMemory(1));
    cube->addGeometry();
    orvtest::fillWithCubes(cube->addPart(0, "cube"), 1, 0);
    cube->addState(StateInfo(1, "", StateInfo::TIME, 0));
    orvtest::writeZtfx(cube.get(), path);
    entries = ZipEntries::read(path);
    EXPECT_EQ(lie(" elementTypes=\"2\"", ""), path + ", entry 'data/3': 8 nodes are named, the elements need 0");
    EXPECT_EQ(lie(" coordinates=\"1\"", ""), path + ", entry 'data/3': names a node behind the last of 0");
    EXPECT_TRUE(asserts.take().empty());
}

// How many there must be is known when the elements have been read. A cube has 8 nodes and 6 surfaces.
TEST_F(LyingIndexTest, ResultsOnSurfacesHaveAnItemForEach) {
    PtrRef<DataSourceMemory> cube(new DataSourceMemory(1));
    cube->addGeometry();
    orvtest::fillWithCubes(cube->addPart(0, "cube"), 1, 0);
    cube->addState(StateInfo(1, "", StateInfo::TIME, 0));
    const ResultInfo t = cube->addResult(SCALAR, "t", PER_NODE);
    ASSERT_TRUE(cube->setValues(1, t, 0, 0, std::vector<double>(8, 0.5), nullptr));
    orvtest::writeZtfx(cube.get(), path);
    entries = ZipEntries::read(path);
    const std::string expected = path + ", entry 'data/4': has 8 items, expected 6 for result 't'";
    EXPECT_EQ(lie("mapping=\"node\"", "mapping=\"element_surface\""), expected);
    const PtrRef<DataSourceZTFx> opened = orvtest::openZtfx(path);
    ASSERT_TRUE(opened);
    Error error;
    double value = 0;
    EXPECT_FALSE(
        opened->copyScalars(1, opened->directory()->findScalarResultInfo(t.id()), {0, 0, 5}, {&value, 1}, &error));
    EXPECT_EQ(error.message(), expected.c_str());
}

TEST_F(LyingIndexTest, AttributesAreWhatTheyMayBe) {
    struct Case {
        const char* before;
        const char* after;
        const char* told;
    };
    const Case cases[] = {
        {"<array id=\"1\"", "<array id=\"0\"",
         "<array> has the id '0', expected a whole number from 1 to 281474976710656"},
        {"<array id=\"2\"", "<array id=\"1\"", "<array> has the id '1', expected an id above the earlier ones"},
        {"type=\"float64\"", "type=\"float16\"",
         "<array> has the type 'float16', expected float64, float32, int32, uint32 or uint8"},
        {"items=\"12\"", "items=\"0\"", "<array> has the items '0', expected a whole number from 1 to 281474976710656"},
        {"items=\"12\"", "items=\"281474976710657\"",
         "<array> has the items '281474976710657', expected a whole number from 1 to 281474976710656"},
        {"items=\"12\"", "items=\"99999999999999999999\"",
         "<array> has the items '99999999999999999999', expected a whole number from 1 to 281474976710656"},
        {"components=\"3\"", "components=\"7\"", "<array> has the components '7', expected a whole number from 1 to 6"},
        {"checksum=\"", "checksum=\"0", nullptr},
        {" checksum=", " sum=", "<array> without the attribute 'checksum'"},
        {"<case id=\"3\"", "<case id=\"-3\"", "<case> has the id '-3', expected a whole number from 0 to 2147483647"},
        {"<case id=\"3\" name=\"wing\"", "<case id=\"3\"", "<case> without the attribute 'name'"},
        {"<simulation file=\"\"", "<simulation", "<simulation> without the attribute 'file'"},
        {"<part id=\"1\"", "<part id=\"2147483648\"",
         "<part> has the id '2147483648', expected a whole number from -2147483648 to 2147483647"},
        {"<part id=\"1\" name=\"part\"", "<part id=\"1\"", "<part> without the attribute 'name'"},
        {"coordinates=\"1\"", "coordinates=\"x\"",
         "<part> has the coordinates 'x', expected a whole number from 1 to 281474976710656"},
        {"<result type=\"scalar\"", "<result type=\"number\"",
         "<result> has the type 'number', expected one of scalar, vector, displacement, tensor"},
        {"<result type=\"scalar\" id=\"1\"", "<result type=\"scalar\" id=\"1073741824\"",
         "<result> has the id '1073741824', expected a whole number from 0 to 1073741823"},
        {"<result type=\"vector\"", "<result type=\"scalar\"",
         "<result> has the id '1', expected an id that no earlier result of the type has"},
        {"mapping=\"node\"", "mapping=\"edge\"",
         "<result> has the mapping 'edge', expected one of node, element, element_node, element_surface"},
        {"mapping=\"node\"", "mapping=\"node\" baseId=\"-1\" baseType=\"vector\"",
         "<result> has the baseId '-1', expected a whole number from 0 to 2147483647"},
        {"mapping=\"node\"", "mapping=\"node\" baseId=\"1\"", "<result> without the attribute 'baseType'"},
        {"<state id=\"2\"", "<state id=\"1\"", "<state> has the id '1', expected an id that no earlier state has"},
        {"<state id=\"2\"", "<state id=\"2 \"",
         "<state> has the id '2 ', expected a whole number from 0 to 2147483647"},
        {"reference=\"time\"", "reference=\"day\"",
         "<state> has the reference 'day', expected one of time, frequency, load_case, other"},
        {"value=\"1\"", "value=\"1,5\"", "<state> has the value '1,5', expected a number"},
        {"value=\"1\"", "value=\"nan(0x)\"", "<state> has the value 'nan(0x)', expected a number"},
        {"meshes=\"0\"", "meshes=\"1\"", "<state> has the meshes '1', expected a whole number from 0 to 0"},
        {"meshes=\"0\"", "meshes=\"0 0\"", "<state> has the meshes '0 0', expected 1 numbers"},
        {"meshes=\"0\"", "meshes=\"\"", "<state> has the meshes '', expected 1 numbers"},
        {"<field result=\"0\"", "<field result=\"2\"",
         "<field> has the result '2', expected a whole number from 0 to 1"},
        {"arrays=\"6\"", "arrays=\"6 7\"", "<field> has the arrays '6 7', expected 1 numbers"},
        {"arrays=\"6\"", "arrays=\"-6\"",
         "<field> has the arrays '-6', expected a whole number from 0 to 281474976710656"},
        {"states=\"1 2\"", "states=\"1 3\"", "<group> has the states '3', expected the id of a state"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.after);
        if (c.told) {
            EXPECT_EQ(told(c.before, c.after), c.told);
        } else {
            EXPECT_NE(lie(c.before, c.after), "");
        }
    }
    EXPECT_TRUE(asserts.take().empty());
}

TEST_F(LyingIndexTest, LongValuesAreCutShort) {
    EXPECT_EQ(told("reference=\"time\"", "reference=\"" + std::string(1000, 'x') + "\""),
              "<state> has the reference '" + std::string(40, 'x') +
                  "...', expected one of time, frequency, load_case, other");
}

TEST_F(LyingIndexTest, MeshesHaveThePartsOfTheirGeometry) {
    EXPECT_EQ(told("<geometry>", "<geometry><part id=\"2\" name=\"\" />"),
              "<state> has the meshes '0', expected a mesh with the geometry's parts");
    EXPECT_EQ(told("<mesh>", "<mesh><part />"),
              "<state> has the meshes '0', expected a mesh with the geometry's parts");
    EXPECT_EQ(told("<geometry>", "<geometry /><geometry>"), "<state> has the meshes '0', expected 2 numbers");
    const std::string text = damaged("", [](ZipEntries* c) {
        std::string& index = c->find("index.xml")->bytes;
        const std::size_t begin = index.find("<mesh>");
        index.erase(begin, index.find("</mesh>") + 7 - begin);
    });
    EXPECT_TRUE(text.ends_with("<state> has the meshes '0', expected nothing, as there is nothing to name")) << text;
}

TEST_F(LyingIndexTest, CasesHaveIdsOfTheirOwn) {
    EXPECT_EQ(told("</index>", "<case id=\"3\" name=\"\" /></index>"),
              "<case> has the id '3', expected an id that no earlier case has");
    EXPECT_EQ(told("<case id=\"3\"", "<cased id=\"3\""), "not well-formed XML: Start-end tags mismatch");
}

TEST_F(LyingIndexTest, OtherXmlIsRefused) {
    const auto withText = [&](const char* entry, const std::string& text) {
        return damaged("", [&](ZipEntries* c) { c->find(entry)->bytes = text; });
    };
    EXPECT_EQ(withText("index.xml", "<ztfx/>"),
              path + ", entry 'index.xml': the outermost element is <ztfx>, expected <index>");
    EXPECT_EQ(withText("index.xml", "<index/>"), path + ": there is no case at index 0: the file has none");
    EXPECT_EQ(withText("index.xml", ""),
              path + ", entry 'index.xml', byte 0: not well-formed XML: No document element found");
    EXPECT_EQ(withText("ztfx.xml", "<ztfx encryption=\"none\"/>"),
              path + ", entry 'ztfx.xml', byte 1: <ztfx> without the attribute 'format'");
    EXPECT_EQ(withText("ztfx.xml", "<ztfx format=\"2\" encryption=\"none\"/>"),
              path + ": written in format 2 of later versions; this one reads format 1");
    EXPECT_EQ(withText("ztfx.xml", "<ztfx format=\"1\" encryption=\"rot13\"/>"),
              path + ", entry 'ztfx.xml', byte 1: <ztfx> has the encryption 'rot13', expected one of none, aes256");
    EXPECT_EQ(
        withText("ztfx.xml", "<ztfx format=\"0\"/>"),
        path + ", entry 'ztfx.xml', byte 1: <ztfx> has the format '0', expected a whole number from 1 to 2147483647");
    EXPECT_EQ(withText("ztfx.xml", std::string(4097, ' ')),
              path + ", entry 'ztfx.xml': has 4097 bytes, expected no more than 4096");
    // Elements within each other without end need no stack.
    std::string deep;
    for (int i = 0; i < 200000; ++i) {
        deep += "<a>";
    }
    EXPECT_NE(withText("index.xml", "<index>" + deep), "");
}

TEST_F(LyingIndexTest, ElementTypesAndNodesExist) {
    const auto withArray = [&](const char* entry, const std::string& bytes) {
        return damaged("", [&](ZipEntries* c) {
            ZtfxHasher before, after;
            before.update(c->find(entry)->bytes.data(), c->find(entry)->bytes.size());
            after.update(bytes.data(), bytes.size());
            c->replace("index.xml", before.checksum().text(), after.checksum().text());
            c->find(entry)->bytes = bytes;
        });
    };
    EXPECT_EQ(withArray("data/3", "\x0d\x0f"), path + ", entry 'data/3': holds 15, which is no type of elements");
    EXPECT_EQ(withArray("data/3", "\x0d\x0e"), path + ", entry 'data/4': 16 nodes are named, the elements need 28");
    std::string connectivity = entries.find("data/4")->bytes;
    connectivity[60] = 12;
    EXPECT_EQ(withArray("data/4", connectivity), path + ", entry 'data/4': names a node behind the last of 12");
    connectivity[60] = 11;
    connectivity[63] = '\xff';
    EXPECT_EQ(withArray("data/4", connectivity), path + ", entry 'data/4': names a node behind the last of 12");
    EXPECT_TRUE(asserts.take().empty());
}

// Blanks deflate to a thousandth, and texts that say something do not.
TEST_F(LyingIndexTest, AnIndexOfBlanksCannotFillTheMemory) {
    write("", ZTFxWriter::DEFLATED);
    const std::string text =
        damaged("", [](ZipEntries* c) { c->replace("index.xml", "<index>", "<index>" + std::string(3000000, ' ')); });
    const std::size_t fileSize = folder.read("a.ztfx").size();
    const std::size_t size = entries.find("index.xml")->bytes.size() + 3000000;
    EXPECT_EQ(text, path + ", entry 'index.xml': has " + std::to_string(size) + " bytes, expected no more than " +
                        std::to_string(1048576 + 64 * fileSize));
}

// A hundred bytes of text for each use of the same big mesh: in the file it is there once, in memory it would be there
// ten thousand times.
TEST_F(LyingIndexTest, SharedArraysCannotFillTheMemory) {
    const std::size_t nodeCount = 20000;
    PtrRef<DataSourceMemory> big(new DataSourceMemory(1));
    big->addGeometry();
    big->addPart(0, "part")->nodes()->set(std::vector<double>(3 * nodeCount, 0.5), {});
    big->addState(StateInfo(0, "", StateInfo::TIME, 0));
    orvtest::writeZtfx(big.get(), path, "", ZTFxWriter::DEFLATED);
    entries = ZipEntries::read(path);
    std::string meshes, states;
    for (int id = 1; id < 10000; ++id) {
        meshes += "<mesh><part coordinates=\"1\" /></mesh>";
        states += "<state id=\"" + std::to_string(id) + "\" name=\"\" reference=\"time\" value=\"0\" meshes=\"" +
                  std::to_string(id) + "\" />";
    }
    EXPECT_EQ(damaged("",
                      [&](ZipEntries* c) {
                          c->replace("index.xml", "</mesh>", "</mesh>" + meshes);
                          c->replace("index.xml", "</case>", states + "</case>");
                      }),
              path + ": its meshes need more memory than a file of its size ever should");
}

} // namespace
