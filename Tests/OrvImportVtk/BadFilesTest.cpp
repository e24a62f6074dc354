#include "Tests/OrvImportVtk/VtkSamples.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <sstream>

using namespace orv;
using orvtest::ScratchFolder;
using testing::HasSubstr;

namespace {

struct Sample {
    std::string folder; ///< Of Tests/data.
    std::string name;   ///< The file that is opened.
    std::vector<std::string> companions;
    std::vector<std::string> optional = {}; ///< Companions without which there is just less.
    bool isDamaged = true;                  ///< The file that is opened, too: something is in it.
};

// A case of EnSight's and all files whose names begin as its own.
Sample ensightSample(const std::string& name) {
    Sample sample{"ensight", name, {}};
    const std::string begin = name.substr(0, name.find('.'));
    for (const auto& entry : std::filesystem::directory_iterator(orvtest::testDataFolder() + "/ensight")) {
        const std::string file = entry.path().filename();
        if (file.starts_with(begin) && file != name) {
            sample.companions.push_back(file);
        }
    }
    return sample;
}

// The mesh of an OpenFOAM case has to be there, and something with values, or nothing is read.
Sample foamSample(const std::string& foamCase, const std::string& extension = "") {
    Sample sample{"foam", foamCase + "/" + foamCase + ".foam", {}, {}, false};
    for (const std::string file : {"constant/polyMesh/points", "constant/polyMesh/faces", "constant/polyMesh/owner",
                                   "constant/polyMesh/neighbour"}) {
        sample.companions.push_back(foamCase + "/" + file + extension);
    }
    for (const std::string file : {"constant/polyMesh/boundary", "0.25/U", "0.25/p"}) {
        sample.companions.push_back(foamCase + "/" + file + (file.ends_with("boundary") ? "" : extension));
        sample.optional.push_back(sample.companions.back());
    }
    return sample;
}

const std::vector<Sample>& samples() {
    static const std::vector<Sample> all = {
        {"cgns", "cells.cgns", {}},
        {"cgns", "moving.cgns", {}},
        {"cgns", "pipe.cgns", {}},
        {"cgns", "plane.cgns", {}},
        {"cgns", "polygons.cgns", {}},
        {"cgns", "saturne.cgns", {}},
        {"cgns", "states.cgns", {}},
        {"cgns", "states_adf.cgns", {}},
        {"cgns", "structured.cgns", {}},
        {"grids", "attributes.vtk", {}},
        {"grids", "curved_binary.vtk", {}},
        {"grids", "curved_old.vtk", {}},
        {"grids", "image_ascii.vtk", {}},
        {"grids", "image_old_binary.vtk", {}},
        {"grids", "planes_ascii.vtk", {}},
        {"grids", "polyhedron.vtk", {}},
        {"grids", "solids_old.vtk", {}},
        {"grids", "solids_old_binary.vtk", {}},
        {"grids", "surface_binary.vtk", {}},
        {"grids", "surface_old.vtk", {}},
        {"grids", "curved.pvts", {"curved_0.vts", "curved_1.vts"}},
        {"grids", "curved_zlib.vts", {}},
        {"grids", "image.pvti", {"image_0.vti", "image_1.vti"}},
        {"grids", "image_raw64.vti", {}},
        {"grids", "planes.pvtr", {"planes_0.vtr", "planes_1.vtr"}},
        {"grids", "planes_raw64.vtr", {}},
        {"grids", "polyhedron.vtu", {}},
        {"grids", "image_zlib.vti", {}},
        {"grids", "planes_zlib.vtr", {}},
        {"grids", "solids.pvtu", {"solids_0.vtu", "solids_1.vtu"}},
        {"grids", "solids_big.vtu", {}},
        {"grids", "solids_bigzlib.vtu", {}},
        {"grids", "solids_inline.vtu", {}},
        {"grids", "solids_lz4.vtu", {}},
        {"grids", "solids_lzma.vtu", {}},
        {"grids", "solids_raw64.vtu", {}},
        {"grids", "solids_zlib.vtu", {}},
        {"grids", "surface.pvtp", {"surface_0.vtp", "surface_1.vtp"}},
        {"grids", "surface_raw64.vtp", {}},
        {"grids", "surface_zlib.vtp", {}},
        {"vtk", "zoo_ascii.vtu", {}},
        {"vtk", "zoo_binary.vtu", {}},
        {"vtk", "zoo_raw.vtu", {}},
        {"vtk", "surface.vtp", {}},
        {"vtk", "row.pvtu", {"row_0.vtu", "row_1.vtu"}},
        {"vtk", "blocks.vtm", {"blocks/blocks_0.vtu", "blocks/blocks_1.vtu", "blocks/blocks_2.vtu"}},
        {"vtk", "series.pvd", {"series_a0.vtu", "series_a1.vtu", "series_b.vtu"}},
        {"vtk", "zoo_ascii.vtk", {}},
        {"vtk", "zoo_binary.vtk", {}},
        {"vtk", "bar.ex2", {}},
        {"exodus", "sevenside.exo", {}},
        {"exodus", "zoo.e", {}},
        {"vtk",
         "frame.case",
         {"frame.geo", "frame_Temp.0", "frame_Temp.1", "frame_Displacement.0", "frame_Displacement.1", "frame_Stress.0",
          "frame_Stress.1", "frame_Flux.0", "frame_Flux.1", "frame_Strain.0", "frame_Strain.1", "frame_Damage.0",
          "frame_Damage.1"}},
        {"vtk",
         "binary.0.case",
         {"binary.0.00000.geo", "binary.0.00000_n.p", "binary.0.00000_n.Velocity", "binary.0.00000_c.Damage"}},
        ensightSample("zoo_ascii.case"),
        ensightSample("zoo_big.case"),
        ensightSample("zoo_fortran.case"),
        ensightSample("single_ascii.case"),
        ensightSample("single_little.case"),
        ensightSample("single_fortran.case"),
        ensightSample("blocks_ascii.case"),
        ensightSample("blocks_fortran.case"),
        ensightSample("coordinates.case"),
        {"ensight",
         "foam_binary/cavity.case",
         {"foam_binary/geometry", "foam_binary/data/000/U", "foam_binary/data/000/p", "foam_binary/data/001/U",
          "foam_binary/data/001/p", "foam_binary/data/002/U", "foam_binary/data/002/p"}},
        foamSample("cavity"),
        foamSample("cavity_binary"),
        foamSample("cavity_gz", ".gz"),
        {"tecplot", "elements.tp", {}},
        {"tecplot", "ordered.dat", {}},
        {"tecplot", "times.tec", {}},
        {"vtkhdf", "zoo.vtkhdf", {}},
        {"vtkhdf", "pieces.vtkhdf", {}},
        {"vtkhdf", "image.vtkhdf", {}},
        {"vtkhdf", "flat.hdf", {}},
    };
    return all;
}

std::string contentsOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

std::vector<Sample> hdf5Samples() {
    std::vector<Sample> found;
    std::copy_if(samples().begin(), samples().end(), std::back_inserter(found), [](const Sample& sample) {
        return contentsOf(orvtest::testDataFolder() + "/" + sample.folder + "/" + sample.name).starts_with("\211HDF");
    });
    return found;
}

class BadFiles : public testing::TestWithParam<Sample> {
protected:
    void SetUp() override {
        restore(GetParam().name);
        for (const std::string& file : GetParam().companions) {
            restore(file);
        }
    }

    // Those that are damaged.
    static std::vector<std::string> files() {
        std::vector<std::string> all = GetParam().companions;
        if (GetParam().isDamaged) {
            all.push_back(GetParam().name);
        }
        return all;
    }

    static bool isOptional(const std::string& file) {
        return std::find(GetParam().optional.begin(), GetParam().optional.end(), file) != GetParam().optional.end();
    }

    static std::string original(const std::string& file) {
        return contentsOf(orvtest::testDataFolder() + "/" + GetParam().folder + "/" + file);
    }

    void write(const std::string& file, const std::string& contents) {
        const std::filesystem::path path = m_folder.path() + "/" + file;
        std::filesystem::create_directories(path.parent_path());
        std::ofstream(path, std::ios::binary) << contents;
    }

    void remove(const std::string& file) {
        std::filesystem::remove(m_folder.path() + "/" + file);
    }

    void restore(const std::string& file) {
        write(file, original(file));
    }

    // Opens and loads everything. The first error text, or empty when all could be read; nothing goes to the console.
    std::string readAll() {
        testing::internal::CaptureStdout();
        testing::internal::CaptureStderr();
        ug::Error error;
        const PtrRef<imp::cae::DataSourceCae> source(new imp::cae::DataSourceCae(1));
        if (source->openFiles({m_folder.path() + "/" + GetParam().name}, &error)) {
            loadAll(source.get(), &error);
        } else {
            EXPECT_FALSE(error.isEmpty());
            EXPECT_EQ(source->stateCount(), 0u);
        }
        EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
        EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
        return error.message().toStdString();
    }

    ScratchFolder m_folder;

private:
    static void loadAll(imp::cae::DataSourceCae* source, ug::Error* error) {
        for (std::size_t s = 0; s < source->stateCount(); ++s) {
            const int id = source->directory()->stateInfo(s).id();
            for (const ug::ResultType type : {ug::SCALAR, ug::VECTOR, ug::DISPLACEMENT, ug::SYMMETRIC_TENSOR}) {
                for (const ug::ResultInfo& info : source->directory()->resultInfos(type)) {
                    if (source->directory()->hasResult(id, info) && !orvtest::load(source, id, {info}, error)) {
                        EXPECT_FALSE(error->isEmpty());
                        return;
                    }
                }
            }
        }
    }
};

class BadHdf5Files : public BadFiles {};

TEST_P(BadFiles, WholeOnesAreRead) {
    EXPECT_EQ(readAll(), "");
}

TEST_P(BadFiles, MissingEmptyAndMislabelledOnesAreRefused) {
    for (const std::string& file : files()) {
        // Without the ending that a packed file has.
        const std::string name = std::filesystem::path(file.substr(0, file.find(".gz"))).filename();
        const auto isRefused = isOptional(file) ? testing::Matcher<std::string>(testing::_) : HasSubstr(name);
        remove(file);
        EXPECT_THAT(readAll(), isRefused) << file;
        for (const char* contents : {"", "1PCthis is quite another file\n and has nothing of it\n",
                                     "<?xml version=\"1.0\"?>\n<html><body>not found</body></html>\n"}) {
            write(file, contents);
            EXPECT_THAT(readAll(), isRefused) << file;
        }
        restore(file);
    }
}

// What is cut off may be no more than an end mark, or just the values of a part, so not each cut is an error.
TEST_P(BadFiles, CutOnesAreRefused) {
    for (const std::string& file : files()) {
        const std::string whole = original(file);
        std::size_t refused = 0;
        constexpr std::size_t CUTS = 12;
        for (std::size_t i = 1; i <= CUTS; ++i) {
            write(file, whole.substr(0, whole.size() * i / (CUTS + 1)));
            refused += !readAll().empty();
        }
        EXPECT_TRUE(refused >= CUTS / 2 || isOptional(file)) << file << ": " << refused;
        restore(file);
    }
}

TEST_P(BadFiles, DamagedOnesNeverCrash) {
    for (const std::string& file : files()) {
        for (std::size_t i = 0; i < 24; ++i) {
            std::string damaged = original(file);
            damaged[damaged.size() * (2 * i + 1) / 48] ^= char(1 << (i % 7));
            write(file, damaged);
            readAll();
        }
        restore(file);
    }
}

// HDF5 runs over its memory where several damages fit each other.
TEST_P(BadHdf5Files, SeveralDamagesNeverCrash) {
    const std::string whole = original(GetParam().name);
    std::mt19937 random(12);
    for (int i = 0; i < 200; ++i) {
        std::string damaged = whole;
        for (unsigned count = 2 + random() % 5; count > 0; --count) {
            damaged[random() % std::min<std::size_t>(whole.size(), 12000)] = char(random() % 256);
        }
        write(GetParam().name, damaged);
        readAll();
    }
}

std::string nameOf(const testing::TestParamInfo<Sample>& sample) {
    std::string name = sample.param.folder + '_' + sample.param.name;
    std::replace_if(
        name.begin(), name.end(), [](char c) { return !std::isalnum(c); }, '_');
    return name;
}

INSTANTIATE_TEST_SUITE_P(Each, BadFiles, testing::ValuesIn(samples()), nameOf);
INSTANTIATE_TEST_SUITE_P(Each, BadHdf5Files, testing::ValuesIn(hdf5Samples()), nameOf);

} // namespace
