#include "OrvUnstructGrid/DataResultGroup.h"
#include "Tests/OrvImportVtk/VtkSamples.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

using namespace orv;
using orvtest::findResult;
using orvtest::load;

namespace {

namespace fs = std::filesystem;

/// A copy of a case that may be changed.
class FoamSourceTest : public testing::Test {
protected:
    void copy(const std::string& name) {
        fs::remove_all(m_folder.path());
        fs::copy(orvtest::testDataFolder() + "/foam/" + name, m_folder.path(), fs::copy_options::recursive);
        m_file = m_folder / (name + ".foam");
    }

    void write(const std::string& name, const std::string& contents) {
        fs::create_directories(fs::path(m_folder / name).parent_path());
        std::ofstream(m_folder / name, std::ios::binary) << contents;
    }

    void writeScalar(const std::string& path, const std::string& object, const std::string& boundaryField) {
        write(path, "FoamFile { format ascii; class volScalarField; object " + object +
                        "; }\ndimensions [0 0 0 0 0 0 0]; internalField uniform 7; boundaryField { " + boundaryField +
                        " }");
    }

    PtrRef<imp::cae::DataSourceCae> open() {
        return orvtest::openVtk(m_file);
    }

    static std::span<const double> values(imp::cae::DataSourceCae* source, std::size_t state,
                                          const ug::ResultInfo& info, std::size_t part) {
        const ug::DataState* data = source->state(state);
        return data->results(data->geometry(0))->find(info)->values(part)->span();
    }

    orvtest::ScratchFolder m_folder;
    std::string m_file;
};

TEST_F(FoamSourceTest, TheFileItselfDoesNotMatter) {
    copy("cavity");
    write("cavity.foam", "anything");
    EXPECT_EQ(open()->stateCount(), 3u);
    fs::rename(m_file, m_folder / "case.OpenFOAM");
    m_file = m_folder / "case.OpenFOAM";
    EXPECT_EQ(open()->stateCount(), 3u);
}

TEST_F(FoamSourceTest, TimesWithoutFieldsAreNoStates) {
    copy("cavity");
    fs::create_directory(m_folder / "0.3");
    write("7/readme", "no field");
    const auto source = open();
    ASSERT_EQ(source->stateCount(), 3u);
    EXPECT_EQ(source->directory()->stateInfo(1).name(), Str("Time 0.25"));
    EXPECT_EQ(source->directory()->stateInfo(2).referenceValue(), 0.5);
}

TEST_F(FoamSourceTest, AMeshAloneIsOneStateWithoutATime) {
    copy("cavity");
    for (const char* time : {"0", "0.25", "0.5"}) {
        fs::remove_all(m_folder / time);
    }
    const auto source = open();
    ASSERT_EQ(source->stateCount(), 1u);
    EXPECT_EQ(source->directory()->stateInfo(0).referenceValue(), UNDEFINED_DOUBLE);
    EXPECT_EQ(source->state(0)->geometry(0)->part(0)->elements()->elementCount(), 6u);
    fs::create_directory(m_folder / "3"); // VTK takes this for a time.
    const auto other = open();
    ASSERT_EQ(other->stateCount(), 1u);
    EXPECT_EQ(other->state(0)->geometry(0)->part(0)->elements()->elementCount(), 6u);
}

TEST_F(FoamSourceTest, AStateHasTheFieldsOfItsFolder) {
    copy("cavity");
    const auto source = open();
    const ug::ResultInfo gradient = findResult(source.get(), "grad(U)", ug::PER_ELEMENT);
    EXPECT_FALSE(source->directory()->hasResult(1, gradient));
    EXPECT_TRUE(source->directory()->hasResult(2, gradient));
    EXPECT_EQ(source->state(0)->geometry(0), source->state(2)->geometry(0));
}

TEST_F(FoamSourceTest, VelocitiesAreNoDisplacements) {
    copy("cavity");
    for (const char* name : {"Ux", "Uy", "Uz"}) {
        writeScalar(std::string("0/") + name, name, "\".*\" { type zeroGradient; }");
    }
    const auto source = open();
    EXPECT_EQ(findResult(source.get(), "U", ug::PER_ELEMENT).type(), ug::VECTOR);
    EXPECT_EQ(findResult(source.get(), "Ux", ug::PER_ELEMENT).type(), ug::SCALAR);
    EXPECT_EQ(source->directory()->resultInfos(ug::VECTOR).size(), 1u);
    EXPECT_TRUE(source->directory()->resultInfos(ug::DISPLACEMENT).empty());
}

// The files may go away once they have been loaded, and what has not been asked for is not looked at.
TEST_F(FoamSourceTest, ALoadReadsTheMeshAndWhatItNames) {
    copy("cavity");
    const auto source = open();
    EXPECT_LT(source->state(0)->geometry(0)->byteCount(), 100u); // Empty lists of elements are not quite empty.
    write("0.5/p", "FoamFile { format ascii; class volScalarField; object p; } internalField uniform");
    const ug::ResultInfo velocity = findResult(source.get(), "U", ug::PER_ELEMENT);
    ASSERT_TRUE(load(source.get(), 3, {velocity}));
    fs::remove_all(m_folder.path());
    EXPECT_EQ(source->state(2)->geometry(0)->part(0)->elements()->elementCount(), 6u);
    EXPECT_EQ(values(source.get(), 2, velocity, 0).size(), 18u);
    ug::Error error;
    EXPECT_FALSE(load(source.get(), 2, {velocity}, &error));
    EXPECT_THAT(error.message().toStdString(), testing::HasSubstr("points cannot be opened"));
}

TEST_F(FoamSourceTest, ReadingGoesOnAfterAFailure) {
    copy("cavity");
    const auto source = open();
    const ug::ResultInfo pressure = findResult(source.get(), "p", ug::PER_ELEMENT);
    const std::string whole = orvtest::readWholeFile(m_folder / "0.25/p");
    std::string shorter = whole;
    shorter.replace(shorter.find("List<scalar> 6"), 14, "List<scalar> 5");
    write("0.25/p", shorter);
    ug::Error error;
    EXPECT_FALSE(load(source.get(), 2, {pressure}, &error));
    EXPECT_THAT(error.message().toStdString(), testing::HasSubstr("Expected punctuation token ')'"));
    write("0.25/p", whole);
    error.clear();
    EXPECT_TRUE(load(source.get(), 2, {pressure}, &error)) << error.message();
    EXPECT_TRUE(load(source.get(), 3, {pressure}, &error)) << error.message();
}

TEST_F(FoamSourceTest, PatchesThatAFieldDoesNotNameAreUndefined) {
    copy("cavity");
    writeScalar("0/T", "T", "lid { type fixedValue; value uniform 3; } left { type zeroGradient; }");
    const auto source = open();
    const ug::ResultInfo temperature = findResult(source.get(), "T", ug::PER_ELEMENT);
    ASSERT_TRUE(load(source.get(), 1, {temperature}));
    EXPECT_EQ(values(source.get(), 0, temperature, 0)[0], 7);
    EXPECT_EQ(values(source.get(), 0, temperature, 1)[0], 3);
    EXPECT_EQ(values(source.get(), 0, temperature, 2)[0], 7);
    EXPECT_EQ(values(source.get(), 0, temperature, 3)[0], UNDEFINED_DOUBLE);
    EXPECT_EQ(values(source.get(), 0, temperature, 4)[0], UNDEFINED_DOUBLE);
}

TEST_F(FoamSourceTest, ParticlesAreNotRead) {
    copy("cavity");
    write("0.5/lagrangian/spray/positions",
          "FoamFile { format ascii; class Cloud<spray>; object positions; }\n1((no particle))");
    const auto source = open();
    EXPECT_TRUE(load(source.get(), 3, {findResult(source.get(), "p", ug::PER_ELEMENT)}));
    EXPECT_EQ(source->directory()->partInfos(0).size(), 6u);
}

TEST_F(FoamSourceTest, PointsMoveWithTheStates) {
    copy("moving");
    const auto source = open();
    const ug::ResultInfo info = findResult(source.get(), "pointDisplacement");
    EXPECT_EQ(info.type(), ug::DISPLACEMENT);
    ASSERT_TRUE(load(source.get(), 2, {info}));
    const Vec3d before = source->state(0)->geometry(0)->part(0)->nodes()->node(3);
    const Vec3d after = source->state(1)->geometry(0)->part(0)->nodes()->node(3);
    const std::span<const double> displacements = values(source.get(), 1, info, 0);
    EXPECT_NEAR(after.x() - before.x(), displacements[9], 1e-7);
    EXPECT_NEAR(after.y() - before.y(), displacements[10], 1e-7);
    EXPECT_GT(displacements[10], 0.01);
}

} // namespace
