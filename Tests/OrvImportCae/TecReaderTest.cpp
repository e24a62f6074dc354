// Files written by hand: what becomes of them, and what is told of damage. Those of other programs are compared with
// another parser among the files of VTK's formats.

#include "OrvImportCae/TecReader.h"

#include "OrvImportCae/DataSourceCae.h"
#include "OrvUnstructGrid/DataResultGroup.h"
#include "OrvUnstructGrid/DataStateSpec.h"
#include "Tests/OrvImportCae/FrdSamples.h"
#include "Tests/Support/ScratchFolder.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

using namespace orv;
using orvtest::ScratchFolder;

namespace {

using Values = std::vector<double>;
using Texts = std::vector<std::string>;

const std::string VARIABLES = "VARIABLES = \"X\" \"Y\" \"p\"\n";
const std::string ZONE = "ZONE T=\"a\", N=3, E=1, F=FEPOINT, ET=TRIANGLE\n";
const std::string NODES = "0 0 1\n1 0 2\n0 1 3\n";
const std::string FILE_TEXT = VARIABLES + ZONE + NODES + "1 2 3\n";

/// A file with that text, open.
struct Opened : ScratchFolder {
    explicit Opened(const std::string& text) : source(new imp::cae::DataSourceCae(1)) {
        ug::Error error;
        EXPECT_TRUE(source->openFiles({write("x.tec", text)}, &error)) << error.message();
    }

    const ug::DataPart& part(std::size_t state, std::size_t index) const {
        return *source->state(state)->geometry(0)->part(index);
    }

    Texts partNames() const {
        Texts names;
        for (const ug::PartInfo& info : source->directory()->partInfos(0)) {
            names.push_back(info.name().toStdString());
        }
        return names;
    }

    Values times() const {
        Values times;
        for (std::size_t s = 0; s < source->stateCount(); ++s) {
            times.push_back(source->directory()->stateInfo(s).referenceValue());
        }
        return times;
    }

    // Of the first scalar.
    Values values(std::size_t state, std::size_t partIndex) {
        const ug::ResultInfo info = source->directory()->resultInfos(ug::SCALAR).at(0);
        ug::DataStateSpec spec;
        spec.setResultIds({info});
        ug::Error error;
        EXPECT_TRUE(source->loadDataState(source->state(state)->id(), spec, &error)) << error.message();
        const std::span<const double> span =
            source->state(state)->results(source->state(state)->geometry(0))->find(info)->values(partIndex)->span();
        return Values(span.begin(), span.end());
    }

    PtrRef<imp::cae::DataSourceCae> source;
};

/// Why a file with that text is refused, or why what is in it cannot be read.
std::string whyNot(const std::string& text) {
    const ScratchFolder folder;
    const PtrRef<imp::cae::DataSourceCae> source(new imp::cae::DataSourceCae(1));
    ug::Error error;
    if (source->openFiles({folder.write("x.tec", text)}, &error) &&
        source->state(0)->geometry(0)->part(0)->read(&error)) {
        ug::DataStateSpec spec;
        spec.setResultIds(source->directory()->resultInfos(ug::SCALAR));
        source->loadDataState(1, spec, &error);
    }
    return without(folder, error.message());
}

std::string nodesOf(const ug::DataPart& part, std::size_t element) {
    std::string text = ug::elementTypeInfo(part.elements()->elementType(element)).name;
    for (const std::uint32_t node : part.elements()->nodeIndexes(element)) {
        text += " " + std::to_string(node);
    }
    return text;
}

TEST(TecReader, ZonesArePartsOfOneStateWithoutTimes) {
    Opened file("TITLE = \"two\"\n" + FILE_TEXT + "ZONE I=2, J=1\n5 5 7\n6 5 8\n" + ZONE + NODES + "3 2 1\n");
    EXPECT_EQ(file.partNames(), (Texts{"a", "Zone 2", "a (2)"}));
    EXPECT_EQ(file.times(), Values{UNDEFINED_DOUBLE});
    EXPECT_EQ(nodesOf(file.part(0, 0), 0), "triangle 0 1 2");
    EXPECT_EQ(nodesOf(file.part(0, 1), 0), "beam 0 1");
    EXPECT_EQ(nodesOf(file.part(0, 2), 0), "triangle 2 1 0");
    EXPECT_EQ(file.values(0, 1), (Values{7, 8}));
}

TEST(TecReader, TimesAreStatesInTheirOrderAndStrandsAreParts) {
    const std::string zone = "ZONE I=1 T=";
    Opened file(VARIABLES + zone + "\"t 2\" SOLUTIONTIME=2 STRANDID=5\n0 0 1\n" + zone +
                "\"u 2\" SOLUTIONTIME=2 STRANDID=6\n0 0 2\n" + zone + "\"u 1\" SOLUTIONTIME=1 STRANDID=6\n0 0 3\n" +
                zone + "\"still\"\n9 9 4\n");
    EXPECT_EQ(file.times(), (Values{1, 2}));
    EXPECT_EQ(file.partNames(), (Texts{"t 2", "u 2", "still"}));
    EXPECT_EQ(file.part(0, 0).nodes()->nodeCount(), 0u);
    EXPECT_EQ(file.values(0, 1), Values{3});
    EXPECT_EQ(file.values(0, 2), Values{4});
    EXPECT_EQ(file.values(1, 0), Values{1});
    EXPECT_EQ(file.values(1, 1), Values{2});
}

TEST(TecReader, WithoutStrandsTheZonesOfATimeAreCounted) {
    const std::string zone = "ZONE I=1 STRANDID=0 SOLUTIONTIME=";
    Opened file(VARIABLES + zone + "1\n0 0 1\n" + zone + "1\n0 0 2\n" + zone + "3\n0 0 3\n" + zone + "3\n0 0 4\n");
    EXPECT_EQ(file.times(), (Values{1, 3}));
    EXPECT_EQ(file.partNames(), (Texts{"Zone 1", "Zone 2"}));
    EXPECT_EQ(file.values(1, 0), Values{3});
    EXPECT_EQ(file.values(1, 1), Values{4});
}

TEST(TecReader, AMeshThatAllTimesShareIsThereOnce) {
    Opened file(VARIABLES +
                "ZONE I=2 SOLUTIONTIME=0\n0 0 1\n1 0 2\nZONE I=2 SOLUTIONTIME=1 VARSHARELIST=([1,2]=1)\n7 8\n");
    EXPECT_EQ(file.source->state(0)->geometry(0), file.source->state(1)->geometry(0));
    EXPECT_EQ(file.values(1, 0), (Values{7, 8}));
    Opened moving(VARIABLES +
                  "ZONE I=2 SOLUTIONTIME=0\n0 0 1\n1 0 2\nZONE I=2 SOLUTIONTIME=1 VARSHARELIST=([1]=1)\n5 7\n5 8\n");
    EXPECT_NE(moving.source->state(0)->geometry(0), moving.source->state(1)->geometry(0));
    EXPECT_EQ(moving.part(1, 0).nodes()->coordinates()[1], 5);
}

// Any pair of edges on a side may collapse, any side to the tip of a pyramid. The third brick is inside out: its wedge
// is turned.
TEST(TecReader, BricksWithCollapsedEdgesAreWhatIsLeft) {
    const std::string head =
        "VARIABLES = X Y Z\nZONE N=8, E=1, ZONETYPE=FEBRICK, DATAPACKING=POINT\n0 0 0\n1 0 0\n1 1 0\n0 1 0\n"
        "0 0 1\n1 0 1\n1 1 1\n0 1 1\n";
    const std::pair<const char*, const char*> CELLS[] = {
        {"1 2 3 4 5 6 7 8", "hexahedron 0 1 2 3 4 5 6 7"}, {"1 2 3 3 5 6 7 7", "wedge 0 1 2 4 5 6"},
        {"1 2 5 4 3 3 6 6", "wedge 1 2 0 4 5 3"},          {"1 2 3 4 5 5 5 5", "pyramid 0 1 2 3 4"},
        {"1 1 1 1 5 6 7 8", "pyramid 4 7 6 5 0"},          {"1 2 3 3 5 5 5 5", "tetrahedron 0 1 2 4"},
        {"1 1 3 4 5 6 7 8", "hexahedron 0 0 2 3 4 5 6 7"},
    };
    for (const auto& [cell, expected] : CELLS) {
        Opened file(head + cell + "\n");
        EXPECT_EQ(nodesOf(file.part(0, 0), 0), expected) << cell;
    }
}

TEST(TecReader, PackingIsOfPointsUnlessThereAreValuesOfCells) {
    Opened points(VARIABLES + "ZONE I=2\n0 0 1\n1 0 2\n");
    EXPECT_EQ(points.values(0, 0), (Values{1, 2}));
    Opened blocks(VARIABLES + "ZONE I=2 VARLOCATION=([3]=CELLCENTERED)\n0 1\n0 0\n7\n");
    EXPECT_EQ(blocks.values(0, 0), Values{7});
}

TEST(TecReader, NumbersMayBeRepeatedAcrossRows) {
    Opened file(VARIABLES + "ZONE I=3\n0 0 2*1 0 3*2 1 # and so on\n");
    EXPECT_EQ(file.part(0, 0).nodes()->coordinates()[3], 1);
    EXPECT_EQ(file.values(0, 0), (Values{1, 2, 1}));
}

TEST(TecReader, OtherRecordsAndEntriesArePassedOver) {
    Opened file("# comment\nFILETYPE = FULL\n" + VARIABLES +
                "VARAUXDATA 1 Unit=\"m\"\nDATASETAUXDATA a = \"ZONE\"\nTEXT X=1\nT=\"ZONE\"\nzone t='a' i=1 c=RED "
                "DT=(SINGLE, SINGLE SINGLE) PARENTZONE=1\nFACENEIGHBORMODE=[LOCALONETOONE] AUXDATA b = \"1\"\nnan 0 "
                "1.5D-1\nCUSTOMLABELS \"a\" \"b\"\n");
    EXPECT_EQ(file.values(0, 0), Values{0.15});
}

TEST(TecReader, NamesOfAxes) {
    for (const char* names : {"X Y p", "x, y, p", "\"X [m]\" \"Y [m]\" \"p\"", "'CoordinateX' 'CoordinateY' p"}) {
        Opened file(std::string("VARIABLES = ") + names + "\nZONE I=1\n1 2 3\n");
        EXPECT_EQ(file.part(0, 0).nodes()->coordinates()[1], 2) << names;
        EXPECT_EQ(file.values(0, 0), Values{3}) << names;
    }
}

TEST(TecReader, WhatIsNoTecplotFileIsToldSo) {
    const std::string no = "x.tec is no Tecplot file: expected TITLE, VARIABLES or ZONE at its begin";
    for (const char* text : {"", "\n\n", "1 2 3\n", "STEP 1\n", "<?xml?>", "1PC",
                             "\x7f"
                             "ELF",
                             "TITLES = \"a\""}) {
        EXPECT_EQ(whyNot(text), no) << text;
    }
    EXPECT_EQ(whyNot("#!TDV112 etc"), "x.tec is a binary Tecplot file, expected one in text");
    EXPECT_EQ(whyNot("TITLE = \"a\"\n" + VARIABLES), "x.tec, line 3: the file ends, expected a ZONE");
}

struct Damage {
    std::string text;
    std::string expected; ///< Behind the file's name.
};

std::string zone(const std::string& header, const std::string& data = "0 0 1\n") {
    return VARIABLES + "ZONE " + header + "\n" + data;
}

const Damage DAMAGES[] = {
    {"TITLE \"a\"\n", "line 1: expected '=', found \"\"a\"\""},
    {"TITLE = \"a\n", "line 1: this text has no closing quote"},
    {"ZONE I=1\n", "line 1: expected VARIABLES before the first ZONE"},
    {"VARIABLES = \nZONE I=1\n", "line 1: there are no names behind VARIABLES"},
    {VARIABLES + VARIABLES, "line 2: there are VARIABLES twice"},
    {zone("I=1") + "STEP 1\n", "line 4: expected a record of a Tecplot file, such as ZONE, found \"STEP\""},
    {"VARIABLES = X p\nZONE I=1\n0 1\n", ": none of its variables is called Y, so there are no coordinates"},
    {zone("I=1 J"), "line 3: expected '=' behind a name in a ZONE, found \"0\""},
    {zone("I=0"), "line 2: expected a whole number from 1 to 4294967295, found \"0\""},
    {zone("I=-4"), "line 2: expected a whole number from 1 to 4294967295, found \"-4\""},
    {zone("I=x"), "line 2: expected a whole number, found \"x\""},
    {zone("I=100000 J=100000"), "line 2: the zone has more than 4294967295 nodes"},
    {zone("I=1000000 J=1000"), "line 2: the zone has more nodes or elements than a file of this size can have"},
    {zone("T=a"), "line 2: the zone does not tell its size"},
    {zone("N=1 ZONETYPE=FEBRICK"), "line 2: the zone does not tell its numbers of nodes and elements"},
    {zone("N=1 E=1 ZONETYPE=FEPOLYHEDRON"),
     "line 2: the zone has cells of the type \"FEPOLYHEDRON\", which are not read"},
    {zone("N=1 E=1 F=FEPOINT"), "line 2: the zone has cells of the type \"\", which are not read"},
    {zone("I=1 ZONETYPE=ROUND"), "line 2: the zone is of the type \"ROUND\", which is not known"},
    {zone("I=1 F=HEAP"), "line 2: the zone has a packing that is not known"},
    {zone("I=1 D=(1,2)"), "line 2: lists shared as D are not read"},
    {zone("I=1 VARLOCATION=([3]=EDGE)"), "line 2: the zone has values at \"EDGE\", expected NODAL or CELLCENTERED"},
    {zone("I=1 F=POINT VARLOCATION=([3]=CELLCENTERED)"),
     "line 2: the zone has cell-centered values, and is not of blocks"},
    {zone("I=1 VARLOCATION=([1]=CELLCENTERED)", "0 0 1"), "line 2: the zone has coordinates of cells"},
    {zone("I=1 VARLOCATION=([4]=NODAL)"), "line 2: expected numbers of variables from 1 to 3, found \"4\""},
    {zone("I=1 VARLOCATION=([3-2]=NODAL)"), "line 2: expected numbers of variables from 1 to 3, found \"3-2\""},
    {zone("I=1 VARLOCATION=(4*NODAL)"), "line 2: this list is longer than that of the variables"},
    {zone("I=1 VARLOCATION=([1-2]=NODAL [2-3]=NODAL)"), "line 2: this list is longer than that of the variables"},
    {zone("I=1 VARSHARELIST=(1)"), "line 2: expected numbers of variables in brackets, found \"1)\""},
    {zone("I=1 VARSHARELIST=([3])"), "line 2: the zone shares variables of zone \"\", which is not before it"},
    {zone("I=1 VARSHARELIST=([3]=1)"), "line 2: the zone shares variables of zone \"1\", which is not before it"},
    {zone("I=1") + "ZONE I=2 VARSHARELIST=([3]=1)\n0 0\n1 0\n",
     "line 4: the zone shares values of zone 1, which has not as many"},
    {zone("I=1") + "ZONE N=1 E=1 F=FEPOINT ET=LINESEG CONNECTIVITYSHAREZONE=2\n0 0 1\n",
     "line 4: the zone shares the elements of zone 2, which is not before it"},
    {zone("I=1") + "ZONE N=1 E=1 F=FEPOINT ET=LINESEG CONNECTIVITYSHAREZONE=1\n0 0 1\n",
     "line 4: the zone shares the elements of zone 1, which are others"},
    {zone("I=2"), "line 4: the file ends, expected values"},
    {zone("I=1", "0 0 x\n"), "line 3: expected values, found \"x\""},
    {zone("I=1", "0 0 4*1\n"), "line 3: this number is repeated more often than there are values"},
    {zone("I=1", "0 0 0*1\n"), "line 3: expected values, found \"0*1\""},
    {zone("I=1", "0 0 1 5\n"), "line 3: expected a record of a Tecplot file, such as ZONE, found \"5\""},
    {zone("I=1", "0 0 1..5\n"), "line 3: expected a number, found \"1..5\""},
    {VARIABLES + ZONE + NODES + "1 2 4\n", "line 6: expected the number of a node from 1 to 3, found \"4\""},
    {VARIABLES + ZONE + NODES + "0 1 2\n", "line 6: expected the number of a node from 1 to 3, found \"0\""},
    {VARIABLES + ZONE + NODES + "1 2 1.5\n", "line 6: expected the number of a node from 1 to 3, found \"1.5\""},
    {VARIABLES + ZONE + NODES + "1 2\n", "line 7: the file ends, expected nodes of elements"},
};

TEST(TecReader, DamageIsToldWithItsLineAndWhatWasExpected) {
    for (const Damage& damage : DAMAGES) {
        const bool hasLine = damage.expected.starts_with("line");
        EXPECT_EQ(whyNot(damage.text), (hasLine ? "x.tec, " : "x.tec") + damage.expected) << damage.text;
    }
}

TEST(TecReader, MoreZonesAndVariablesThanTheFileIsLargeAreRefused) {
    std::string text = "VARIABLES = X Y";
    for (int i = 0; i < 2000; ++i) {
        text += " a";
    }
    text += "\nZONE I=1 DATAPACKING=POINT\n2002*0\n";
    EXPECT_EQ(whyNot(text), "");
    for (int i = 0; i < 10; ++i) {
        text += "ZONE I=1 VARSHARELIST=([1-2002]=1)\n";
    }
    // The file has 4,401 bytes, which with 1,000 more are enough for 2,002 variables twice.
    EXPECT_EQ(whyNot(text), "x.tec, line 5: there are more zones and variables than a file of this size can have");
}

TEST(TecReader, AFileThatChangesIsNotReadAnyMore) {
    Opened file(FILE_TEXT);
    file.write("x.tec", FILE_TEXT + "\n");
    ug::Error error;
    EXPECT_FALSE(file.part(0, 0).read(&error));
    EXPECT_NE(error.message().toStdString().find("x.tec"), std::string::npos);
}

} // namespace
