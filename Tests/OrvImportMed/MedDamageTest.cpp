// Files that say what they do not hold.

#include "OrvImportMed/MedFile.h"
#include "Tests/OrvImportMed/MedSamples.h"
#include "Tests/Support/ScratchFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <random>

using namespace orv;
using orvtest::medFile;

namespace {

// Opens and loads everything; the first error's text.
std::string readAll(const std::string& path) {
    PtrRef<imp::cae::DataSourceCae> source(new imp::cae::DataSourceCae(1));
    ug::Error error;
    if (!source->openFiles({Str(path)}, &error)) {
        return error.message().toStdString();
    }
    std::string text;
    for (std::size_t s = 0; s < source->stateCount(); ++s) {
        for (const ug::ResultInfo& info : orvtest::allResults(*source)) {
            ug::Error reason;
            if (source->directory()->hasResult(source->state(s)->id(), info) &&
                !orvtest::loadMed(*source, *source->state(s), info, &reason) && text.empty()) {
                text = reason.message().toStdString();
            }
        }
    }
    return text;
}

void expectSilence(const std::string& path) {
    testing::internal::CaptureStderr();
    readAll(path);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

void setNumber(hid_t file, const std::string& object, const char* attribute, int value) {
    ASSERT_GE(H5Adelete_by_name(file, object.c_str(), attribute, H5P_DEFAULT), 0) << object;
    const hid_t one = H5Screate(H5S_SCALAR);
    const hid_t id =
        H5Acreate_by_name(file, object.c_str(), attribute, H5T_STD_I32LE, one, H5P_DEFAULT, H5P_DEFAULT, H5P_DEFAULT);
    EXPECT_GE(H5Awrite(id, H5T_NATIVE_INT, &value), 0) << object;
    H5Aclose(id);
    H5Sclose(one);
}

void setFirst(hid_t file, const std::string& path, int value) {
    const hid_t set = H5Dopen2(file, path.c_str(), H5P_DEFAULT);
    ASSERT_GE(set, 0) << path;
    const hid_t space = H5Dget_space(set);
    const hsize_t first = 0;
    H5Sselect_elements(space, H5S_SELECT_SET, 1, &first);
    const hid_t one = H5Screate(H5S_SCALAR);
    H5Dwrite(set, H5T_NATIVE_INT, one, space, H5P_DEFAULT, &value);
    H5Sclose(one);
    H5Sclose(space);
    H5Dclose(set);
}

const std::string MESH = "/ENS_MAA/BEAM/-0000000000000000001-0000000000000000001";
const std::string STEP_1 = "/0000000000000000000100000000000000000001";

struct Damage {
    std::function<void(hid_t)> damage;
    std::string expected; ///< Behind the file's name.
};

const Damage DAMAGES[] = {
    {[](hid_t f) { setNumber(f, MESH + "/NOE/COO", "NBR", 1000000000); },
     "mesh 'BEAM': its coordinates are not 3 for each of 1000000000 nodes"},
    {[](hid_t f) { setNumber(f, MESH + "/NOE/COO", "NBR", 12); },
     "mesh 'BEAM': its coordinates are not 3 for each of 12 nodes"},
    {[](hid_t f) { setNumber(f, MESH + "/NOE/COO", "NBR", -5); },
     "mesh 'BEAM': its coordinates are not 3 for each of -5 nodes"},
    {[](hid_t f) { setNumber(f, MESH + "/MAI/HE8/NOD", "NBR", 1); },
     "mesh 'BEAM': the nodes of its cells HE8 are not 8 for each of 1"},
    {[](hid_t f) { setFirst(f, MESH + "/MAI/HE8/NOD", 14); },
     "mesh 'BEAM': cell 1 of the type HE8 has the node 14, expected 1 to 13"},
    {[](hid_t f) { setFirst(f, MESH + "/MAI/HE8/NOD", 0); },
     "mesh 'BEAM': cell 1 of the type HE8 has the node 0, expected 1 to 13"},
    {[](hid_t f) { setNumber(f, "/FAS/BEAM/ELEME/FAM_-1/GRO", "NBR", 3); },
     "mesh 'BEAM': family 1 says that it has 3 groups, expected at most 2"},
    {[](hid_t f) { setNumber(f, "/FAS/BEAM/ELEME/FAM_-1/GRO", "NBR", -2); },
     "mesh 'BEAM': family 1 says that it has -2 groups, expected at most 2"},
    {[](hid_t f) { setNumber(f, "/FAS/BEAM/NOEUD/FAM_1/GRO", "NBR", 2000000000); },
     "mesh 'BEAM': family 6 says that it has 2000000000 groups, expected at most 2"},
    {[](hid_t f) { setNumber(f, "/FAS/BEAM/ELEME/FAM_-2/GRO", "NBR", 1); }, "mesh 'BEAM': family 2 cannot be read"},
    {[](hid_t f) { H5Ldelete(f, (MESH + "/MAI/QU4/FAM").c_str(), H5P_DEFAULT); }, ""},
    {[](hid_t f) { setFirst(f, "/PROFILS/SOMENODES/PFL", 14); },
     "field 'RESU____TEMP': its profile 'SOMENODES' names number 14, expected 1 to 13"},
    {[](hid_t f) { setNumber(f, "/PROFILS/SOMENODES", "NBR", 2); },
     "field 'RESU____TEMP': its profile 'SOMENODES' has not the expected 2 numbers"},
    {[](hid_t f) {
         H5Ldelete(f, ("/CHA/RESU____DEPL" + STEP_1 + "/NOE/MED_NO_PROFILE_INTERNAL/CO").c_str(), H5P_DEFAULT);
     },
     "field 'RESU____DEPL': its values in step 1 cannot be read"},
    {[](hid_t f) { setNumber(f, "/ENS_MAA/BEAM", "ESP", 4); },
     "meshes: expected one that is unstructured and has cells (FILE: mesh 'number 1' is left out: what it is "
     "cannot be read)"},
    {[](hid_t f) { setNumber(f, "/ENS_MAA/BEAM", "TYP", 2147483647); },
     "meshes: expected one that is unstructured and has cells (FILE: mesh 'BEAM' is left out: it is a structured "
     "mesh)"},
    {[](hid_t f) { setNumber(f, "/ENS_MAA/BEAM", "REP", 77); },
     "meshes: expected one that is unstructured and has cells (FILE: mesh 'BEAM' is left out: its axes are not "
     "Cartesian)"},
    {[](hid_t f) { setNumber(f, "/INFOS_GENERALES", "MAJ", 2); },
     "version 2.1: expected 3.0 or later; medimport turns older files into such"},
};

} // namespace

TEST(MedDamage, EachIsToldByFileObjectAndExpectation) {
    const orvtest::ScratchFolder folder;
    const std::string whole = orvtest::readWholeFile(medFile("beam.rmed"));
    for (const Damage& damage : DAMAGES) {
        const std::string path = folder.write("a.rmed", whole);
        const hid_t file = H5Fopen(path.c_str(), H5F_ACC_RDWR, H5P_DEFAULT);
        damage.damage(file);
        H5Fclose(file);
        std::string expected = damage.expected;
        if (const std::size_t at = expected.find("FILE"); at != std::string::npos) {
            expected.replace(at, 4, path);
        }
        testing::internal::CaptureStderr();
        EXPECT_EQ(readAll(path), expected.empty() ? expected : path + ": " + expected);
        EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    }
}

// More rows than cells: such values are left out when the file is opened.
TEST(MedDamage, ValuesOfOtherCountsAreLeftOut) {
    const orvtest::ScratchFolder folder;
    const std::string path = folder.write("a.rmed", orvtest::readWholeFile(medFile("beam.rmed")));
    const hid_t file = H5Fopen(path.c_str(), H5F_ACC_RDWR, H5P_DEFAULT);
    setNumber(file, "/CHA/RESU____DEPL" + STEP_1 + "/NOE/MED_NO_PROFILE_INTERNAL", "NBR", 1000);
    H5Fclose(file);
    const auto source = orvtest::openMed(path);
    EXPECT_EQ(source->directory()->warnings().at(1).toStdString(),
              path + ": field 'RESU____DEPL': the values of 1000 of its nodes, of which there are 13 are left out");
}

// What is no value of an enumeration must not be taken for one.
TEST(MedDamage, FieldsOfUnknownTypesAreLeftOut) {
    const orvtest::ScratchFolder folder;
    const std::string path = folder.write("a.rmed", orvtest::readWholeFile(medFile("beam.rmed")));
    const hid_t file = H5Fopen(path.c_str(), H5F_ACC_RDWR, H5P_DEFAULT);
    setNumber(file, "/CHA/RESU____DEPL", "TYP", 2147483647);
    H5Fclose(file);
    const auto source = orvtest::openMed(path);
    EXPECT_EQ(source->directory()->warnings().at(1).toStdString(),
              path + ": field 'RESU____DEPL' is left out: its numbers are of the unknown type 2147483647");
}

TEST(MedDamage, AFileWithoutFieldsHasOneStateWithoutResults) {
    const orvtest::ScratchFolder folder;
    const std::string path = folder.write("a.rmed", orvtest::readWholeFile(medFile("beam.rmed")));
    const hid_t file = H5Fopen(path.c_str(), H5F_ACC_RDWR, H5P_DEFAULT);
    H5Ldelete(file, "/CHA", H5P_DEFAULT);
    H5Fclose(file);
    const auto source = orvtest::openMed(path);
    ASSERT_EQ(source->stateCount(), 1u);
    EXPECT_EQ(source->directory()->stateInfo(0).name(), "Mesh");
    EXPECT_EQ(source->state(0)->geometry(0)->partCount(), 4u);
    EXPECT_TRUE(orvtest::allResults(*source).empty());
}

// HDF5 keeps sums of its lists, not of values, so some changes show as other values. None may end the program.
TEST(MedDamage, NoFlippedByteEndsTheProgram) {
    const orvtest::ScratchFolder folder;
    for (const char* name : {"beam.rmed", "saturne.med"}) {
        const std::string whole = orvtest::readWholeFile(medFile(name));
        for (std::size_t at = 0; at < whole.size(); at += 307) {
            std::string changed = whole;
            changed[at] = char(changed[at] ^ 0xff);
            expectSilence(folder.write(name, changed));
        }
    }
}

// The headers of these have no sums, so that much of it gets as far as libmedc.
TEST(MedDamage, NoFewWrongBytesEndTheProgram) {
    const orvtest::ScratchFolder folder;
    std::mt19937 random(12);
    for (const char* name : {"meshio-first.med", "meshio-serendipity.med", "meshio.med"}) {
        const std::string whole = orvtest::readWholeFile(medFile(name));
        for (int i = 0; i < 100; ++i) {
            std::string changed = whole;
            for (unsigned count = 1 + unsigned(random() % 4); count > 0; --count) {
                changed[random() % whole.size()] = char(random() % 256);
            }
            expectSilence(folder.write(name, changed));
        }
    }
}

TEST(MedDamage, NoLostBlockEndsTheProgram) {
    constexpr std::size_t BLOCK = 512;
    const orvtest::ScratchFolder folder;
    const std::string whole = orvtest::readWholeFile(medFile("beam.rmed"));
    for (std::size_t at = 0; at < whole.size(); at += BLOCK) {
        for (const char byte : {'\0', '\xff'}) {
            const std::size_t count = std::min(BLOCK, whole.size() - at);
            expectSilence(folder.write("beam.rmed", std::string(whole).replace(at, count, count, byte)));
        }
    }
}

TEST(MedDamage, NoFileThatEndsTooEarlyOpens) {
    const orvtest::ScratchFolder folder;
    const std::string whole = orvtest::readWholeFile(medFile("beam.rmed"));
    for (std::size_t size = 0; size < whole.size(); size += 499) {
        const std::string path = folder.write("beam.rmed", whole.substr(0, size));
        EXPECT_THAT(readAll(path), testing::MatchesRegex(path + ":? is damaged.* ends too early.*|" + path +
                                                         ": is damaged.* more bytes in a superblock, found.*"));
    }
}

// HDF5 loses memory over a header of an object whose sum is wrong, and complains when the process ends, unless it knows
// that errors are not to be told.
TEST(MedDamage, TheEndOfTheProcessTellsNothingOfIt) {
    const auto readDamagedHeaders = [] {
        const orvtest::ScratchFolder folder;
        std::string bytes = orvtest::readWholeFile(medFile("freecad-first.med"));
        for (std::size_t at = bytes.find("OHDR"); at != std::string::npos; at = bytes.find("OHDR", at + 1)) {
            bytes[at + 6] = char(bytes[at + 6] ^ 0xff);
            readAll(folder.write("a.rmed", bytes));
            bytes[at + 6] = char(bytes[at + 6] ^ 0xff);
        }
        H5E_auto2_t tell = reinterpret_cast<H5E_auto2_t>(&std::abort);
        void* unused = nullptr;
        std::exit(H5Eget_auto2(H5E_DEFAULT, &tell, &unused) >= 0 && !tell ? 0 : 1);
    };
    EXPECT_EXIT(readDamagedHeaders(), testing::ExitedWithCode(0), testing::StrEq(""));
}
