// Files that say what they do not hold, or what is not read.

#include "Tests/OrvImportVtk/VtkSamples.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <vtk_hdf5.h>

#include <filesystem>
#include <functional>

using namespace orv;
using orvtest::ScratchFolder;

namespace {

void remove(hid_t file, const std::string& path) {
    EXPECT_GE(H5Ldelete(file, ("VTKHDF/" + path).c_str(), H5P_DEFAULT), 0) << path;
}

// A data set without values when there are none.
void add(hid_t file, const std::string& path, const std::vector<hsize_t>& sizes, const std::vector<int>& values) {
    const hid_t space = H5Screate_simple(int(sizes.size()), sizes.data(), nullptr);
    const hid_t set =
        H5Dcreate2(file, ("VTKHDF/" + path).c_str(), H5T_STD_I32LE, space, H5P_DEFAULT, H5P_DEFAULT, H5P_DEFAULT);
    EXPECT_GE(set, 0) << path;
    if (!values.empty()) {
        EXPECT_GE(H5Dwrite(set, H5T_NATIVE_INT, H5S_ALL, H5S_ALL, H5P_DEFAULT, values.data()), 0) << path;
    }
    H5Dclose(set);
    H5Sclose(space);
}

void replace(hid_t file, const std::string& path, const std::vector<int>& values) {
    remove(file, path);
    add(file, path, {values.size()}, values);
}

void set(hid_t file, const std::string& path, hsize_t index, int value) {
    const hid_t data = H5Dopen2(file, ("VTKHDF/" + path).c_str(), H5P_DEFAULT);
    const hid_t space = H5Dget_space(data);
    H5Sselect_elements(space, H5S_SELECT_SET, 1, &index);
    const hid_t one = H5Screate(H5S_SCALAR);
    EXPECT_GE(H5Dwrite(data, H5T_NATIVE_INT, one, space, H5P_DEFAULT, &value), 0) << path;
    H5Sclose(one);
    H5Sclose(space);
    H5Dclose(data);
}

void setAttribute(hid_t file, const char* name, hid_t type, hid_t memoryType, hsize_t count, const void* values) {
    H5Adelete_by_name(file, "VTKHDF", name, H5P_DEFAULT);
    const hid_t space = H5Screate_simple(1, &count, nullptr);
    const hid_t id = H5Acreate_by_name(file, "VTKHDF", name, type, space, H5P_DEFAULT, H5P_DEFAULT, H5P_DEFAULT);
    EXPECT_GE(H5Awrite(id, memoryType, values), 0) << name;
    H5Aclose(id);
    H5Sclose(space);
}

void setNumbers(hid_t file, const char* name, const std::vector<int>& values) {
    setAttribute(file, name, H5T_STD_I64LE, H5T_NATIVE_INT, values.size(), values.data());
}

void setType(hid_t file, const std::string& text) {
    const hid_t type = H5Tcopy(H5T_C_S1);
    H5Tset_size(type, text.size());
    setAttribute(file, "Type", type, type, 1, text.data());
    H5Tclose(type);
}

/// A sample, changed.
class Changed {
public:
    Changed(const std::string& sample, const std::function<void(hid_t)>& change)
        : m_path(m_folder.path() + "/a.vtkhdf") {
        std::filesystem::copy(orvtest::testDataFolder() + "/vtkhdf/" + sample, m_path);
        const hid_t file = H5Fopen(m_path.c_str(), H5F_ACC_RDWR, H5P_DEFAULT);
        EXPECT_GE(file, 0);
        change(file);
        H5Fclose(file);
    }

    // The text of the error on opening or on loading everything; empty when there is none.
    std::string whyNot() const {
        const PtrRef<imp::cae::DataSourceCae> source(new imp::cae::DataSourceCae(1));
        ug::Error error;
        if (source->openFiles({m_path}, &error)) {
            source->state(0)->geometry(0)->part(0)->read(&error);
            for (const ug::ResultType type : {ug::SCALAR, ug::VECTOR, ug::DISPLACEMENT, ug::SYMMETRIC_TENSOR}) {
                EXPECT_EQ(orvtest::load(source.get(), 1, source->directory()->resultInfos(type)), error.isEmpty());
            }
        }
        return shortened(error.message());
    }

    std::vector<std::string> warnings() const {
        std::vector<std::string> texts;
        for (const Str& warning : orvtest::openVtk(m_path)->directory()->warnings()) {
            texts.push_back(shortened(warning));
        }
        return texts;
    }

private:
    // From the file's name on.
    static std::string shortened(const Str& text) {
        const std::string all = text.toStdString();
        return all.empty() ? all : all.substr(all.find("a.vtkhdf") + 8);
    }

    ScratchFolder m_folder;
    std::string m_path;
};

struct Damage {
    const char* sample;
    std::function<void(hid_t)> damage;
    std::string expected;
};

const Damage DAMAGES[] = {
    {"zoo.vtkhdf", [](hid_t f) { H5Adelete_by_name(f, "VTKHDF", "Version", H5P_DEFAULT); },
     ": is no VTKHDF file: it has no group VTKHDF with a Version and a Type"},
    {"zoo.vtkhdf", [](hid_t f) { H5Ldelete(f, "VTKHDF", H5P_DEFAULT); },
     ": is no VTKHDF file: it has no group VTKHDF with a Version and a Type"},
    {"zoo.vtkhdf",
     [](hid_t f) {
         setNumbers(f, "Version", {3, 1});
     },
     ": is of version 3 of the VTKHDF format, expected 1 or 2"},
    {"zoo.vtkhdf",
     [](hid_t f) {
         const double version[] = {1e300, 0};
         setAttribute(f, "Version", H5T_IEEE_F64LE, H5T_NATIVE_DOUBLE, 2, version);
     },
     ": is of version 1e+300 of the VTKHDF format, expected 1 or 2"},
    {"zoo.vtkhdf", [](hid_t f) { setType(f, "PolyData"); },
     ": holds the type 'PolyData', expected UnstructuredGrid or ImageData"},
    {"zoo.vtkhdf", [](hid_t f) { setType(f, "ImageData"); }, ": is an image without WholeExtent, Origin or Spacing"},
    {"zoo.vtkhdf", [](hid_t f) { H5Gclose(H5Gcreate2(f, "VTKHDF/Steps", H5P_DEFAULT, H5P_DEFAULT, H5P_DEFAULT)); },
     ": has steps in time, which are not read from VTKHDF files"},
    {"zoo.vtkhdf", [](hid_t f) { remove(f, "NumberOfCells"); }, ": has no list NumberOfCells"},
    {"pieces.vtkhdf", [](hid_t f) { replace(f, "NumberOfCells", {7}); },
     ": does not tell as many numbers of points, of cells and of points of cells"},
    {"pieces.vtkhdf", [](hid_t f) { set(f, "NumberOfPoints", 1, -30); },
     ": has the number -30 in its list NumberOfPoints"},
    {"pieces.vtkhdf", [](hid_t f) { set(f, "NumberOfPoints", 1, 29); },
     ": has 60 x 3 numbers called Points, expected 59 x 3"},
    {"pieces.vtkhdf", [](hid_t f) { set(f, "NumberOfCells", 0, 1000000000); },
     ": has 7 numbers called Types, expected 1000000004"},
    {"pieces.vtkhdf", [](hid_t f) { set(f, "NumberOfConnectivityIds", 0, 23); },
     ": has 54 numbers called Connectivity, expected 53"},
    {"pieces.vtkhdf", [](hid_t f) { remove(f, "Types"); }, ": has no numbers called Types"},
    {"pieces.vtkhdf",
     [](hid_t f) {
         remove(f, "Connectivity");
         add(f, "Connectivity", {54}, {});
     },
     ": has not all of the numbers called Connectivity, expected 54"},
    {"pieces.vtkhdf",
     [](hid_t f) {
         replace(f, "Offsets", {0, 8, 16, 24, 0, 8, 16, 24});
     },
     ": has 8 numbers called Offsets, expected 9"},
    {"pieces.vtkhdf", [](hid_t f) { set(f, "Offsets", 2, 7); }, ": piece 0: its Offsets do not ascend from 0 to 24"},
    {"pieces.vtkhdf", [](hid_t f) { set(f, "Offsets", 4, 1); }, ": piece 1: its Offsets do not ascend from 0 to 30"},
    {"pieces.vtkhdf", [](hid_t f) { set(f, "Offsets", 8, 31); }, ": piece 1: its Offsets do not ascend from 0 to 30"},
    {"pieces.vtkhdf", [](hid_t f) { set(f, "Connectivity", 24, 30); },
     ": piece 1: its Connectivity has the point 30, and it has 30 points"},
    {"pieces.vtkhdf", [](hid_t f) { set(f, "Connectivity", 23, -1); },
     ": piece 0: its Connectivity has the point -1, and it has 30 points"},
    {"image.vtkhdf",
     [](hid_t f) {
         setNumbers(f, "WholeExtent", {1, 4, 0, 2, 0, -1});
     },
     ": is an image of no extent"},
    {"image.vtkhdf",
     [](hid_t f) {
         setNumbers(f, "WholeExtent", {0, 1000000000, 0, 1000000000, 0, 1000000000});
     },
     ": is an image without values"},
};

TEST(HdfSource, DamageIsToldWithWhatWasExpected) {
    for (const Damage& damage : DAMAGES) {
        EXPECT_EQ(Changed(damage.sample, damage.damage).whyNot(), damage.expected);
    }
}

TEST(HdfSource, ArraysThatFitNothingAreTold) {
    EXPECT_THAT(Changed("zoo.vtkhdf", [](hid_t) {}).warnings(),
                testing::ElementsAre(": array 'Pair' is left out: it has 2 components"));
    const Changed changed("pieces.vtkhdf", [](hid_t file) {
        add(file, "CellData/Seven", {7}, {1, 2, 3, 4, 5, 6, 7});
        add(file, "CellData/Eight", {8}, {1, 2, 3, 4, 5, 6, 7, 8});
        add(file, "PointData/Deep", {60, 1, 1}, std::vector<int>(60, 1));
        add(file, "PointData/Nowhere", {60}, {});
        add(file, "PointData/Wide", {60, 1000000}, {});
        H5Lcreate_external("b.vtkhdf", "VTKHDF/Points", file, "VTKHDF/PointData/Elsewhere", H5P_DEFAULT, H5P_DEFAULT);
    });
    EXPECT_THAT(changed.warnings(),
                testing::ElementsAre(": array 'Elsewhere' is left out: its values are not in this file",
                                     ": array 'Nowhere' is left out: its values are not in this file",
                                     ": array 'Wide' is left out: its values are not in this file",
                                     ": array 'Eight' is left out: it has 8 values for 7 items"));
    EXPECT_EQ(changed.whyNot(), "");
}

TEST(HdfSource, TextsAreNoResults) {
    const Changed changed("image.vtkhdf", [](hid_t file) {
        const hid_t type = H5Tcopy(H5T_C_S1);
        H5Tset_size(type, 2);
        const hsize_t sizes[] = {1, 2, 3};
        const hid_t space = H5Screate_simple(3, sizes, nullptr);
        const hid_t set =
            H5Dcreate2(file, "VTKHDF/CellData/Remark", type, space, H5P_DEFAULT, H5P_DEFAULT, H5P_DEFAULT);
        H5Dwrite(set, type, H5S_ALL, H5S_ALL, H5P_DEFAULT, "abcdefghijkl");
        H5Dclose(set);
        H5Sclose(space);
        H5Tclose(type);
    });
    EXPECT_THAT(changed.warnings(), testing::ElementsAre(": array 'Remark' is left out: it holds no numbers"));
}

// Programs of this process that use HDF5 themselves still get its texts.
TEST(HdfSource, LeavesTheMessagesOfHdf5AsTheyWere) {
    // NetCDF, which reads Exodus files, turns them off at its first file.
    H5Eset_auto2(H5E_DEFAULT, H5E_auto2_t(H5Eprint2), stderr);
    testing::internal::CaptureStderr();
    EXPECT_NE(Changed("zoo.vtkhdf", [](hid_t file) { remove(file, "Types"); }).whyNot(), "");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    testing::internal::CaptureStderr();
    EXPECT_LT(H5Fopen("/nowhere", H5F_ACC_RDONLY, H5P_DEFAULT), 0);
    EXPECT_THAT(testing::internal::GetCapturedStderr(), testing::HasSubstr("unable to open file"));
}

} // namespace
