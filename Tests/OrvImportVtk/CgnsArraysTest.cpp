#include "OrvImportVtk/CgnsArrays.h"

#include <gtest/gtest.h>

using namespace orv;
using namespace orv::imp::cae;

namespace {

std::vector<CgnsArray> reals(const std::vector<std::string>& names) {
    std::vector<CgnsArray> arrays;
    for (const std::string& name : names) {
        arrays.push_back({name, "R8"});
    }
    return arrays;
}

/// "name", or "name(components)" of what VTK puts together; "name(3)" when the components have no names.
std::vector<std::string> describe(const std::vector<CaeArray>& arrays) {
    std::vector<std::string> texts;
    for (const CaeArray& array : arrays) {
        std::string names;
        for (const std::string& name : array.componentNames) {
            names += (names.empty() ? "" : " ") + name;
        }
        texts.push_back(array.componentCount == 1 ? array.name
                                                  : array.name + "(" + (names.empty() ? "3" : names) + ")");
    }
    return texts;
}

using Texts = std::vector<std::string>;

struct Joined {
    Texts arrays;
    Texts lost;
    std::string error;
};

Joined join(const std::vector<CgnsArray>& arrays, int dimension = 3) {
    std::vector<CaeArray> joined;
    Joined result;
    ug::Error error;
    if (!joinCgnsArrays(arrays, ug::PER_NODE, dimension, &joined, &result.lost, &error)) {
        result.error = error.message().toStdString();
    }
    result.arrays = describe(joined);
    return result;
}

TEST(CgnsArrays, XYAndZAreOneArray) {
    EXPECT_EQ(join(reals({"VelocityX", "Pressure", "VelocityZ", "VelocityY"})).arrays,
              (Texts{"Velocity(VelocityX VelocityY VelocityZ)", "Pressure"}));
    EXPECT_EQ(join(reals({"flux_x", "flux_y", "flux_z"})).arrays, Texts{"flux(flux_x flux_y flux_z)"});
}

// The row XX, XY and XZ is one to VTK; our results go by the names of the components.
TEST(CgnsArrays, RowsOfTensorsAreTaken) {
    EXPECT_EQ(join(reals({"StressXX", "StressXY", "StressXZ", "StressYY", "StressYZ", "StressZZ"})).arrays,
              (Texts{"StressX(StressXX StressXY StressXZ)", "StressYY", "StressYZ", "StressZZ"}));
}

TEST(CgnsArrays, WhatIsNotWholeStaysAlone) {
    // One is missing, a blank before the ending, the name itself is taken, no ending.
    for (const Texts& names : {Texts{"VelocityX", "VelocityY"}, Texts{"vx", "vy", "vz"}, Texts{"VX", "VY", "VZ", "V"},
                               Texts{"a", "b", "c"}}) {
        EXPECT_EQ(join(reals(names)).arrays, names);
    }
    std::vector<CgnsArray> mixed = reals({"VX", "VY", "VZ"});
    mixed[1].type = "R4";
    EXPECT_EQ(join(mixed).arrays, (Texts{"VX", "VY", "VZ"}));
}

TEST(CgnsArrays, InAPlaneXAndYAreEnough) {
    EXPECT_EQ(join(reals({"VelocityX", "VelocityY"}), 2).arrays, Texts{"Velocity(3)"});
    EXPECT_EQ(join(reals({"StressXX", "StressXY", "StressYY"}), 2).arrays,
              (Texts{"StressX(StressXX StressXY)", "StressYY"}));
}

// VTK takes 1 + 2 + 3 for whole, and takes Z for a component where there is none.
TEST(CgnsArrays, WhatVtkCannotTellApartIsRefused) {
    EXPECT_EQ(join(reals({"VorticityZ"}), 2).error, "does not tell which arrays are components of 'Vorticity'");
    EXPECT_EQ(join(reals({"aX", "a_x", "aY", "a_y"})).error, "does not tell which arrays are components of 'a'");
    const Joined flat = join(reals({"VelocityX", "VelocityY", "VelocityZ"}), 2);
    EXPECT_EQ(flat.arrays, (Texts{"VelocityX", "VelocityY"}));
    EXPECT_EQ(flat.lost, Texts{"VelocityZ"});
}

} // namespace
