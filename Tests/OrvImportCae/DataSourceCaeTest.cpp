#include "OrvImportCae/DataSourceCae.h"

#include "OrvUnstructGrid/Error.h"
#include "Tests/OrvImportCae/FrdSamples.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include <sys/stat.h>

using namespace orv;
using orvtest::FrdText;
using orvtest::ScratchFolder;
using orvtest::solverFile;
using orvtest::SUPPORTED_FORMATS;

namespace {

PtrRef<imp::cae::DataSourceCae> makeSource() {
    return PtrRef<imp::cae::DataSourceCae>(new imp::cae::DataSourceCae(1));
}

TEST(DataSourceCae, TellsWhatItReads) {
    const std::vector<imp::cae::ReaderInfo> infos = imp::cae::DataSourceCae::supportedFormats();
    ASSERT_GE(infos.size(), 3u);
    EXPECT_EQ(infos[0].description, Str("CalculiX results"));
    EXPECT_EQ(infos[0].extensions, Str("frd"));
    EXPECT_EQ(infos[1].description, Str("Gmsh meshes and results"));
    EXPECT_EQ(infos[1].extensions, Str("msh"));
    EXPECT_EQ(infos[2].description, Str("MED files of code_aster and Salome"));
    EXPECT_EQ(infos[2].extensions, Str("med rmed"));
}

TEST(DataSourceCae, TellsTheFormatsInTheSameOrderWithMore) {
    const std::vector<imp::cae::ReaderInfo> infos = imp::cae::DataSourceCae::supportedFormats();
    const std::vector<imp::cae::FormatInfo> formats = imp::cae::DataSourceCae::formats();
    ASSERT_EQ(formats.size(), infos.size());
    for (std::size_t i = 0; i < formats.size(); ++i) {
        EXPECT_EQ(formats[i].description, infos[i].description);
        EXPECT_EQ(formats[i].extensions, infos[i].extensions);
        EXPECT_FALSE(formats[i].contents.isEmpty()) << formats[i].name;
    }
    EXPECT_EQ(formats[0].name, Str("CalculiX"));
    EXPECT_TRUE(formats[0].module.isEmpty());
    EXPECT_TRUE(formats[0].isThere);
    EXPECT_EQ(formats[3].name, Str("Exodus II"));
    EXPECT_EQ(formats[3].module, Str("libOrvImportVtk.so"));
}

TEST(DataSourceCae, IsEmptyUntilItOpens) {
    const PtrRef<imp::cae::DataSourceCae> source = makeSource();
    EXPECT_EQ(source->id(), 1);
    EXPECT_EQ(source->stateCount(), 0u);
    EXPECT_EQ(source->directory()->geometryCountPerState(), 0u);
    EXPECT_TRUE(source->directory()->simulationInfo().filename().isEmpty());
}

TEST(DataSourceCae, FillsTheDirectory) {
    const PtrRef<imp::cae::DataSourceCae> source = makeSource();
    ug::Error error;
    ASSERT_TRUE(source->openFiles({solverFile("contact.frd")}, &error)) << error.message();
    EXPECT_TRUE(error.isEmpty());
    const ug::DataSourceDirectory& directory = *source->directory();
    EXPECT_EQ(directory.simulationInfo().filename(), Str(solverFile("contact.frd")));
    // The solver cuts headings at 66 characters.
    EXPECT_EQ(directory.simulationInfo().title(),
              Str("a small cube pressed onto a larger one: contact results on few nod"));
    EXPECT_EQ(directory.geometryCountPerState(), 1u);
    const std::vector<ug::PartInfo> parts = directory.partInfos(0);
    ASSERT_EQ(parts.size(), 2u);
    EXPECT_EQ(parts[0].name(), Str("STEEL"));
    EXPECT_EQ(parts[1].name(), Str("BRASS"));
    ASSERT_EQ(source->stateCount(), 1u);
    const ug::DataState* state = source->state(0);
    ASSERT_EQ(state->geometryCount(), 1u);
    ASSERT_EQ(state->geometry(0)->partCount(), 2u);
    EXPECT_EQ(state->geometry(0)->part(1)->partId(), parts[1].id());
    const auto names = [&](ug::ResultType type) {
        std::vector<std::string> list;
        for (const ug::ResultInfo& info : directory.resultInfos(type)) {
            list.push_back(info.name().toStdString());
            EXPECT_TRUE(directory.hasResult(1, info));
        }
        return list;
    };
    using Names = std::vector<std::string>;
    EXPECT_EQ(names(ug::SCALAR), (Names{"CONTACT.COPEN", "CONTACT.CSLIP1", "CONTACT.CSLIP2", "CONTACT.CPRESS",
                                        "CONTACT.CSHEAR1", "CONTACT.CSHEAR2", "ERROR"}));
    EXPECT_EQ(names(ug::VECTOR), Names());
    EXPECT_EQ(names(ug::DISPLACEMENT), Names{"DISP"});
    EXPECT_EQ(names(ug::SYMMETRIC_TENSOR), Names{"STRESS"});
    EXPECT_TRUE(directory.warnings().empty());
}

// Heavy libraries belong to modules, which are opened for their own formats.
TEST(DataSourceCae, OpensOurOwnFormatsWithoutVtk) {
    const PtrRef<imp::cae::DataSourceCae> source = makeSource();
    ASSERT_TRUE(source->openFiles({solverFile("heat.frd")}, nullptr));
    const std::string libraries = orvtest::readWholeFile("/proc/self/maps");
    EXPECT_NE(libraries.find("libstdc++"), std::string::npos);
    EXPECT_EQ(libraries.find("libvtk"), std::string::npos);
}

TEST(DataSourceCae, StatesShareOneGeometry) {
    const PtrRef<imp::cae::DataSourceCae> source = makeSource();
    ASSERT_TRUE(source->openFiles({solverFile("heat.frd")}, nullptr));
    ASSERT_EQ(source->stateCount(), 5u);
    for (std::size_t i = 1; i < 5; ++i) {
        EXPECT_EQ(source->state(i)->geometry(0), source->state(0)->geometry(0));
    }
}

TEST(DataSourceCae, OpensAMeshWithoutResults) {
    ScratchFolder folder;
    const std::string path = folder.write("X.FRD", FrdText().tetrahedron().endFile().text());
    const PtrRef<imp::cae::DataSourceCae> source = makeSource();
    ug::Error error;
    ASSERT_TRUE(source->openFiles({path}, &error)) << error.message();
    EXPECT_EQ(source->stateCount(), 0u);
    EXPECT_EQ(source->directory()->partInfos(0).size(), 1u);
    EXPECT_TRUE(source->directory()->warnings().empty());
}

TEST(DataSourceCae, PassesWarningsOn) {
    ScratchFolder folder;
    const std::string path = folder.write("x.frd", FrdText().tetrahedron().temperatures(1, 0.5, {1}).text());
    const PtrRef<imp::cae::DataSourceCae> source = makeSource();
    ASSERT_TRUE(source->openFiles({path}, nullptr));
    EXPECT_EQ(source->stateCount(), 1u);
    ASSERT_EQ(source->directory()->warnings().size(), 1u);
    EXPECT_EQ(without(folder, source->directory()->warnings()[0]),
              "x.frd ends without its end line \"9999\"; the run was broken off or is not over yet");
}

TEST(DataSourceCae, AFailedOpenLeavesNothingBehind) {
    ScratchFolder folder;
    FrdText bad;
    bad.tetrahedron().temperatures(1, 0.5, {1}).line("garbage");
    const PtrRef<imp::cae::DataSourceCae> source = makeSource();
    ug::Error error;
    EXPECT_FALSE(source->openFiles({folder.write("x.frd", bad.text())}, &error));
    EXPECT_EQ(without(folder, error.message()), "x.frd, line 17: expected the header of a block (1U, 1P, 2C, 3C, 100C "
                                                "or 9999), found \"garbage\"");
    EXPECT_FALSE(source->openFiles({folder.path() + "/none.frd"}, nullptr));
    EXPECT_EQ(source->stateCount(), 0u);
    EXPECT_EQ(source->directory()->geometryCountPerState(), 0u);
    EXPECT_TRUE(source->directory()->scalarResultInfos().empty());
    EXPECT_TRUE(source->directory()->warnings().empty());
    // Another file can be tried.
    EXPECT_TRUE(source->openFiles({solverFile("cube_static.frd")}, nullptr));
    EXPECT_EQ(source->stateCount(), 1u);
}

TEST(DataSourceCae, RefusesWithATextThatNamesTheFile) {
    ScratchFolder folder;
    const auto why = [&](const std::vector<Str>& names) {
        ug::Error error;
        EXPECT_FALSE(makeSource()->openFiles(names, &error));
        EXPECT_FALSE(makeSource()->openFiles(names, nullptr));
        return without(folder, error.message());
    };
    EXPECT_EQ(why({}), "no file to open is named");
    EXPECT_EQ(why({Str(folder.path() + "/none.frd")}), "cannot open \"none.frd\": No such file or directory");
    ASSERT_EQ(::mkdir((folder.path() + "/folder.frd").c_str(), 0700), 0);
    EXPECT_EQ(why({Str(folder.path() + "/folder.frd")}), "cannot open \"folder.frd\": Is a directory");
    EXPECT_EQ(why({Str(folder.path() + "/folder")}),
              "cannot open \"folder\": its name has no extension that tells its format; " + SUPPORTED_FORMATS);
}

TEST(DataSourceCae, OpensOnce) {
    const PtrRef<imp::cae::DataSourceCae> source = makeSource();
    ASSERT_TRUE(source->openFiles({solverFile("cube_static.frd")}, nullptr));
    ug::Error error;
    EXPECT_FALSE(source->openFiles({"other.frd"}, &error));
    EXPECT_EQ(error.message(), Str("cannot open \"other.frd\": this data source holds \"" +
                                   solverFile("cube_static.frd") + "\" already"));
    EXPECT_EQ(source->stateCount(), 1u);
}

TEST(DataSourceCae, HasNothingToAddToBeforeItOpens) {
    ug::Error error;
    EXPECT_FALSE(makeSource()->openSecondaryFile("b.frd", &error));
    EXPECT_EQ(error.message(), Str("cannot add \"b.frd\": no file is open that it could be added to"));
}

TEST(DataSourceCae, TakesNamesInAnyLanguage) {
    ScratchFolder folder;
    const std::string path = folder.write("tr\xC3\xA4ger.frd", FrdText().tetrahedron().endFile().text());
    ug::Error error;
    EXPECT_TRUE(makeSource()->openFiles({Str(path)}, &error)) << error.message();
}

} // namespace
