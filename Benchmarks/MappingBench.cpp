// A million hexahedra: results from nodes to elements and back, loaded as a program loads them, beside VTK's two
// filters on the same mesh with one thread. Both sides make their output anew in each run.

#include "OrvApp/ElementToNodeResultGenerator.h"
#include "OrvApp/NodeToElementResultGenerator.h"
#include "OrvCore/PtrRef.h"
#include "OrvUnstructGrid/DataSourceMemory.h"
#include "OrvUnstructGrid/DataStateSpec.h"
#include "OrvUnstructGrid/Error.h"

#include "Benchmarks/Claims.h"

#include <SMP/Common/vtkSMPToolsAPI.h>
#include <vtkCellArray.h>
#include <vtkCellData.h>
#include <vtkCellDataToPointData.h>
#include <vtkCellType.h>
#include <vtkDoubleArray.h>
#include <vtkNew.h>
#include <vtkPointData.h>
#include <vtkPointDataToCellData.h>
#include <vtkPoints.h>
#include <vtkUnstructuredGrid.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>
#include <vector>

using namespace orv::ug;

namespace {

constexpr std::uint32_t cubesPerEdge = 100;
constexpr std::uint32_t nodesPerEdge = cubesPerEdge + 1;

/// The largest share of the rival's time: at least 1.5 times as fast.
constexpr double limit = 1 / 1.5;

std::vector<double> gridCoordinates() {
    std::vector<double> coordinates;
    for (std::uint32_t i = 0; i < nodesPerEdge * nodesPerEdge * nodesPerEdge; ++i) {
        const std::uint32_t x = i % nodesPerEdge;
        const std::uint32_t y = i / nodesPerEdge % nodesPerEdge;
        const std::uint32_t z = i / nodesPerEdge / nodesPerEdge;
        coordinates.insert(coordinates.end(), {static_cast<double>(x), static_cast<double>(y), static_cast<double>(z)});
    }
    return coordinates;
}

std::vector<std::uint32_t> gridConnectivity() {
    constexpr std::uint32_t up = nodesPerEdge * nodesPerEdge;
    std::vector<std::uint32_t> nodes;
    for (std::uint32_t i = 0; i < cubesPerEdge * cubesPerEdge * cubesPerEdge; ++i) {
        const std::uint32_t x = i % cubesPerEdge;
        const std::uint32_t y = i / cubesPerEdge % cubesPerEdge;
        const std::uint32_t z = i / cubesPerEdge / cubesPerEdge;
        const std::uint32_t n = (z * nodesPerEdge + y) * nodesPerEdge + x;
        nodes.insert(nodes.end(), {n, n + 1, n + nodesPerEdge + 1, n + nodesPerEdge});
        nodes.insert(nodes.end(), {n + up, n + up + 1, n + up + nodesPerEdge + 1, n + up + nodesPerEdge});
    }
    return nodes;
}

std::vector<double> randomNumbers(std::size_t count) {
    std::mt19937 engine(4);
    std::vector<double> numbers(count);
    for (double& number : numbers) {
        number = static_cast<double>(engine()) / 4294967296.0 * 200 - 100;
    }
    return numbers;
}

/// Our mesh, one result on it, and the one computed from it.
class Ours {
public:
    Ours(ResultType type, ResultMapping from, const std::vector<double>& values) : m_source(new DataSourceMemory(1)) {
        const std::vector<std::uint32_t> nodes = gridConnectivity();
        m_source->addGeometry();
        DataPart* part = m_source->addPart(0, "grid");
        part->nodes()->set(gridCoordinates(), {});
        part->elements()->set(std::vector<ElementType>(nodes.size() / 8, HEXAHEDRON), nodes, {});
        m_source->addState(StateInfo(1, "state", StateInfo::TIME, 0));
        std::vector<ResultInfo> arguments = {m_source->addResult(type, "input", from)};
        m_source->setValues(1, arguments[0], 0, 0, values, nullptr);
        m_converted =
            from == PER_NODE
                ? ResultInfo(type, "output", PER_ELEMENT, arguments, new orv::app::NodeToElementResultGenerator(1))
                : ResultInfo(type, "output", PER_NODE, arguments, new orv::app::ElementToNodeResultGenerator(1));
        m_source->directory()->setCustomResultInfo(m_converted);
    }

    orvbench::Claims::Side side() {
        return {[this] { m_source->state(0)->removeResult(m_converted); }, [this] { load(); }};
    }

    std::span<const double> output() {
        load();
        const DataState* state = m_source->state(0);
        return state->results(state->geometry(0))->find(m_converted)->values(0)->span();
    }

private:
    void load() {
        DataStateSpec spec;
        spec.setResultIds({m_converted});
        Error error;
        if (!m_source->loadDataState(1, spec, &error)) {
            std::fprintf(stderr, "%s\n", error.message().toStdString().c_str());
            std::exit(1);
        }
    }

    orv::PtrRef<DataSourceMemory> m_source;
    ResultInfo m_converted;
};

/// The same mesh and values for VTK.
class Theirs {
public:
    Theirs(ResultType type, ResultMapping from, const std::vector<double>& values) : m_from(from) {
        const std::vector<double> coordinates = gridCoordinates();
        vtkNew<vtkPoints> points;
        points->SetDataTypeToDouble();
        for (std::size_t i = 0; i < coordinates.size(); i += 3) {
            points->InsertNextPoint(coordinates.data() + i);
        }
        const std::vector<std::uint32_t> nodes = gridConnectivity();
        vtkNew<vtkCellArray> cells;
        for (std::size_t i = 0; i < nodes.size(); i += 8) {
            const std::vector<vtkIdType> ids(nodes.begin() + i, nodes.begin() + i + 8);
            cells->InsertNextCell(8, ids.data());
        }
        vtkNew<vtkDoubleArray> array;
        array->SetName("values");
        array->SetNumberOfComponents(static_cast<int>(doublesPerItem(type)));
        array->SetNumberOfTuples(static_cast<vtkIdType>(values.size() / doublesPerItem(type)));
        std::copy(values.begin(), values.end(), array->GetPointer(0));
        m_grid->SetPoints(points);
        m_grid->SetCells(VTK_HEXAHEDRON, cells);
        if (from == PER_NODE) {
            m_grid->GetPointData()->AddArray(array);
        } else {
            m_grid->GetCellData()->AddArray(array);
        }
        m_toCells->SetInputData(m_grid);
        m_toPoints->SetInputData(m_grid);
    }

    orvbench::Claims::Side side() {
        return {[this] { m_grid->Modified(); }, [this] { update(); }};
    }

    std::span<const double> output() {
        update();
        vtkDataArray* array = m_from == PER_NODE ? m_toCells->GetOutput()->GetCellData()->GetArray("values")
                                                 : m_toPoints->GetOutput()->GetPointData()->GetArray("values");
        return {static_cast<double*>(array->GetVoidPointer(0)), static_cast<std::size_t>(array->GetNumberOfValues())};
    }

private:
    void update() {
        if (m_from == PER_NODE) {
            m_toCells->Update();
        } else {
            m_toPoints->Update();
        }
    }

    ResultMapping m_from;
    vtkNew<vtkUnstructuredGrid> m_grid;
    vtkNew<vtkPointDataToCellData> m_toCells;
    vtkNew<vtkCellDataToPointData> m_toPoints;
};

/// One conversion of one kind of values by both.
class Comparison {
public:
    Comparison(ResultType type, ResultMapping from)
        : m_values(
              randomNumbers(doublesPerItem(type) * (from == PER_NODE ? nodesPerEdge * nodesPerEdge * nodesPerEdge
                                                                     : cubesPerEdge * cubesPerEdge * cubesPerEdge))),
          m_ours(type, from, m_values), m_theirs(type, from, m_values) {}

    void addTo(orvbench::Claims* claims, const std::string& name) {
        if (!agree()) {
            std::fprintf(stderr, "%s: VTK computes other values\n", name.c_str());
            std::exit(1);
        }
        claims->add(name, limit, m_ours.side(), m_theirs.side());
    }

private:
    bool agree() {
        const std::span<const double> ours = m_ours.output();
        const std::span<const double> theirs = m_theirs.output();
        return std::equal(ours.begin(), ours.end(), theirs.begin(), theirs.end(),
                          [](double a, double b) { return std::fabs(a - b) < 1e-10; });
    }

    std::vector<double> m_values;
    Ours m_ours;
    Theirs m_theirs;
};

} // namespace

int main(int argc, char** argv) {
    // What vtkSMPTools calls; its own header is no C++20.
    vtk::detail::smp::vtkSMPToolsAPI::GetInstance().SetBackend("Sequential");
    vtk::detail::smp::vtkSMPToolsAPI::GetInstance().Initialize(1);
    Comparison scalarToElements(SCALAR, PER_NODE);
    Comparison tensorToElements(SYMMETRIC_TENSOR, PER_NODE);
    Comparison scalarToNodes(SCALAR, PER_ELEMENT);
    Comparison tensorToNodes(SYMMETRIC_TENSOR, PER_ELEMENT);
    orvbench::Claims claims;
    scalarToElements.addTo(&claims, "node to element, scalar(1M)");
    tensorToElements.addTo(&claims, "node to element, tensor(1M)");
    scalarToNodes.addTo(&claims, "element to node, scalar(1M)");
    tensorToNodes.addTo(&claims, "element to node, tensor(1M)");
    return claims.run(argc, argv);
}
