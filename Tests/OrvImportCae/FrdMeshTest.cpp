#include "OrvImportCae/FrdMesh.h"

#include "Tests/OrvImportCae/FrdSamples.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

using namespace orv;
using namespace orv::imp::cae;
using orvtest::FrdText;
using orvtest::printed;
using orvtest::ScratchFolder;

namespace {

/// A file's mesh, or why there is none.
struct Meshed {
    ScratchFolder folder;
    CaeFile file;
    FrdIndex index;
    FrdMesh mesh;
    std::vector<std::string> texts;
    bool isGood = false;
    std::string message;

    explicit Meshed(const std::string& content) {
        open(folder.write("x.frd", content));
    }

    explicit Meshed(const FrdText& text) : Meshed(FrdText(text).endFile().text()) {}

    std::vector<std::string> warnings() const {
        std::vector<std::string> result;
        for (const std::string& text : texts) {
            result.push_back(without(folder, Str(text)));
        }
        return result;
    }

    const ug::DataPart& part(std::size_t i) const {
        return *mesh.geometry->part(i);
    }

    std::vector<std::string> partNames() const {
        std::vector<std::string> names;
        for (const ug::PartInfo& info : mesh.parts) {
            names.push_back(info.name().toStdString());
        }
        return names;
    }

private:
    void open(const std::string& path) {
        ug::Error error;
        isGood = file.open(path, &error) && readFrdIndex(file, &index, &error) &&
                 readFrdMesh(file, index, &mesh, &texts, &error);
        message = without(folder, error.message());
    }
};

std::string whyRefused(const FrdText& text) {
    const Meshed meshed(text);
    EXPECT_FALSE(meshed.isGood);
    return meshed.message;
}

std::vector<int> nodeIds(const ug::DataPart& part) {
    std::vector<int> ids;
    for (std::size_t i = 0; i < part.nodes()->nodeCount(); ++i) {
        ids.push_back(part.nodes()->nodeId(i));
    }
    return ids;
}

std::vector<int> elementIds(const ug::DataPart& part) {
    std::vector<int> ids;
    for (std::size_t i = 0; i < part.elements()->elementCount(); ++i) {
        ids.push_back(part.elements()->elementId(i));
    }
    return ids;
}

// The nodes of an element by the numbers of the file.
std::vector<int> elementNodeIds(const ug::DataPart& part, std::size_t element) {
    std::vector<int> ids;
    for (const unsigned int node : part.elements()->elementNodes(element)) {
        ids.push_back(part.nodes()->nodeId(node));
    }
    return ids;
}

FrdText someNodes(int count) {
    FrdText text;
    text.nodeHeader(count);
    for (int i = 1; i <= count; ++i) {
        text.node(i, i, 0, 0);
    }
    return text.endBlock();
}

TEST(FrdMesh, KeepsNumbersAndSortsNodes) {
    FrdText text;
    text.nodeHeader(4).node(30, 3, 0.5, 0).node(7, 0, 0, 0).node(100, 0, 0, -1e10).node(8, 1, 2, 3).endBlock();
    text.elementHeader(2).element(5, 7, 0, 1, {30, 7, 100}).element(4, 11, 0, 1, {7, 30}).endBlock();
    const Meshed meshed(text);
    ASSERT_TRUE(meshed.isGood) << meshed.message;
    ASSERT_EQ(meshed.mesh.geometry->partCount(), 1u);
    const ug::DataPart& part = meshed.part(0);
    // Node 8 belongs to no element.
    EXPECT_EQ(nodeIds(part), (std::vector<int>{7, 30, 100}));
    EXPECT_EQ(part.nodes()->node(1).x(), 3.0);
    EXPECT_EQ(part.nodes()->node(1).y(), 0.5);
    EXPECT_EQ(part.nodes()->node(2).z(), -1e10);
    EXPECT_EQ(elementIds(part), (std::vector<int>{5, 4}));
    EXPECT_EQ(part.elements()->elementType(0), ug::TRIANGLE);
    EXPECT_EQ(part.elements()->elementType(1), ug::BEAM);
    EXPECT_EQ(elementNodeIds(part, 0), (std::vector<int>{30, 7, 100}));
    EXPECT_EQ(elementNodeIds(part, 1), (std::vector<int>{7, 30}));
    EXPECT_TRUE(part.isConsistent());
    EXPECT_FALSE(meshed.mesh.places.isIdentity());
}

TEST(FrdMesh, IsOnePartWithAllNodesMostly) {
    const Meshed meshed(FrdText().tetrahedron());
    ASSERT_TRUE(meshed.isGood) << meshed.message;
    EXPECT_EQ(nodeIds(meshed.part(0)), (std::vector<int>{1, 2, 3, 4}));
    EXPECT_EQ(meshed.part(0).nodes()->node(3).z(), 1.0);
    EXPECT_TRUE(meshed.mesh.places.isIdentity());
    EXPECT_EQ(meshed.part(0).partId(), 1);
    EXPECT_EQ(meshed.mesh.parts.at(0).id(), 1);
}

TEST(FrdMesh, DividesByGroupAndMaterial) {
    FrdText text = someNodes(4);
    text.elementHeader(5);
    text.element(1, 11, 2, 1, {1, 2}).element(2, 11, 0, 7, {2, 3}).element(3, 11, 0, 2, {3, 4});
    text.element(4, 11, 2, 1, {2, 4}).element(5, 11, 0, 7, {1, 4}).endBlock();
    const Meshed meshed(text);
    ASSERT_TRUE(meshed.isGood) << meshed.message;
    ASSERT_EQ(meshed.mesh.geometry->partCount(), 3u);
    EXPECT_EQ(meshed.partNames(),
              (std::vector<std::string>{"Group 0, material 2", "Group 0, material 7", "Group 2, material 1"}));
    EXPECT_EQ(elementIds(meshed.part(0)), (std::vector<int>{3}));
    EXPECT_EQ(elementIds(meshed.part(1)), (std::vector<int>{2, 5}));
    EXPECT_EQ(elementIds(meshed.part(2)), (std::vector<int>{1, 4}));
    EXPECT_EQ(nodeIds(meshed.part(0)), (std::vector<int>{3, 4}));
    EXPECT_EQ(nodeIds(meshed.part(1)), (std::vector<int>{1, 2, 3, 4}));
    EXPECT_EQ(nodeIds(meshed.part(2)), (std::vector<int>{1, 2, 4}));
    EXPECT_EQ(elementNodeIds(meshed.part(2), 1), (std::vector<int>{2, 4}));
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(meshed.part(std::size_t(i)).partId(), i + 1);
        EXPECT_EQ(meshed.mesh.parts[std::size_t(i)].id(), i + 1);
    }
    // Node 4, the last one, is used by all parts.
    const std::span<const CaeNodePlaces::Place> places = meshed.mesh.places.of(3);
    ASSERT_EQ(places.size(), 3u);
    EXPECT_EQ(places[0].part, 0u);
    EXPECT_EQ(places[0].node, 1u);
    EXPECT_EQ(places[1].part, 1u);
    EXPECT_EQ(places[1].node, 3u);
    EXPECT_EQ(places[2].part, 2u);
    EXPECT_EQ(places[2].node, 2u);
    EXPECT_EQ(meshed.mesh.places.of(0).size(), 2u);
}

TEST(FrdMesh, NamesPartsByMaterial) {
    const auto names = [](const std::string& materials, int group) {
        FrdText text;
        text.line(materials);
        text.nodeHeader(2).node(1, 0, 0, 0).node(2, 1, 0, 0).endBlock();
        text.elementHeader(3).element(1, 11, 0, 1, {1, 2}).element(2, 11, 0, 2, {1, 2});
        text.element(3, 11, group, 2, {1, 2}).endBlock();
        return Meshed(text).partNames();
    };
    const std::string steel = printed("    1UMAT%5d%-58s", 1, "STEEL");
    using Names = std::vector<std::string>;
    EXPECT_EQ(names(steel, 0), (Names{"STEEL", "Material 2"}));
    EXPECT_EQ(names(steel, 1), (Names{"Group 0, material STEEL", "Group 0, material 2", "Group 1, material 2"}));
    // Two materials of one name stay apart.
    EXPECT_EQ(names(steel + "\n" + printed("    1UMAT%5d%-58s", 2, "STEEL"), 0),
              (Names{"STEEL", "STEEL (material 2)"}));
    EXPECT_EQ(names(steel + "\n" + printed("    1UMAT%5d", 2), 0), (Names{"STEEL", "Material 2"}));
}

TEST(FrdMesh, TakesNamesInPlaceOfMaterialNumbers) {
    FrdText text = someNodes(2);
    text.elementHeader(4);
    text.line(" -1         1   11    0WATER").line(" -2         1         2");
    text.line(" -1         2   11    0   Al").line(" -2         1         2");
    text.line(" -1         3   11    0WATER").line(" -2         1         2");
    text.element(4, 11, 0, 3, {1, 2}).endBlock();
    const Meshed meshed(text);
    ASSERT_TRUE(meshed.isGood) << meshed.message;
    EXPECT_EQ(meshed.partNames(), (std::vector<std::string>{"Material 3", "WATER", "Al"}));
    EXPECT_EQ(elementIds(meshed.part(1)), (std::vector<int>{1, 3}));
}

TEST(FrdMesh, TakesShortNumbers) {
    // Numbers in five characters, 15 nodes in a line, format 0.
    std::string content = "    1C\n";
    content += printed("    2C%18s%12d%37s%2d\n", "", 20, "", 0);
    for (int i = 1; i <= 20; ++i) {
        content += printed(" -1%5d%12.5E%12.5E%12.5E\n", i, double(i), 0.0, 0.0);
    }
    content += " -3\n" + printed("    3C%18s%12d%37s%2d\n", "", 1, "", 0) + printed(" -1%5d%5d%5d%5d\n", 9, 4, 0, 1);
    content += " -2";
    for (int i = 1; i <= 20; ++i) {
        content += printed("%5d", i) + (i == 15 ? "\n -2" : "");
    }
    const Meshed meshed(content + "\n -3\n 9999\n");
    ASSERT_TRUE(meshed.isGood) << meshed.message;
    EXPECT_TRUE(meshed.index.elements.isRegular());
    EXPECT_EQ(elementIds(meshed.part(0)), (std::vector<int>{9}));
    // Bottom, top, upright: the file's 13 to 16 and 17 to 20 change places.
    EXPECT_EQ(elementNodeIds(meshed.part(0), 0),
              (std::vector<int>{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 17, 18, 19, 20, 13, 14, 15, 16}));
}

TEST(FrdMesh, TakesCarriageReturnsAndWideExponents) {
    // As Windows builds write: three digits in exponents, which makes negative numbers 13 characters wide.
    const Meshed meshed("    1C\r\n" + printed("    2C%18s%12d%37s%2d\r\n", "", 2, "", 1) +
                        " -1         11.00000E+0002.00000E-0013.00000E+001\r\n"
                        " -1         2-1.00000E+000-2.00000E-0013.00000E+001\r\n -3\r\n" +
                        printed("    3C%18s%12d%37s%2d\r\n", "", 1, "", 1) +
                        " -1         1   11    0    1\r\n -2         1         2\r\n -3\r\n 9999\r\n");
    ASSERT_TRUE(meshed.isGood) << meshed.message;
    const ug::DataNodes& nodes = *meshed.part(0).nodes();
    EXPECT_EQ(nodes.node(0).y(), 0.2);
    EXPECT_EQ(nodes.node(0).z(), 30.0);
    EXPECT_EQ(nodes.node(1).x(), -1.0);
    EXPECT_EQ(nodes.node(1).y(), -0.2);
}

TEST(FrdMesh, BinaryIsAsText) {
    CaeFile files[2];
    FrdIndex indexes[2];
    FrdMesh meshes[2];
    const char* names[] = {"beam_increments.frd", "beam_binary.frd"};
    for (int i = 0; i < 2; ++i) {
        std::vector<std::string> warnings;
        ASSERT_TRUE(files[i].open(orvtest::solverFile(names[i]), nullptr));
        ASSERT_TRUE(readFrdIndex(files[i], &indexes[i], nullptr));
        ASSERT_TRUE(readFrdMesh(files[i], indexes[i], &meshes[i], &warnings, nullptr));
    }
    const ug::DataPart& text = *meshes[0].geometry->part(0);
    const ug::DataPart& binary = *meshes[1].geometry->part(0);
    EXPECT_EQ(nodeIds(text), nodeIds(binary));
    EXPECT_EQ(elementIds(text), elementIds(binary));
    for (std::size_t i = 0; i < 60; ++i) {
        EXPECT_EQ(text.nodes()->coordinates()[i], binary.nodes()->coordinates()[i]);
    }
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_EQ(elementNodeIds(text, i), elementNodeIds(binary, i));
    }
}

TEST(FrdMesh, CountsUnknownElementTypes) {
    FrdText text = someNodes(4);
    text.elementHeader(6).element(1, 11, 0, 1, {1, 2}).element(2, 17, 0, 1, {1, 2, 3, 4, 1, 2, 3, 4, 1, 2, 3});
    text.element(3, 11, 0, 1, {2, 3}).element(4, 17, 0, 1, {1}).element(5, 0, 0, 1, {}).element(6, 17, 0, 1, {1, 2});
    const Meshed meshed(text.endBlock());
    ASSERT_TRUE(meshed.isGood) << meshed.message;
    EXPECT_EQ(elementIds(meshed.part(0)), (std::vector<int>{1, 3}));
    // Lines 1 to 7 are header and nodes, 8 the elements' header.
    EXPECT_EQ(
        meshed.warnings(),
        (std::vector<std::string>{"x.frd, line 18: an element of the unknown type 0 left out",
                                  "x.frd, line 11: 3 elements of the unknown type 17 left out, the first one here"}));
}

TEST(FrdMesh, TellsThatThereAreNoElements) {
    const Meshed meshed(someNodes(2));
    ASSERT_TRUE(meshed.isGood) << meshed.message;
    EXPECT_EQ(meshed.mesh.geometry->partCount(), 0u);
    EXPECT_TRUE(meshed.mesh.parts.empty());
    EXPECT_EQ(meshed.warnings(), (std::vector<std::string>{"x.frd has no elements, so there are no parts"}));
    EXPECT_TRUE(meshed.mesh.places.of(1).empty());
}

TEST(FrdMesh, RefusesBadNodes) {
    const auto why = [](const std::string& row) {
        FrdText text;
        text.nodeHeader(2).node(1, 0, 0, 0).line(row).endBlock();
        return whyRefused(text.elementHeader(0).endBlock());
    };
    const std::string number =
        "x.frd, line 4: expected the number of a node, 0 to 2147483647, in columns 4 to 13, found ";
    EXPECT_EQ(why(" -19999999999 1.00000E+00 1.00000E+00 1.00000E+00"),
              number + "\" -19999999999 1.00000E+00 1.00000E+00 1....\"");
    EXPECT_EQ(why(" -12147483648 1.00000E+00 1.00000E+00 1.00000E+00"),
              number + "\" -12147483648 1.00000E+00 1.00000E+00 1....\"");
    EXPECT_EQ(why(" -1        -2 1.00000E+00 1.00000E+00 1.00000E+00"),
              number + "\" -1        -2 1.00000E+00 1.00000E+00 1....\"");
    EXPECT_EQ(why(" -1         "), number + "\" -1         \"");
    const std::string place = "x.frd, line 4: expected the three coordinates of node 2 in 12 characters each, found ";
    for (const char* coordinates :
         {"", " 1.00000E+00 1.00000E+00", " 1.00000E+00 1.00000E+00 1.00000E+0", " 1.00000E+00 1.00000E+00         NaN",
          " 1.00000E+00         inf 1.00000E+00", " 1.00000E+00 1.00000E+00            ",
          " 1.00000E+00 1.0x000E+00 1.00000E+00", " 1.00000E+00 1.00000E+00 1.00000E+00 1.00000E+00"}) {
        const std::string message = why(std::string(" -1         2") + coordinates);
        EXPECT_TRUE(message.starts_with(place)) << message;
    }
    EXPECT_EQ(why(" -2         2 1.00000E+00 1.00000E+00 1.00000E+00"),
              "x.frd, line 4: expected a node (\" -1\"), found \" -2         2 1.00000E+00 1.00000E+00 1....\"");
}

TEST(FrdMesh, RefusesBadElements) {
    const auto why = [](const std::vector<std::string>& rows) {
        FrdText text = someNodes(12);
        text.elementHeader(2).element(1, 11, 0, 1, {1, 2});
        for (const std::string& row : rows) {
            text.line(row);
        }
        return whyRefused(text.endBlock());
    };
    // Lines 1 to 15 are header and nodes, 16 to 18 the elements' header and the first element.
    EXPECT_EQ(why({" -1      -2   11    0    1", " -2         1         2"}),
              "x.frd, line 19: expected the number of an element, 0 to 2147483647, in columns 4 to 13, found \" -1     "
              " -2   11    0    1\"");
    EXPECT_EQ(why({" -1         2   1x    0    1"}),
              "x.frd, line 19: expected type, group and material of element 2 in five characters each, found \" -1     "
              "    2   1x    0    1\"");
    EXPECT_EQ(why({" -1         2   11    0"}),
              "x.frd, line 19: expected type, group and material of element 2 in five characters each, found \" -1     "
              "    2   11    0\"");
    EXPECT_EQ(why({" -1         2   11    0    1", " -2         1"}),
              "x.frd, line 20: expected \" -2\" and 2 nodes of element 2, found \" -2         1\"");
    EXPECT_EQ(why({" -1         2   11    0    1", " -1         3   11    0    1"}),
              "x.frd, line 20: expected \" -2\" and 2 nodes of element 2, found \" -1         3   11    0    1\"");
    EXPECT_EQ(
        why({" -1         2    5    0    1",
             " -2         1         2         3         4         5         6         7         8         9        "
             "10",
             " -2         1         2         3         4         x"}),
        "x.frd, line 21: expected \" -2\" and 5 nodes of element 2, found \" -2         1         2         3       "
        "...\"");
    EXPECT_EQ(why({" -1         2   11    0    1", " -2         1        99"}),
              "x.frd, line 19: element 2 names node 99, which the file does not have");
    EXPECT_EQ(why({" -2         1         2", " -2         1         2", " -1         2"}),
              "x.frd, line 21: expected type, group and material of element 2 in five characters each, found \" -1     "
              "    2\"");
}

TEST(FrdMesh, RefusesAnElementThatTheBlockEndsWithin) {
    FrdText text = someNodes(2);
    EXPECT_EQ(whyRefused(text.elementHeader(1).line(" -1         2   11    0    1").endBlock()),
              "x.frd, line 8: expected \" -2\" and 2 nodes of element 2, found \" -1         2   11    0    1\"");
}

TEST(FrdMesh, RefusesABlockThatBeginsWithinAnElement) {
    FrdText text = someNodes(2);
    EXPECT_EQ(whyRefused(text.elementHeader(1).line(" -2         1         2").endBlock()),
              "x.frd, line 7: expected an element (\" -1\"), found \" -2         1         2\"");
}

TEST(FrdMesh, RefusesDuplicates) {
    FrdText nodes;
    nodes.nodeHeader(3).node(5, 0, 0, 0).node(3, 1, 0, 0).node(5, 1, 0, 0).endBlock();
    EXPECT_EQ(whyRefused(nodes.elementHeader(0).endBlock()), "x.frd, line 5: node 5 stands here for the second time");
    FrdText elements = someNodes(2);
    elements.elementHeader(3).element(2, 11, 0, 1, {1, 2}).element(7, 11, 0, 1, {1, 2}).element(2, 11, 0, 1, {1, 2});
    EXPECT_EQ(whyRefused(elements.endBlock()), "x.frd, line 11: element 2 stands here for the second time");
}

TEST(FrdMesh, RefusesBadBinaryMeshes) {
    const std::string path = orvtest::solverFile("beam_binary.frd");
    const std::string content = orvtest::readWholeFile(path);
    const Meshed good(content);
    ASSERT_TRUE(good.isGood) << good.message;
    const std::size_t nodes = std::size_t(good.index.nodes.begin);
    const std::size_t elements = std::size_t(good.index.elements.begin);
    const auto why = [&](std::size_t at, const std::string& bytes) {
        std::string bad = content;
        bad.replace(at, bytes.size(), bytes);
        const Meshed meshed(bad);
        EXPECT_FALSE(meshed.isGood);
        return meshed.message;
    };
    const auto place = [](std::size_t at) { return "x.frd, byte " + std::to_string(at) + ": "; };
    const std::string minusOne = "\xFF\xFF\xFF\xFF";
    EXPECT_EQ(why(nodes + 28, minusOne), place(nodes + 28) + "expected the number of a node, found -1");
    EXPECT_EQ(why(nodes + 4, minusOne + minusOne), place(nodes) + "expected the three coordinates of node 1");
    EXPECT_EQ(why(nodes + 28, std::string("\1\0\0\0", 4)),
              place(nodes + 28) + "node 1 stands here for the second time");
    EXPECT_EQ(why(elements, minusOne), place(elements) + "expected the number and type of an element");
    EXPECT_EQ(why(elements + 48, std::string("\1\0\0\0", 4)),
              place(elements + 48) + "element 1 stands here for the second time");
    EXPECT_EQ(why(elements + 16, std::string("\x63\0\0\0", 4)),
              place(elements) + "element 1 names node 99, which the file does not have");
}

TEST(FrdMesh, TakesManyParts) {
    // Each element is a part of its own; what a part costs must not depend on the whole mesh.
    constexpr int COUNT = 20000;
    FrdText text = someNodes(COUNT + 1);
    text.elementHeader(COUNT);
    for (int i = 1; i <= COUNT; ++i) {
        text.element(i, 11, 0, i, {i, i + 1});
    }
    const Meshed meshed(text.endBlock());
    ASSERT_TRUE(meshed.isGood) << meshed.message;
    EXPECT_EQ(meshed.mesh.geometry->partCount(), std::size_t(COUNT));
    EXPECT_EQ(nodeIds(meshed.part(COUNT - 1)), (std::vector<int>{COUNT, COUNT + 1}));
}

} // namespace
