#include "OrvUnstructGrid/ElementType.h"
#include "Tests/OrvImportVtk/VtkSamples.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <vtk_cgns.h>

// clang-format off
#include VTK_CGNS(cgnslib.h)
#include VTK_CGNS(cgns_io.h)
// clang-format on

#include <filesystem>
#include <fstream>
#include <numeric>

using namespace orv;
using orvtest::ScratchFolder;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

using Numbers = std::vector<cgsize_t>;

std::string cgnsFile(const std::string& name) {
    return orvtest::testDataFolder() + "/cgns/" + name;
}

/// A file in a folder of its own, written by the CGNS library itself. The first base and zone are there.
class CgnsFiles : public testing::Test {
protected:
    void create(int cellDimension = 3, int physicalDimension = 3) {
        cg_set_file_type(m_type);
        ASSERT_EQ(cg_open(path().c_str(), CG_MODE_WRITE, &m_file), CG_OK);
        addBase("Base", cellDimension, physicalDimension);
    }

    void addBase(const char* name, int cellDimension = 3, int physicalDimension = 3) {
        ASSERT_EQ(cg_base_write(m_file, name, cellDimension, physicalDimension, &m_base), CG_OK);
        m_dimension = physicalDimension;
    }

    // Eight nodes, the corners of a cube or, in a plane, of two squares.
    void addZone(const char* name, cgsize_t cells = 1, const char* axes = "XYZ") {
        const Numbers sizes = {8, cells, 0};
        ASSERT_EQ(cg_zone_write(m_file, m_base, name, sizes.data(), CGNS_ENUMV(Unstructured), &m_zone), CG_OK);
        for (int axis = 0; axis < m_dimension; ++axis) {
            std::vector<double> places(8);
            for (int node = 0; node < 8; ++node) {
                places[std::size_t(node)] = axis == 2 ? node / 4 : axis == 1 ? node / 2 % 2 : (node + 1) / 2 % 2;
            }
            int index = 0;
            const std::string coordinate = std::string("Coordinate") + axes[axis];
            ASSERT_EQ(cg_coord_write(m_file, m_base, m_zone, CGNS_ENUMV(RealDouble), coordinate.c_str(), places.data(),
                                     &index),
                      CG_OK);
        }
    }

    void addSection(const char* name, CGNS_ENUMT(ElementType_t) type, cgsize_t begin, cgsize_t end) {
        int nodes = 0;
        cg_npe(type, &nodes);
        Numbers list(std::size_t(nodes) * std::size_t(end - begin + 1));
        std::iota(list.begin(), list.end(), 0);
        for (cgsize_t& node : list) {
            node = node % 8 + 1;
        }
        int index = 0;
        ASSERT_EQ(cg_section_write(m_file, m_base, m_zone, name, type, begin, end, 0, list.data(), &index), CG_OK);
    }

    void addSolution(const char* name, CGNS_ENUMT(GridLocation_t) location, const char* array, double value = 1.5) {
        int index = 0;
        ASSERT_EQ(cg_sol_write(m_file, m_base, m_zone, name, location, &index), CG_OK);
        const std::vector<double> values(8, value);
        ASSERT_EQ(cg_field_write(m_file, m_base, m_zone, index, CGNS_ENUMV(RealDouble), array, values.data(), &index),
                  CG_OK);
    }

    void addTimes(const std::vector<double>& times) {
        ASSERT_EQ(cg_biter_write(m_file, m_base, "TimeIterValues", int(times.size())), CG_OK);
        ASSERT_EQ(cg_goto(m_file, m_base, "BaseIterativeData_t", 1, "end"), CG_OK);
        const auto count = cgsize_t(times.size());
        ASSERT_EQ(cg_array_write("TimeValues", CGNS_ENUMV(RealDouble), 1, &count, times.data()), CG_OK);
    }

    // To the solutions of each time. Others than these come after them.
    void addFlowPointers(const std::vector<std::string>& names, const char* array = "FlowSolutionPointers") {
        std::string text;
        for (const std::string& name : names) {
            text += name + std::string(32 - name.size(), ' ');
        }
        if (array == std::string("FlowSolutionPointers")) {
            ASSERT_EQ(cg_ziter_write(m_file, m_base, m_zone, "ZoneIterativeData"), CG_OK);
        }
        ASSERT_EQ(cg_goto(m_file, m_base, "Zone_t", m_zone, "ZoneIterativeData_t", 1, "end"), CG_OK);
        const cgsize_t sizes[] = {32, cgsize_t(names.size())};
        ASSERT_EQ(cg_array_write(array, CGNS_ENUMV(Character), 2, sizes, text.data()), CG_OK);
    }

    void close() {
        ASSERT_EQ(cg_close(m_file), CG_OK);
    }

    /// Writes over what a node of a closed file has.
    /// @{
    void replace(const std::string& node, const std::vector<int>& numbers) {
        replaceData(node, "I4", numbers.size(), numbers.data());
    }

    void replace(const std::string& node, const std::string& text) {
        replaceData(node, "C1", text.size(), text.data());
    }
    /// @}

    void replaceData(const std::string& node, const char* type, std::size_t size, const void* data) {
        int file = 0;
        double root = 0;
        double id = 0;
        ASSERT_EQ(cgio_open_file(path().c_str(), CGIO_MODE_MODIFY, CGIO_FILE_NONE, &file), 0);
        cgio_get_root_id(file, &root);
        ASSERT_EQ(cgio_get_node_id(file, root, node.c_str(), &id), 0);
        const auto count = cgsize_t(size);
        ASSERT_EQ(cgio_set_dimensions(file, id, type, 1, &count), 0);
        ASSERT_EQ(cgio_write_all_data(file, id, data), 0);
        cgio_close_file(file);
    }

    void remove(const std::string& parent, const char* name) {
        int file = 0;
        double root = 0;
        double parentId = 0;
        double id = 0;
        ASSERT_EQ(cgio_open_file(path().c_str(), CGIO_MODE_MODIFY, CGIO_FILE_NONE, &file), 0);
        cgio_get_root_id(file, &root);
        ASSERT_EQ(cgio_get_node_id(file, root, parent.c_str(), &parentId), 0);
        ASSERT_EQ(cgio_get_node_id(file, parentId, name, &id), 0);
        ASSERT_EQ(cgio_delete_node(file, parentId, id), 0);
        cgio_close_file(file);
    }

    std::string path() const {
        return m_folder.path() + "/a.cgns";
    }

    /// What is wrong with the file, without its name; empty when it can be opened and all of it loaded.
    std::string errorText() const {
        const PtrRef<imp::cae::DataSourceCae> source(new imp::cae::DataSourceCae(1));
        ug::Error error;
        if (source->openFiles({path()}, &error)) {
            source->state(0)->geometry(0)->read(&error);
        }
        const std::string text = error.message().toStdString();
        return text.empty() ? text : text.substr(text.find(": ") + 2);
    }

    std::vector<std::string> warnings() const {
        std::vector<std::string> texts;
        for (const Str& warning : orvtest::openVtk(path())->directory()->warnings()) {
            const std::string text = warning.toStdString();
            texts.push_back(text.substr(text.find(": ") + 2));
        }
        return texts;
    }

    ScratchFolder m_folder;
    int m_type = CG_FILE_ADF;
    int m_file = 0;
    int m_base = 0;
    int m_zone = 0;
    int m_dimension = 3;
};

TEST_F(CgnsFiles, AreReadWhenTheyAreWhole) {
    create();
    addZone("Zone");
    addSection("Cells", CGNS_ENUMV(HEXA_8), 1, 1);
    close();
    EXPECT_EQ(errorText(), "");
    EXPECT_THAT(warnings(), ElementsAre());
}

// The library would take it for ADF, which nothing has looked through then.
TEST_F(CgnsFiles, TellWhatTheyAre) {
    create();
    addZone("Zone");
    addSection("Cells", CGNS_ENUMV(HEXA_8), 1, 1);
    close();
    std::fstream file(path(), std::ios::in | std::ios::out | std::ios::binary);
    file.seekp(std::string("@(#)ADF Database ").size());
    file << "v";
    file.close();
    EXPECT_EQ(errorText(), "cannot be opened as a CGNS file: it is neither HDF5 nor ADF");
}

TEST_F(CgnsFiles, SectionsBehindTheCellsAreLeftOut) {
    create();
    addZone("Zone");
    addSection("Cells", CGNS_ENUMV(HEXA_8), 1, 1);
    addSection("Inlet", CGNS_ENUMV(QUAD_4), 2, 3);
    addSection("Wall", CGNS_ENUMV(QUAD_4), 4, 4);
    close();
    EXPECT_THAT(warnings(), ElementsAre("sections of elements behind the cells of their zones are left out: "
                                        "'Zone/Inlet', 'Zone/Wall'"));
    EXPECT_EQ(orvtest::openVtk(path())->state(0)->geometry(0)->part(0)->elements()->elementCount(), 1u);
}

// VTK would write behind its list of cells.
TEST_F(CgnsFiles, CellsHaveToBeTheFirstElements) {
    create();
    addZone("Zone");
    addSection("Wall", CGNS_ENUMV(QUAD_4), 1, 6);
    addSection("Cells", CGNS_ENUMV(HEXA_8), 7, 7);
    close();
    EXPECT_EQ(errorText(), "base 'Base': zone 'Zone': does not number its cells from 1 on, without gaps");
}

TEST_F(CgnsFiles, ZonesNeedCells) {
    create();
    addZone("Zone");
    close();
    EXPECT_EQ(errorText(), "base 'Base': zone 'Zone': does not number its cells from 1 on, without gaps");
}

TEST_F(CgnsFiles, BasesNeedZones) {
    create();
    close();
    EXPECT_EQ(errorText(), "has no zones");
}

TEST_F(CgnsFiles, TimesHaveToAscend) {
    create();
    addZone("Zone");
    addSection("Cells", CGNS_ENUMV(HEXA_8), 1, 1);
    addTimes({0, 2, 1});
    close();
    EXPECT_EQ(errorText(), "base 'Base': has times that do not ascend");
}

TEST_F(CgnsFiles, OfSeveralSolutionsWithoutTimesTheFirstOneIsRead) {
    create();
    addZone("Zone");
    addSection("Cells", CGNS_ENUMV(HEXA_8), 1, 1);
    addSolution("First", CGNS_ENUMV(Vertex), "a");
    addSolution("Second", CGNS_ENUMV(Vertex), "b");
    addSolution("Third", CGNS_ENUMV(CellCenter), "c");
    close();
    EXPECT_THAT(warnings(), ElementsAre("solutions at no time are left out: 'Zone/Second'"));
    const auto source = orvtest::openVtk(path());
    EXPECT_TRUE(orvtest::findResult(source.get(), "a").isValid());
    EXPECT_FALSE(orvtest::findResult(source.get(), "b").isValid());
    EXPECT_TRUE(orvtest::findResult(source.get(), "c", ug::PER_ELEMENT).isValid());
}

TEST_F(CgnsFiles, SolutionsElsewhereAreLeftOut) {
    create();
    addZone("Zone");
    addSection("Cells", CGNS_ENUMV(HEXA_8), 1, 1);
    addSolution("Faces", CGNS_ENUMV(CellCenter), "a");
    close();
    replace("/Base/Zone/Faces/GridLocation", std::string("FaceCenter"));
    EXPECT_THAT(warnings(), ElementsAre("solutions neither of nodes nor of cells are left out: 'Zone/Faces'"));
    EXPECT_EQ(errorText(), "");
}

TEST_F(CgnsFiles, BasesWithOtherTimesAreLeftOut) {
    create();
    addZone("Zone");
    addSection("Cells", CGNS_ENUMV(HEXA_8), 1, 1);
    addTimes({0.5, 1});
    addBase("Other");
    addZone("Zone");
    addSection("Cells", CGNS_ENUMV(HEXA_8), 1, 1);
    close();
    EXPECT_THAT(warnings(), ElementsAre("bases with other times than the first one are left out: 'Other'"));
    const auto source = orvtest::openVtk(path());
    EXPECT_EQ(source->stateCount(), 2u);
    ASSERT_EQ(source->directory()->partInfos(0).size(), 1u);
    EXPECT_EQ(source->directory()->partInfos(0)[0].name(), Str("Zone"));
}

TEST_F(CgnsFiles, ManyNamesAreNotAllTold) {
    create();
    addZone("Zone");
    addSection("Cells", CGNS_ENUMV(HEXA_8), 1, 1);
    for (const char* name : {"A", "B", "C", "D", "E", "F", "G"}) {
        addSolution(name, CGNS_ENUMV(Vertex), "a");
    }
    close();
    EXPECT_THAT(warnings(), ElementsAre("solutions at no time are left out: 'Zone/B', 'Zone/C', 'Zone/D', 'Zone/E', "
                                        "'Zone/F' and 1 more"));
}

TEST_F(CgnsFiles, CoordinatesHaveToBeCartesian) {
    create();
    addZone("Zone", 1, "RTZ");
    addSection("Cells", CGNS_ENUMV(HEXA_8), 1, 1);
    close();
    EXPECT_EQ(errorText(), "base 'Base': zone 'Zone': has coordinates 'CoordinateR' that are not Cartesian reals");
}

TEST_F(CgnsFiles, ThereAreTwoOrThreeDimensions) {
    create(1, 1);
    close();
    EXPECT_EQ(errorText(), "base 'Base': has cells of 1 dimensions in 1");
}

TEST_F(CgnsFiles, ComponentsZInAPlaneAreLeftOut) {
    create(2, 2);
    addZone("Zone");
    addSection("Cells", CGNS_ENUMV(QUAD_4), 1, 1);
    addSolution("Values", CGNS_ENUMV(Vertex), "VelocityX");
    int index = 0;
    const std::vector<double> values(8, 2.5);
    for (const char* name : {"VelocityY", "VelocityZ"}) {
        cg_field_write(m_file, m_base, m_zone, 1, CGNS_ENUMV(RealDouble), name, values.data(), &index);
    }
    close();
    EXPECT_THAT(warnings(), ElementsAre("components Z in two dimensions are left out: 'Zone/Values/VelocityZ'"));
}

// Half a path is none that VTK's own reader survives.
TEST_F(CgnsFiles, FamiliesAreNothingToMeshes) {
    create();
    addZone("Zone");
    addSection("Cells", CGNS_ENUMV(HEXA_8), 1, 1);
    ASSERT_EQ(cg_goto(m_file, m_base, "Zone_t", m_zone, "end"), CG_OK);
    ASSERT_EQ(cg_famname_write("/Fluid"), CG_OK);
    close();
    EXPECT_EQ(errorText(), "");
}

TEST_F(CgnsFiles, ArraysHaveToBeNumbers) {
    create();
    addZone("Zone");
    addSection("Cells", CGNS_ENUMV(HEXA_8), 1, 1);
    addSolution("Values", CGNS_ENUMV(Vertex), "a");
    ASSERT_EQ(cg_goto(m_file, m_base, "Zone_t", m_zone, "FlowSolution_t", 1, "end"), CG_OK);
    const cgsize_t size = 8;
    ASSERT_EQ(cg_array_write("Text", CGNS_ENUMV(Character), 1, &size, "abcdefgh"), CG_OK);
    close();
    EXPECT_EQ(errorText(), "base 'Base': zone 'Zone': has an array 'Text' of the type 'C1'");
}

struct Damage {
    const char* node;
    std::vector<int> numbers;
    const char* text;
};

class DamagedCgnsFiles : public CgnsFiles {
protected:
    void SetUp() override {
        create();
        addZone("Zone", 2);
        addSection("Cells", CGNS_ENUMV(HEXA_8), 1, 2);
        addSolution("Values", CGNS_ENUMV(Vertex), "a");
        addTimes({0.5});
        close();
    }
};

// Each of these VTK would believe, or end the process.
TEST_F(DamagedCgnsFiles, AreRefused) {
    const Damage all[] = {
        {"/Base", {3}, "base 'Base': does not tell its dimensions"},
        {"/Base", {3, 4}, "base 'Base': has cells of 3 dimensions in 4"},
        {"/Base", {3, 2}, "base 'Base': has cells of 3 dimensions in 2"},
        {"/Base/TimeIterValues", {0}, "base 'Base': 'TimeIterValues' does not tell its times"},
        {"/Base/TimeIterValues", {2}, "base 'Base': 'TimeIterValues' does not tell its times"},
        {"/Base/TimeIterValues", {2000000000}, "base 'Base': 'TimeIterValues' does not tell its times"},
        {"/Base/Zone",
         {8, 2, 0, 0, 0, 0, 0, 0, 0, 0},
         "base 'Base': zone 'Zone': has no counts of its nodes and cells"},
        {"/Base/Zone", {8}, "base 'Base': zone 'Zone': has no counts of its nodes and cells"},
        {"/Base/Zone", {0, 2, 0}, "base 'Base': zone 'Zone': has counts of nodes and cells that cannot be"},
        {"/Base/Zone", {8, -1, 0}, "base 'Base': zone 'Zone': has counts of nodes and cells that cannot be"},
        {"/Base/Zone", {9, 2, 0}, "base 'Base': zone 'Zone': has an array 'CoordinateX' of another size"},
        {"/Base/Zone", {8, 3, 0}, "base 'Base': zone 'Zone': does not number its cells from 1 on, without gaps"},
        {"/Base/Zone/GridCoordinates/CoordinateX",
         {1, 2, 3, 4, 5, 6, 7, 8},
         "base 'Base': zone 'Zone': has coordinates 'CoordinateX' that are not Cartesian reals"},
        {"/Base/Zone/Cells",
         {99, 0},
         "base 'Base': zone 'Zone': the elements of section 'Cells' are not as many as it tells"},
        {"/Base/Zone/Cells",
         {10, 0},
         "base 'Base': zone 'Zone': the elements of section 'Cells' are not as many as it tells"},
        {"/Base/Zone/Cells",
         {17},
         "base 'Base': zone 'Zone': section 'Cells' does not tell its elements and their range"},
        {"/Base/Zone/Cells/ElementRange",
         {1},
         "base 'Base': zone 'Zone': section 'Cells' does not tell its elements and their range"},
        {"/Base/Zone/Cells/ElementRange",
         {0, 1},
         "base 'Base': zone 'Zone': the elements of section 'Cells' are not as many as it tells"},
        {"/Base/Zone/Cells/ElementRange",
         {2, 1},
         "base 'Base': zone 'Zone': the elements of section 'Cells' are not as many as it tells"},
        {"/Base/Zone/Cells/ElementConnectivity",
         {1, 2, 3, 4, 5, 6, 7, 8},
         "base 'Base': zone 'Zone': the elements of section 'Cells' are not as many as it tells"},
        {"/Base/Zone/Values/a", {1, 2, 3}, "base 'Base': zone 'Zone': has an array 'a' of another size"},
    };
    const std::string whole = m_folder.path() + "/whole.cgns";
    std::filesystem::copy(path(), whole);
    for (const Damage& damage : all) {
        std::filesystem::copy(whole, path(), std::filesystem::copy_options::overwrite_existing);
        EXPECT_EQ(errorText(), "");
        replace(damage.node, damage.numbers);
        EXPECT_EQ(errorText(), damage.text) << damage.node;
    }
}

TEST_F(CgnsFiles, ElementsOfSeveralTypesAreLookedAt) {
    create();
    addZone("Zone", 2);
    const Numbers nodes = {CGNS_ENUMV(TETRA_4), 1, 2, 3, 5, CGNS_ENUMV(TRI_3), 1, 2, 3};
    const Numbers offsets = {0, 5, 9};
    int index = 0;
    ASSERT_EQ(cg_poly_section_write(m_file, m_base, m_zone, "All", CGNS_ENUMV(MIXED), 1, 2, 0, nodes.data(),
                                    offsets.data(), &index),
              CG_OK);
    close();
    EXPECT_EQ(errorText(), "");
    const std::string text = "zone 'Zone': the elements of section 'All' are not as many as it tells";
    for (const std::vector<int>& bad : {std::vector<int>{10, 1, 2, 3, 5, 17, 1, 2, 3},
                                        {10, 1, 2, 3, 5, 999, 1, 2, 3},
                                        {10, 1, 2, 3, 5, 3, 1, 2, 3},
                                        {10, 1, 2, 3, 5, 20, 1, 2, 3}}) {
        replace("/Base/Zone/All/ElementConnectivity", bad);
        EXPECT_EQ(errorText(), text);
    }
}

// The first has offsets, as version 4 wants them, the second counts.
TEST_F(CgnsFiles, PolygonsAreWrittenInTwoWays) {
    create(2, 3);
    addZone("Zone", 2);
    const Numbers nodes = {1, 2, 4, 3, 5, 6, 7};
    const Numbers offsets = {0, 4, 7};
    int index = 0;
    ASSERT_EQ(cg_poly_section_write(m_file, m_base, m_zone, "Faces", CGNS_ENUMV(NGON_n), 1, 2, 0, nodes.data(),
                                    offsets.data(), &index),
              CG_OK);
    close();
    const auto expectFaces = [this] {
        const auto source = orvtest::openVtk(path());
        const ug::DataElements& elements = *source->state(0)->geometry(0)->part(0)->elements();
        ASSERT_EQ(elements.elementCount(), 2u);
        EXPECT_THAT(elements.nodeIndexes(0), ElementsAre(0, 1, 3, 2));
        EXPECT_THAT(elements.nodeIndexes(1), ElementsAre(4, 5, 6));
    };
    expectFaces();
    const std::string text = "zone 'Zone': the elements of section 'Faces' are not as many as it tells";
    for (const std::vector<int>& bad : {std::vector<int>{0, 4}, {0, 8, 7}, {1, 4, 7}, {0, 4, 6}}) {
        replace("/Base/Zone/Faces/ElementStartOffset", bad);
        EXPECT_EQ(errorText(), text);
    }
    remove("/Base/Zone/Faces", "ElementStartOffset");
    for (const std::vector<int>& bad :
         {std::vector<int>{4, 1, 2, 4, 3, 4, 5, 6, 7}, {4, 1, 2, 4, 3, 0, 5, 6, 7}, {4, 1, 2, 4, 3, 2, 5, 6, 7}}) {
        replace("/Base/Zone/Faces/ElementConnectivity", bad);
        EXPECT_EQ(errorText(), text);
    }
    replace("/Base/Zone/Faces/ElementConnectivity", std::vector<int>{4, 1, 2, 4, 3, 3, 5, 6, 7});
    expectFaces();
}

TEST_F(CgnsFiles, PolyhedraAreLeftOut) {
    create();
    addZone("Zone");
    const Numbers nodes = {1, 2, 3, 1, 2, 5, 2, 3, 5, 3, 1, 5};
    const Numbers offsets = {0, 3, 6, 9, 12};
    const Numbers faces = {1, 2, 3, 4};
    const Numbers faceOffsets = {0, 4};
    int index = 0;
    ASSERT_EQ(cg_poly_section_write(m_file, m_base, m_zone, "Faces", CGNS_ENUMV(NGON_n), 1, 4, 0, nodes.data(),
                                    offsets.data(), &index),
              CG_OK);
    ASSERT_EQ(cg_poly_section_write(m_file, m_base, m_zone, "Cells", CGNS_ENUMV(NFACE_n), 5, 5, 0, faces.data(),
                                    faceOffsets.data(), &index),
              CG_OK);
    addSolution("Values", CGNS_ENUMV(Vertex), "a");
    close();
    const auto source = orvtest::openVtk(path());
    ASSERT_TRUE(orvtest::load(source.get(), 1, {orvtest::findResult(source.get(), "a")}));
    const ug::DataPart* part = source->state(0)->geometry(0)->part(0);
    EXPECT_EQ(part->nodes()->nodeCount(), 8u);
    EXPECT_EQ(part->elements()->elementCount(), 0u);
    const std::vector<Str>& warnings = source->directory()->warnings();
    ASSERT_EQ(warnings.size(), 1u);
    EXPECT_THAT(warnings[0].toStdString(), HasSubstr("1 cells of VTK cell type 42 (vtkPolyhedron) are left out"));
}

TEST_F(CgnsFiles, NodesHaveToBeThere) {
    create();
    addZone("Zone");
    addSection("Cells", CGNS_ENUMV(HEXA_8), 1, 1);
    close();
    for (const int bad : {0, -1, 9}) {
        replace("/Base/Zone/Cells/ElementConnectivity", std::vector<int>{1, 2, 3, 4, 5, 6, 7, bad});
        EXPECT_EQ(errorText(), "cell 0 has a point that is not one of the 8 points of its mesh");
    }
    const std::vector<std::int64_t> large = {1, 2, 3, 4, 5, 6, 7, (std::int64_t(1) << 32) + 8};
    replaceData("/Base/Zone/Cells/ElementConnectivity", "I8", large.size(), large.data());
    EXPECT_EQ(errorText(), "cell 0 has a point that is not one of the 8 points of its mesh");
}

// Which is no error, as pointers to solutions that are not there have always been passed over.
TEST_F(CgnsFiles, WithoutASolutionOfThatNameItIsTheFirstOne) {
    create();
    addZone("Zone");
    addSection("Cells", CGNS_ENUMV(HEXA_8), 1, 1);
    addSolution("Values", CGNS_ENUMV(Vertex), "a");
    addTimes({0.5});
    addFlowPointers({"Other"});
    close();
    const auto source = orvtest::openVtk(path());
    const ug::ResultInfo info = orvtest::findResult(source.get(), "a");
    ASSERT_TRUE(orvtest::load(source.get(), 1, {info}));
    EXPECT_EQ(source->state(0)->results(source->state(0)->geometry(0))->find(info)->values(0)->span()[7], 1.5);
}

TEST_F(CgnsFiles, EachZoneMayHavePointers) {
    create();
    for (const char* name : {"Still", "Moving"}) {
        addZone(name);
        addSection("Cells", CGNS_ENUMV(HEXA_8), 1, 1);
        addSolution("First", CGNS_ENUMV(Vertex), "a");
        addSolution("Second", CGNS_ENUMV(Vertex), "b");
    }
    addFlowPointers({"First", "Second"});
    addTimes({0.5, 1});
    close();
    EXPECT_THAT(warnings(), ElementsAre("solutions at no time are left out: 'Still/Second'"));
    const auto source = orvtest::openVtk(path());
    const ug::ResultInfo a = orvtest::findResult(source.get(), "a");
    const ug::ResultInfo b = orvtest::findResult(source.get(), "b");
    ASSERT_TRUE(orvtest::load(source.get(), 2, {a, b}));
    const ug::DataState* state = source->state(1);
    const auto valueOf = [&](const ug::ResultInfo& info, std::size_t part) {
        return state->results(state->geometry(0))->find(info)->values(part)->span()[0];
    };
    EXPECT_EQ(valueOf(a, 0), 1.5);
    EXPECT_EQ(valueOf(a, 1), UNDEFINED_DOUBLE);
    EXPECT_EQ(valueOf(b, 0), UNDEFINED_DOUBLE);
    EXPECT_EQ(valueOf(b, 1), 1.5);
}

// The last one by their names.
TEST_F(CgnsFiles, OfSolutionsAtATimeOneHasEachArray) {
    create();
    addZone("Zone");
    addSection("Cells", CGNS_ENUMV(HEXA_8), 1, 1);
    addSolution("Late", CGNS_ENUMV(Vertex), "a", 2);
    addSolution("Early", CGNS_ENUMV(Vertex), "a", 1);
    addFlowPointers({"Late"});
    addFlowPointers({"Early"}, "FlowSolutionOtherPointers");
    addTimes({0.5});
    close();
    const auto source = orvtest::openVtk(path());
    const ug::ResultInfo info = orvtest::findResult(source.get(), "a");
    ASSERT_TRUE(orvtest::load(source.get(), 1, {info}));
    EXPECT_EQ(source->state(0)->results(source->state(0)->geometry(0))->find(info)->values(0)->span()[0], 2);
}

/// A file whose only zone has its coordinates elsewhere.
class CgnsLinks : public CgnsFiles {
protected:
    void createWithLink(const std::string& file, const char* target) {
        create();
        const Numbers sizes = {8, 1, 0};
        ASSERT_EQ(cg_zone_write(m_file, m_base, "Zone", sizes.data(), CGNS_ENUMV(Unstructured), &m_zone), CG_OK);
        ASSERT_EQ(cg_goto(m_file, m_base, "Zone_t", m_zone, "end"), CG_OK);
        ASSERT_EQ(cg_link_write("GridCoordinates", file.c_str(), target), CG_OK);
        addSection("Cells", CGNS_ENUMV(HEXA_8), 1, 1);
        close();
    }

    void createOther() {
        create();
        addZone("Zone");
        close();
        std::filesystem::rename(path(), other());
    }

    std::string other() const {
        return m_folder.path() + "/b.cgns";
    }
};

TEST_F(CgnsLinks, ToOtherFilesAreFollowed) {
    createOther();
    createWithLink("b.cgns", "/Base/Zone/GridCoordinates");
    EXPECT_EQ(errorText(), "");
    EXPECT_EQ(orvtest::openVtk(path())->state(0)->geometry(0)->part(0)->nodes()->node(7), Vec3d(0, 1, 1));
}

TEST_F(CgnsLinks, ToDamagedFilesAreRefused) {
    createOther();
    createWithLink("b.cgns", "/Base/Zone/GridCoordinates");
    std::filesystem::resize_file(other(), std::filesystem::file_size(other()) / 2);
    EXPECT_EQ(errorText(), "links to '" + other() + "', which is damaged: its nodes are not where they should be");
    std::filesystem::remove(other());
    EXPECT_THAT(errorText(), HasSubstr("ADF"));
}

// The library has room for 512 letters.
TEST_F(CgnsLinks, InHdf5HaveToBeShort) {
    m_type = CG_FILE_HDF5;
    createOther();
    createWithLink("b.cgns", "/Base/Zone/GridCoordinates");
    EXPECT_EQ(errorText(), "");
    std::string way;
    for (int i = 0; i < 300; ++i) {
        way += "./";
    }
    createWithLink(way + "b.cgns", "/Base/Zone/GridCoordinates");
    EXPECT_EQ(errorText(), "is damaged, or no CGNS file");
}

// The library would go around until there is no more memory.
TEST_F(CgnsLinks, HaveToEnd) {
    createWithLink("", "/Base/Zone/GridCoordinates/Grid");
    EXPECT_EQ(errorText(), "has a link in '" + path() + "' that leads nowhere: 'GridCoordinates'");
}

// Nodes on edges lie in the middle of ours, in sections of one type and of several.
TEST(CgnsSamples, NodesOfQuadraticElementsAreOnTheirEdges) {
    const auto source = orvtest::openVtk(cgnsFile("cells.cgns"));
    for (const std::size_t p : {std::size_t(1), std::size_t(2)}) {
        const ug::DataPart* part = source->state(0)->geometry(0)->part(p);
        const ug::DataElements& elements = *part->elements();
        ASSERT_EQ(elements.elementCount(), 11u);
        for (std::size_t e = 0; e < elements.elementCount(); ++e) {
            const auto nodes = elements.nodeIndexes(e);
            const ug::ElementType type = elements.elementType(e);
            const ug::ElementTypeInfo& info = ug::elementTypeInfo(type);
            ASSERT_EQ(info.nodeCount, info.cornerCount + info.edgeCount) << info.name;
            for (std::size_t edge = 0; edge < info.edgeCount; ++edge) {
                const auto ends = ug::elementEdge(type, edge);
                const Vec3d sum = part->nodes()->node(nodes[ends[0]]) + part->nodes()->node(nodes[ends[1]]);
                EXPECT_EQ(part->nodes()->node(nodes[info.cornerCount + edge]), sum * 0.5) << info.name << " " << edge;
            }
        }
    }
}

TEST(CgnsSamples, OpeningReadsNoMeshAndALoadBringsItAlong) {
    const ScratchFolder folder;
    const std::string path = folder.path() + "/states.cgns";
    std::filesystem::copy(cgnsFile("states.cgns"), path);
    const auto source = orvtest::openVtk(path);
    EXPECT_LT(source->state(0)->geometry(0)->byteCount(), 20u); // Two empty lists of elements are not quite empty.
    const ug::ResultInfo info = orvtest::findResult(source.get(), "Displacement");
    ASSERT_TRUE(orvtest::load(source.get(), 2, {info}));
    EXPECT_EQ(source->state(0)->geometry(0), source->state(1)->geometry(0));
    std::filesystem::remove(path);
    EXPECT_EQ(source->state(0)->geometry(0)->part(1)->elements()->elementCount(), 2u);
    ug::Error error;
    EXPECT_FALSE(orvtest::load(source.get(), 1, {info}, &error));
    EXPECT_THAT(error.message().toStdString(), HasSubstr("states.cgns"));
}

TEST(CgnsSamples, AStateHasTheResultsOfItsTime) {
    const auto source = orvtest::openVtk(cgnsFile("states.cgns"));
    EXPECT_EQ(source->directory()->stateInfo(1).name(), Str("Time 2"));
    const ug::ResultInfo info = orvtest::findResult(source.get(), "Peak");
    EXPECT_FALSE(source->directory()->hasResult(1, info));
    EXPECT_TRUE(source->directory()->hasResult(2, info));
}

TEST(CgnsSamples, GridsThatMoveAreMeshesOfTheirOwn) {
    const auto source = orvtest::openVtk(cgnsFile("moving.cgns"));
    EXPECT_NE(source->state(0)->geometry(0), source->state(1)->geometry(0));
    EXPECT_EQ(source->state(0)->geometry(0)->part(0)->nodes()->node(0), Vec3d(0, 0, 0));
    EXPECT_EQ(source->state(1)->geometry(0)->part(0)->nodes()->node(0), Vec3d(1, 0, 0));
    EXPECT_EQ(source->state(0)->geometry(0)->part(1)->nodes()->nodeCount(), 0u);
}

} // namespace
