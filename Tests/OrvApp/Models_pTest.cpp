// Model loading: which data source reads a file, what is shared, and what a failure leaves behind.

#include "OrvApp/Models_p.h"

#include "OrvApp/Models.h"
#include "OrvImportCae/DataSourceCae.h"
#include "OrvUnstructGrid/DataSourceZTF.h"
#include "OrvUnstructGrid/DataSourceZTFx.h"
#include "OrvUnstructGrid/Error.h"
#include "OrvUnstructGrid/ResultsQuery.h"
#include "OrvUnstructGrid/WriteSelection.h"
#include "OrvUnstructGrid/ZTFxWriter.h"
#include "Tests/OrvApp/CatalogueTest.h"
#include "Tests/Support/ScratchFolder.h"

#include <filesystem>
#include <functional>

using namespace orv;
using orv::app::Models;
using orv::app::Parts;
using orvtest::failed;
using orvtest::FailedAssert;
using orvtest::LogMessage;

namespace {

const std::string inside = "OrvApp/Models_p";

const LogMessage noStates = {1,
                             "orv.comp.app",
                             "Cannot not load model. There are no states in the file.",
                             inside,
                             "bool orv::app::ModelsPrivate::loadFromFile(orv::ug::UnstructGridModel *, const "
                             "std::vector<orv::Str> &, const orv::Str &, orv::ug::Error *)",
                             "loadFromFile"};

const LogMessage notCae = {1,
                           "orv.comp.app",
                           "Cannot add result file to model. This is only valid for Cae data sources.",
                           inside,
                           "bool orv::app::ModelsPrivate::openSecondary(const orv::Str &, orv::ug::Error *)",
                           "openSecondary"};

/// A field of a fixed-width line, flush right.
std::string field(const std::string& text, size_t width) {
    return std::string(width - text.size(), ' ') + text;
}

std::string field(int number, size_t width) {
    return field(std::to_string(number), width);
}

/// A tetrahedron with a temperature in each of `stateCount` states, below 10, as the solver writes it.
std::string frdText(int stateCount) {
    std::string text = "    1C\n    2C" + field(4, 30) + field(1, 38) + "\n" +
                       " -1         1 0.00000E+00 0.00000E+00 0.00000E+00\n"
                       " -1         2 1.00000E+00 0.00000E+00 0.00000E+00\n"
                       " -1         3 0.00000E+00 1.00000E+00 0.00000E+00\n"
                       " -1         4 0.00000E+00 0.00000E+00 1.00000E+00\n"
                       " -3\n    3C" +
                       field(1, 30) + field(1, 38) + "\n" +
                       " -1         1    3    0    1\n"
                       " -2         1         2         3         4\n"
                       " -3\n";
    for (int state = 1; state <= stateCount; ++state) {
        const std::string value = std::to_string(state) + ".00000E+00";
        text += "    1PSTEP" + field(state, 26) + field(state, 12) + field(1, 12) + "\n" + "  100CL" +
                field(100 + state, 5) + field(value, 12) + field(4, 12) + field("", 20) + field(0, 2) +
                field(state, 5) + field("", 10) + field(1, 2) + "\n" +
                " -4  NDTEMP      1    1\n"
                " -5  T           1    1    0    0\n";
        for (int node = 1; node <= 4; ++node) {
            text += " -1" + field(node, 10) + field(value, 12) + "\n";
        }
        text += " -3\n";
    }
    return text + " 9999\n";
}

/// A point with the scalar 6 in each of `stateCount` states, whose ids begin with 4.
std::string ztfText(int stateCount) {
    std::string text = "ztf 1\nresult scalar 6 \"p\" node\ngeometry 1\npart 1 \"\"\nnodes 1\n0 0 0\n";
    for (int state = 4; state < 4 + stateCount; ++state) {
        text += "state " + std::to_string(state) + " \"\" time 0\ngeometries 1\n1\nfield scalar 6\nvalues 1 1\n7\n";
    }
    return text + "end\n";
}

class ModelLoadingTest : public orvtest::CatalogueTest {
protected:
    Str path(const std::string& name) const {
        return folder / name;
    }

    /// Writes a file with that many states and gives its path.
    Str write(const std::string& name, int stateCount) const {
        return folder.write(name, frdText(stateCount));
    }

    /// Writes the cases 7, 3 and 0, each with states of ten times their ids and one more, and with a scalar.
    Str writeCases(const std::string& name, const Str& password = "") const {
        ug::ZTFxWriter writer;
        writer.setPassword(password);
        ug::Error error;
        for (const int id : {7, 3, 0}) {
            PtrRef<ug::DataSourceMemory> source =
                orvtest::memorySource({{"part"}}, {{10 * id, "a"}, {10 * id + 1, "b"}});
            const ug::ResultInfo scalar = source->addResult(ug::SCALAR, "t", ug::PER_NODE);
            EXPECT_TRUE(source->setValues(10 * id, scalar, 0, 0, std::vector<double>{0.1, 0.2}, &error));
            EXPECT_TRUE(writer.addCase(id, "case", source.get(), {}, &error)) << error.message();
        }
        EXPECT_TRUE(writer.write(path(name), nullptr, &error)) << error.message();
        return path(name);
    }

    /// The first state of what opens, which tells the case; -1 when it does not open.
    int stateOf(const Str& name, const Str& password = "") {
        ug::Error error;
        const ug::UnstructGridModel* model = models->open(name, password, &error);
        return model ? model->currentStateId() : -1;
    }

    void remove(const std::string& name) const {
        std::filesystem::remove(folder / name);
    }

    ug::UnstructGridModel* open(const Str& name) {
        ug::Error error;
        ug::UnstructGridModel* model = models->open(name, &error);
        EXPECT_TRUE(model) << error.message();
        return model;
    }

    /// True when the name is still shared: opens it, which must fail when a file would have to be read.
    bool isListed(const Str& name) {
        ug::Error error;
        ug::UnstructGridModel* model = models->open(name, &error);
        if (model) {
            models->close(model);
        }
        return model;
    }

    orvtest::ScratchFolder folder;
    Models* models = Models::instance();
};

using Refusal = std::function<void(const Str& filename, const Str& password, ug::Error* error)>;

Refusal caseByIndex(size_t index) {
    return [index](const Str& filename, const Str& password, ug::Error* error) {
        ug::DataSourceZTFx source(1);
        source.setPassword(password);
        source.openCase(filename, index, error);
    };
}

Refusal caseById(int id) {
    return [id](const Str& filename, const Str& password, ug::Error* error) {
        ug::DataSourceZTFx source(1);
        source.setPassword(password);
        source.openCaseById(filename, id, error);
    };
}

void olderFile(const Str& filename, const Str&, ug::Error* error) {
    ug::DataSourceZTF(1).openFile(filename, error);
}

void caeFile(const Str& filename, const Str&, ug::Error* error) {
    imp::cae::DataSourceCae(1).openFiles({filename}, error);
}

TEST_F(ModelLoadingTest, TheNameDecidesWhoReadsTheFile) {
    struct Case {
        const char* filename;
        Refusal route;
    };
    // None of these files can be read, and each data source tells in its own words what it was asked for.
    const Case cases[] = {
        {"a.ztfx", caseByIndex(0)},
        {"a.ZTFX", caseByIndex(0)},
        {"a.ztfxa", caseByIndex(0)},
        {"dir.ztfx/file", caseByIndex(0)}, // the scan for the dot does not stop at the folder
        {"a.ztfx|3", caseById(3)},
        {"a.ZtFx|7", caseById(7)},
        {"a.ztfx|x", caseById(0)},
        {"a.ztfx|", caseById(0)},
        {"a|b.ztfx", caseById(0)},
        {"a.ztfx|1|2", caseByIndex(0)},
        {"a.ztf", olderFile},
        {"a.ZTF", olderFile},
        {"a.ztfx.ztf", olderFile},
        {"a.ztf|3", caeFile},
        {"a.zt", caeFile},
        {"a.xztfx", caeFile},
        {"a.ztfx.frd", caeFile},
        {"dir.ztf/file", caeFile},
        {"dir.d/file", caeFile},
        {"ztfx", caeFile},
        {"a.", caeFile},
        {"", caeFile},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.filename);
        ug::Error expected, error;
        c.route(c.filename, "", &expected);
        ASSERT_FALSE(expected.isEmpty());
        EXPECT_EQ(models->open(c.filename, &error), nullptr);
        EXPECT_EQ(error.message(), expected.message());
        EXPECT_EQ(models->count(), 0u);
        EXPECT_EQ(models->currentIndex(), UNDEFINED_SIZE_T);
    }
}

TEST_F(ModelLoadingTest, AnImporterThatReadsZtfxGetsTheseFiles) {
    using Private = app::ModelsPrivate;
    const std::vector<imp::cae::ReaderInfo> without = {{"one", "frd"}, {"two", "vtu pvd"}};
    const std::vector<imp::cae::ReaderInfo> with = {{"one", "frd"}, {"two", "odb ztfx ztf"}, {"three", "ztfx"}};
    for (const char* filename : {"a.ztfx", "a.ZTFX|7", "a.ztfxa"}) {
        EXPECT_EQ(Private::fileRoute(filename, {}), Private::FileRoute::ZTFX);
        EXPECT_EQ(Private::fileRoute(filename, without), Private::FileRoute::ZTFX);
        EXPECT_EQ(Private::fileRoute(filename, with), Private::FileRoute::CAE);
        // A plain search, which also finds it inside a longer word, and nowhere else than in the extensions.
        EXPECT_EQ(Private::fileRoute(filename, {{"", "xztfx2"}}), Private::FileRoute::CAE);
        EXPECT_EQ(Private::fileRoute(filename, {{"ztfx", ""}}), Private::FileRoute::ZTFX);
    }
    EXPECT_EQ(Private::fileRoute("a.ztf", with), Private::FileRoute::ZTF);
    EXPECT_EQ(Private::fileRoute("a.frd", without), Private::FileRoute::CAE);
}

TEST_F(ModelLoadingTest, ThePasswordIsNothingToTheOtherRoutes) {
    const std::pair<const char*, Refusal> cases[] = {{"a.ztf", olderFile}, {"a.frd", caeFile}};
    for (const auto& [filename, route] : cases) {
        SCOPED_TRACE(filename);
        ug::Error expected, byName, byList;
        route(filename, "secret", &expected);
        models->open(filename, "secret", &byName);
        models->open(std::vector<Str>{filename}, "secret", &byList);
        EXPECT_EQ(byName.message(), expected.message());
        EXPECT_EQ(byList.message(), expected.message());
    }
}

TEST_F(ModelLoadingTest, ANativeFileOpensTheCaseThatItsNameAsksFor) {
    struct Case {
        const char* name;
        int state;
    };
    const Case cases[] = {
        {"", 70},                            // the first one
        {"|3", 30},                          // by its id
        {"|0", 0},  {"|7", 70},   {"|x", 0}, // what is no number is id 0
        {"|", 0},   {"|1|2", 70},            // three pieces: the first one again
        {"|1", -1}, {"|3x", 0},   {"| 3 ", 30},
    };
    for (const char* file : {"a.ztfx", "b.ZTFX", "c.ztfxa"}) {
        const Str path = writeCases(file);
        for (const Case& c : cases) {
            EXPECT_EQ(stateOf(path + c.name), c.state) << file << c.name;
        }
    }
    ug::Error error;
    EXPECT_EQ(models->open(path("a.ztfx|1"), &error), nullptr);
    EXPECT_EQ(error.message(), path("a.ztfx: there is no case with id 1: the file has 7 (case), 3 (case), 0 (case)"));
    EXPECT_EQ(models->open(path("a.ztfx"), &error)->modelSpec().fringesResultId(), 1);
}

TEST_F(ModelLoadingTest, CasesOfOneFileAreSourcesOfTheirOwn) {
    const Str file = writeCases("a.ztfx");
    const ug::DataSource* first = open(file)->dataSource();
    const ug::DataSource* third = open(file + "|3")->dataSource();
    // The same case under another name is read again.
    EXPECT_NE(open(file + "|7")->dataSource(), first);
    remove("a.ztfx");
    EXPECT_EQ(open(file)->dataSource(), first);
    EXPECT_EQ(open(file + "|3")->dataSource(), third);
    EXPECT_EQ(models->currentInfo().filename(), file + "|3");
    EXPECT_EQ(stateOf(file + "|0"), -1);
}

TEST_F(ModelLoadingTest, ThePasswordOpensAProtectedFileOnce) {
    const Str file = writeCases("a.ztfx", "secret");
    EXPECT_EQ(stateOf(file), -1);
    EXPECT_EQ(stateOf(file, "wrong"), -1);
    EXPECT_EQ(models->count(), 0u);
    EXPECT_EQ(stateOf(file + "|3", "secret"), 30);
    // Open already: nobody asks for the password.
    EXPECT_EQ(stateOf(file + "|3", "wrong"), 30);
    EXPECT_EQ(stateOf(file + "|3"), 30);
    EXPECT_EQ(stateOf(file + "|0", "wrong"), -1);
    ug::Error error;
    EXPECT_NE(models->open(std::vector<Str>{file, "b.frd"}, "secret", &error), nullptr);
}

TEST_F(ModelLoadingTest, ANativeFileWithoutStatesIsNoModelEither) {
    ug::ZTFxWriter writer;
    ug::Error error;
    ASSERT_TRUE(writer.addCase(0, "", orvtest::memorySource({}, {}).get(), {}, &error));
    const Str file = path("empty.ztfx");
    ASSERT_TRUE(writer.write(file, nullptr, &error));
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(models->open(file, &error), nullptr);
        EXPECT_EQ(logs.take(), std::vector<LogMessage>{noStates});
        EXPECT_TRUE(error.isEmpty());
        // The second open finds it listed and does not look at the file.
        remove("empty.ztfx");
    }
}

TEST_F(ModelLoadingTest, OnlyTheImporterSeesTheWholeList) {
    ug::Error expected, error;
    EXPECT_NE(models->open(std::vector<Str>{writeCases("a.ztfx"), "b.frd"}, &error), nullptr);

    // The first file is good, so only the second one can be what is refused.
    const std::vector<Str> files = {write("good.frd", 1), path("missing.frd")};
    imp::cae::DataSourceCae(1).openFiles(files, &expected);
    EXPECT_EQ(models->open(files, &error), nullptr);
    EXPECT_EQ(error.message(), expected.message());
    EXPECT_FALSE(expected.isEmpty());
}

TEST_F(ModelLoadingTest, AnEmptyListOpensNothing) {
    ug::Error error;
    EXPECT_EQ(models->open(std::vector<Str>(), &error), nullptr);
    EXPECT_EQ(asserts.take(), (std::vector<FailedAssert>{failed("OrvApp/Models", "filenameArr.size() > 0",
                                                                "At least one file must be provided.")}));
    EXPECT_EQ(models->open(std::vector<Str>(), "password", &error), nullptr);
    EXPECT_FALSE(app::ModelsPrivate().createFromFile({}, "", &error));
    EXPECT_TRUE(error.isEmpty());
    EXPECT_EQ(models->count(), 0u);
}

TEST_F(ModelLoadingTest, AnOpenedFileIsTheCurrentModelAtItsFirstState) {
    const Str file = write("a.frd", 3);
    open(write("b.frd", 1));
    Parts::instance()->setCurrentIndex(UNDEFINED_SIZE_T);
    ug::UnstructGridModel* model = open(file);
    EXPECT_EQ(models->count(), 2u);
    EXPECT_EQ(models->current(), model);
    EXPECT_EQ(models->currentIndex(), 1u);
    EXPECT_EQ(models->currentInfo().filename(), file);
    EXPECT_EQ(model->refCount(), 1);

    const std::vector<ug::StateInfo> states = model->dataSource()->directory()->stateInfos();
    ASSERT_EQ(states.size(), 3u);
    EXPECT_EQ(model->currentStateId(), states[0].id());
    EXPECT_EQ(model->modelSpec().fringesResultId(), model->dataSource()->directory()->scalarResultInfos().at(0).id());
    EXPECT_EQ(model->dataSource()->id(), 1);
    EXPECT_EQ(Parts::instance()->currentIndex(), 0u);
}

TEST_F(ModelLoadingTest, AListOpensUnderItsFirstName) {
    const Str file = write("a.frd", 1);
    ug::Error error;
    ug::UnstructGridModel* model = models->open(std::vector<Str>{file}, &error);
    ASSERT_TRUE(model);
    EXPECT_EQ(open(file)->dataSource(), model->dataSource());
}

TEST_F(ModelLoadingTest, AnErrorAddressMayBeNull) {
    EXPECT_EQ(models->open(path("missing.frd"), nullptr), nullptr);
    EXPECT_EQ(models->open("a.ztfx", nullptr), nullptr);
    EXPECT_NE(models->open(write("a.frd", 1), nullptr), nullptr);
}

TEST_F(ModelLoadingTest, ARefusedFileLeavesTheCatalogueUnchanged) {
    open(write("a.frd", 1));
    open(write("b.frd", 1));
    models->setCurrentIndex(0);
    Parts::instance()->setCurrentIndex(UNDEFINED_SIZE_T);
    ug::Error error;
    EXPECT_EQ(models->open(path("missing.frd"), &error), nullptr);
    EXPECT_FALSE(error.isEmpty());
    EXPECT_EQ(models->count(), 2u);
    EXPECT_EQ(models->currentIndex(), 0u);
    EXPECT_EQ(Parts::instance()->currentIndex(), UNDEFINED_SIZE_T);

    // Nothing of the refused name is kept: it opens once the file is there.
    EXPECT_NE(open(write("missing.frd", 1)), nullptr);
}

TEST_F(ModelLoadingTest, ANameThatIsOpenSharesItsDataSourceAndReadsNothing) {
    const Str file = write("a.frd", 2);
    ug::UnstructGridModel* first = open(file);
    first->modelSpec().setStateId(2);
    remove("a.frd");
    ug::Error error;
    ug::UnstructGridModel* second = models->open(file, "password", &error);
    ASSERT_TRUE(second);
    EXPECT_NE(second, first);
    EXPECT_EQ(second->dataSource(), first->dataSource());
    EXPECT_EQ(second->currentStateId(), second->dataSource()->directory()->stateInfos().at(0).id());
    EXPECT_EQ(first->currentStateId(), 2);
}

TEST_F(ModelLoadingTest, NamesAreComparedLetterByLetter) {
    const Str small = write("a.frd", 1), capital = write("A.frd", 2), roundabout = path("./a.frd");
    ug::DataSource* ofSmall = open(small)->dataSource();
    ug::DataSource* ofCapital = open(capital)->dataSource();
    ug::DataSource* ofRoundabout = open(roundabout)->dataSource();
    EXPECT_NE(ofSmall, ofRoundabout);
    EXPECT_EQ(ofCapital->stateCount(), 2u);

    // Each name finds its own again.
    EXPECT_EQ(open(small)->dataSource(), ofSmall);
    EXPECT_EQ(open(capital)->dataSource(), ofCapital);
    EXPECT_EQ(open(roundabout)->dataSource(), ofRoundabout);
}

TEST_F(ModelLoadingTest, TheDataSourceGoesWithItsLastModel) {
    const Str file = write("a.frd", 1);
    open(file);
    open(file);
    remove("a.frd");
    models->close(0ul);
    ASSERT_EQ(models->count(), 1u);
    EXPECT_NE(open(file), nullptr);
    models->close(1);

    PtrRef<ug::DataSource> source = models->current()->dataSource();
    PtrRef<ug::UnstructGridModel> model = models->current();
    models->close(0ul);
    EXPECT_EQ(source->refCount(), 2); // this test and its model
    EXPECT_FALSE(isListed(file));
}

TEST_F(ModelLoadingTest, DroppingOneDataSourceKeepsTheNamesOfTheOthers) {
    const Str a = write("a.frd", 1), b = write("b.frd", 2), c = write("c.frd", 3);
    open(a);
    ug::UnstructGridModel* modelB = open(b);
    ug::UnstructGridModel* modelC = open(c);
    models->close(0ul);
    for (const char* name : {"a.frd", "b.frd", "c.frd"}) {
        remove(name);
    }
    EXPECT_EQ(open(b)->dataSource(), modelB->dataSource());
    EXPECT_EQ(open(c)->dataSource(), modelC->dataSource());
    EXPECT_FALSE(isListed(a));
}

TEST_F(ModelLoadingTest, AModelThatIsListedTwiceIsNoSecondUserOfItsDataSource) {
    const Str file = write("a.frd", 1);
    ug::UnstructGridModel* model = open(file);
    models->add(model);
    remove("a.frd");
    models->close(0ul);
    EXPECT_EQ(models->get(0), model);
    EXPECT_NE(model->dataSource(), nullptr);
    EXPECT_FALSE(isListed(file));
}

TEST_F(ModelLoadingTest, CloseAllForgetsTheNames) {
    const Str file = write("a.frd", 1);
    open(file);
    models->closeAll();
    write("a.frd", 2);
    EXPECT_EQ(open(file)->dataSource()->stateCount(), 2u);
}

TEST_F(ModelLoadingTest, AFileWithoutStatesIsNoModel) {
    ug::Error error;
    const Str file = write("mesh.frd", 0);
    EXPECT_EQ(models->open(file, &error), nullptr);
    EXPECT_EQ(logs.take(), std::vector<LogMessage>{noStates});
    EXPECT_TRUE(error.isEmpty());
    EXPECT_EQ(models->count(), 0u);

    // Its data source stays listed: a better file of that name is not looked at, and no close() helps.
    write("mesh.frd", 1);
    open(write("a.frd", 1));
    models->close(0ul);
    EXPECT_EQ(models->open(file, &error), nullptr);
    EXPECT_EQ(logs.take(), std::vector<LogMessage>{noStates});
    EXPECT_TRUE(error.isEmpty());

    models->closeAll();
    EXPECT_NE(open(file), nullptr);
}

TEST_F(ModelLoadingTest, ReopenKeepsTheModelInItsPlace) {
    const Str first = write("first.frd", 1);
    ug::UnstructGridModel* model = open(first);
    open(write("other.frd", 1));
    Parts::instance()->setCurrentIndex(UNDEFINED_SIZE_T);
    ug::Error error;
    EXPECT_TRUE(models->reopen(0ul, write("second.frd", 2), &error));
    EXPECT_EQ(models->get(0), model);
    EXPECT_EQ(models->count(), 2u);
    EXPECT_EQ(models->currentIndex(), 1u);
    EXPECT_EQ(Parts::instance()->currentIndex(), UNDEFINED_SIZE_T);
    EXPECT_EQ(model->dataSource()->stateCount(), 2u);
    EXPECT_EQ(models->info(0ul).filename(), path("second.frd"));

    // The earlier data source stays listed under its name.
    remove("first.frd");
    EXPECT_TRUE(models->reopen(1, first, &error));
    EXPECT_EQ(models->info(1).filename(), first);
}

TEST_F(ModelLoadingTest, AnAbandonedDataSourceGoesWhenAnotherModelOnItIsClosed) {
    const Str first = write("first.frd", 1);
    open(first);
    open(first);
    ug::Error error;
    EXPECT_TRUE(models->reopen(0ul, write("second.frd", 1), &error));
    remove("first.frd");
    models->close(1);
    EXPECT_FALSE(isListed(first));
}

TEST_F(ModelLoadingTest, ReopenOfTheModelsOwnFileReadsNothingAndStartsAnew) {
    const Str file = write("a.frd", 3);
    ug::UnstructGridModel* model = open(file);
    PtrRef<ug::DataSource> source = model->dataSource();
    const int firstState = model->currentStateId();
    const int defaultScalar = model->modelSpec().fringesResultId();
    model->modelSpec().setStateId(3);
    model->modelSpec().setFringesResultId(-1);
    remove("a.frd");
    ug::Error error;
    EXPECT_TRUE(models->reopen(model, file, &error));
    EXPECT_EQ(model->dataSource(), source.get());
    EXPECT_EQ(model->currentStateId(), firstState);
    EXPECT_EQ(model->modelSpec().fringesResultId(), defaultScalar);
    EXPECT_NE(defaultScalar, -1);
}

TEST_F(ModelLoadingTest, ReopenHasNoPassword) {
    open(write("a.frd", 1));
    const Str file = writeCases("b.ztfx", "secret");
    ug::Error error;
    EXPECT_FALSE(models->reopen(0ul, file, &error));
    EXPECT_EQ(error.message(), file + ": the file is protected: a password is needed");
}

TEST_F(ModelLoadingTest, ARefusedReopenClearsTheSpecAndKeepsTheDataSource) {
    ug::UnstructGridModel* model = open(write("a.frd", 2));
    ug::DataSource* source = model->dataSource();
    ug::Error error;
    EXPECT_FALSE(models->reopen(0ul, path("missing.frd"), &error));
    EXPECT_FALSE(error.isEmpty());
    EXPECT_EQ(model->dataSource(), source);
    EXPECT_EQ(model->currentStateId(), -1);
    EXPECT_EQ(model->modelSpec().fringesResultId(), -1);
    EXPECT_EQ(models->count(), 1u);
}

TEST_F(ModelLoadingTest, AReopenWithoutStatesTakesTheDataSourceAway) {
    ug::UnstructGridModel* model = open(write("a.frd", 1));
    ug::Error error;
    EXPECT_FALSE(models->reopen(model, write("mesh.frd", 0), &error));
    EXPECT_EQ(logs.take(), std::vector<LogMessage>{noStates});
    EXPECT_TRUE(error.isEmpty());
    EXPECT_EQ(model->dataSource(), nullptr);
    EXPECT_EQ(model->currentStateId(), -1);
    EXPECT_EQ(models->count(), 1u);
}

TEST_F(ModelLoadingTest, ASecondaryFileNeedsACurrentModel) {
    ug::Error error;
    EXPECT_EQ(asserts.takeUntil(1, [&] { models->openSecondary("a.frd", &error); }),
              (std::vector<FailedAssert>{failed(inside, "model != __null")}));
}

TEST_F(ModelLoadingTest, ASecondaryFileNeedsAModelFromTheImporter) {
    ug::Error error;
    PtrRef<ug::UnstructGridModel> inMemory = orvtest::modelOn(orvtest::memorySource({}, {{1, "state"}}).get(), 1);
    PtrRef<ug::UnstructGridModel> withoutSource = orvtest::modelOn(nullptr, -1);
    for (ug::UnstructGridModel* model : {inMemory.get(), withoutSource.get()}) {
        models->add(model);
        EXPECT_FALSE(models->openSecondary("a.frd", &error));
        EXPECT_EQ(logs.take(), std::vector<LogMessage>{notCae});
        EXPECT_TRUE(error.isEmpty());
    }
}

/// Takes any further file, and tells which.
class TakingSource : public imp::cae::DataSourceCae {
public:
    TakingSource() : DataSourceCae(1) {}

    bool openSecondaryFile(const Str& filename, ug::Error* error) override {
        taken.push_back(filename);
        return !ug::fail(error, "seen");
    }

    std::vector<Str> taken;
};

TEST_F(ModelLoadingTest, ASecondaryFileGoesToTheImporterAndChangesNothingElse) {
    PtrRef<TakingSource> source = new TakingSource;
    PtrRef<ug::UnstructGridModel> model = orvtest::modelOn(source.get(), 7);
    models->add(model.get());
    const Str file = path("more.frd");
    ug::Error error;
    EXPECT_TRUE(models->openSecondary(file, &error));
    EXPECT_EQ(source->taken, std::vector<Str>{file});
    EXPECT_EQ(error.message(), "seen");
    EXPECT_EQ(model->currentStateId(), 7);
    EXPECT_EQ(models->count(), 1u);
    EXPECT_FALSE(isListed(file));
}

TEST_F(ModelLoadingTest, ASecondaryFileThatIsRefusedIsToldByTheImporter) {
    ug::UnstructGridModel* model = open(write("a.frd", 2));
    model->modelSpec().setStateId(2);
    const Str file = folder.write("more.frd", "something else\n");
    PtrRef<imp::cae::DataSourceCae> twin = new imp::cae::DataSourceCae(1);
    ug::Error expected, error;
    ASSERT_TRUE(twin->openFiles({path("a.frd")}, &expected));
    ASSERT_FALSE(twin->openSecondaryFile(file, &expected));
    EXPECT_FALSE(models->openSecondary(file, &error));
    EXPECT_EQ(error.message(), expected.message());
    EXPECT_EQ(model->currentStateId(), 2);
    EXPECT_EQ(model->dataSource()->stateCount(), 2u);
}

TEST_F(ModelLoadingTest, ASecondaryFileBringsItsStatesIntoTheModel) {
    ug::UnstructGridModel* model = open(write("a.frd", 2));
    model->modelSpec().setStateId(2);
    ug::Error error;
    ASSERT_TRUE(models->openSecondary(write("more.frd", 3), &error)) << error.message();
    EXPECT_EQ(model->currentStateId(), 2);
    EXPECT_EQ(models->count(), 1u);
    const std::vector<ug::StateInfo> states = model->dataSource()->directory()->stateInfos();
    ASSERT_EQ(states.size(), 5u);
    EXPECT_EQ(states[4].id(), 5);

    // The third state of the second file has 3 everywhere.
    ug::ResultsQuery query(model->dataSource());
    const std::vector<ug::ResultsQueryItem> items = {{0, 1}};
    std::vector<ug::ResultsQueryResult> results;
    ASSERT_TRUE(query.scalars(model->modelSpec().fringesResultId(), 5, 0, &items, &results));
    EXPECT_EQ(results[0].averageSubItemScalar(), 3.0);
}

// The older format.

TEST_F(ModelLoadingTest, TheOlderFormatOpensInSmallAndCapitalLetters) {
    for (const char* name : {"a.ztf", "A.ZTF", "b.c.Ztf"}) {
        const Str file = folder.write(name, ztfText(2));
        ug::UnstructGridModel* model = open(file);
        ASSERT_TRUE(model) << name;
        EXPECT_TRUE(dynamic_cast<ug::DataSourceZTF*>(model->dataSource()));
        EXPECT_EQ(model->dataSource()->id(), 1);
        EXPECT_EQ(model->currentStateId(), 4);
        EXPECT_EQ(model->modelSpec().fringesResultId(), 6);
        EXPECT_EQ(models->currentInfo().filename(), file);
    }
    EXPECT_EQ(models->count(), 3u);
}

TEST_F(ModelLoadingTest, TheOlderFormatHasNoCases) {
    folder.write("a.ztf", ztfText(1));
    ug::Error error;
    EXPECT_EQ(models->open(path("a.ztf|3"), &error), nullptr);
    EXPECT_TRUE(error.message().find("no reader for the extension \"ztf|3\"", 0) != Str::npos) << error.message();
    // A file of that very name does not change it.
    folder.write("a.ztf|3", ztfText(1));
    EXPECT_EQ(models->open(path("a.ztf|3"), &error), nullptr);
}

TEST_F(ModelLoadingTest, AnOlderFileThatIsOpenIsNotReadAgain) {
    const Str file = folder.write("a.ztf", ztfText(2));
    ug::UnstructGridModel* first = open(file);
    first->modelSpec().setStateId(5);
    remove("a.ztf");
    ug::Error error;
    ug::UnstructGridModel* second = models->open(file, "ignored", &error);
    ASSERT_TRUE(second) << error.message();
    EXPECT_EQ(second->dataSource(), first->dataSource());
    EXPECT_EQ(second->currentStateId(), 4);
    ASSERT_TRUE(models->reopen(first, file, &error)) << error.message();
    EXPECT_EQ(first->currentStateId(), 4);
    EXPECT_EQ(first->modelSpec().fringesResultId(), 6);
}

TEST_F(ModelLoadingTest, OnlyTheFirstOfSeveralOlderFilesIsRead) {
    const Str file = folder.write("a.ztf", ztfText(1));
    ug::Error error;
    EXPECT_NE(models->open(std::vector<Str>{file, path("missing.ztf")}, &error), nullptr) << error.message();
}

TEST_F(ModelLoadingTest, AnOlderFileWithoutStatesIsNoModel) {
    const Str file = folder.write("a.ztf", ztfText(0));
    ug::Error error;
    EXPECT_EQ(models->open(file, &error), nullptr);
    EXPECT_EQ(logs.take(), std::vector<LogMessage>{noStates});
    EXPECT_TRUE(error.isEmpty());
    // Its source stays listed, so the file is not looked at until all are closed.
    folder.write("a.ztf", ztfText(1));
    EXPECT_EQ(models->open(file, &error), nullptr);
    EXPECT_EQ(logs.take(), std::vector<LogMessage>{noStates});
    models->closeAll();
    EXPECT_NE(open(file), nullptr);
}

TEST_F(ModelLoadingTest, ADamagedOlderFileLeavesTheCatalogueUnchanged) {
    ug::UnstructGridModel* model = open(folder.write("a.ztf", ztfText(2)));
    const std::string whole = ztfText(1);
    const Str file = path("b.ztf");
    for (std::size_t end = whole.find('\n'); end + 4 < whole.size(); end = whole.find('\n', end + 1)) {
        std::filesystem::remove(folder / "b.ztf");
        folder.write("b.ztf", whole.substr(0, end + 1));
        ug::Error error;
        EXPECT_EQ(models->open(file, &error), nullptr);
        EXPECT_TRUE(error.message().find("b.ztf, line ", 0) != Str::npos) << error.message();
        EXPECT_EQ(models->count(), 1u);
        EXPECT_EQ(models->current(), model);
    }
    ug::Error error;
    EXPECT_FALSE(models->reopen(model, file, &error));
    EXPECT_FALSE(error.isEmpty());
    EXPECT_EQ(model->dataSource()->stateCount(), 2u);
    EXPECT_EQ(model->currentStateId(), -1);
}

TEST_F(ModelLoadingTest, ASecondaryFileNeedsTheImporterNotTheOlderFormat) {
    open(folder.write("a.ztf", ztfText(1)));
    EXPECT_FALSE(models->openSecondary(write("more.frd", 1), nullptr));
    EXPECT_EQ(logs.take(), std::vector<LogMessage>{notCae});
}

} // namespace
