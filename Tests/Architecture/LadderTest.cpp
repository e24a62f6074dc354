// Keeps the ladder: what the checks find in this repository must be nothing, and what they find in small examples of
// each offence must be exactly that offence.

#include "Tests/Architecture/Ladder.h"
#include "Tests/Support/TestPaths.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

using namespace orvtest::ladder;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

const std::vector<SourceFile>& repository() {
    static const std::vector<SourceFile> files = readSources(orvtest::sourceFolder(), houseFloors());
    return files;
}

const std::set<std::string>& installed() {
    static const std::set<std::string> headers = readPublicHeaders(orvtest::sourceFolder(), houseFloors());
    return headers;
}

TEST(Ladder, TheRepositoryIsRead) {
    auto has = [](const std::string& path) {
        return std::any_of(repository().begin(), repository().end(),
                           [&](const SourceFile& file) { return file.path == path && file.text.starts_with("#"); });
    };
    EXPECT_TRUE(has("LibCore/rvfAssert.h"));
    EXPECT_TRUE(has("OrvApp/Models_p.cpp"));
    EXPECT_TRUE(has("Tests/Architecture/Ladder.cpp"));
    EXPECT_TRUE(installed().contains("LibCore/rvfAssert.h"));
    EXPECT_TRUE(installed().contains("OrvApp/OrvApp.h"));
}

TEST(Ladder, IncludesGoDown) {
    EXPECT_THAT(wrongArrows(repository(), houseFloors()), IsEmpty());
}

TEST(Ladder, ThirdPartyHeadersStayWhereTheyAreGranted) {
    EXPECT_THAT(foreignHeaders(repository(), houseFloors()), IsEmpty());
}

TEST(Ladder, QuotedIncludesStartAtTheRoot) {
    EXPECT_THAT(unrootedIncludes(repository(), houseFloors()), IsEmpty());
}

TEST(Ladder, PublicHeadersStandWithoutPrivateOnes) {
    EXPECT_THAT(leakedPrivateHeaders(repository(), installed()), IsEmpty());
}

TEST(Ladder, UmbrellasBringInAllPublicHeaders) {
    EXPECT_THAT(headersOutsideUmbrella(repository(), installed()), IsEmpty());
}

TEST(Ladder, FilesAreShort) {
    EXPECT_THAT(longFiles(repository()), IsEmpty());
}

TEST(Ladder, SourcesAreAscii) {
    EXPECT_THAT(nonAsciiLines(repository()), IsEmpty());
}

TEST(LadderChecks, IncludeLinesAreFound) {
    const SourceFile file{"LibIo/a.cpp", "#include \"LibIo/a.h\"\n"
                                         "/// #include \"LibIo/comment.h\"\n"
                                         "  #  include <vector> // why\n"
                                         "#define INCLUDE \"LibIo/macro.h\"\n"
                                         "#include MACRO\n"
                                         "#include <sys/stat.h>"};
    EXPECT_THAT(includesOf(file), ElementsAre(Include{1, true, "LibIo/a.h"}, Include{3, false, "vector"},
                                              Include{6, false, "sys/stat.h"}));
}

TEST(LadderChecks, UpwardAndSidewaysIncludesAreOffences) {
    const std::vector<SourceFile> files = {
        {"LibIo/a.cpp", "#include \"LibIo/a.h\"\n#include \"LibCore/b.h\"\n#include \"OrvApp/Models.h\"\n"},
        {"OrvPlot2d/a.cpp", "#include \"OrvImportCae/DataSourceCae.h\"\n"},
        {"OrvApp/a.cpp", "#include <OrvApp/b.h>\n#include <Tools/c.h>\n"},
        {"Tools/main.cpp", "#include \"OrvApp/OrvApp.h\"\n#include \"Examples/e.h\"\n"},
        {"Tests/LibCore/aTest.cpp", "#include \"OrvApp/Models.h\"\n"},
    };
    EXPECT_THAT(
        wrongArrows(files, houseFloors()),
        ElementsAre("LibIo/a.cpp:3 includes OrvApp/Models.h, which goes from floor 2 to floor 8",
                    "OrvPlot2d/a.cpp:1 includes OrvImportCae/DataSourceCae.h, which goes from floor 7 to floor 7",
                    "OrvApp/a.cpp:2 includes Tools/c.h, which goes from floor 8 to floor 9",
                    "Tools/main.cpp:2 includes Examples/e.h, which goes from floor 9 to floor 9"));
}

TEST(LadderChecks, ThirdPartyHeadersAreOffencesWhereNotGranted) {
    const std::vector<SourceFile> files = {
        {"OrvUnstructGrid/zip.cpp", "#include <zip.h>\n#include <pugixml.hpp>\n#include <png.h>\n"},
        {"OrvApp/a.cpp", "#include <vector>\n#include <sys/stat.h>\n#include <unistd.h>\n#include <zip.h>\n"},
        {"Tools/main.cpp", "#include <CLI/CLI.hpp>\n#include <pybind11/pybind11.h>\n"},
        {"Tests/OrvApp/aTest.cpp", "#include <gtest/gtest.h>\n"},
    };
    EXPECT_THAT(foreignHeaders(files, houseFloors()),
                ElementsAre("OrvUnstructGrid/zip.cpp:3 includes png.h, which OrvUnstructGrid may not use",
                            "OrvApp/a.cpp:4 includes zip.h, which OrvApp may not use",
                            "Tools/main.cpp:2 includes pybind11/pybind11.h, which Tools may not use"));
}

TEST(LadderChecks, OnlyRootedIncludesOfFloorsCount) {
    const std::vector<SourceFile> files = {
        {"LibIo/a.h", ""},
        {"LibIo/a.cpp", "#include \"a.h\"\n#include \"LibIo/a.h\"\n#include \"../LibIo/a.h\"\n"
                        "#include \"LibIo/gone.h\"\n#include \"Tests/Support/b.h\"\n"},
        {"Tests/Support/b.h", "#include \"a.h\"\n"},
    };
    EXPECT_THAT(unrootedIncludes(files, houseFloors()),
                ElementsAre("LibIo/a.cpp:1 includes a.h, which is no file of a floor",
                            "LibIo/a.cpp:3 includes ../LibIo/a.h, which is no file of a floor",
                            "LibIo/a.cpp:4 includes LibIo/gone.h, which is no file of a floor",
                            "LibIo/a.cpp:5 includes Tests/Support/b.h, which is no file of a floor"));
}

TEST(LadderChecks, PublicHeadersAreThoseThatAreInstalled) {
    const std::string cmake = "orv_add_floor(LibIo\n  SOURCES\n    a.cpp\n  HEADERS\n    a.h\n    b.h\n"
                              "  PRIVATE_LIBRARIES\n    z.h\n)\n";
    EXPECT_THAT(publicHeaders("LibIo", cmake), ElementsAre("LibIo/a.h", "LibIo/b.h"));
    EXPECT_THAT(publicHeaders("LibIo", "orv_add_floor(LibIo HEADERS a.h)\nset(x y.h)"), ElementsAre("LibIo/a.h"));
    EXPECT_THAT(publicHeaders("LibIo", "orv_add_floor(LibIo\n  SOURCES\n  HEADERS\n)\n"), IsEmpty());
}

TEST(LadderChecks, PublicHeadersMayNotIncludePrivateOnes) {
    const std::vector<SourceFile> files = {
        {"OrvApp/Models.h", "#include \"OrvApp/Models_p.h\"\n#include \"OrvApp/States.h\"\n#include <vector>\n"
                            "#include \"OrvCore/Inner.h\"\n"},
        {"OrvApp/Models.cpp", "#include \"OrvApp/Models_p.h\"\n"},
        {"OrvApp/States_p.h", "#include \"OrvApp/Models_p.h\"\n"},
        {"OrvApp/States.h", ""},
        {"OrvApp/Parts_p.h", ""},
    };
    EXPECT_THAT(leakedPrivateHeaders(files, {"OrvApp/Models.h", "OrvApp/States.h", "OrvApp/Parts_p.h"}),
                ElementsAre("OrvApp/Models.h:1 includes OrvApp/Models_p.h, which is not installed",
                            "OrvApp/Models.h:4 includes OrvCore/Inner.h, which is not installed",
                            "OrvApp/Parts_p.h is installed, but private by its name"));
}

TEST(LadderChecks, UmbrellaMustReachEachPublicHeader) {
    const std::vector<SourceFile> files = {
        {"LibIo/LibIo.h", "#include \"LibIo/family.h\"\n#include \"LibCore/other.h\"\n"},
        {"LibIo/family.h", "#include \"LibIo/familyInt.h\"\n"},
        {"LibIo/familyInt.h", "#include \"LibIo/family.h\"\n"},
        {"LibIo/forgotten.h", ""},
        {"LibIo/inner.h", ""},
        {"LibIo/family.cpp", "#include \"LibIo/forgotten.h\"\n"},
        {"LibCore/other.h", ""},
    };
    const std::set<std::string> installed = {"LibIo/LibIo.h", "LibIo/family.h", "LibIo/familyInt.h",
                                             "LibIo/forgotten.h", "LibCore/other.h"};
    EXPECT_THAT(headersOutsideUmbrella(files, installed),
                ElementsAre("LibCore/other.h is not brought in by LibCore/LibCore.h",
                            "LibIo/forgotten.h is not brought in by LibIo/LibIo.h"));
}

TEST(LadderChecks, EightHundredLinesAreTheLimit) {
    const std::vector<SourceFile> files = {
        {"LibIo/a.cpp", std::string(800, '\n')},
        {"LibIo/b.cpp", std::string(801, '\n')},
    };
    EXPECT_THAT(longFiles(files), ElementsAre("LibIo/b.cpp has 801 lines"));
}

TEST(LadderChecks, OnlyTestsMayHoldOtherThanAscii) {
    const std::vector<SourceFile> files = {
        {"LibIo/a.cpp", "plain ~\n"},
        {"LibIo/b.cpp", "// \n// caf\xc3\xa9\n"},
        {"Tests/LibIo/bTest.cpp", "\xc3\xa9\n"},
        {"Tools/c.cpp", "\x80"},
    };
    EXPECT_THAT(nonAsciiLines(files), ElementsAre("LibIo/b.cpp:2 is not ASCII", "Tools/c.cpp:1 is not ASCII"));
}

} // namespace
