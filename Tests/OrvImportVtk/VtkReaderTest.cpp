#include "OrvApp/Models.h"
#include "OrvUnstructGrid/DataResultGroup.h"
#include "Tests/OrvImportVtk/VtkSamples.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <SMP/Common/vtkSMPToolsAPI.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

using namespace orv;
using orvtest::ScratchFolder;
using orvtest::vtkFile;

namespace {

std::vector<std::string> warningsOf(const imp::cae::DataSourceCae& source) {
    std::vector<std::string> texts;
    for (const Str& warning : source.directory()->warnings()) {
        const std::string text = warning.toStdString();
        texts.push_back(text.substr(text.find_last_of('/') + 1));
    }
    return texts;
}

std::string copyOf(const std::string& name, const ScratchFolder& folder) {
    std::filesystem::copy(vtkFile(name), folder.path() + "/" + name);
    return folder.path() + "/" + name;
}

TEST(VtkReader, ArraysThatFitNothingAreTold) {
    const auto source = orvtest::openVtk(vtkFile("zoo_ascii.vtu"));
    EXPECT_THAT(warningsOf(*source),
                testing::ElementsAre("zoo_ascii.vtu: array 'Pair' is left out: it has 2 components",
                                     "zoo_ascii.vtu: array 'Four' is left out: it has 4 components",
                                     "zoo_ascii.vtu: array 'Remark' is left out: it holds no numbers"));
}

TEST(VtkReader, ConstantsOfACaseAreTold) {
    EXPECT_THAT(warningsOf(*orvtest::openVtk(vtkFile("frame.case"))),
                testing::ElementsAre("frame.case: variable 'Load' is left out: it is a constant per case"));
}

TEST(VtkReader, IdsAreThoseOfTheFile) {
    const auto source = orvtest::openVtk(vtkFile("zoo_raw.vtu"));
    const ug::DataPart* part = source->state(0)->geometry(0)->part(0);
    EXPECT_EQ(part->nodes()->nodeId(0), 101);
    EXPECT_EQ(part->elements()->elementId(3), 1004);
}

// The file may go away once its values have been loaded: nothing is read again, mesh and values came together.
TEST(VtkReader, OpeningLeavesTheMeshInTheFileAndALoadBringsItAlong) {
    const ScratchFolder folder;
    const std::string path = copyOf("zoo_raw.vtu", folder);
    const auto source = orvtest::openVtk(path);
    const std::size_t bytes = source->state(0)->geometry(0)->byteCount();
    EXPECT_LT(bytes, 10u); // An empty list of elements is not quite empty.
    const ug::ResultInfo info = orvtest::findResult(source.get(), "Temperature");
    ASSERT_TRUE(orvtest::load(source.get(), 1, {info}));
    EXPECT_GT(source->state(0)->geometry(0)->byteCount(), 107u * 3 * sizeof(double));
    std::filesystem::remove(path);
    EXPECT_EQ(source->state(0)->geometry(0)->part(0)->elements()->elementCount(), 14u);
    EXPECT_EQ(source->state(0)->results(source->state(0)->geometry(0))->find(info)->values(0)->itemCount(), 107u);
    ug::Error error;
    EXPECT_FALSE(orvtest::load(source.get(), 1, {orvtest::findResult(source.get(), "Flux")}, &error));
    EXPECT_FALSE(error.isEmpty());
}

TEST(VtkReader, SeveralResultsComeInOneLoad) {
    const auto source = orvtest::openVtk(vtkFile("bar.ex2"));
    const std::vector<ug::ResultInfo> infos = {orvtest::findResult(source.get(), "DISPL"),
                                               orvtest::findResult(source.get(), "STRESS", ug::PER_ELEMENT)};
    ASSERT_TRUE(orvtest::load(source.get(), 2, infos));
    EXPECT_TRUE(source->state(1)->hasLoaded(infos[0]));
    EXPECT_TRUE(source->state(1)->hasLoaded(infos[1]));
    EXPECT_FALSE(source->state(0)->hasLoaded(infos[0]));
}

TEST(VtkReader, StatesShareAMeshThatStays) {
    const auto bar = orvtest::openVtk(vtkFile("bar.ex2"));
    EXPECT_EQ(bar->state(0)->geometry(0), bar->state(2)->geometry(0));
    const auto moving = orvtest::openVtk(vtkFile("moving.case"));
    EXPECT_NE(moving->state(0)->geometry(0), moving->state(1)->geometry(0));
    EXPECT_EQ(moving->state(0)->geometry(0)->part(0)->nodes()->node(1), Vec3d(1, 0, 0));
    EXPECT_EQ(moving->state(1)->geometry(0)->part(0)->nodes()->node(1), Vec3d(2, 0, 0));
}

// The memory of earlier ones is given back when there is no room for them.
TEST(VtkReader, MeshesThatChangeAreReadAgain) {
    const auto source = orvtest::openVtk(orvtest::testDataFolder() + "/ensight/single_little.case");
    const ug::ResultInfo info = orvtest::findResult(source.get(), "Temp");
    source->setResultByteBudget(0);
    const auto contentsOf = [&](int stateId) {
        EXPECT_TRUE(orvtest::load(source.get(), stateId, {info}));
        ug::DataState* state = source->state(std::size_t(stateId) - 1);
        const ug::DataGeometry* geometry = state->geometry(0);
        std::vector<double> numbers;
        for (std::size_t p = 0; p < geometry->partCount(); ++p) {
            const std::span<const double> places = geometry->part(p)->nodes()->coordinates();
            numbers.insert(numbers.end(), places.begin(), places.end());
            const ug::DataPartValues* values = state->results(geometry)->find(info)->values(p);
            numbers.insert(numbers.end(), values->values(), values->values() + values->itemCount());
        }
        return numbers;
    };
    const std::vector<double> first = contentsOf(1);
    const std::vector<double> second = contentsOf(2);
    EXPECT_EQ(source->state(0)->geometry(0)->bytesToGiveBack(), 0u);
    EXPECT_GT(source->state(1)->geometry(0)->bytesToGiveBack(), 0u);
    EXPECT_FALSE(first.empty());
    EXPECT_NE(first, second);
    EXPECT_EQ(contentsOf(1), first);
    EXPECT_EQ(source->state(1)->geometry(0)->bytesToGiveBack(), 0u);
    EXPECT_EQ(contentsOf(2), second);
}

// Displacements are results, points are where the file has them.
TEST(VtkReader, DisplacementsDoNotMoveThePoints) {
    const auto source = orvtest::openVtk(vtkFile("bar.ex2"));
    ASSERT_TRUE(orvtest::load(source.get(), 3, {orvtest::findResult(source.get(), "DISPL")}));
    EXPECT_EQ(source->state(2)->geometry(0)->part(0)->nodes()->node(6), Vec3d(1, 1, 1));
}

TEST(VtkReader, AStateHasTheResultsOfItsStep) {
    const auto source = orvtest::openVtk(vtkFile("series.pvd"));
    const ug::ResultInfo info = orvtest::findResult(source.get(), "q");
    EXPECT_FALSE(source->directory()->hasResult(1, info));
    EXPECT_TRUE(source->directory()->hasResult(2, info));
    EXPECT_EQ(source->directory()->stateInfo(1).name(), Str("Time 0.5"));
}

TEST(VtkReader, PolygonsAndStripsAreSplitWithTheirValues) {
    const auto source = orvtest::openVtk(vtkFile("surface.vtp"));
    const ug::DataElements& elements = *source->state(0)->geometry(0)->part(0)->elements();
    const ug::ElementType types[] = {ug::POINT,    ug::BEAM,          ug::BEAM,     ug::TRIANGLE, ug::TRIANGLE,
                                     ug::TRIANGLE, ug::QUADRILATERAL, ug::TRIANGLE, ug::TRIANGLE};
    const double values[] = {10, 11, 11, 12, 12, 12, 13, 14, 14};
    ASSERT_EQ(elements.elementCount(), std::size(types));
    const ug::ResultInfo info = orvtest::findResult(source.get(), "colour", ug::PER_ELEMENT);
    ASSERT_TRUE(orvtest::load(source.get(), 1, {info}));
    const ug::DataState* state = source->state(0);
    const auto span = state->results(state->geometry(0))->find(info)->values(0)->span();
    for (std::size_t i = 0; i < std::size(types); ++i) {
        EXPECT_EQ(elements.elementType(i), types[i]) << i;
        EXPECT_EQ(span[i], values[i]) << i;
    }
}

TEST(VtkReader, ImagesAreMeshes) {
    const auto source = orvtest::openVtk(vtkFile("voxels.vtk"));
    EXPECT_EQ(source->state(0)->geometry(0)->part(0)->elements()->elementCount(), 4u);
    EXPECT_EQ(source->state(0)->geometry(0)->part(0)->elements()->elementType(0), ug::HEXAHEDRON);
}

TEST(VtkReader, TitlesAreThoseOfTheFile) {
    EXPECT_EQ(orvtest::openVtk(vtkFile("bar.ex2"))->directory()->simulationInfo().title(), Str("Two blocks of a bar"));
    EXPECT_EQ(orvtest::openVtk(vtkFile("zoo_ascii.vtk"))->directory()->simulationInfo().title(), Str("A zoo of cells"));
}

TEST(VtkReader, FilesOfTheSameMeshAreOneSeries) {
    const PtrRef<imp::cae::DataSourceCae> source(new imp::cae::DataSourceCae(1));
    ug::Error error;
    ASSERT_TRUE(source->openFiles({vtkFile("zoo_ascii.vtu"), vtkFile("zoo_raw.vtu")}, &error)) << error.message();
    ASSERT_EQ(source->stateCount(), 2u);
    EXPECT_EQ(source->state(0)->geometry(0), source->state(1)->geometry(0));
    const ug::ResultInfo info = orvtest::findResult(source.get(), "Stress", ug::PER_ELEMENT);
    ASSERT_TRUE(orvtest::load(source.get(), 1, {info}));
    ASSERT_TRUE(orvtest::load(source.get(), 2, {info}));
    const auto values = [&](std::size_t s) {
        const ug::DataState* state = source->state(s);
        const auto span = state->results(state->geometry(0))->find(info)->values(0)->span();
        return std::vector<double>(span.begin(), span.end());
    };
    EXPECT_EQ(values(0), values(1));
    EXPECT_FALSE(source->openSecondaryFile(vtkFile("meshio.vtu"), &error));
}

// VTK's threads are not the application's choice.
TEST(VtkReader, NoThreadsAreMade) {
    orvtest::openVtk(vtkFile("zoo_raw.vtu"));
    EXPECT_STREQ(vtk::detail::smp::vtkSMPToolsAPI::GetInstance().GetBackend(), "Sequential");
}

// A model that is still open when the process ends outlives VTK.
TEST(VtkReaderDeathTest, AnOpenModelDoesNotHinderTheEnd) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const auto openAndEnd = [] {
        const ug::UnstructGridModel* model = app::Models::instance()->open(Str(vtkFile("bar.ex2")), nullptr);
        std::exit(model ? 7 : 8);
    };
    EXPECT_EXIT(openAndEnd(), testing::ExitedWithCode(7), "");
}

// A collection that names itself, and one of a block that does.
TEST(VtkReader, CollectionsMustNotContainThemselves) {
    ScratchFolder folder;
    const std::string path = folder.path() + "/loop.vtm";
    std::ofstream(path) << "<VTKFile type=\"vtkMultiBlockDataSet\"><vtkMultiBlockDataSet><DataSet name=\"a\" "
                           "file=\"loop.vtm\"/></vtkMultiBlockDataSet></VTKFile>";
    const PtrRef<imp::cae::DataSourceCae> source(new imp::cae::DataSourceCae(1));
    ug::Error error;
    EXPECT_FALSE(source->openFiles({path}, &error));
    EXPECT_THAT(error.message().toStdString(), testing::EndsWith("loop.vtm: is within too many collections"));
}

} // namespace
