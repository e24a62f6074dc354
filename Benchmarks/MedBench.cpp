// Opening a file and loading one result of one state, through the module, beside libmedc's calls that read the same
// numbers into memory. Files of 125,000 hexahedra in two groups, with four fields of two steps.

#include "OrvImportCae/DataSourceCae.h"
#include "OrvUnstructGrid/DataSourceDirectory.h"
#include "OrvUnstructGrid/DataStateSpec.h"

#include "Benchmarks/Claims.h"

#include <med.h>

#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

using namespace orv;

namespace {

constexpr med_int SIDE = 50;
constexpr med_int NODE_COUNT = (SIDE + 1) * (SIDE + 1) * (SIDE + 1);
constexpr med_int CELL_COUNT = SIDE * SIDE * SIDE;
constexpr const char* MESH = "block";
constexpr const char* WANTED = "F2";
constexpr med_int WANTED_STEP = 2;

void check(bool isGood) {
    if (!isGood) {
        std::abort();
    }
}

med_int nodeAt(med_int x, med_int y, med_int z) {
    return (z * (SIDE + 1) + y) * (SIDE + 1) + x + 1;
}

void writeMesh(med_idt file) {
    std::vector<double> coordinates;
    std::vector<med_int> nodes;
    std::vector<med_int> families;
    for (med_int z = 0; z <= SIDE; ++z) {
        for (med_int y = 0; y <= SIDE; ++y) {
            for (med_int x = 0; x <= SIDE; ++x) {
                coordinates.insert(coordinates.end(), {double(x), double(y) + std::sin(0.1 * double(x)), double(z)});
                if (x < SIDE && y < SIDE && z < SIDE) {
                    nodes.insert(nodes.end(), {nodeAt(x, y, z), nodeAt(x, y + 1, z), nodeAt(x + 1, y + 1, z),
                                               nodeAt(x + 1, y, z), nodeAt(x, y, z + 1), nodeAt(x, y + 1, z + 1),
                                               nodeAt(x + 1, y + 1, z + 1), nodeAt(x + 1, y, z + 1)});
                    families.push_back(z < SIDE / 2 ? -1 : -2);
                }
            }
        }
    }
    const std::string axes = "X               Y               Z               ";
    check(MEDmeshCr(file, MESH, 3, 3, MED_UNSTRUCTURED_MESH, "", "s", MED_SORT_DTIT, MED_CARTESIAN, axes.c_str(),
                    axes.c_str()) >= 0);
    for (const med_int family : {-1, -2}) {
        std::string group(MED_LNAME_SIZE, ' ');
        group.replace(0, 5, family == -1 ? "LOWER" : "UPPER");
        check(MEDfamilyCr(file, MESH, family == -1 ? "F1" : "F2", family, 1, group.c_str()) >= 0);
    }
    check(MEDmeshNodeCoordinateWr(file, MESH, MED_NO_DT, MED_NO_IT, 0, MED_FULL_INTERLACE, NODE_COUNT,
                                  coordinates.data()) >= 0);
    check(MEDmeshElementConnectivityWr(file, MESH, MED_NO_DT, MED_NO_IT, 0, MED_CELL, MED_HEXA8, MED_NODAL,
                                       MED_FULL_INTERLACE, CELL_COUNT, nodes.data()) >= 0);
    check(MEDmeshEntityFamilyNumberWr(file, MESH, MED_NO_DT, MED_NO_IT, MED_CELL, MED_HEXA8, CELL_COUNT,
                                      families.data()) >= 0);
}

void writeFields(med_idt file) {
    const std::string component = "DX              DY              DZ              ";
    for (int f = 0; f < 4; ++f) {
        const std::string name = "F" + std::to_string(f);
        check(MEDfieldCr(file, name.c_str(), MED_FLOAT64, 3, component.c_str(), component.c_str(), "s", MESH) >= 0);
        std::vector<double> values(3 * std::size_t(NODE_COUNT));
        for (med_int step = 1; step <= 2; ++step) {
            for (std::size_t i = 0; i < values.size(); ++i) {
                values[i] = std::sin(double(i) * (f + step));
            }
            check(MEDfieldValueWr(file, name.c_str(), step, step, step, MED_NODE, MED_NONE, MED_FULL_INTERLACE,
                                  MED_ALL_CONSTITUENT, NODE_COUNT,
                                  reinterpret_cast<const unsigned char*>(values.data())) >= 0);
        }
    }
}

void write(const std::string& path) {
    const med_idt file = MEDfileOpen(path.c_str(), MED_ACC_CREAT);
    check(file >= 0);
    writeMesh(file);
    writeFields(file);
    check(MEDfileClose(file) >= 0);
}

void openAndLoad(const std::string& path) {
    const PtrRef<imp::cae::DataSourceCae> source(new imp::cae::DataSourceCae(1));
    check(source->openFiles({Str(path)}, nullptr));
    bool isLoaded = false;
    for (const ug::ResultInfo& info : source->directory()->displacementResultInfos()) {
        if (info.name() == Str(WANTED)) {
            ug::DataStateSpec spec;
            spec.setResultIds({info});
            isLoaded = source->loadDataState(WANTED_STEP, spec, nullptr);
        }
    }
    check(isLoaded);
}

void readBare(const std::string& path) {
    const med_idt file = MEDfileOpen(path.c_str(), MED_ACC_RDONLY);
    std::vector<double> coordinates(3 * std::size_t(NODE_COUNT));
    check(MEDmeshNodeCoordinateRd(file, MESH, MED_NO_DT, MED_NO_IT, MED_FULL_INTERLACE, coordinates.data()) >= 0);
    std::vector<med_int> nodes(8 * std::size_t(CELL_COUNT));
    check(MEDmeshElementConnectivityRd(file, MESH, MED_NO_DT, MED_NO_IT, MED_CELL, MED_HEXA8, MED_NODAL,
                                       MED_FULL_INTERLACE, nodes.data()) >= 0);
    std::vector<med_int> families(CELL_COUNT);
    check(MEDmeshEntityFamilyNumberRd(file, MESH, MED_NO_DT, MED_NO_IT, MED_CELL, MED_HEXA8, families.data()) >= 0);
    std::vector<double> values(3 * std::size_t(NODE_COUNT));
    check(MEDfieldValueRd(file, WANTED, WANTED_STEP, WANTED_STEP, MED_NODE, MED_NONE, MED_FULL_INTERLACE,
                          MED_ALL_CONSTITUENT, reinterpret_cast<unsigned char*>(values.data())) >= 0);
    check(MEDfileClose(file) >= 0);
    benchmark::DoNotOptimize(values.data());
}

} // namespace

int main(int argc, char** argv) {
    const std::string folder = std::filesystem::temp_directory_path() / "orv-med-bench";
    std::filesystem::create_directories(folder);
    const std::string path = folder + "/block.med";
    write(path);
    const auto nothing = [] {};
    orvbench::Claims claims(7);
    claims.add("open and load .med", 1.1, {nothing, [&] { openAndLoad(path); }}, {nothing, [&] { readBare(path); }});
    const int result = claims.run(argc, argv);
    std::filesystem::remove_all(folder);
    return result;
}
