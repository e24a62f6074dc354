#include "OrvUnstructGrid/DataSourceZTF.h"

#include "OrvCore/Defines.h"
#include "OrvUnstructGrid/DataStateSpec.h"
#include "OrvUnstructGrid/Error.h"
#include "Tests/Support/AssertRecorder.h"
#include "Tests/Support/DescribeSource.h"
#include "Tests/Support/ScratchFolder.h"
#include "Tests/Support/TestPaths.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <limits>
#include <sstream>

#include <sys/stat.h>

using namespace orv::ug;
using orv::PtrRef;
using orv::Str;
using orvtest::described;
using orvtest::ScratchFolder;

namespace {

constexpr double U = orv::UNDEFINED_DOUBLE;
using Numbers = std::vector<double>;

/// The example of the documentation.
std::string exampleText() {
    const std::string text = orvtest::readWholeFile(orvtest::sourceFolder() + "/Docs/formats.md");
    const std::string begin = "```ztf\n";
    const std::size_t at = text.find(begin) + begin.size();
    return text.substr(at, text.find("```", at) - at);
}

std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    return lines;
}

std::string joined(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines) {
        text += line + "\n";
    }
    return text;
}

std::string replaced(std::string text, const std::string& what, const std::string& with) {
    const std::size_t at = text.find(what);
    EXPECT_NE(at, std::string::npos) << what;
    return text.replace(at, what.size(), with);
}

class DataSourceZTFTest : public testing::Test {
protected:
    /// Null, and a message, when the file does not open.
    PtrRef<DataSourceZTF> open(const std::string& content) {
        writeAnew(content);
        PtrRef<DataSourceZTF> source(new DataSourceZTF(1));
        Error error;
        const bool isOpen = source->openFile(folder / "a.ztf", &error);
        message = withoutFolder(error.message());
        EXPECT_EQ(isOpen, message.empty());
        if (!isOpen) {
            EXPECT_EQ(source->stateCount(), 0u);
            EXPECT_EQ(source->directory()->geometryCountPerState(), 0u);
            EXPECT_TRUE(source->directory()->scalarResultInfos().empty());
            return {};
        }
        return source;
    }

    // Some file systems wait for the disk when a file is written over, and these tests write thousands.
    void writeAnew(const std::string& content) const {
        std::filesystem::remove(folder / "a.ztf");
        folder.write("a.ztf", content);
    }

    std::string withoutFolder(Str text) const {
        text.replace(folder.path() + "/", "");
        return text.toStdString();
    }

    /// Why it does not open, behind the file's name.
    std::string why(const std::string& content) {
        EXPECT_FALSE(open(content));
        EXPECT_TRUE(message.starts_with("a.ztf, ")) << message;
        return message.substr(std::min<std::size_t>(7, message.size()));
    }

    /// Empty, and a message, when it cannot be loaded.
    Numbers load(DataSourceZTF* source, int stateId, const ResultInfo& info, std::size_t part = 0) {
        DataStateSpec spec;
        spec.setResultIds({info});
        Error error;
        const bool isLoaded = source->loadDataState(stateId, spec, &error);
        message = withoutFolder(error.message());
        DataState* state = source->state(source->stateIndex(stateId));
        const DataResult* result = state->results(state->geometry(0))->find(info);
        EXPECT_EQ(result != nullptr, isLoaded);
        const std::span<const double> span = isLoaded ? result->values(part)->span() : std::span<const double>();
        return Numbers(span.begin(), span.end());
    }

    ScratchFolder folder;
    std::string message;
};

TEST_F(DataSourceZTFTest, OpensTheExampleOfTheDocumentation) {
    const PtrRef<DataSourceZTF> source = open(exampleText());
    ASSERT_TRUE(source) << message;
    const DataSourceDirectory& directory = *source->directory();
    EXPECT_EQ(directory.simulationInfo().filename(), Str(folder / "a.ztf"));
    EXPECT_EQ(directory.simulationInfo().title(), Str(L"A plate, \u00DCbung 1"));
    ASSERT_EQ(directory.geometryCountPerState(), 1u);
    ASSERT_EQ(directory.partInfos(0).size(), 2u);
    EXPECT_EQ(directory.partInfos(0)[1].name(), "Spring");
    ASSERT_EQ(directory.stateCount(), 2u);
    EXPECT_EQ(directory.stateInfo(1).name(), "Hot");
    EXPECT_EQ(directory.stateInfo(1).referenceType(), StateInfo::TIME);
    EXPECT_EQ(directory.stateInfo(1).referenceValue(), 150.0);
    ASSERT_EQ(directory.stateGroupInfos().size(), 1u);
    EXPECT_TRUE(directory.stateGroupInfos()[0].hasStateId(2));
    const ResultInfo mises = directory.findScalarResultInfo(2);
    EXPECT_EQ(mises.name(), "Mises");
    EXPECT_EQ(mises.resultMapping(), PER_ELEMENT);
    EXPECT_EQ(mises.baseResultType(), SYMMETRIC_TENSOR);
    EXPECT_EQ(mises.baseResultId(), 1);
    EXPECT_FALSE(directory.hasResult(1, mises));

    const DataGeometry* geometry = source->state(0)->geometry(0);
    EXPECT_EQ(geometry, source->state(1)->geometry(0));
    const DataPart* plate = geometry->part(0);
    EXPECT_EQ(plate->nodes()->nodeId(4), 105);
    EXPECT_EQ(plate->nodes()->node(4).y(), 0.5);
    EXPECT_EQ(plate->elements()->elementType(1), TRIANGLE);
    EXPECT_EQ(plate->elements()->elementId(1), 12);
    EXPECT_EQ(plate->elements()->elementNodes(1), (std::vector<unsigned int>{1, 4, 2}));
    EXPECT_EQ(geometry->part(1)->nodes()->nodeId(1), 2);

    const ResultInfo temperature = directory.findScalarResultInfo(1);
    EXPECT_EQ(load(source.get(), 1, temperature, 1), (Numbers{20, U}));
    // 0x1.5p+6 is 1.3125 * 64.
    EXPECT_EQ(load(source.get(), 2, temperature), (Numbers{80, 85.5, 84, 79.25, 90}));
    EXPECT_EQ(load(source.get(), 2, temperature, 1), (Numbers{U, U}));
    EXPECT_EQ(load(source.get(), 2, mises), (Numbers{U, U}));
    const Numbers stress = load(source.get(), 2, directory.findResultInfo(SYMMETRIC_TENSOR, 1));
    ASSERT_EQ(stress.size(), 12u);
    EXPECT_TRUE(std::isnan(stress[6]));
    EXPECT_EQ(stress[8], -std::numeric_limits<double>::infinity());
    EXPECT_EQ(stress[11], -0.5);
}

TEST_F(DataSourceZTFTest, OpeningReadsNoValues) {
    const PtrRef<DataSourceZTF> source = open(exampleText());
    ASSERT_TRUE(source);
    EXPECT_EQ(source->state(0)->resultByteCount() + source->state(1)->resultByteCount(), 0u);
    load(source.get(), 2, source->directory()->findScalarResultInfo(1));
    EXPECT_EQ(source->state(0)->resultByteCount(), 0u);
    // 5 nodes of the plate and 2 of the spring.
    EXPECT_EQ(source->state(1)->resultByteCount(), 7 * sizeof(double));
}

TEST_F(DataSourceZTFTest, TheRangeOfAScalarIsKnown) {
    const PtrRef<DataSourceZTF> source = open(exampleText());
    load(source.get(), 2, source->directory()->findScalarResultInfo(1));
    const DataPartScalar* part = source->state(1)->results(source->state(1)->geometry(0))->scalar(0)->part(0);
    EXPECT_EQ(part->minimum(), 79.25);
    EXPECT_EQ(part->maximum(), 90.0);
}

TEST_F(DataSourceZTFTest, TakesAnyLayout) {
    const std::string text = exampleText();
    const PtrRef<DataSourceZTF> plain = open(text);
    ASSERT_TRUE(plain);
    const std::string expected = described(plain.get());

    std::string windows, tabs, commas, comments, sparse;
    for (const std::string& line : linesOf(text)) {
        windows += line + "\r\n";
        comments += line + " # \"nodes 3\n#" + line + "\n   # # \n";
        sparse += "\n \t\r\n  " + line + "   \n";
        std::string tabbed = line, parted = line;
        bool isQuoted = false;
        for (std::size_t i = 0; i < line.size(); ++i) {
            isQuoted ^= line[i] == '"';
            if (!isQuoted && line[i] == ' ') {
                tabbed[i] = '\t';
                parted[i] = ',';
            }
        }
        tabs += tabbed + "\n";
        commas += parted + "\n";
    }
    const std::string withoutLineEnd = text.substr(0, text.size() - 1);
    for (const std::string& variant :
         {windows, tabs, commas, comments, sparse, withoutLineEnd, "\xEF\xBB\xBF" + text}) {
        const PtrRef<DataSourceZTF> source = open(variant);
        ASSERT_TRUE(source) << message;
        EXPECT_EQ(described(source.get()), expected);
    }
}

TEST_F(DataSourceZTFTest, ListsRunOverLinesAtWill) {
    std::string text = exampleText();
    text = replaced(text, "20 20 20 20 20", "20\n\n20 # two\n 20 20\n20");
    text = replaced(text, "11  quadrilateral 1 2 3 4 ", "11\nquadrilateral 1 2\n3 4 ");
    text = replaced(text, "  1 2\n\nend", "\n 1\n2\nend");
    const PtrRef<DataSourceZTF> source = open(text);
    ASSERT_TRUE(source) << message;
    EXPECT_EQ(load(source.get(), 1, source->directory()->findScalarResultInfo(1)), Numbers(5, 20));
    EXPECT_EQ(source->state(0)->geometry(0)->part(0)->elements()->elementCount(), 2u);
}

TEST_F(DataSourceZTFTest, OpensAFileWithoutStates) {
    const PtrRef<DataSourceZTF> source =
        open("ztf 1\ngeometry 4\npart 1 \"a\"\ngeometry 2\npart 1 \"b\"\nresult vector 0 \"\" element_surface\nend\n");
    ASSERT_TRUE(source) << message;
    EXPECT_EQ(source->stateCount(), 0u);
    ASSERT_EQ(source->directory()->geometryCountPerState(), 2u);
    EXPECT_EQ(source->directory()->partInfos(1)[0].name(), "b");
    EXPECT_EQ(source->directory()->vectorResultInfos().size(), 1u);
    EXPECT_TRUE(open("ztf 1\nend\n"));
}

TEST_F(DataSourceZTFTest, PartsComeInAnyOrderAndMayBeEmpty) {
    std::string text = "ztf 1\nresult scalar 1 \"p\" node\ngeometry 1\n";
    for (const char* part : {"1 \"a\"\nnodes 1\n0 0 0\n", "2 \"empty\"\n", "3 \"c\"\nnodes 2\n0 0 0\n0 0 0\n"}) {
        text += std::string("part ") + part;
    }
    // More bytes between the values than are read at a time.
    const std::string gap = "#" + std::string(100000, 'x') + "\n";
    text += "state 1 \"\" time 0\ngeometries 1\n1\nfield scalar 1\n";
    text += "values 1 3\n31\n" + gap + "32\nvalues 1 2\nvalues 1 1\n" + gap + "11\nend\n";
    const PtrRef<DataSourceZTF> source = open(text);
    ASSERT_TRUE(source) << message;
    const ResultInfo info = source->directory()->findScalarResultInfo(1);
    EXPECT_EQ(load(source.get(), 1, info, 0), Numbers{11});
    EXPECT_EQ(load(source.get(), 1, info, 1), Numbers());
    EXPECT_EQ(load(source.get(), 1, info, 2), (Numbers{31, 32}));
}

TEST_F(DataSourceZTFTest, StatesMayHaveMeshesOfTheirOwn) {
    const std::string text = "ztf 1\nresult scalar 1 \"p\" node\n"
                             "geometry 1\npart 5 \"a\"\nnodes 1\n0 0 0\n"
                             "state 1 \"\" time 0\ngeometries 1\n1\nfield scalar 1\nvalues 1 5\n11\n"
                             "geometry 2\npart 5 \"a\"\nnodes 2\n0 0 0 1 1 1\n"
                             "state 2 \"\" time 1\ngeometries 1\n2\nfield scalar 1\nvalues 1 5\n21 22\nend\n";
    const PtrRef<DataSourceZTF> source = open(text);
    ASSERT_TRUE(source) << message;
    const ResultInfo info = source->directory()->findScalarResultInfo(1);
    EXPECT_EQ(load(source.get(), 1, info), Numbers{11});
    EXPECT_EQ(load(source.get(), 2, info), (Numbers{21, 22}));
    EXPECT_EQ(source->directory()->geometryCountPerState(), 1u);
    EXPECT_EQ(why(replaced(text, "geometry 2\npart 5 \"a\"", "geometry 2\npart 5 \"b\"")),
              "line 19: geometry 1 of this state has other parts than that of the first state");
    EXPECT_EQ(why(replaced(text, "geometries 1\n2", "geometries 2\n2 2")),
              "line 19: expected as many geometries as the first state has, 1, found 2");
}

TEST_F(DataSourceZTFTest, OpensOnce) {
    const PtrRef<DataSourceZTF> source = open(exampleText());
    Error error;
    EXPECT_FALSE(source->openFile("b.ztf", &error));
    EXPECT_EQ(withoutFolder(error.message()), "cannot open \"b.ztf\": this data source holds \"a.ztf\" already");
    EXPECT_FALSE(source->openFile("b.ztf", nullptr));
    EXPECT_EQ(source->stateCount(), 2u);
}

TEST_F(DataSourceZTFTest, AnotherFileCanBeTriedAfterAFailure) {
    const PtrRef<DataSourceZTF> source(new DataSourceZTF(3));
    EXPECT_EQ(source->id(), 3);
    EXPECT_FALSE(source->openFile(folder.write("bad.ztf", "ztf 1\ngeometry 1\npart 1 \"a\"\nnodes 1\n0 0\n"), nullptr));
    EXPECT_EQ(source->directory()->geometryCountPerState(), 0u);
    EXPECT_TRUE(source->openFile(folder.write("good.ztf", exampleText()), nullptr));
    EXPECT_EQ(source->stateCount(), 2u);
}

TEST_F(DataSourceZTFTest, RefusesWhatIsNoTextFile) {
    const auto whyNot = [&](const std::string& name) {
        Error error;
        EXPECT_FALSE(PtrRef(new DataSourceZTF(1))->openFile(name.empty() ? "" : folder / name, &error));
        EXPECT_FALSE(PtrRef(new DataSourceZTF(1))->openFile(name.empty() ? "" : folder / name, nullptr));
        return withoutFolder(error.message());
    };
    std::filesystem::create_directory(folder / "folder.ztf");
    ASSERT_EQ(::mkfifo((folder / "pipe.ztf").c_str(), 0600), 0);
    folder.write("zip.ztf", "PK\x03\x04");
    EXPECT_EQ(whyNot("none.ztf"), "cannot open \"none.ztf\": No such file or directory");
    EXPECT_EQ(whyNot(""), "cannot open \"\": No such file or directory");
    EXPECT_EQ(whyNot("folder.ztf"), "cannot open \"folder.ztf\": Is a directory");
    EXPECT_EQ(whyNot("pipe.ztf"), "cannot open \"pipe.ztf\": Not a regular file");
    EXPECT_EQ(whyNot("zip.ztf"), "cannot open \"zip.ztf\": not a text file, but .ztf files are");
}

TEST_F(DataSourceZTFTest, OpensNamesInAnyScript) {
    const PtrRef<DataSourceZTF> source(new DataSourceZTF(1));
    folder.write("\u6C34.ztf", exampleText());
    Error error;
    EXPECT_TRUE(source->openFile(Str(folder / "\u6C34.ztf"), &error)) << error.message();
}

TEST_F(DataSourceZTFTest, TellsWhatIsWrongInWhichLine) {
    // Line 3 is the first of the interesting one.
    const std::string start = "ztf 1\n# comment\n";
    const std::string part = start + "geometry 1\npart 1 \"a\"\n";
    const std::string nodes = part + "nodes 2\n0 0 0\n1 1 1\n";
    const std::string state = "ztf 1\nresult scalar 1 \"p\" node\ngeometry 1\npart 1 \"a\"\nnodes 1\n0 0 0\n"
                              "state 1 \"s\" time 0\ngeometries 1\n1\n";
    const struct {
        std::string content;
        const char* message;
    } CASES[] = {
        {"", "line 1: the file has no content; expected \"ztf 1\""},
        {" \n#\n\n", "line 4: the file has no content; expected \"ztf 1\""},
        {"\nztfx 1\n", "line 2: expected \"ztf 1\" at the beginning of the file, found \"ztfx\""},
        {"\"ztf\" 1\n", "line 1: expected \"ztf 1\" at the beginning of the file, found the name \"ztf\""},
        {"ztf 2\n", "line 1: expected version 1 of the format, found \"2\""},
        {"ztf\n", "line 1: expected version 1 of the format, found the end of the line"},
        {"ztf 1 1\n", "line 1: expected the end of the line, found \"1\""},
        {"ztf 1\nend\nend\n", "line 3: expected nothing behind \"end\", found \"end\""},
        {"ztf 1\nend end\n", "line 2: expected the end of the line, found \"end\""},
        {start, "line 3: the file ends here, without the line \"end\""},
        {start + "nonsense\n",
         "line 3: expected a statement (title, geometry, part, nodes, elements, result, state, geometries, field, "
         "values, group or end), found \"nonsense\""},
        {start + "title plain\n", "line 3: expected the title in quotes, found \"plain\""},
        {start + "title \"a\" \"b\"\n", "line 3: expected the end of the line, found the name \"b\""},
        {start + "title \"a\"\ntitle \"a\"\n", "line 4: a second title"},
        {start + "title \"a\n", "line 3: a name without its closing quote"},
        {start + "title \"\n", "line 3: a name without its closing quote"},
        {start + "title \"\\n\"\n", "line 3: a backslash in a name, which only \"\\\\\" and \"\\u{...}\" may have"},
        {start + "title \"\\u{41\"\n", "line 3: a backslash in a name, which only \"\\\\\" and \"\\u{...}\" may have"},
        {start + "geometry\n", "line 3: expected the geometry's number, found the end of the line"},
        {start + "geometry 0\n", "line 3: expected the geometry's number, found \"0\""},
        {start + "geometry 1\ngeometry 1\n", "line 4: a second geometry 1"},
        {start + "part 1 \"a\"\n", "line 3: a part outside a geometry cannot stand here"},
        {start + "geometry 1\npart \"a\"\n", "line 4: expected the part's id, found the name \"a\""},
        {start + "geometry 1\npart 1 a\n", "line 4: expected the part's name in quotes, found \"a\""},
        {part + "part 1 \"b\"\n", "line 5: a second part 1 of this geometry"},
        {start + "geometry 1\nnodes 0\n", "line 4: nodes outside a part cannot stand here"},
        {part + "nodes 0\nnodes 0\n", "line 6: nodes behind other nodes, or elements, of their part cannot stand here"},
        {part + "elements 0\nnodes 0\n",
         "line 6: nodes behind other nodes, or elements, of their part cannot stand here"},
        {part + "nodes -1\n", "line 5: expected the number of nodes, found \"-1\""},
        {part + "nodes 1.5\n", "line 5: expected the number of nodes, found \"1.5\""},
        {part + "nodes 99999999999999999999\n", "line 5: expected the number of nodes, found \"99999999999999999999\""},
        {part + "nodes 1 named\n0 0 0\n", "line 5: expected the end of the line, found \"named\""},
        // 6 bytes have room for 3 words of one character.
        {part + "nodes 2\n0 0 0\n", "line 5: 2 nodes have no room in the 6 bytes that are left of the file"},
        {part + "nodes 4294967295\n0 0 0\n",
         "line 5: 4294967295 nodes have no room in the 6 bytes that are left of the file"},
        {part + "nodes 1\n0 0\n", "line 5: 1 nodes have no room in the 4 bytes that are left of the file"},
        {part + "nodes 1\n0 0\n# and more\n", "line 8: the file ends here, within the nodes"},
        {part + "nodes 1\n0 zero 0\n", "line 6: expected a number in the nodes, found \"zero\""},
        {part + "nodes 1\n0 0 0 0\n", "line 6: expected the end of the nodes, found \"0\""},
        {part + "nodes 1 numbered\n1.0 0 0 0\n",
         "line 6: expected a whole number from -2147483648 to 2147483647 in the nodes, found \"1.0\""},
        {start + "geometry 1\nelements 0\n", "line 4: elements outside a part cannot stand here"},
        {part + "elements 0\nelements 0\n", "line 6: elements behind other elements of their part cannot stand here"},
        {nodes + "elements 1\ncube 1 2\n", "line 9: expected a type in the elements, found \"cube\""},
        {nodes + "elements 1\nbeam 1 3\n", "line 9: expected a whole number from 1 to 2 in the elements, found \"3\""},
        {nodes + "elements 1\nbeam 0 1\n", "line 9: expected a whole number from 1 to 2 in the elements, found \"0\""},
        {nodes + "elements 1\nbeam 1 2 1\n", "line 9: expected the end of the elements, found \"1\""},
        {nodes + "elements 1\nbeam 1\n", "line 10: the file ends here, within the elements"},
        {nodes + "elements 3\nbeam 1 2\n", "line 8: 3 elements have no room in the 9 bytes that are left of the file"},
        {start + "result number 1 \"a\" node\n",
         "line 3: expected the result's type (scalar, vector, displacement or tensor), found \"number\""},
        {start + "result scalar -1 \"a\" node\n", "line 3: expected the result's id, found \"-1\""},
        {start + "result scalar 1073741824 \"a\" node\n", "line 3: expected the result's id, found \"1073741824\""},
        {start + "result scalar 1 a node\n", "line 3: expected the result's name in quotes, found \"a\""},
        {start + "result scalar 1 \"a\" corner\n",
         "line 3: expected the result's mapping (node, element, element_node or element_surface), found \"corner\""},
        {start + "result scalar 1 \"a\" node of 3\n", "line 3: expected the base result's type, found \"3\""},
        {start + "result scalar 1 \"a\" node of tensor x\n", "line 3: expected the base result's id, found \"x\""},
        {start + "result scalar 1 \"a\" node\nresult scalar 1 \"b\" node\n", "line 4: a second result scalar 1"},
        {start + "state -1 \"a\" time 0\n", "line 3: expected the state's id, found \"-1\""},
        {start + "state 1 a time 0\n", "line 3: expected the state's name in quotes, found \"a\""},
        {start + "state 1 \"a\" date 0\n",
         "line 3: expected the kind of reference value (time, frequency, load_case or other), found \"date\""},
        {start + "state 1 \"a\" time noon\n", "line 3: expected the reference value, found \"noon\""},
        {start + "state 1 \"a\" time 0\nend\n",
         "line 4: the state in front of this line, 1, does not tell its geometries"},
        {start + "state 1 \"a\" time 0\nstate 2 \"a\" time 0\n",
         "line 4: the state in front of this line, 1, does not tell its geometries"},
        {state + "state 1 \"b\" time 1\n", "line 10: a second state 1"},
        {start + "geometries 0\n", "line 3: geometries that are not the first ones of a state cannot stand here"},
        {state + "geometries 0\n", "line 10: geometries that are not the first ones of a state cannot stand here"},
        {state + "state 2 \"\" time 0\ngeometries 1\n2\n", "line 12: there is no geometry 2 in front of this line"},
        {state + "state 2 \"\" time 0\nfield scalar 1\n",
         "line 11: a field where no state has told its geometries cannot stand here"},
        {start + "field scalar 1\n", "line 3: a field where no state has told its geometries cannot stand here"},
        {state + "field scalar 2\n", "line 10: there is no result scalar 2 in front of this line"},
        {state + "field vector 1\n", "line 10: there is no result vector 1 in front of this line"},
        {state + "field scalar 1\nfield scalar 1\n", "line 11: a second field scalar 1 of this state"},
        {state + "values 1 1\n1\n", "line 10: values outside a field cannot stand here"},
        {state + "geometry 2\nfield scalar 1\n",
         "line 11: a field where no state has told its geometries cannot stand here"},
        {state + "field scalar 1\ngeometry 2\nvalues 1 1\n1\n", "line 12: values outside a field cannot stand here"},
        {state + "field scalar 1\nvalues 2 1\n1\n", "line 11: expected the geometry's place in the state, found \"2\""},
        {state + "field scalar 1\nvalues 1 2\n1\n", "line 11: there is no part 2 in this geometry"},
        {state + "field scalar 1\nvalues 1 1\n1\nvalues 1 1\n1\n",
         "line 13: a second time values of part 1 in this field"},
        {state + "field scalar 1\nvalues 1 1\n1 2\nend\n",
         "line 12: expected the end of the values behind 1 more, found 2 in this line"},
        {state + "field scalar 1\nvalues 1 1\n", "line 12: the file ends here, within the values"},
        {state + "group 1\n2\n", "line 11: there is no state 2 in front of this line"},
        {state + "group 9\n1\n", "line 10: 9 states have no room in the 2 bytes that are left of the file"},
    };
    orvtest::AssertRecorder asserts;
    for (const auto& c : CASES) {
        EXPECT_EQ(why(c.content), c.message) << c.content;
    }
    EXPECT_TRUE(asserts.take().empty());
}

TEST_F(DataSourceZTFTest, RefusesZeroBytesAndEndlessLines) {
    const std::string long1024(1024, '\n');
    EXPECT_EQ(why("ztf 1\n" + long1024 + "ti" + std::string(1, '\0') + "tle\nend\n"),
              "line 1026: a zero byte, which no text has; the file is damaged");
    EXPECT_EQ(why("ztf 1\ntitle \"" + std::string(std::size_t(1) << 24, 'x') + "\"\nend\n"),
              "line 2: a line with more than 16777216 bytes; is this a .ztf file?");
}

TEST_F(DataSourceZTFTest, AFileThatIsCutAnywhereIsRefusedWithALine) {
    orvtest::AssertRecorder asserts;
    const std::string text = exampleText();
    const std::size_t end = text.rfind("end");
    for (std::size_t size = 0; size < end + 3; ++size) {
        EXPECT_TRUE(why(text.substr(0, size)).starts_with("line ")) << size;
    }
    EXPECT_TRUE(open(text.substr(0, end + 3)));
    EXPECT_TRUE(asserts.take().empty());
}

// Lines that are missing, doubled or swapped, and words that are replaced: it opens or tells a line, and what opens can
// be loaded or tells a line.
TEST_F(DataSourceZTFTest, SurvivesDamage) {
    orvtest::AssertRecorder asserts;
    const std::vector<std::string> lines = linesOf(exampleText());
    std::vector<std::string> contents;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        std::vector<std::string> without = lines, twice = lines, swapped = lines;
        without.erase(without.begin() + std::ptrdiff_t(i));
        twice.insert(twice.begin() + std::ptrdiff_t(i), lines[i]);
        std::swap(swapped[i], swapped[(i + 7) % lines.size()]);
        contents.insert(contents.end(), {joined(without), joined(twice), joined(swapped)});
        for (const char* word : {"4294967295", "-1", "0", "end", "\"", "1e999", "\xFF\xFE"}) {
            std::vector<std::string> changed = lines;
            const std::size_t blank = changed[i].find_last_of(" ");
            changed[i] = changed[i].substr(0, blank == std::string::npos ? 0 : blank + 1) + word;
            contents.push_back(joined(changed));
        }
    }
    for (const std::string& content : contents) {
        writeAnew(content);
        const PtrRef<DataSourceZTF> source(new DataSourceZTF(1));
        Error error;
        if (source->openFile(folder / "a.ztf", &error)) {
            const std::string text = described(source.get());
            const std::size_t failed = text.find("FAILED");
            EXPECT_TRUE(failed == std::string::npos || text.find("a.ztf, line ", failed) != std::string::npos) << text;
        } else {
            EXPECT_TRUE(error.message().find("a.ztf, line ") != Str::npos ||
                        error.message().find("not a text file") != Str::npos)
                << error.message();
        }
    }
    EXPECT_TRUE(asserts.take().empty());
}

TEST_F(DataSourceZTFTest, BadValuesAreToldWhenTheyAreLoaded) {
    const std::string text = exampleText();
    const std::size_t at = text.find("79.25");
    const auto line = 1 + std::count(text.begin(), text.begin() + std::ptrdiff_t(at), '\n');
    const PtrRef<DataSourceZTF> source = open(replaced(text, "79.25", "79,25x"));
    EXPECT_FALSE(source);
    const PtrRef<DataSourceZTF> bad = open(replaced(text, "79.25", "79x25"));
    ASSERT_TRUE(bad);
    const ResultInfo info = bad->directory()->findScalarResultInfo(1);
    EXPECT_TRUE(load(bad.get(), 2, info).empty());
    EXPECT_EQ(message, "a.ztf, line " + std::to_string(line) + ": expected a number in the values, found \"79x25\"");
    EXPECT_EQ(load(bad.get(), 1, info), Numbers(5, 20));
}

TEST_F(DataSourceZTFTest, AFileThatHasChangedIsNotRead) {
    const PtrRef<DataSourceZTF> source = open(exampleText());
    const ResultInfo info = source->directory()->findScalarResultInfo(1);
    folder.write("a.ztf", "ztf 1\nend\n");
    EXPECT_TRUE(load(source.get(), 2, info).empty());
    EXPECT_EQ(message, "a.ztf has changed since it was opened; open it again");
}

TEST_F(DataSourceZTFTest, AFileThatWasReplacedIsReadOn) {
    const PtrRef<DataSourceZTF> source = open(exampleText());
    std::filesystem::remove(folder / "a.ztf");
    EXPECT_EQ(load(source.get(), 1, source->directory()->findScalarResultInfo(1)), Numbers(5, 20));
}

} // namespace
