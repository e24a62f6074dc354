#include "OrvImportVtk/CgnsValues.h"
#include "Tests/Support/ScratchFolder.h"

#include <gtest/gtest.h>
#include <vtk_cgns.h>

// clang-format off
#include VTK_CGNS(cgns_io.h)
// clang-format on

using namespace orv;
using namespace orv::imp::cae;

namespace {

using Doubles = std::vector<double>;

/// A file with nodes below the outermost one.
class CgnsValues : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_EQ(cgio_open_file(path().c_str(), CGIO_MODE_WRITE, CGIO_FILE_ADF, &m_file), 0);
        cgio_get_root_id(m_file, &m_root);
    }

    template <class Number>
    void add(const char* name, const char* type, const std::vector<cgsize_t>& sizes,
             const std::vector<Number>& numbers) {
        double id = 0;
        ASSERT_EQ(cgio_create_node(m_file, m_root, name, &id), 0);
        ASSERT_EQ(cgio_set_dimensions(m_file, id, type, int(sizes.size()), sizes.data()), 0);
        ASSERT_EQ(cgio_write_all_data(m_file, id, numbers.data()), 0);
    }

    // With -1 where nothing has been read; empty on failure.
    Doubles read(const char* name, const CgnsCounts& counts, const CgnsRind& rind, std::size_t stride = 1) {
        if (m_file != 0) {
            cgio_close_file(m_file);
            m_file = 0;
        }
        CgnsTree tree;
        CgnsNode root;
        CgnsNode node;
        Doubles values(cgnsItemCount(counts) * stride, -1);
        m_error = ug::Error();
        if (tree.open(path(), &m_error) && tree.findRoot(&root, &m_error) && tree.find(root, name, &node, &m_error) &&
            readCgnsValues(tree, node, counts, rind, stride, values.data(), &m_error)) {
            return values;
        }
        return {};
    }

    std::string path() const {
        return m_folder.path() + "/a.cgns";
    }

    orvtest::ScratchFolder m_folder;
    int m_file = 0;
    double m_root = 0;
    ug::Error m_error;
};

TEST_F(CgnsValues, AreOfAnyTypeOfNumbers) {
    add<double>("R8", "R8", {3}, {1.5, -2, 1e300});
    add<float>("R4", "R4", {3}, {1.5F, -2, 3});
    add<std::int32_t>("I4", "I4", {3}, {1, -2, 2147483647});
    add<std::int64_t>("I8", "I8", {3}, {1, -2, std::int64_t(1) << 40});
    EXPECT_EQ(read("R8", {3}, {}), (Doubles{1.5, -2, 1e300}));
    EXPECT_EQ(read("R4", {3}, {}), (Doubles{1.5, -2, 3}));
    EXPECT_EQ(read("I4", {3}, {}), (Doubles{1, -2, 2147483647}));
    EXPECT_EQ(read("I8", {3}, {}), (Doubles{1, -2, 1099511627776}));
}

TEST_F(CgnsValues, OfTextsThereAreNone) {
    add<char>("Text", "C1", {3}, {'a', 'b', 'c'});
    EXPECT_EQ(read("Text", {3}, {}), Doubles());
    EXPECT_EQ(m_error.message(), Str("has an array 'Text' of the type 'C1'"));
}

TEST_F(CgnsValues, GoToEveryOtherPlace) {
    add<double>("R8", "R8", {2}, {5, 6});
    add<float>("R4", "R4", {2}, {5, 6});
    EXPECT_EQ(read("R8", {2}, {}, 3), (Doubles{5, -1, -1, 6, -1, -1}));
    EXPECT_EQ(read("R4", {2}, {}, 3), (Doubles{5, -1, -1, 6, -1, -1}));
}

// 4 x 3 numbers, of which the first column, the last one and the last row are around the others.
TEST_F(CgnsValues, AreWithoutTheLayersAroundThem) {
    add<double>("Plane", "R8", {4, 3}, {0, 1, 2, 3, 10, 11, 12, 13, 20, 21, 22, 23});
    EXPECT_EQ(read("Plane", {2, 2}, {1, 1, 0, 1}), (Doubles{1, 2, 11, 12}));
    EXPECT_EQ(read("Plane", {4, 1}, {0, 0, 2, 0}), (Doubles{20, 21, 22, 23}));
}

TEST_F(CgnsValues, OfABlockHaveThreeDimensions) {
    add<float>("Block", "R4", {2, 2, 3}, {0, 1, 10, 11, 100, 101, 110, 111, 200, 201, 210, 211});
    EXPECT_EQ(read("Block", {1, 2, 2}, {1, 0, 0, 0, 1, 0}), (Doubles{101, 111, 201, 211}));
    EXPECT_EQ(read("Block", {2, 0, 3}, {}), Doubles());
    EXPECT_TRUE(m_error.isEmpty());
}

TEST_F(CgnsValues, HaveToBeAsManyAsTheyShould) {
    add<double>("Plane", "R8", {4, 3}, Doubles(12));
    for (const auto& [counts, rind] :
         {std::pair<CgnsCounts, CgnsRind>{{4, 3}, {0, 0, 1, 0}}, {{5, 3}, {}}, {{4, 3, 1}, {}}, {{12}, {}}}) {
        EXPECT_EQ(read("Plane", counts, rind), Doubles());
        EXPECT_EQ(m_error.message(), Str("has an array 'Plane' of another size"));
    }
}

TEST_F(CgnsValues, HaveToBeThere) {
    add<double>("Plane", "R8", {4}, Doubles(4));
    EXPECT_EQ(read("Line", {4}, {}), Doubles());
    EXPECT_TRUE(m_error.message().toStdString().starts_with("'Line' cannot be found: "));
}

} // namespace
