// Files written by hand: what becomes of them, and what is told of damage.

#include "OrvImportCae/MshReader.h"

#include "OrvCore/Defines.h"
#include "Tests/OrvImportCae/MshOpened.h"
#include "Tests/Support/ScratchFolder.h"

#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <iterator>
#include <limits>

#include <sys/mman.h>
#include <unistd.h>

using namespace orv;
using orvtest::MshOpened;
using orvtest::ScratchFolder;

namespace {

constexpr double U = UNDEFINED_DOUBLE;
using Values = std::vector<double>;
using Texts = std::vector<std::string>;

const std::string FORMAT = "$MeshFormat\n2.2 0 8\n$EndMeshFormat\n";
const std::string NODES = "$Nodes\n5\n1 0 0 0\n2 1 0 0\n3 0 1 0\n4 0 0 1\n9 7 7 7\n$EndNodes\n";
const std::string ELEMENTS = "$Elements\n2\n11 4 2 5 1 1 2 3 4\n12 2 2 6 1 1 2 3\n$EndElements\n";
const std::string MESH = FORMAT + NODES + ELEMENTS;

std::string data(const std::string& section, const std::string& name, const std::string& tags,
                 const std::string& values) {
    return "$" + section + "\n1\n\"" + name + "\"\n1\n" + tags + "\n" + values + "$End" + section + "\n";
}

/// A file with that text, open.
struct Opened : ScratchFolder, MshOpened {
    explicit Opened(const std::string& text) : MshOpened(write("x.msh", text)) {}
};

/// Why a file with that text is refused.
std::string whyNot(const std::string& text) {
    const ScratchFolder folder;
    const PtrRef<imp::cae::DataSourceCae> source(new imp::cae::DataSourceCae(1));
    ug::Error error;
    EXPECT_FALSE(source->openFiles({folder.write("x.msh", text)}, &error)) << text;
    return without(folder, error.message());
}

std::string replaced(std::string text, const std::string& from, const std::string& to) {
    const std::size_t at = text.find(from);
    EXPECT_NE(at, std::string::npos) << from;
    return text.replace(at, from.size(), to);
}

template <class Number>
std::string bytes(Number number) {
    return std::string(reinterpret_cast<const char*>(&number), sizeof number);
}

TEST(MshReader, PartsWithoutNamesAreNumbered) {
    Opened opened(MESH);
    EXPECT_EQ(opened.partNames(), (Texts{"Physical volume 5", "Physical surface 6"}));
    // Node 9 is no element's.
    EXPECT_EQ(opened.part(0)->nodes()->nodeCount(), 4u);
    EXPECT_EQ(opened.part(1)->nodes()->nodeCount(), 3u);
    EXPECT_EQ(opened.part(1)->nodes()->nodeId(2), 3);
    EXPECT_EQ(opened.part(0)->elements()->elementId(0), 11);
    EXPECT_EQ(opened.part(1)->elements()->elementType(0), ug::TRIANGLE);
    EXPECT_EQ(opened.stateNames(), (Texts{"Mesh"}));
    EXPECT_EQ(opened.source->directory()->resultInfos(ug::SCALAR).size(), 0u);
}

TEST(MshReader, PartsAreNamedAfterGroupsOfTheirDimension) {
    const std::string names = "$PhysicalNames\n3\n3 5 \"Same\"\n2 6 \"Same\"\n2 5 \"Other\"\n$EndPhysicalNames\n";
    EXPECT_EQ(Opened(FORMAT + names + NODES + ELEMENTS).partNames(), (Texts{"Same", "Same (Physical surface 6)"}));
}

TEST(MshReader, ElementsWithoutGroupsGoByEntityOrTogether) {
    const std::string elements = "$Elements\n4\n1 4 2 0 3 1 2 3 4\n2 2 2 0 8 1 2 3\n3 2 0 1 2 3\n4 1 2 -2 5 1 2\n"
                                 "$EndElements\n";
    EXPECT_EQ(Opened(FORMAT + NODES + elements).partNames(),
              (Texts{"Volume 3", "Surface 8", "Physical curve 2", "Elements"}));
}

TEST(MshReader, AnElementOfSeveralGroupsBelongsToTheFirst) {
    const std::string text = "$MeshFormat\n4.1 0 8\n$EndMeshFormat\n$Entities\n0 0 1 0\n"
                             "1 0 0 0 1 1 0 2 -8 3 0\n$EndEntities\n"
                             "$Nodes\n1 3 1 3\n2 1 0 3\n1\n2\n3\n0 0 0\n1 0 0\n0 1 0\n$EndNodes\n"
                             "$Elements\n1 1 1 1\n2 1 2 1\n1 1 2 3\n$EndElements\n";
    EXPECT_EQ(Opened(text).partNames(), (Texts{"Physical surface 8"}));
}

TEST(MshReader, RepeatedElementsCountOnce) {
    const std::string elements = "$Elements\n3\n1 2 2 5 1 1 2 3\n1 2 2 6 1 1 2 3\n2 2 2 6 1 1 2 4\n$EndElements\n";
    Opened opened(FORMAT + NODES + elements);
    EXPECT_EQ(opened.part(0)->elements()->elementCount(), 1u);
    EXPECT_EQ(opened.part(1)->elements()->elementCount(), 1u);
    EXPECT_EQ(opened.part(1)->elements()->elementId(0), 2);
    EXPECT_EQ(opened.warnings(),
              (Texts{"x.msh, line 12: 1 element that repeats the number of an earlier one left out"}));
}

TEST(MshReader, ElementsOfThirdOrderAreLeftOutAndTold) {
    const std::string elements =
        "$Elements\n3\n1 26 2 5 1 1 2 3 4\n2 26 2 5 1 1 2 3 4\n3 2 2 6 1 1 2 4\n$EndElements\n";
    Opened opened(FORMAT + NODES + elements);
    EXPECT_EQ(opened.partNames(), (Texts{"Physical surface 6"}));
    EXPECT_EQ(opened.warnings(), (Texts{"x.msh, line 14: 2 elements of the type 26 left out, the first one here"}));
}

TEST(MshReader, AMeshWithoutElementsHasNoParts) {
    EXPECT_EQ(Opened(FORMAT + NODES + "$Elements\n0\n$EndElements\n").warnings(),
              (Texts{"x.msh has no elements, so there are no parts"}));
}

TEST(MshReader, SectionsThatMeanNothingAreTold) {
    const std::string text = "$Comments\n$Nodes are below\n$EndComments\n" + MESH +
                             "$Periodic\n1\n$EndPeriodic\n$Strange\n$$ $End\n$EndStrange\n";
    EXPECT_EQ(Opened(text).warnings(), (Texts{"x.msh, line 23: the section \"$Strange\" is left out"}));
}

TEST(MshReader, MissingItemsAreUndefined) {
    Opened opened(MESH + data("NodeData", "T", "0.5\n3\n2\n1\n2", "3 30\n9 90\n") +
                  data("ElementData", "E", "0.5\n3\n2\n1\n1", "12 7\n"));
    EXPECT_EQ(opened.load(ug::SCALAR, "T", 1, 0), (Values{U, U, 30, U}));
    EXPECT_EQ(opened.load(ug::SCALAR, "T", 1, 1), (Values{U, U, 30}));
    EXPECT_EQ(opened.load(ug::SCALAR, "E", 1, 0), (Values{U}));
    EXPECT_EQ(opened.load(ug::SCALAR, "E", 1, 1), (Values{7}));
    EXPECT_EQ(opened.stateNames(), (Texts{"Step 2, time 0.5"}));
    EXPECT_TRUE(opened.warnings().empty());
}

TEST(MshReader, ValuesOfForeignItemsAreLeftOutAndToldOnce) {
    Opened opened(MESH + data("NodeData", "T", "0\n3\n0\n1\n3", "3 30\n77 1\n78 1\n") +
                  data("ElementData", "E", "0\n3\n0\n1\n1", "1 7\n"));
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(opened.load(ug::SCALAR, "T", 1, 1), (Values{U, U, 30}));
        EXPECT_EQ(opened.load(ug::SCALAR, "E", 1, 1), (Values{U}));
        opened.source->dropResult(opened.info(ug::SCALAR, "T"));
    }
    EXPECT_EQ(
        opened.warnings(),
        (Texts{"x.msh, line 27: values of 2 nodes that the mesh does not have are left out, the first, node 77, "
               "here",
               "x.msh, line 39: values of one element that the mesh does not have are left out, the first, element "
               "1, here"}));
}

TEST(MshReader, ComponentsAndNamesTellTheType) {
    const std::string three = "0\n3\n0\n3\n1";
    Opened opened(MESH + data("NodeData", "U", three, "1 1 2 3\n") +
                  data("NodeData", "Total displacements", three, "1 1 2 3\n") +
                  data("NodeData", "DISP", three, "1 1 2 3\n") + data("NodeData", "Flux", three, "1 1 2 3\n") +
                  data("ElementData", "Flux", three, "11 4 5 6\n") +
                  data("NodeData", "S", "0\n3\n0\n9\n1", "2 1 4 6 4 2 5 6 5 3\n") +
                  data("NodeData", "F", "0\n3\n0\n9\n1", "2 1 4 6 9 2 5 6 5 3\n") +
                  data("NodeData", "Pair", "0\n3\n0\n2\n1", "2 1 4\n"));
    EXPECT_TRUE(opened.info(ug::DISPLACEMENT, "U").isValid());
    EXPECT_TRUE(opened.info(ug::DISPLACEMENT, "DISP").isValid());
    EXPECT_TRUE(opened.info(ug::DISPLACEMENT, "Total displacements").isValid());
    EXPECT_EQ(opened.source->directory()->resultInfos(ug::VECTOR).size(), 2u);
    EXPECT_EQ(opened.load(ug::SYMMETRIC_TENSOR, "S", 1, 1),
              (Values{U, U, U, U, U, U, 1, 2, 3, 4, 5, 6, U, U, U, U, U, U}));
    EXPECT_EQ(opened.warnings(), (Texts{"x.msh, line 83: \"F\" has tensors that are not symmetric and is left out",
                                        "x.msh, line 94: \"Pair\" has 2 components and is left out"}));
}

TEST(MshReader, ALateTensorWithoutSymmetryIsUndefinedAndTold) {
    std::string values;
    for (int i = 0; i < 100; ++i) {
        values += "1 1 0 0 0 1 0 0 0 1\n";
    }
    Opened opened(MESH + data("NodeData", "S", "0\n3\n0\n9\n101", values + "2 1 4 6 9 2 5 6 5 3\n"));
    const Values loaded = opened.load(ug::SYMMETRIC_TENSOR, "S", 1, 1);
    EXPECT_EQ(Values(loaded.begin(), loaded.begin() + 12), (Values{1, 1, 1, 0, 0, 0, U, U, U, U, U, U}));
    EXPECT_EQ(opened.warnings(), (Texts{"x.msh, line 17: \"S\" has one tensor without symmetry, left undefined"}));
}

TEST(MshReader, SectionsOfPartitionsComeTogether) {
    Opened opened(MESH + data("NodeData", "T", "0\n4\n0\n1\n1\n1", "1 10\n") +
                  data("NodeData", "T", "0\n4\n0\n1\n1\n2", "3 30\n"));
    EXPECT_EQ(opened.load(ug::SCALAR, "T", 1, 1), (Values{10, U, 30}));
    EXPECT_EQ(opened.stateNames().size(), 1u);
}

TEST(MshReader, StatesGoByStepAndTime) {
    const auto at = [](const std::string& name, const std::string& time, const std::string& step) {
        return data("NodeData", name, time + "\n3\n" + step + "\n1\n1", "1 " + step + "\n");
    };
    Opened opened(MESH + at("A", "1e-3", "10") + at("A", "0", "2") + at("B", "0", "2") + at("B", "5", "2"));
    EXPECT_EQ(opened.stateNames(), (Texts{"Step 2, time 0", "Step 2, time 5", "Step 10, time 0.001"}));
    EXPECT_EQ(opened.load(ug::SCALAR, "A", 3, 1), (Values{10, U, U}));
    EXPECT_FALSE(opened.source->directory()->hasResult(2, opened.info(ug::SCALAR, "A")));
}

// The order of the last two mid-side nodes of a tetrahedron is not ours.
TEST(MshReader, ValuesPerElementNodeAreTurned) {
    std::string text = FORMAT + "$Nodes\n10\n";
    for (int i = 1; i <= 10; ++i) {
        text += std::to_string(i) + " " + std::to_string(i) + " 0 0\n";
    }
    text += "$EndNodes\n$Elements\n1\n1 11 0 1 2 3 4 5 6 7 8 9 10\n$EndElements\n";
    const std::string tags = "0\n3\n0\n1\n1";
    Opened all(text + data("ElementNodeData", "A", tags, "1 10 1 2 3 4 5 6 7 8 9 10\n") +
               data("ElementNodeData", "Corners", tags, "1 4 1 2 3 4\n") +
               data("ElementNodeData", "Few", tags, "1 5 1 2 3 4 5\n"));
    EXPECT_EQ(all.part(0)->nodes()->coordinates()[3 * all.part(0)->elements()->nodeIndexes(0)[8]], 10.0);
    EXPECT_EQ(all.load(ug::SCALAR, "A"), (Values{1, 2, 3, 4, 5, 6, 7, 8, 10, 9}));
    EXPECT_EQ(all.load(ug::SCALAR, "Corners"), (Values{1, 2, 3, 4, U, U, U, U, U, U}));
    std::string message;
    EXPECT_TRUE(all.load(ug::SCALAR, "Few", 1, 0, &message).empty());
    EXPECT_EQ(message, "x.msh, line 52: expected values for the nodes of element 1, found those for 5");
}

TEST(MshReader, DamagedMeshesAreRefused) {
    const std::string v41 = "$MeshFormat\n4.1 0 8\n$EndMeshFormat\n";
    const struct {
        std::string text;
        const char* expected;
    } cases[] = {
        {"", "x.msh, line 1: expected $MeshFormat, found the end of the file"},
        {"solid ascii\n", "x.msh, line 1: expected $MeshFormat, found \"solid\""},
        {"$MeshFormat\n1 0 8\n", "x.msh, line 2: expected version 2 to 2.2, 4 or 4.1 of the format, found another"},
        {"$MeshFormat\nx 0 8\n", "x.msh, line 2: expected a version, found \"x\""},
        {"$MeshFormat\n2.2 3 8\n", "x.msh, line 2: expected 0 for text or 1 for bytes, found 3"},
        {"$MeshFormat\n2.2 0 4\n", "x.msh, line 2: expected the size of a number, 8, found 4"},
        {"$MeshFormat\n4 1 8\n",
         "x.msh, line 2: expected text, the only form in which version 4.0 is read, found bytes"},
        {"$MeshFormat\n2.2 1 8\n" + std::string("\0\0\0\1", 4),
         "x.msh, byte 20: expected bytes in the order of this computer, found the other order; write the file as text, "
         "or on a computer like this one"},
        {"$MeshFormat\n2.2 1 8\n" + bytes(7), "x.msh, byte 20: expected the number 1 in bytes, found 7"},
        {"$MeshFormat\n2.2 1 8\n\1", "x.msh, byte 20: expected the number 1 in bytes, found the end of the file"},
        {"$MeshFormat\n2.2 0 8\n$Nodes\n", "x.msh, line 3: expected $EndMeshFormat, found \"$Nodes\""},
        {FORMAT, "x.msh: expected the sections $Nodes and $Elements, found none"},
        {FORMAT + NODES, "x.msh: expected the sections $Nodes and $Elements, found the first alone"},
        {FORMAT + ELEMENTS, "x.msh, line 4: expected $Nodes ahead of $Elements, found none"},
        {FORMAT + NODES + NODES, "x.msh, line 12: expected one section $Nodes, found another"},
        {MESH + "rest", "x.msh, line 17: expected the name of a section, found \"rest\""},
        {FORMAT + "$Nodes\n-1\n", "x.msh, line 5: expected the number of nodes, of which the file has room for 0, "
                                  "found -1"},
        {replaced(MESH, "\n5\n", "\n999999999999\n"),
         "x.msh, line 5: expected the number of nodes, of which the file has room for 14, found 999999999999"},
        {replaced(MESH, "\n5\n", "\n4\n"), "x.msh, line 10: expected $EndNodes, found \"9\""},
        {replaced(MESH, "\n5\n", "\n6\n"), "x.msh, line 11: expected a node's number, found \"$EndNodes\""},
        {replaced(MESH, "2 1 0 0", "2 1 O 0"), "x.msh, line 7: expected a coordinate, found \"O\""},
        {replaced(MESH, "\n9 7", "\n4 7"), "x.msh, line 4: expected nodes with numbers of their own, found node 4 "
                                           "twice"},
        {replaced(MESH, "\n9 7", "\n-9 7"), "x.msh, line 10: expected a node's number from 0 to 2147483647, found -9"},
        {replaced(MESH, "\n9 7", "\n2147483648 7"),
         "x.msh, line 10: expected a node's number from 0 to 2147483647, found 2147483648"},
        {replaced(MESH, "11 4 2", "11 99 2"), "x.msh, line 14: expected the type of an element, found 99"},
        {replaced(MESH, "11 4 2", "11 4 -2"),
         "x.msh, line 14: expected the number of tags from 0 to 1048576, found -2"},
        {replaced(MESH, "1 2 3 4\n12", "1 2 3 5\n12"),
         "x.msh, line 14: element 11 names node 5, which the file does not have"},
        {replaced(MESH, "$Elements\n2", "$Elements\n3"),
         "x.msh, line 16: expected an element's number, found \"$EndElements\""},
        {v41 + "$Nodes\n1 2 1 2\n0 1 0 3\n1\n", "x.msh, line 6: expected a number of nodes up to the 2 that are left, "
                                                "found 3"},
        {v41 + "$Nodes\n1 2 1 2\n4 1 0 3\n1\n", "x.msh, line 6: expected a dimension from 0 to 3, found 4"},
        {v41 + "$Nodes\n1 2 1 2\n0 1 0 1\n1\n0 0 0\n$EndNodes\n", "x.msh, line 8: expected 2 nodes, found 1"},
        {FORMAT + "$PhysicalNames\n1\n2 1 \"open\n$EndPhysicalNames\n",
         "x.msh, line 6: expected a physical name, found no quote at its end"},
    };
    for (const auto& damaged : cases) {
        EXPECT_EQ(whyNot(damaged.text), damaged.expected);
    }
}

TEST(MshReader, DamagedHeadersOfValuesAreRefused) {
    const struct {
        std::string tags;
        const char* expected;
    } cases[] = {
        {"0\n2\n0\n1\n", "x.msh, line 22: expected 3 integer tags or more: step, components, items; found 2"},
        {"0\n3\n0\n0\n1", "x.msh, line 24: expected a number of components from 1 to 1000000, found 0"},
        {"0\n3\n0\n1\n-1", "x.msh, line 25: expected a number of items, found -1"},
        {"nan\n3\n0\n1\n1", "x.msh, line 21: expected a time, found none"},
        {"x\n3\n0\n1\n1", "x.msh, line 21: expected a real tag, found \"x\""},
        {"0\n1001\n", "x.msh, line 22: expected the number of integer tags up to 1000, found 1001"},
    };
    for (const auto& damaged : cases) {
        EXPECT_EQ(whyNot(MESH + data("NodeData", "T", damaged.tags, "1 1\n")), damaged.expected);
    }
    EXPECT_EQ(whyNot(MESH + "$NodeData\n1\n\"T\"\n1\n0\n3\n0\n1\n1\n1 1\n$NodeData\n"),
              "x.msh, line 27: expected $EndNodeData, found \"$NodeData\"");
}

TEST(MshReader, DamagedValuesFailWhenTheyAreLoaded) {
    const struct {
        const char* values;
        const char* expected;
    } cases[] = {
        {"1 1\n2 x\n", "x.msh, line 27: expected a value, found \"x\""},
        {"1 1\n", "x.msh, line 27: expected a node's number, found \"$EndNodeData\""},
        {"1 1\n2 2\n3 3\n", "x.msh, line 28: expected $EndNodeData, found \"3\""},
        {"1 1\n-2 2\n", "x.msh, line 27: expected a node's number from 0 to 2147483647, found -2"},
    };
    for (const auto& damaged : cases) {
        Opened opened(MESH + data("NodeData", "T", "0\n3\n0\n1\n2", damaged.values));
        std::string message;
        EXPECT_TRUE(opened.load(ug::SCALAR, "T", 1, 0, &message).empty());
        EXPECT_EQ(message, damaged.expected);
    }
}

TEST(MshReader, ASectionOfValuesThatTheFileEndsInIsLeftOutAndTold) {
    const std::string whole = MESH + data("NodeData", "A", "0\n3\n0\n1\n1", "1 1\n");
    const std::string last = data("NodeData", "B", "0\n3\n0\n1\n1", "1 1\n");
    for (std::size_t length = 1; length + 1 < last.size(); ++length) {
        Opened opened(whole + last.substr(0, length));
        EXPECT_EQ(opened.load(ug::SCALAR, "A", 1, 1), (Values{1, U, U})) << length;
        EXPECT_FALSE(opened.info(ug::SCALAR, "B").isValid());
        ASSERT_FALSE(opened.warnings().empty()) << length;
        EXPECT_EQ(opened.warnings().back(),
                  "x.msh, line 28: the file ends within the section that begins here, which is left out");
    }
    EXPECT_TRUE(Opened(whole + last.substr(0, last.size() - 1)).info(ug::SCALAR, "B").isValid());
}

bool opens(const std::string& text, std::string* message) {
    const int descriptor = ::memfd_create("cut", MFD_CLOEXEC);
    EXPECT_EQ(::write(descriptor, text.data(), text.size()), ssize_t(text.size()));
    imp::cae::MshReader reader;
    imp::cae::CaeContents contents;
    ug::Error error;
    const bool isOpen = reader.openDescriptor(descriptor, "x.msh", &contents, &error);
    *message = error.message().toStdString();
    return isOpen;
}

// Whatever a file ends with: it opens, or the error tells what was expected.
TEST(MshReader, FilesCutAnywhereOpenOrAreRefused) {
    for (const char* name :
         {"box41.msh", "first41bin.msh", "first22.msh", "viewbin.msh", "view41bin.msh", "data22bin.msh"}) {
        std::ifstream file(orvtest::testDataFolder() + "/msh/" + name, std::ios::binary);
        const std::string text{std::istreambuf_iterator<char>(file), {}};
        for (std::size_t length = 0; length < text.size(); ++length) {
            std::string message;
            if (opens(text.substr(0, length), &message)) {
                EXPECT_GT(length, text.find("$EndElements")) << name;
                EXPECT_EQ(message, "");
            } else {
                EXPECT_NE(message.find(": expected "), std::string::npos) << name << length << message;
            }
        }
    }
}

TEST(MshReader, NumbersComeInAllSpellings) {
    const std::string text = replaced(MESH, "2 1 0 0\n", "2 +1.0E+00\t1d0 .5\r\n");
    Opened opened(text + data("NodeData", "T", "0\n3\n0\n1\n3", "1 nan\n2 -inf\n3 1e-400\n"));
    EXPECT_EQ(opened.part(1)->nodes()->node(1), Vec3d(1, 1, 0.5));
    const Values values = opened.load(ug::SCALAR, "T", 1, 1);
    EXPECT_TRUE(std::isnan(values[0]));
    EXPECT_EQ(values[1], -std::numeric_limits<double>::infinity());
    EXPECT_EQ(values[2], 0.0);
}

TEST(MshReader, AFileThatChangesMakesLoadsFail) {
    Opened opened(MESH + data("NodeData", "T", "0\n3\n0\n1\n1", "1 1\n"));
    opened.write("x.msh", MESH);
    std::string message;
    EXPECT_TRUE(opened.load(ug::SCALAR, "T", 1, 0, &message).empty());
    EXPECT_EQ(message, "x.msh has changed since it was opened; open it again");
}

} // namespace
