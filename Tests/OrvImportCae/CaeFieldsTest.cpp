#include "OrvImportCae/CaeFields.h"

#include <gtest/gtest.h>

using namespace orv;
using namespace orv::imp::cae;

namespace {

std::vector<CaeArray> scalars(const std::vector<std::string>& names) {
    std::vector<CaeArray> arrays;
    for (const std::string& name : names) {
        arrays.push_back({name});
    }
    return arrays;
}

/// "name type array.component ..." for each field.
std::vector<std::string> describe(const std::vector<CaeField>& fields) {
    std::vector<std::string> texts;
    for (const CaeField& field : fields) {
        std::string text = field.name + " " + std::to_string(field.type);
        for (const CaeComponent& component : field.components) {
            text += " " + std::to_string(component.array) + "." + std::to_string(component.index);
        }
        texts.push_back(text);
    }
    return texts;
}

using Texts = std::vector<std::string>;

Texts make(const std::vector<CaeArray>& arrays, Texts* warnings = nullptr) {
    Texts ignored;
    return describe(makeCaeFields(arrays, warnings ? warnings : &ignored));
}

std::string typed(const std::string& name, ug::ResultType type, const std::string& components) {
    return name + " " + std::to_string(type) + " " + components;
}

TEST(CaeFields, TypesGoByTheComponents) {
    EXPECT_EQ(resultTypeOf(1, "u"), ug::SCALAR);
    EXPECT_EQ(resultTypeOf(3, "Velocity"), ug::VECTOR);
    EXPECT_EQ(resultTypeOf(3, "Displacement"), ug::DISPLACEMENT);
    EXPECT_EQ(resultTypeOf(6, "Displacement"), ug::SYMMETRIC_TENSOR);
    EXPECT_EQ(resultTypeOf(9, "Stress"), ug::SYMMETRIC_TENSOR);
    for (const int count : {0, 2, 4, 5, 7, 8, 10}) {
        EXPECT_EQ(resultTypeOf(count, "Displacement"), ug::NO_RESULT_TYPE) << count;
    }
}

TEST(CaeFields, NamesOfDisplacements) {
    for (const char* name : {"disp", "DISPL", "Displacement", "displacements", "depl", "DEPL", "U", "u", "dis",
                             "Deformation", "disp_", "results/U", "resu.DEPL"}) {
        EXPECT_TRUE(isDisplacementName(name)) << name;
    }
    for (const char* name : {"", "_", "velocity", "disparity", "u/v", "U1", "umag", "display"}) {
        EXPECT_FALSE(isDisplacementName(name)) << name;
    }
}

TEST(CaeFields, EachArrayThatFitsIsOne) {
    Texts warnings;
    const Texts fields = make({{"t"},
                               {"pair", ug::PER_NODE, 2},
                               {"v", ug::PER_NODE, 3},
                               {"U", ug::PER_NODE, 3},
                               {"six", ug::PER_ELEMENT, 6},
                               {"nine", ug::PER_NODE, 9},
                               {"text", ug::PER_NODE, 0}},
                              &warnings);
    EXPECT_EQ(fields, (Texts{typed("t", ug::SCALAR, "0.0"), typed("v", ug::VECTOR, "2.0 2.1 2.2"),
                             typed("U", ug::DISPLACEMENT, "3.0 3.1 3.2"),
                             typed("six", ug::SYMMETRIC_TENSOR, "4.0 4.1 4.2 4.3 4.4 4.5"),
                             typed("nine", ug::SYMMETRIC_TENSOR, "5.0 5.4 5.8 5.1 5.5 5.2")}));
    EXPECT_EQ(warnings, (Texts{"array 'pair' is left out: it has 2 components",
                               "array 'text' is left out: it holds no numbers"}));
}

TEST(CaeFields, SixOfAnOrderOfTheirOwn) {
    const CaeArray array{"S", ug::PER_NODE, 6, {}, {}, {0, 1, 2, 3, 5, 4}};
    EXPECT_EQ(make({array}), Texts{typed("S", ug::SYMMETRIC_TENSOR, "0.0 0.1 0.2 0.3 0.5 0.4")});
}

TEST(CaeFields, ScalarsThatBelongTogetherAreOneResult) {
    EXPECT_EQ(make(scalars({"a", "dispz", "dispx", "b", "dispy"})),
              (Texts{typed("a", ug::SCALAR, "0.0"), typed("disp", ug::DISPLACEMENT, "2.0 4.0 1.0"),
                     typed("b", ug::SCALAR, "3.0")}));
    EXPECT_EQ(make(scalars({"VEL_X", "VEL_Y", "VEL_Z"})), Texts{typed("VEL", ug::VECTOR, "0.0 1.0 2.0")});
    EXPECT_EQ(make(scalars({"sxx", "sxy", "sxz", "syy", "syz", "szz"})),
              Texts{typed("s", ug::SYMMETRIC_TENSOR, "0.0 3.0 5.0 1.0 4.0 2.0")});
    EXPECT_EQ(make(scalars({"S-11", "S-22", "S-33", "S-12", "S-23", "S-31"})),
              Texts{typed("S", ug::SYMMETRIC_TENSOR, "0.0 1.0 2.0 3.0 4.0 5.0")});
    EXPECT_EQ(make(scalars({"eYX", "eXX", "eZY", "eYY", "eZX", "eZZ"})),
              Texts{typed("e", ug::SYMMETRIC_TENSOR, "1.0 3.0 5.0 0.0 2.0 4.0")});
}

TEST(CaeFields, ScalarsThatDoNotStayAlone) {
    // One is missing, no name is left, the letters are of either size, or numbers that may be anything.
    for (const Texts& names :
         {Texts{"dispx", "dispy"}, Texts{"x", "y", "z"}, Texts{"_x", "_y", "_z"}, Texts{"vx", "vY", "vz"},
          Texts{"v1", "v2", "v3"}, Texts{"sxx", "syy", "szz", "sxy", "syz"}}) {
        EXPECT_EQ(make(scalars(names)).size(), names.size()) << names[0];
    }
    std::vector<CaeArray> mixed = scalars({"vx", "vy", "vz"});
    mixed[2].mapping = ug::PER_ELEMENT;
    EXPECT_EQ(make(mixed).size(), 3u);
    std::vector<CaeArray> partial = scalars({"vx", "vy", "vz"});
    partial[1].steps = {2};
    EXPECT_EQ(make(partial).size(), 3u);
}

// As VTK puts the variables of an Exodus file together.
TEST(CaeFields, ComponentsWithNamesGoByThem) {
    const std::vector<CaeArray> arrays = {{"STRESSX", ug::PER_NODE, 3, {"STRESSXX", "STRESSXY", "STRESSXZ"}},
                                          {"STRESSYY", ug::PER_NODE, 1, {"STRESSYY"}},
                                          {"STRESSYZ", ug::PER_NODE, 1, {"STRESSYZ"}},
                                          {"STRESSZZ", ug::PER_NODE, 1, {"STRESSZZ"}},
                                          {"PAIR", ug::PER_NODE, 2, {"PAIR_X", "PAIR_Y"}}};
    EXPECT_EQ(make(arrays), (Texts{typed("STRESS", ug::SYMMETRIC_TENSOR, "0.0 1.0 3.0 0.1 2.0 0.2"),
                                   typed("PAIR_X", ug::SCALAR, "4.0"), typed("PAIR_Y", ug::SCALAR, "4.1")}));
}

} // namespace
