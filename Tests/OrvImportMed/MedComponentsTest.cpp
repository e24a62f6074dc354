#include "OrvImportMed/MedComponents.h"

#include <gtest/gtest.h>

#include <ostream>
#include <sstream>

using namespace orv;
using imp::cae::gatherMedComponents;

namespace {

struct Case {
    std::string field;
    std::vector<std::string> components;
    std::string expected; ///< "NAME type columns; ..."
};

std::string told(const std::vector<imp::cae::MedColumns>& results) {
    std::ostringstream text;
    for (const imp::cae::MedColumns& result : results) {
        text << (text.tellp() > 0 ? "; " : "") << result.name << " " << result.type;
        for (const int column : result.columns) {
            text << " " << column;
        }
    }
    return text.str();
}

// Types: 1 scalar, 2 vector, 3 displacement, 4 symmetric tensor. Column -1 is a 0.
const Case CASES[] = {
    {"T", {"TEMP"}, "T 1 0"},
    {"T", {""}, "T 1 0"},
    {"U", {"DX", "DY", "DZ"}, "U 3 0 1 2"},
    {"U", {"DZ", "DX", "DY"}, "U 3 1 2 0"},
    {"U", {"DX", "DY"}, "U 3 0 1 -1"},
    {"U", {"DX"}, "U 1 0"},
    {"U", {"DX", "DY", "DZ", "DRX", "DRY", "DRZ"}, "U 3 0 1 2; U.DRX 1 3; U.DRY 1 4; U.DRZ 1 5"},
    {"U", {"PRES", "DX", "DY", "DZ"}, "U.PRES 1 0; U.D 3 1 2 3"},
    // What code_aster calls so has the components of a displacement and is none.
    {"R_______VITE", {"DX", "DY", "DZ"}, "R_______VITE 2 0 1 2"},
    {"R_______ACCE", {"DX", "DY"}, "R_______ACCE 2 0 1 -1"},
    {"R_______REAC_NODA", {"DX", "DY", "DZ", "DRX"}, "R_______REAC_NODA 2 0 1 2; R_______REAC_NODA.DRX 1 3"},
    {"R_______FORC_NODA", {"DX", "DY", "DZ"}, "R_______FORC_NODA 2 0 1 2"},
    {"R_______DEPL", {"DX", "DY", "DZ"}, "R_______DEPL 3 0 1 2"},
    {"F", {"FLUX", "FLUY", "FLUZ"}, "F 2 0 1 2"},
    {"F", {"X", "Y", "Z"}, "F 2 0 1 2"},
    {"F", {"X", "Y"}, "F.X 1 0; F.Y 1 1"},
    {"F", {"X", "Y", "Z", "P"}, "F.X 1 0; F.Y 1 1; F.Z 1 2; F.P 1 3"},
    {"F", {"", "", ""}, "F 2 0 1 2"},
    {"F", {"", ""}, "F.1 1 0; F.2 1 1"},
    {"F", {"A", "A", "B"}, "F.A 1 0; F.2 1 1; F.B 1 2"},
    // The shears of MED files are XY XZ YZ, ours XY YZ ZX.
    {"S", {"SIXX", "SIYY", "SIZZ", "SIXY", "SIXZ", "SIYZ"}, "S 4 0 1 2 3 5 4"},
    {"S", {"SIYZ", "SIXZ", "SIXY", "SIZZ", "SIYY", "SIXX"}, "S 4 5 4 3 2 0 1"},
    {"S", {"XX", "YY", "ZZ", "XY", "XZ", "YZ"}, "S 4 0 1 2 3 5 4"},
    {"S", {"SIXX", "SIYY", "SIZZ", "SIXY"}, "S 4 0 1 2 3 -1 -1"},
    // Forces in a shell: no ZZ, so no tensor.
    {"S", {"NXX", "NYY", "NXY"}, "S.NXX 1 0; S.NYY 1 1; S.NXY 1 2"},
    {"S", {"EPXX", "EPYY", "EPZZ", "EPXY", "SIXX", "SIYY", "SIZZ", "SIXY"}, "S 4 0 1 2 3 -1 -1; S.SI 4 4 5 6 7 -1 -1"},
};

} // namespace

TEST(MedComponents, AreGatheredByTheirNames) {
    for (const Case& example : CASES) {
        EXPECT_EQ(told(gatherMedComponents(example.field, example.components)), example.expected);
    }
}
