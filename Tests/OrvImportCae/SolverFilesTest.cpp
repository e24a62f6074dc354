// Files of real solver runs against the print-outs of the same runs. Both have six digits, the print-out seven.

#include "OrvImportCae/DataSourceCae.h"
#include "OrvUnstructGrid/DataResultGroup.h"
#include "OrvUnstructGrid/DataStateSpec.h"
#include "OrvUnstructGrid/Error.h"
#include "Tests/OrvImportCae/DatFile.h"
#include "Tests/OrvImportCae/FrdSamples.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <string>
#include <vector>

using namespace orv;
using orvtest::DatTable;
using orvtest::readDat;
using orvtest::solverFile;

namespace {

PtrRef<imp::cae::DataSourceCae> openSolverFile(const std::string& name) {
    PtrRef<imp::cae::DataSourceCae> source(new imp::cae::DataSourceCae(1));
    ug::Error error;
    EXPECT_TRUE(source->openFiles({solverFile(name)}, &error)) << error.message();
    return source;
}

/// The values of a result in a state, by the node's number. A node in several parts must have the same values in all.
std::map<int, std::vector<double>> valuesByNode(imp::cae::DataSourceCae& source, std::size_t stateIndex,
                                                ug::ResultType type, const std::string& name) {
    ug::ResultInfo wanted;
    for (const ug::ResultInfo& info : source.directory()->resultInfos(type)) {
        wanted = info.name() == Str(name) ? info : wanted;
    }
    EXPECT_TRUE(wanted.isValid()) << name;
    ug::DataState* state = source.state(stateIndex);
    ug::DataStateSpec spec;
    spec.setResultIds({wanted});
    ug::Error error;
    EXPECT_TRUE(source.loadDataState(state->id(), spec, &error)) << error.message();
    const ug::DataGeometry* geometry = state->geometry(0);
    const ug::DataResult* result = state->results(geometry)->find(wanted);
    std::map<int, std::vector<double>> byNode;
    for (std::size_t p = 0; result && p < geometry->partCount(); ++p) {
        const ug::DataPartValues* values = result->values(p);
        EXPECT_EQ(values->itemCount(), geometry->part(p)->nodes()->nodeCount());
        for (std::size_t n = 0; n < values->itemCount(); ++n) {
            const double* item = values->values() + n * values->dimension();
            const auto [found, isNew] =
                byNode.try_emplace(geometry->part(p)->nodes()->nodeId(n), item, item + values->dimension());
            EXPECT_TRUE(isNew || std::equal(found->second.begin(), found->second.end(), item));
        }
    }
    return byNode;
}

double largest(const DatTable& table) {
    double size = 0.0;
    for (const DatTable::Row& row : table.rows) {
        for (const double value : row.values) {
            size = std::max(size, std::abs(value));
        }
    }
    return size;
}

void expectAgreement(const DatTable& table, const std::map<int, std::vector<double>>& byNode) {
    const double tolerance = 1e-5 * largest(table);
    ASSERT_FALSE(table.rows.empty());
    for (const DatTable::Row& row : table.rows) {
        const auto found = byNode.find(row.id);
        ASSERT_NE(found, byNode.end()) << "node " << row.id;
        ASSERT_EQ(found->second.size(), row.values.size());
        for (std::size_t i = 0; i < row.values.size(); ++i) {
            EXPECT_NEAR(found->second[i], row.values[i], tolerance) << "node " << row.id << ", component " << i;
        }
    }
}

struct Printed {
    const char* job;
    const char* title; ///< In the print-out.
    ug::ResultType type;
    const char* result;
    std::size_t tableCount; ///< The tables of that title in the print-out.
    std::size_t firstState; ///< The index of the state that the first table belongs to.
};

std::ostream& operator<<(std::ostream& out, const Printed& printed) {
    return out << printed.job << " " << printed.result;
}

class SolverFile : public testing::TestWithParam<Printed> {};

TEST_P(SolverFile, AgreesWithThePrintOut) {
    const Printed& printed = GetParam();
    const PtrRef<imp::cae::DataSourceCae> source = openSolverFile(std::string(printed.job) + ".frd");
    const std::vector<DatTable> tables = readDat(solverFile(std::string(printed.job) + ".dat"), printed.title);
    ASSERT_EQ(tables.size(), printed.tableCount);
    for (std::size_t i = 0; i < tables.size(); ++i) {
        SCOPED_TRACE(i);
        expectAgreement(tables[i], valuesByNode(*source, printed.firstState + i, printed.type, printed.result));
    }
}

INSTANTIATE_TEST_SUITE_P(All, SolverFile,
                         testing::Values(Printed{"cube_static", "displacements", ug::DISPLACEMENT, "DISP", 1, 0},
                                         Printed{"cube_static", "forces", ug::VECTOR, "FORC", 1, 0},
                                         Printed{"beam_increments", "displacements", ug::DISPLACEMENT, "DISP", 6, 0},
                                         Printed{"beam_binary", "displacements", ug::DISPLACEMENT, "DISP", 6, 0},
                                         Printed{"beam_modes", "displacements", ug::DISPLACEMENT, "DISP", 6, 0},
                                         Printed{"static_then_modes", "displacements", ug::DISPLACEMENT, "DISP", 4, 0},
                                         Printed{"heat", "temperatures", ug::SCALAR, "NDTEMP", 5, 0},
                                         Printed{"mixed", "displacements", ug::DISPLACEMENT, "DISP", 1, 0},
                                         Printed{"mixed_quadratic", "displacements", ug::DISPLACEMENT, "DISP", 1, 0},
                                         Printed{"shell_2d", "displacements", ug::DISPLACEMENT, "DISP", 1, 0},
                                         Printed{"beam_2d", "displacements", ug::DISPLACEMENT, "DISP", 1, 0},
                                         Printed{"plane", "displacements", ug::DISPLACEMENT, "DISP", 1, 0},
                                         Printed{"truss", "displacements", ug::DISPLACEMENT, "DISP", 1, 0},
                                         Printed{"buckling", "displacements", ug::DISPLACEMENT, "DISP", 3, 0},
                                         Printed{"plastic", "displacements", ug::DISPLACEMENT, "DISP", 2, 0},
                                         Printed{"contact", "displacements", ug::DISPLACEMENT, "DISP", 1, 0}));

} // namespace
