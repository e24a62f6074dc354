#include "Tests/OrvImportVtk/VtkSamples.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>

using namespace orv;
using orvtest::ScratchFolder;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

struct Sample {
    std::string folder;                  ///< Of Tests/data.
    std::string name;                    ///< The file that is damaged.
    std::vector<std::string> companions; ///< What it needs.
    std::string opened = {};             ///< What is opened, if that is not the file itself.
    bool mayMiss = false;                ///< Without the file, or with another one of its name, there is just less.
};

// A file of an OpenFOAM case. Those of the mesh have to be there, and one with values, or nothing is read.
Sample foamSample(const std::string& foamCase, const std::string& name, const std::string& extension = "") {
    Sample sample{"foam", foamCase + "/" + name, {}, foamCase + "/" + foamCase + ".foam", true};
    sample.companions.push_back(sample.opened);
    for (const std::string file : {"constant/polyMesh/points", "constant/polyMesh/faces", "constant/polyMesh/owner",
                                   "constant/polyMesh/neighbour", "0.25/p"}) {
        if (const std::string needed = foamCase + "/" + file + extension; needed != sample.name) {
            sample.companions.push_back(needed);
        } else {
            sample.mayMiss = file == "0.25/p";
        }
    }
    return sample;
}

const std::vector<Sample>& samples() {
    static const std::vector<Sample> all = {
        {"cgns", "cells.cgns", {}},
        {"cgns", "moving.cgns", {}},
        {"cgns", "plane.cgns", {}},
        {"cgns", "polygons.cgns", {}},
        {"cgns", "saturne.cgns", {}},
        {"cgns", "states.cgns", {}},
        {"cgns", "states_adf.cgns", {}},
        {"cgns", "structured.cgns", {}},
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
        {"vtk",
         "frame.case",
         {"frame.geo", "frame_Temp.0", "frame_Temp.1", "frame_Displacement.0", "frame_Displacement.1", "frame_Stress.0",
          "frame_Stress.1", "frame_Flux.0", "frame_Flux.1", "frame_Strain.0", "frame_Strain.1", "frame_Damage.0",
          "frame_Damage.1"}},
        {"vtk",
         "binary.0.case",
         {"binary.0.00000.geo", "binary.0.00000_n.p", "binary.0.00000_n.Velocity", "binary.0.00000_c.Damage"}},
        foamSample("cavity", "constant/polyMesh/points"),
        foamSample("cavity", "constant/polyMesh/faces"),
        foamSample("cavity", "constant/polyMesh/owner"),
        foamSample("cavity", "constant/polyMesh/neighbour"),
        foamSample("cavity", "constant/polyMesh/boundary"),
        foamSample("cavity", "0.25/U"),
        foamSample("cavity_binary", "constant/polyMesh/points"),
        foamSample("cavity_binary", "constant/polyMesh/faces"),
        foamSample("cavity_binary", "constant/polyMesh/owner"),
        foamSample("cavity_binary", "0.25/U"),
        foamSample("cavity_gz", "constant/polyMesh/faces.gz", ".gz"),
        foamSample("cavity_gz", "0.25/U.gz", ".gz"),
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

class BadFiles : public testing::TestWithParam<Sample> {
protected:
    void SetUp() override {
        std::filesystem::create_directories(std::filesystem::path(path()).parent_path());
        for (const std::string& companion : GetParam().companions) {
            std::filesystem::create_directories(std::filesystem::path(m_folder.path() + "/" + companion).parent_path());
            std::filesystem::copy(original(companion), m_folder.path() + "/" + companion);
        }
    }

    std::string original(const std::string& name) const {
        return orvtest::testDataFolder() + "/" + GetParam().folder + "/" + name;
    }

    std::string path() const {
        return m_folder.path() + "/" + GetParam().name;
    }

    // Without the ending that a packed file has.
    std::string nameOfFile() const {
        const std::filesystem::path file(path());
        return file.extension() == ".gz" ? file.stem() : file.filename();
    }

    // Opens and loads everything. The first error text, or empty when all could be read; nothing goes to the console.
    std::string readAll() {
        testing::internal::CaptureStdout();
        testing::internal::CaptureStderr();
        ug::Error error;
        const PtrRef<imp::cae::DataSourceCae> source(new imp::cae::DataSourceCae(1));
        const std::string& opened = GetParam().opened.empty() ? GetParam().name : GetParam().opened;
        if (source->openFiles({m_folder.path() + "/" + opened}, &error)) {
            loadAll(source.get(), &error);
        } else {
            EXPECT_FALSE(error.isEmpty());
            EXPECT_EQ(source->stateCount(), 0u);
        }
        EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
        EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
        return error.message().toStdString();
    }

    void write(const std::string& contents) {
        std::ofstream(path(), std::ios::binary) << contents;
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

TEST_P(BadFiles, WholeOnesAreRead) {
    write(contentsOf(original(GetParam().name)));
    EXPECT_EQ(readAll(), "");
}

TEST_P(BadFiles, MissingEmptyAndMislabelledOnesAreRefused) {
    const auto isRefused = GetParam().mayMiss ? testing::Matcher<std::string>(testing::_) : HasSubstr(nameOfFile());
    EXPECT_THAT(readAll(), isRefused);
    write("");
    EXPECT_THAT(readAll(), isRefused);
    write("1PCthis is quite another file\n and has nothing of it\n");
    EXPECT_THAT(readAll(), isRefused);
    write("<?xml version=\"1.0\"?>\n<html><body>not found</body></html>\n");
    EXPECT_THAT(readAll(), isRefused);
}

// What is cut off may be no more than an end mark, so not each cut is an error. Of a legacy file VTK takes what is
// there.
TEST_P(BadFiles, CutOnesNeverCrash) {
    const std::string whole = contentsOf(original(GetParam().name));
    std::size_t refused = 0;
    constexpr std::size_t CUTS = 12;
    for (std::size_t i = 1; i <= CUTS; ++i) {
        write(whole.substr(0, whole.size() * i / (CUTS + 1)));
        refused += !readAll().empty();
    }
    EXPECT_TRUE(refused >= CUTS / 2 || path().ends_with(".vtk") || GetParam().mayMiss);
}

TEST_P(BadFiles, DamagedOnesNeverCrash) {
    const std::string whole = contentsOf(original(GetParam().name));
    for (std::size_t i = 0; i < 24; ++i) {
        std::string damaged = whole;
        damaged[whole.size() * (2 * i + 1) / 48] ^= char(1 << (i % 7));
        write(damaged);
        readAll();
    }
}

TEST_P(BadFiles, WithoutWhatTheyNameAreRefused) {
    write(contentsOf(original(GetParam().name)));
    for (const std::string& companion : GetParam().companions) {
        std::filesystem::remove(m_folder.path() + "/" + companion);
        EXPECT_TRUE(!readAll().empty() || companion.find("/0.25/") != std::string::npos) << companion;
        std::filesystem::copy(original(companion), m_folder.path() + "/" + companion);
    }
}

INSTANTIATE_TEST_SUITE_P(Each, BadFiles, testing::ValuesIn(samples()),
                         [](const testing::TestParamInfo<Sample>& sample) {
                             std::string name = sample.param.folder + '_' + sample.param.name;
                             std::replace_if(
                                 name.begin(), name.end(), [](char c) { return !std::isalnum(c); }, '_');
                             return name;
                         });

} // namespace
